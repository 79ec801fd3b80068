#include "morvane/statistics/statistics.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"
#include "morvane/statistics/player_names.h"
#include "morvane/statistics/ranking.h"
#include "morvane/statistics/sorting.h"
#include "platform/threads.h"
#include "text/text.h"

namespace morvane {
namespace {

/// Numbers for names that are the same player's.
class PlayerNumbers {
 public:
  explicit PlayerNumbers(const PlayerNames& names) : names_(names) {}

  /// Sets the players of a game's entrants: for each not seen before the next new number.
  void Number(Game& game) {
    ++game_;
    for (Entrant& entrant : game.entrants) {
      const Known& known = Find(entrant.name);
      entrant.player = known.player;
      entrant.joined = known.joined;
      const std::size_t index = static_cast<std::size_t>(&entrant - game.entrants.data());
      Standing& standing = standings_[entrant.player];
      entrant.standsForPlayer = standing.game != game_;
      if (entrant.standsForPlayer) standing = {game_, index};
    }
    const bool opposed = std::any_of(
        game.entrants.begin(), game.entrants.end(),
        [&](const Entrant& entrant) { return entrant.player != game.entrants.front().player; });
    for (Entrant& entrant : game.entrants) {
      entrant.winner = entrant.winner && opposed;
      if (entrant.winner) game.entrants[standings_[entrant.player].entrant].playerWon = true;
    }
  }

  /// The names that joined players bear, by number; empty for the others.
  const std::vector<std::string>& Given() const { return given_; }
  /// Whether a player is left out, by number.
  const std::vector<bool>& LeftOut() const { return leftOut_; }

 private:
  struct Known {
    std::uint32_t player = kNobody;
    bool joined = false;
  };
  /// The entrant that stands for a player in the last game he was in.
  struct Standing {
    std::size_t game = 0;
    std::size_t entrant = 0;
  };

  const Known& Find(const std::string& name) {
    const auto [known, isNew] = byName_.try_emplace(name);
    if (!isNew) return known->second;
    std::string key = PlayerKey(name);
    const std::string* const given = names_.JoinedTo(key);
    if (given != nullptr) key = PlayerKey(*given);
    const auto next = static_cast<std::uint32_t>(byKey_.size());
    const auto [player, isNewPlayer] = byKey_.try_emplace(key, next);
    if (isNewPlayer) {
      standings_.emplace_back();
      given_.emplace_back();
      leftOut_.push_back(names_.IsLeftOut(key));
    }
    if (given != nullptr) given_[player->second] = *given;
    known->second = {player->second, given != nullptr};
    return known->second;
  }

