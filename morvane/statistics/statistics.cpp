#include "morvane/statistics/statistics.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "config/text.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"
#include "morvane/statistics/ranking.h"
#include "platform/threads.h"

namespace morvane {
namespace {

/// Numbers for names that are the same player's.
class PlayerNumbers {
 public:
  /// The number of a name of a log; the next new one for a player not seen before.
  std::uint32_t Number(const std::string& name) {
    const auto [known, isNew] = byName_.try_emplace(name, 0);
    if (isNew) {
      const auto next = static_cast<std::uint32_t>(byKey_.size());
      known->second = byKey_.try_emplace(PlayerKey(name), next).first->second;
    }
    return known->second;
  }
  std::size_t Count() const { return byKey_.size(); }

 private:
  std::unordered_map<std::string, std::uint32_t> byName_;  // spares most keys
  std::unordered_map<std::string, std::uint32_t> byKey_;
};

void AddTime(std::int64_t& first, std::int64_t& last, const Game& game) {
  if (game.start == 0) return;
  first = first == 0 ? game.start : std::min(first, game.start);
  last = std::max(last, game.start + game.length);
}

/// One entrant more of a game to a player's figures; of two entrants with the player's name the
/// second adds no game.
void AddEntrant(Player& player, const Game& game, const Entrant& entrant, bool isFirst,
                int lastPlaced) {
  player.name = entrant.name;
  AddFigures(player.figures, entrant.figures);
  AddTime(player.firstSeen, player.lastSeen, game);
  player.games += isFirst ? 1 : 0;
  player.wins += entrant.winner ? 1 : 0;
  player.placed += static_cast<int>(entrant.place) <= lastPlaced ? 1 : 0;
  if (player.placings.size() < entrant.place) player.placings.resize(entrant.place);
  ++player.placings[entrant.place - 1];
}

/// What all players did, together.
void AddPlayers(Summary& summary, const std::vector<Player>& players) {
  for (const Player& player : players) {
    const Figures& figures = player.figures;
    summary.kills += figures.kills;
    summary.deaths += figures.deaths;
    summary.suicides += figures.suicides;
    summary.teamKills += figures.teamKills;
    summary.worldDeaths += figures.worldDeaths;
    summary.items += figures.items;
    AddWeapons(summary.weapons, figures.weapons);
    AddItems(summary.itemCounts, figures.itemCounts);
  }
  SortWeapons(summary.weapons);
  SortItems(summary.itemCounts);
}

/// Adds up games of one kind into a list of players and the kills among them.
class Totals {
 public:
  explicit Totals(int lastPlaced) : lastPlaced_(lastPlaced) {}

  void Add(const Game& game) {
    const std::size_t number = ++summary_.games;
    summary_.seconds += game.length;
    AddTime(summary_.firstSeen, summary_.lastSeen, game);
    seats_.clear();
    for (const Entrant& entrant : game.entrants) {
      const std::uint32_t index = IndexOf(entrant.player);
      seats_.push_back(index);
      AddEntrant(players_[index], game, entrant, lastGame_[index] != number, lastPlaced_);
      lastGame_[index] = number;
    }
    for (const Pair& pair : game.pairs) {
      pairs_.Add({seats_[pair.killer], seats_[pair.victim], pair.kills, pair.teamKills});
    }
  }

  /// Hands out the players, in the order in which they came, and the pairs, everything settled but
  /// ranks and order.
  void Finish(Summary& summary, std::vector<Player>& players, std::vector<Pair>& pairs) {
    pairs = pairs_.Take();
    AddPlayers(summary_, players_);
    for (Player& player : players_) {
      SettleFigures(player.figures);
      player.plain = NameText(player.name);
      player.rating = static_cast<double>(player.figures.score);
    }
    SettleRivals(pairs, [this](std::uint32_t i) -> Figures& { return players_[i].figures; });
    summary = std::move(summary_);
    players = std::move(players_);
  }

 private:
  std::uint32_t IndexOf(std::uint32_t player) {
    if (indices_.size() <= player) indices_.resize(player + 1, kNobody);
    std::uint32_t& index = indices_[player];
    if (index == kNobody) {
      index = static_cast<std::uint32_t>(players_.size());
      players_.emplace_back().player = player;
      lastGame_.push_back(0);
    }
    return index;
  }

  int lastPlaced_;
  Summary summary_;
  std::vector<Player> players_;
  std::vector<std::size_t> lastGame_;  // the number of the last game of each
  PairCounts pairs_;
  std::vector<std::uint32_t> indices_;  // by the player's number; kNobody: not come yet
  std::vector<std::uint32_t> seats_;    // of the entrants of the game being added
};

bool IsAhead(const Player& left, const Player& right) {
  if (left.ranked != right.ranked) return left.ranked;
  if (left.rating != right.rating) return left.rating > right.rating;
  return std::tie(right.figures.kills, left.figures.deaths, left.plain, left.name) <
         std::tie(left.figures.kills, right.figures.deaths, right.plain, right.name);
}

void MoveRival(Rival& rival, const std::vector<std::uint32_t>& newIndex) {
  if (rival.index != kNobody) rival.index = newIndex[rival.index];
}

/// Sorts players by rank and sets it; the result is the new index of each.
std::vector<std::uint32_t> RankPlayers(std::vector<Player>& players, std::vector<Pair>& pairs) {
  std::vector<std::uint32_t> order(players.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
    return IsAhead(players[left], players[right]);
  });
  std::vector<std::uint32_t> newIndex(players.size());
  std::vector<Player> sorted;
  sorted.reserve(players.size());
  for (const std::uint32_t old : order) {
    newIndex[old] = static_cast<std::uint32_t>(sorted.size());
    sorted.push_back(std::move(players[old]));
  }
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    Player& player = sorted[i];
    MoveRival(player.figures.nemesis, newIndex);
    MoveRival(player.figures.favouriteVictim, newIndex);
    if (!player.ranked) continue;
    const bool shared = i > 0 && sorted[i - 1].rating == player.rating;
    player.rank = shared ? sorted[i - 1].rank : static_cast<std::uint32_t>(i + 1);
  }
  players = std::move(sorted);
  for (Pair& pair : pairs) {
    pair.killer = newIndex[pair.killer];
    pair.victim = newIndex[pair.victim];
  }
  SortPairs(pairs);
  return newIndex;
}

