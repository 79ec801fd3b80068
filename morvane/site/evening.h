#pragma once

#include <cstdint>
#include <vector>

#include "morvane/site/site_facts.h"

namespace morvane {

/// What has happened since the last evening began.
struct Evening {
  struct Step {
    std::uint32_t player = 0;  ///< index into Statistics::players
    std::uint32_t places = 0;  ///< that the rank is better
  };

  std::int64_t kills = 0;                ///< frags
  std::vector<Player> players;           ///< what they did then, the best first
  std::vector<Step> climbers;            ///< the greatest step first, a few
  std::vector<std::uint32_t> newcomers;  ///< who had never played before, a few
};

Evening LastEveningOf(const SiteFacts& facts);

}  // namespace morvane
