#pragma once

#include <cstdint>

#include "morvane/site/site_facts.h"

namespace morvane {

/// A row about a game, as in lists of games.
Object GameRow(const SiteFacts& facts, std::uint32_t game, Demand demand);

/// All about one game: the row, its players, kill table, lead and neighbours.
Object GameData(const SiteFacts& facts, std::uint32_t game, Demand demand);

/// The last `most` of `games` (indices into Statistics::games, in order), the latest first.
Data LatestGames(const SiteFacts& facts, const std::vector<std::uint32_t>& games, std::size_t most,
                 Demand demand);

/// Rows of the games `first` to before `end` of all, the latest first.
Data GameList(const SiteFacts& facts, std::size_t first, std::size_t end, Demand demand);

/// Sets `place`, `winner` and `team` of one who played.
void SetPlace(Object& object, const Entrant& entrant);

}  // namespace morvane