/// Plays the games once more under the user's rules.
void ApplyRanking(Ranking& ranking, const Limits& limits, Statistics& statistics) {
  std::vector<double> ranks(statistics.players.size(), ranking.Start());
  for (Game& game : statistics.games) {
    ranking.Play(game, statistics.vocabulary.weapons, limits.gameLastPlaced, ranks);
    game.events = {};
  }
  for (std::size_t i = 0; i < ranks.size(); ++i) statistics.players[i].rating = ranks[i];
  statistics.customRanking = true;
}

void RankAll(const Limits& limits, Statistics& statistics) {
  for (Player& player : statistics.players) player.ranked = IsRanked(player, limits);
  const auto newIndex = RankPlayers(statistics.players, statistics.pairs);
  for (std::size_t i = 0; i < statistics.players.size(); ++i) {
    statistics.players[i].player = static_cast<std::uint32_t>(i);
    statistics.ranked += statistics.players[i].ranked ? 1 : 0;
  }
  for (Game& game : statistics.games) {
    for (Entrant& entrant : game.entrants) entrant.player = newIndex[entrant.player];
  }
  for (Map& map : statistics.maps) {
    for (Player& player : map.players) {
      player.player = newIndex[player.player];
      player.ranked = statistics.players[player.player].ranked;
    }
    RankPlayers(map.players, map.pairs);
  }
  if (!limits.limitOverallKillTables) return;
  std::erase_if(statistics.pairs, [&](const Pair& pair) {
    return !statistics.players[pair.killer].ranked || !statistics.players[pair.victim].ranked;
  });
}

/// Adds up the games of each map; the maps come out by name.
void AddMaps(const Limits& limits, Statistics& statistics) {
  std::unordered_map<std::string, std::size_t> byName;
  std::vector<Totals> totals;
  for (std::size_t i = 0; i < statistics.games.size(); ++i) {
    const Game& game = statistics.games[i];
    const std::string name = config::FoldCase(game.map);
    const auto [known, isNew] = byName.try_emplace(name, totals.size());
    if (isNew) {
      statistics.maps.emplace_back().name = name;
      totals.emplace_back(limits.gameLastPlaced);
    }
    Map& map = statistics.maps[known->second];
    map.title = game.map;
    map.games.push_back(static_cast<std::uint32_t>(i));
    totals[known->second].Add(game);
  }
  for (std::size_t i = 0; i < totals.size(); ++i) {
    Map& map = statistics.maps[i];
    totals[i].Finish(map.summary, map.players, map.pairs);
  }
  std::sort(statistics.maps.begin(), statistics.maps.end(),
            [](const Map& left, const Map& right) { return left.name < right.name; });
}

/// Adds up all games.
void AddTotals(const Limits& limits, Statistics& statistics) {
  Totals totals(limits.gameLastPlaced);
  for (const Game& game : statistics.games) totals.Add(game);
  totals.Finish(statistics.summary, statistics.players, statistics.pairs);
}

}  // namespace

bool IsCounted(const Game& game, const Limits& limits) {
  const auto reaches = [](std::size_t count, int limit) {
    return limit <= 0 || count >= static_cast<std::size_t>(limit);
  };
  return !game.warmup && (game.complete || !limits.gameComplete) &&
         reaches(game.entrants.size(), limits.minPlayers) && reaches(game.kills, limits.minKills) &&
         (!game.timed || reaches(game.length, limits.minTime));
}

bool IsRanked(const Player& player, const Limits& limits) {
  return player.figures.seconds >= std::int64_t{60} * limits.playersMinTime &&
         static_cast<std::int64_t>(player.games) >= limits.playersMinGames &&
         static_cast<std::int64_t>(player.figures.kills) >= limits.playersMinKills;
}

Statistics MakeStatistics(const Limits& limits, std::vector<Game> games, Vocabulary vocabulary,
                          Ranking* ranking) {
  Statistics statistics;
  statistics.gamesFound = static_cast<std::uint32_t>(games.size());
  statistics.vocabulary = std::move(vocabulary);
  statistics.limits = limits;
  std::erase_if(games, [&](const Game& game) { return !IsCounted(game, limits); });
  statistics.games = std::move(games);
  PlayerNumbers numbers;
  for (Game& game : statistics.games) {
    for (Entrant& entrant : game.entrants) entrant.player = numbers.Number(entrant.name);
  }
  // Maps and totals need the same games and nothing of each other.
  std::atomic<int> next = 0;
  platform::RunOnThreads(2, [&] {
    for (int task = next++; task < 2; task = next++) {
      task == 0 ? AddTotals(limits, statistics) : AddMaps(limits, statistics);
    }
  });
  if (ranking != nullptr) ApplyRanking(*ranking, limits, statistics);
  RankAll(limits, statistics);
  return statistics;
}

}  // namespace morvane
