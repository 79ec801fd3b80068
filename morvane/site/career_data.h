#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "morvane/site/site_facts.h"

namespace morvane {

/// Games of the form of a player, and of the mean in the chart.
inline constexpr std::size_t kForm = 10;

/// Sets what a player's games tell one after the other: `chart`, `form`, `best_game`,
/// `streak_game`, how the favourite weapon compares, and `won_awards`.
void SetCareer(Object& object, const SiteFacts& facts, std::uint32_t player);

/// The game in which a figure of the player's was highest; nullptr where it was never above 0.
const SiteFacts::Appearance* HighestAppearance(const SiteFacts& facts, std::uint32_t player,
                                               std::int64_t Counts::*figure);

/// How much of all kills are made with the favourite weapon, by the player and by the field;
/// empty for a player without one.
struct FavouriteShares {
  std::string own;
  std::string field;
};
FavouriteShares FavouriteSharesOf(const SiteFacts& facts, const Figures& figures);

/// The most games that the curve in a list shows.
inline constexpr std::size_t kSparkGames = 20;

/// The curve of a player's rating over the last games, as HTML; empty for fewer than two games.
std::string RatingSpark(const SiteFacts& facts, std::uint32_t player);

/// A row about a game in which kills, deaths and so on are the player's own.
Object GamePlayed(const SiteFacts& facts, const SiteFacts::Appearance& appearance, Demand demand);

/// The rows of some awards.
Data AwardList(const SiteFacts& facts, const std::vector<Award>& awards, Demand demand);

}  // namespace morvane
