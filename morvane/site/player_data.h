#pragma once

#include <cstdint>

#include "morvane/site/figure_data.h"
#include "morvane/site/site_facts.h"

namespace morvane {

/// All about one player: the row, weapons, items, opponents, maps and latest games.
/// `highest`: of Statistics::players.
Data PlayerData(const SiteFacts& facts, std::uint32_t player, const Highest& highest,
                Demand demand);

}  // namespace morvane