  const PlayerNames& names_;
  std::unordered_map<std::string, Known> byName_;  // spares most keys
  std::unordered_map<std::string, std::uint32_t> byKey_;
  std::vector<Standing> standings_;
  std::vector<std::string> given_;
  std::vector<bool> leftOut_;
  std::size_t game_ = 0;
};

/// Takes entrants out of a game: `newIndex` gives the new index of each, kNobody for those.
void TakeOut(Game& game, const std::vector<std::uint32_t>& newIndex) {
  std::erase_if(game.pairs, [&](const Pair& pair) {
    return newIndex[pair.killer] == kNobody || newIndex[pair.victim] == kNobody;
  });
  RenumberPairs(game.pairs, newIndex);
  std::erase_if(game.events, [&](const KillEvent& event) {
    return newIndex[event.victim] == kNobody ||
           (event.killer != KillEvent::kWorld && newIndex[event.killer] == kNobody);
  });
  for (KillEvent& event : game.events) {
    event.victim = static_cast<std::uint16_t>(newIndex[event.victim]);
    if (event.killer == KillEvent::kWorld) continue;
    event.killer = static_cast<std::uint16_t>(newIndex[event.killer]);
  }
  for (LeadChange& change : game.lead) {
    if (game.teams || change.leader == kNobody) continue;
    const std::uint32_t leader = newIndex[change.leader];
    change.leader = leader == kNobody ? kLeftOut : leader;
  }
  std::size_t old = 0;
  std::erase_if(game.entrants, [&](const Entrant&) { return newIndex[old++] == kNobody; });
  game.kills = game.frags = 0;
  for (Entrant& entrant : game.entrants) {
    entrant.figures.nemesis = entrant.figures.favouriteVictim = {};
    game.kills += static_cast<std::uint32_t>(entrant.figures.deaths);
    game.frags += static_cast<std::uint32_t>(entrant.figures.kills);
  }
  SettleRivals(game.pairs, [&](std::uint32_t i) -> Figures& { return game.entrants[i].figures; });
}

/// Takes players out of all games. The numbers of the others close up; the result is the new
/// number of each, kNobody for those left out.
std::vector<std::uint32_t> LeaveOut(std::vector<Game>& games, const std::vector<bool>& leftOut) {
  std::vector<std::uint32_t> numbers(leftOut.size(), kNobody);
  std::uint32_t next = 0;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (!leftOut[i]) numbers[i] = next++;
  }
  if (next == numbers.size()) return numbers;
  std::vector<std::uint32_t> newIndex;
  for (Game& game : games) {
    newIndex.clear();
    std::uint32_t entrants = 0;
    for (Entrant& entrant : game.entrants) {
      entrant.player = numbers[entrant.player];
      newIndex.push_back(entrant.player == kNobody ? kNobody : entrants++);
    }
    if (entrants < game.entrants.size()) TakeOut(game, newIndex);
  }
  return numbers;
}

/// What belongs to players, by number, without those left out.
template <class Value>
std::vector<Value> Kept(std::vector<Value> values, const std::vector<std::uint32_t>& newNumbers) {
  std::size_t old = 0;
  std::erase_if(values, [&](const Value&) { return newNumbers[old++] == kNobody; });
  return values;
}

/// Games come in the order of play.
void AddTime(Seen& seen, const Game& game) {
  if (game.dated == Dated::kUnknown) return;
  if (seen.first == 0 || game.start < seen.first) {
    seen.first = game.start;
    // A game before this one that may have been earlier was so.
    if (seen.firstDated != Dated::kNotAfter) seen.firstDated = game.dated;
  }
  const std::int64_t end = game.start + game.length;
  if (end <= seen.last) return;
  seen.last = end;
  seen.lastDated = game.dated;
}

/// One entrant more of a game to a player's figures; of several with the player's name one alone
/// stands for the game, the place and the win.
void AddEntrant(Player& player, const Game& game, const Entrant& entrant, int lastPlaced) {
  player.bot = entrant.bot && (player.bot || player.games == 0);
  if (!entrant.joined) player.name = entrant.name;
  AddFigures(player.figures, entrant.figures);
  if (game.timed) {
    AddCounts(player.timed, entrant.figures);
    player.timed.games += entrant.standsForPlayer ? 1 : 0;
  }
  AddTime(player.seen, game);
  if (!entrant.standsForPlayer) return;
  ++player.games;
  player.wins += entrant.playerWon ? 1 : 0;
  player.placed += static_cast<int>(entrant.place) <= lastPlaced ? 1 : 0;
  if (player.placings.size() < entrant.place) player.placings.resize(entrant.place);
  ++player.placings[entrant.place - 1];
}

/// Adds up games of one kind into a list of players and the kills among them.
class Totals {
 public:
  /// `given`: the names of the players that bear another than in the logs, by number. `indices`:
  /// room for the players' indices, kNobody all of it before and after.
  Totals(int lastPlaced, const std::vector<std::string>& given, std::vector<std::uint32_t>& indices)
      : lastPlaced_(lastPlaced), given_(given), indices_(indices) {
    indices_.resize(given.size(), kNobody);
  }

  void Add(const Game& game) {
    ++summary_.games;
    if (game.timed) {
      ++summary_.timedGames;
      summary_.seconds += game.length;
    }
    AddTime(summary_.seen, game);
    seats_.clear();
    for (const Entrant& entrant : game.entrants) {
      const std::uint32_t index = IndexOf(entrant.player);
      seats_.push_back(index);
      AddEntrant(players_[index], game, entrant, lastPlaced_);
    }
    for (const Pair& pair : game.pairs) {
      pairs_.Add({seats_[pair.killer], seats_[pair.victim], pair.kills, pair.teamKills});
    }
  }

