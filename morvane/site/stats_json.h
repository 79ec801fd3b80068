#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The file beside the pages that other programs read.
inline constexpr const char* kStatsJson = "stats.json";

/// Its version: raised when a value changes its meaning or goes, not when one comes.
inline constexpr int kStatsJsonVersion = 2;

/// The figures of the pages as JSON in UTF-8: a line for each player, map and game. Of the games
/// the latest; all of them stand in the files of GameFiles. What the values are stands in
/// docs/stats-json.md.
std::string StatsJson(const SiteFacts& facts);

/// A file that holds some of the games. Which game stands in which follows from its number, so a
/// file stays as it is while its games do.
struct GameFile {
  std::string name;
  std::vector<std::uint32_t> games;  ///< indices into Statistics::games, by their numbers
};
std::vector<GameFile> GameFiles(const Statistics& statistics);

/// The games of a file as JSON.
std::string GamesJson(const SiteFacts& facts, const GameFile& file);

}  // namespace morvane
