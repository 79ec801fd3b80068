#pragma once

#include <cstdint>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The rows of all maps, as in the list of maps.
Data MapList(const SiteFacts& facts);

/// All about one map: its row, summary, players, weapons, items, kill table and latest games.
Data MapData(const SiteFacts& facts, std::uint32_t map);

}  // namespace morvane