  /// Hands out the players, in the order in which they came, and the pairs, everything settled but
  /// ranks and order.
  void Finish(Summary& summary, std::vector<Player>& players, std::vector<Pair>& pairs) {
    pairs = pairs_.Take();
    for (Player& player : players_) {
      indices_[player.player] = kNobody;
      AddFigures(summary_.figures, player.figures);
      SettleFigures(player.figures);
      player.plain = NameText(player.name);
      player.rating = static_cast<double>(player.figures.score);
    }
    SettleFigures(summary_.figures);
    SettleRivals(pairs, [this](std::uint32_t i) -> Figures& { return players_[i].figures; });
    summary = std::move(summary_);
    players = std::move(players_);
  }

 private:
  std::uint32_t IndexOf(std::uint32_t player) {
    std::uint32_t& index = indices_[player];
    if (index == kNobody) {
      index = static_cast<std::uint32_t>(players_.size());
      players_.emplace_back().player = player;
      players_.back().name = given_[player];
    }
    return index;
  }

  int lastPlaced_;
  const std::vector<std::string>& given_;
  Summary summary_;
  std::vector<Player> players_;
  PairCounts pairs_;
  std::vector<std::uint32_t>& indices_;  // by the player's number; kNobody: not come yet
  std::vector<std::uint32_t> seats_;     // of the entrants of the game being added
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
  std::vector<std::uint32_t> newIndex = SortAndNumber(players, IsAhead);
  for (std::size_t i = 0; i < players.size(); ++i) {
    Player& player = players[i];
    MoveRival(player.figures.nemesis, newIndex);
    MoveRival(player.figures.favouriteVictim, newIndex);
    if (!player.ranked) continue;
    const bool shared = i > 0 && players[i - 1].rating == player.rating;
    player.rank = shared ? players[i - 1].rank : static_cast<std::uint32_t>(i + 1);
  }
  RenumberPairs(pairs, newIndex);
  return newIndex;
}

/// Plays the games over, under the user's rules where there are any, and sets the rating of each
/// entrant after each; the ratings of all players at the end.
std::vector<double> PlayRatings(Ranking* ranking, std::size_t players, Statistics& statistics) {
  std::vector<double> ratings(players, ranking == nullptr ? 0 : ranking->Start());
  for (Game& game : statistics.games) {
    if (ranking != nullptr) {
      ranking->Play(game, statistics.vocabulary.weapons, statistics.limits.gameLastPlaced, ratings);
    } else {
      for (const Entrant& entrant : game.entrants) {
        ratings[entrant.player] += static_cast<double>(entrant.figures.score);
      }
    }
    for (Entrant& entrant : game.entrants) entrant.rating = ratings[entrant.player];
  }
  return ratings;
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
  platform::ForEachOnThreads(statistics.maps.size(), 0, [&](std::size_t i) {
    Map& map = statistics.maps[i];
    for (Player& player : map.players) {
      player.player = newIndex[player.player];
      player.ranked = statistics.players[player.player].ranked;
    }
    RankPlayers(map.players, map.pairs);
  });
}

/// Adds up the games of each map; the maps come out by name.
void AddMaps(const std::vector<std::string>& given, Statistics& statistics) {
  std::unordered_map<std::string, std::size_t> byName;
  for (std::size_t i = 0; i < statistics.games.size(); ++i) {
    const Game& game = statistics.games[i];
    const std::string name = text::FoldCase(game.map);
    const auto [known, isNew] = byName.try_emplace(name, statistics.maps.size());
    if (isNew) statistics.maps.emplace_back().name = name;
    Map& map = statistics.maps[known->second];
    map.title = game.map;
    map.games.push_back(static_cast<std::uint32_t>(i));
  }
  // One map after the other: what adding up takes is had once.
  std::vector<std::uint32_t> indices;
  for (Map& map : statistics.maps) {
    Totals totals(statistics.limits.gameLastPlaced, given, indices);
    for (const std::uint32_t game : map.games) totals.Add(statistics.games[game]);
    totals.Finish(map.summary, map.players, map.pairs);
  }
  std::sort(statistics.maps.begin(), statistics.maps.end(),
            [](const Map& left, const Map& right) { return left.name < right.name; });
}

/// Adds up all games.
void AddTotals(const std::vector<std::string>& given, Statistics& statistics) {
  std::vector<std::uint32_t> indices;
  Totals totals(statistics.limits.gameLastPlaced, given, indices);
  for (const Game& game : statistics.games) totals.Add(game);
  totals.Finish(statistics.summary, statistics.players, statistics.pairs);
}

}  // namespace

