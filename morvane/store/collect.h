#pragma once

#include <vector>

#include "morvane/messages.h"
#include "morvane/settings.h"
#include "morvane/statistics/game.h"

namespace morvane {

/// The games of a run, in the order of play.
struct Collected {
  std::vector<Game> games;
  Names weapons;
  Names items;
  bool usable = false;  ///< a log could be read, or the database held games
};

/// Reads the logs that the settings name, or as much of them as the database does not know yet,
/// and takes the games of former logs from the database. What a log or the database lacks is a
/// message. A damaged database is left as it is, and the logs are read without it.
Collected CollectGames(const Settings& settings, Messages& messages);

}  // namespace morvane
