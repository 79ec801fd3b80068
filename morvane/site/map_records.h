#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "morvane/statistics/statistics.h"

namespace morvane {

/// Who won most games on a map; nullptr where nobody won one.
const Player* OwnerOf(const Map& map);

/// One's play in a game.
struct Play {
  std::uint32_t game = 0;  ///< index into Statistics::games
  std::uint32_t entrant = 0;
};
/// The highest score of a game on a map, if one is above 0.
std::optional<Play> BestPlay(const Statistics& statistics, const Map& map);

/// What was played in a month.
struct Played {
  std::uint32_t games = 0;
  std::int64_t seconds = 0;  ///< of the games whose length is known
};
/// How often and how long a map was played by year and month, the last one first; games whose day
/// is not known are left out.
std::map<std::pair<int, int>, Played, std::greater<>> MonthsOf(const Statistics& statistics,
                                                               const Map& map);

/// "2026-03".
std::string MonthText(const std::pair<int, int>& month);

}  // namespace morvane
