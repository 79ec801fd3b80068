#pragma once

#include <vector>

#include "morvane/report/report.h"
#include "morvane/statistics/game.h"
#include "morvane/statistics/limits.h"
#include "morvane/statistics/statistics.h"

namespace morvane {

/// Says which limit of the settings leaves out how many games, a line for each: each game under the
/// first limit, in the order of the settings, that it misses. Warm-ups have a line of their own.
void TellDroppedGames(const std::vector<Game>& games, const Limits& limits, Report& report);

/// Says the same of the players who are not ranked.
void TellDroppedPlayers(const std::vector<Player>& players, const Limits& limits, Report& report);

}  // namespace morvane
