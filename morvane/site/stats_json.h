#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "morvane/site/list_pages.h"
#include "morvane/site/page_fingerprints.h"
#include "morvane/site/site_facts.h"

namespace morvane {

/// The file beside the pages that other programs read.
inline constexpr const char* kStatsJson = "stats.json";

/// Its version: raised when a value changes its meaning or goes, not when one comes.
inline constexpr int kStatsJsonVersion = 1;

/// All figures of the pages as JSON in UTF-8: a line for each player, map and game. What the values
/// are stands in docs/stats-json.md. In pieces, one after the other: those that are as they were in
/// the last run need not be made anew.
class StatsJson {
 public:
  /// Both must outlive this.
  StatsJson(const SiteFacts& facts, const PageFingerprints& fingerprints);

  std::size_t Pieces() const { return pieces_.size(); }
  /// Of what a piece is made from, besides the settings and the engine.
  Digest128 FingerprintOf(std::size_t piece) const;
  std::string TextOf(std::size_t piece) const;

 private:
  enum class List { kHead, kPlayers, kMaps, kGames, kEnd };
  /// Rows of a list; none: what stands before the first one.
  struct Piece {
    List list;
    ListPages::Range rows;
  };

  const SiteFacts& facts_;
  const PageFingerprints& fingerprints_;
  std::vector<Piece> pieces_;
};

}  // namespace morvane
