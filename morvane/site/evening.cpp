#include "morvane/site/evening.h"

#include <algorithm>

namespace morvane {
namespace {

constexpr std::size_t kMostNames = 5;

/// Whose rank is a better one than before the evening.
std::vector<Evening::Step> Climbers(const SiteFacts& facts, const std::vector<Player>& players) {
  std::vector<Evening::Step> steps;
  for (const Player& player : players) {
    const std::uint32_t before = facts.RankBefore(player.player);
    const std::uint32_t now = facts.statistics.players[player.player].rank;
    if (now > 0 && before > now) steps.push_back({player.player, before - now});
  }
  std::ranges::stable_sort(steps, std::ranges::greater(), &Evening::Step::places);
  if (steps.size() > kMostNames) steps.resize(kMostNames);
  return steps;
}

std::vector<std::uint32_t> Newcomers(const SiteFacts& facts, const std::vector<Player>& players) {
  std::vector<std::uint32_t> names;
  for (const Player& player : players) {
    const auto& games = facts.Games(player.player);
    const bool isNew = !games.empty() && games.front().game >= facts.evening.first;
    if (isNew && names.size() < kMostNames) names.push_back(player.player);
  }
  return names;
}

}  // namespace

Evening LastEveningOf(const SiteFacts& facts) {
  const std::vector<Game>& games = facts.statistics.games;
  Evening evening;
  for (std::size_t i = facts.evening.first; i < games.size(); ++i) evening.kills += games[i].frags;
  evening.players = PlayersSince(facts.statistics, facts.evening.first);
  if (facts.evening.first == 0) return evening;  // nobody climbs and all are new
  evening.climbers = Climbers(facts, evening.players);
  evening.newcomers = Newcomers(facts, evening.players);
  return evening;
}

}  // namespace morvane
