#pragma once

#include <array>
#include <cstdint>

#include "morvane/site/list_pages.h"
#include "morvane/site/site_facts.h"

namespace morvane {

/// The rows of all maps, as in the list of maps.
Data MapList(const SiteFacts& facts, Demand demand);

/// All about one map: its row, summary, weapons, items, kill table, latest games, and some of its
/// players, for a list of them that is split.
Object MapData(const SiteFacts& facts, std::uint32_t map, ListPages::Range players, Demand demand);

/// The most of any map, which the bars of maps are measured against.
struct MostOfMaps {
  std::uint32_t games = 0;
  std::int64_t kills = 0;
};
MostOfMaps MostOf(const std::vector<Map>& maps);

/// The bars of a map.
std::array<Bar, 2> BarsOf(const Map& map, const MostOfMaps& most);

}  // namespace morvane
