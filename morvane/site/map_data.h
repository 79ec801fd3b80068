#pragma once

#include <array>
#include <cstdint>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The rows of all maps, as in the list of maps.
Data MapList(const SiteFacts& facts);

/// All about one map: its row, summary, weapons, items, kill table and latest games. Not
/// the list of its players, which may be long: see PlayerList.
Data MapData(const SiteFacts& facts, std::uint32_t map);

/// The most of any map, which the bars of maps are measured against.
struct MostOfMaps {
  std::uint32_t games = 0;
  std::int64_t kills = 0;
};
MostOfMaps MostOf(const std::vector<Map>& maps);

/// The bars of a map.
std::array<Bar, 2> BarsOf(const Map& map, const MostOfMaps& most);

}  // namespace morvane
