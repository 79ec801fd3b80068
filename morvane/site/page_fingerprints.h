#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "morvane/site/figure_data.h"
#include "morvane/site/list_pages.h"
#include "morvane/site/site_facts.h"
#include "morvane/statistics/fingerprint.h"

namespace morvane {

/// What pages are made from, besides what all pages of a template share (see Frames): two pages of
/// one template, one frame and one fingerprint are the same, byte for byte. Cheap beside the data
/// of the pages: the figures of players and maps follow from their games, so it is the games that
/// are looked at.
class PageFingerprints {
 public:
  /// Both must outlive this. `highest`: of Statistics::players.
  PageFingerprints(const SiteFacts& facts, const Highest& highest);

  /// For GameData.
  Digest128 OfGame(std::uint32_t game) const;
  /// For PlayerData.
  Digest128 OfPlayer(std::uint32_t player) const;
  /// For MapData and the lists of its players.
  Digest128 OfMap(std::uint32_t map) const;
  /// For some rows of PlayerList, of GameList or of GameRow.
  Digest128 OfPlayers(ListPages::Range rows) const;
  Digest128 OfGames(ListPages::Range rows) const;
  /// For GamesJson of these games, which tells the names that the players bear now.
  Digest128 OfGamesWithNames(const std::vector<std::uint32_t>& games) const;
  /// For everything.
  const Digest128& OfAll() const { return all_; }

 private:
  void AddNeighbour(Fingerprint& print, std::uint32_t game) const;
  void AddGames(Fingerprint& print, std::uint32_t player) const;
  Digest128 PlayerRow(std::uint32_t player) const;

  const SiteFacts& facts_;
  const Highest& highest_;
  std::vector<Digest128> labels_;   // how pages speak of the players
  std::vector<Digest128> maps_;     // and of the maps
  std::vector<Digest128> games_;    // all that they hold, with the names of those in it
  std::vector<Digest128> names_;    // of all who played a game, as they are called now
  std::vector<Digest128> players_;  // the rows in lists
  Digest128 all_;
};

}  // namespace morvane
