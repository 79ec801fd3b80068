#include "morvane/statistics/history.h"

#include <algorithm>

namespace morvane {
namespace {

constexpr std::int64_t kHour = 3600;

/// From the last game back, as long as `isPart` says so of a game and the one after it. A game that
/// may have been earlier than its date says is none of them if even that is too early; else nobody
/// knows, and the games are counted instead.
template <class IsPart>
Period Back(const std::vector<Game>& games, const IsPart& isPart) {
  const auto count = static_cast<std::uint32_t>(games.size());
  const Period counted{count - std::min(count, kGamesOfLate), false};
  if (count == 0 || !HasDay(games.back())) return counted;
  std::uint32_t first = count - 1;
  for (; first > 0; --first) {
    const Game& game = games[first - 1];
    if (game.dated == Dated::kUnknown) return counted;
    if (!isPart(game, games[first])) break;
    if (!HasDay(game)) return counted;
  }
  return {first, true};
}

}  // namespace

Period LastEvening(const std::vector<Game>& games) {
  return Back(games, [](const Game& game, const Game& next) {
    return next.start - (game.start + game.length) < 4 * kHour;
  });
}

Period LastDays(const std::vector<Game>& games) {
  return Back(games, [&](const Game& game, const Game& /*next*/) {
    return game.start >= games.back().start + games.back().length - kDaysOfLate * (24 * kHour);
  });
}

std::vector<std::uint32_t> RanksAfter(const Statistics& statistics, std::uint32_t games) {
  std::vector<Player> players(statistics.players.size());
  for (std::uint32_t i = 0; i < games; ++i) {
    const Game& game = statistics.games[i];
    for (const Entrant& entrant : game.entrants) {
      Player& player = players[entrant.player];
      player.rating = entrant.rating;
      player.figures.kills += entrant.figures.kills;
      player.figures.seconds += entrant.figures.seconds;
      player.games += entrant.standsForPlayer ? 1 : 0;
      player.timed.games += entrant.standsForPlayer && game.timed ? 1 : 0;
    }
  }
  std::vector<std::uint32_t> order;
  for (std::uint32_t i = 0; i < players.size(); ++i) {
    if (players[i].games > 0 && IsRanked(players[i], statistics.limits)) order.push_back(i);
  }
  std::sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
    return players[left].rating > players[right].rating;
  });
  std::vector<std::uint32_t> ranks(players.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const bool shared = i > 0 && players[order[i - 1]].rating == players[order[i]].rating;
    ranks[order[i]] = shared ? ranks[order[i - 1]] : static_cast<std::uint32_t>(i + 1);
  }
  return ranks;
}

}  // namespace morvane
