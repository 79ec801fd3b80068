#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "morvane/statistics/game.h"

namespace morvane {

class SiteFacts;

/// The best at one thing.
struct Award {
  std::string title;  ///< for what; not escaped
  std::string value;  ///< the figure that won it, with its unit
  std::uint32_t player = kNobody;
  std::uint32_t game = kNobody;  ///< where that was, for what happened in one game
};

/// The awards of the site, so many and so different that many players win one. They go to the
/// ranked players, or to all where nobody is ranked; to bots only where nobody else plays. Of equal
/// ones the better ranked wins.
std::vector<Award> AwardsOf(const SiteFacts& facts);

}  // namespace morvane
