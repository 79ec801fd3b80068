#pragma once

#include <string>
#include <vector>

#include "morvane/log/log_file.h"
#include "morvane/report/report.h"
#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {

/// Where the games come from.
struct Sources {
  std::vector<LogFile> logs;
  bool useDatabase = false;
  std::string databasePath;  ///< the folder of the database; absolute
};

/// The games of a run, in the order of play.
struct Collected {
  std::vector<Game> games;  ///< in which somebody played
  Vocabulary vocabulary;
  bool usable = false;  ///< a log could be read, or the database held games
  bool stored = true;   ///< false: something should have gone into the database, and could not
};

/// Reads the logs that the user names, or as much of them as the database does not know yet, and
/// takes the games of former logs from the database. What a log or the database lacks is a message.
/// Where nothing can be stored in the database (a full disk, say), its games count all the same.
/// One that is damaged is left as it is, and the logs are read without it; where another run does
/// not let go of it, there are no games. The games hold their Game::events.
Collected CollectGames(const Sources& named, Report& report);

}  // namespace morvane
