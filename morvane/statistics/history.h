#pragma once

#include <cstdint>
#include <vector>

#include "morvane/statistics/statistics.h"

namespace morvane {

/// The games of late: from `first` to the last one.
struct Period {
  std::uint32_t first = 0;  ///< index into Statistics::games; their number where there is none
  bool byDate = false;      ///< cut by the dates of the games; else by how many they are
};

/// How many games count as those of late where their dates do not tell.
inline constexpr std::uint32_t kGamesOfLate = 20;
inline constexpr int kDaysOfLate = 30;

/// Whether a game's start is known well enough to tell the day and the hour.
inline bool HasDay(const Game& game) { return game.dated >= Dated::kReckoned; }

/// The games played in a row up to the last one, with a pause of four hours before them.
Period LastEvening(const std::vector<Game>& games);
/// The games of the last 30 days before the end of the last one.
Period LastDays(const std::vector<Game>& games);

/// The rank of each player when only the first `games` had been played; 0: not ranked then.
std::vector<std::uint32_t> RanksAfter(const Statistics& statistics, std::uint32_t games);

}  // namespace morvane