bool IsCounted(const Game& game, const Limits& limits) {
  const auto reaches = [](std::size_t count, int limit) {
    return limit <= 0 || count >= static_cast<std::size_t>(limit);
  };
  return !game.warmup && (game.complete || !limits.gameComplete) &&
         reaches(game.entrants.size(), limits.minPlayers) && reaches(game.frags, limits.minKills) &&
         (!game.timed || reaches(game.length, limits.minTime));
}

std::vector<Player> PlayersSince(const Statistics& statistics, std::uint32_t first) {
  std::vector<std::string> names;
  std::vector<double> before(statistics.players.size(), std::nan(""));
  std::vector<double> gained(statistics.players.size());
  for (const Player& player : statistics.players) names.push_back(player.name);
  std::vector<std::uint32_t> indices;
  Totals totals(statistics.limits.gameLastPlaced, names, indices);
  for (std::uint32_t i = 0; i < statistics.games.size(); ++i) {
    if (i >= first) totals.Add(statistics.games[i]);
    for (const Entrant& entrant : statistics.games[i].entrants) {
      double& rating = i < first ? before[entrant.player] : gained[entrant.player];
      rating = entrant.rating;
    }
  }
  Summary summary;
  std::vector<Player> players;
  std::vector<Pair> pairs;
  totals.Finish(summary, players, pairs);
  for (Player& player : players) {
    player.ranked = statistics.players[player.player].ranked;
    if (!statistics.customRanking) continue;
    const double start = before[player.player];
    player.rating = gained[player.player] - (std::isnan(start) ? statistics.startRating : start);
  }
  RankPlayers(players, pairs);
  return players;
}

bool IsRanked(const Player& player, const Limits& limits) {
  // No limit applies to a time that is not known.
  const bool isTimed = player.timed.games == player.games;
  return (!isTimed || player.figures.seconds >= std::int64_t{60} * limits.playersMinTime) &&
         static_cast<std::int64_t>(player.games) >= limits.playersMinGames &&
         static_cast<std::int64_t>(player.figures.kills) >= limits.playersMinKills;
}

Statistics MakeStatistics(const Limits& limits, std::vector<Game> games, Vocabulary vocabulary,
                          const PlayerNames& names, Ranking* ranking) {
  Statistics statistics;
  statistics.gamesFound = static_cast<std::uint32_t>(games.size());
  statistics.vocabulary = std::move(vocabulary);
  statistics.limits = limits;
  std::erase_if(games, [&](const Game& game) { return !IsCounted(game, limits); });
  statistics.games = std::move(games);
  PlayerNumbers numbers(names);
  for (Game& game : statistics.games) numbers.Number(game);
  std::vector<double> ratings = PlayRatings(ranking, numbers.LeftOut().size(), statistics);
  const auto newNumbers = LeaveOut(statistics.games, numbers.LeftOut());
  const std::vector<std::string> given = Kept(numbers.Given(), newNumbers);
  // Maps and totals need the same games and nothing of each other. Few are added up sooner than a
  // thread starts.
  const std::size_t threads = statistics.games.size() < 32 ? 1 : 2;
  platform::ForEachOnThreads(2, threads, [&](std::size_t task) {
    task == 0 ? AddTotals(given, statistics) : AddMaps(given, statistics);
  });
  ratings = Kept(std::move(ratings), newNumbers);
  for (std::size_t i = 0; i < ratings.size(); ++i) statistics.players[i].rating = ratings[i];
  statistics.customRanking = ranking != nullptr;
  statistics.startRating = ranking == nullptr ? 0 : ranking->Start();
  RankAll(limits, statistics);
  return statistics;
}

}  // namespace morvane
