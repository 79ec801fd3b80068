#pragma once

#include <string>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The file beside the pages that other programs read.
inline constexpr const char* kStatsJson = "stats.json";

/// Its version: raised when a value changes its meaning or goes, not when one comes.
inline constexpr int kStatsJsonVersion = 1;

/// All figures of the pages as JSON in UTF-8: a line for each player, map and game. What the values
/// are stands in docs/stats-json.md.
std::string StatsJson(const SiteFacts& facts);

}  // namespace morvane
