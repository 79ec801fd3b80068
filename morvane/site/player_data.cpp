#include "morvane/site/player_data.h"

#include <algorithm>
#include <map>
#include <string>

#include "morvane/site/career_data.h"
#include "morvane/site/duel_data.h"

namespace morvane {
namespace {

constexpr std::size_t kMostGames = 100;
constexpr std::size_t kMostOpponents = 200;
// So many have rows of their weapons: a page of hundreds would be too heavy for a phone.
constexpr std::size_t kMostWithWeapons = 50;

struct Opponent {
  std::uint32_t player = kNobody;
  std::uint32_t kills = 0;   // of them by the player
  std::uint32_t deaths = 0;  // by them
  std::uint32_t Meetings() const { return kills + deaths; }
};

/// The pairs in which the player is the killer stand together.
auto KillPairs(const SiteFacts& facts, std::uint32_t player) {
  const std::vector<Pair>& pairs = facts.statistics.pairs;
  return std::equal_range(
      pairs.begin(), pairs.end(), Pair{player, 0, 0, 0},
      [](const Pair& left, const Pair& right) { return left.killer < right.killer; });
}

/// Whom the player met most often comes first; of equal ones the names decide, so that the games
/// of others do not change the order.
std::vector<Opponent> Opponents(const SiteFacts& facts, std::uint32_t player) {
  std::map<std::uint32_t, Opponent> byPlayer;
  const auto [first, last] = KillPairs(facts, player);
  for (auto pair = first; pair != last; ++pair) byPlayer[pair->victim].kills += pair->kills;
  for (const std::uint32_t index : facts.DeathPairs(player)) {
    const Pair& pair = facts.statistics.pairs[index];
    byPlayer[pair.killer].deaths += pair.kills;
  }
  std::vector<Opponent> opponents;
  for (auto& [other, opponent] : byPlayer) {
    opponent.player = other;
    if (opponent.Meetings() > 0) opponents.push_back(opponent);
  }
  std::sort(opponents.begin(), opponents.end(), [&](const Opponent& a, const Opponent& b) {
    if (a.Meetings() != b.Meetings()) return a.Meetings() > b.Meetings();
    return facts.statistics.players[a.player].plain < facts.statistics.players[b.player].plain;
  });
  return opponents;
}

Data OpponentRows(const SiteFacts& facts, std::uint32_t player,
                  const std::vector<Opponent>& opponents, std::size_t shown, Demand demand) {
  List list(demand, shown);
  for (std::size_t i = 0; i < shown; ++i) {
    const Opponent& opponent = opponents[i];
    Object row(demand);
    SetLabel(row, facts.PlayerLabel(opponent.player));
    Set(row, "kills", opponent.kills);
    Set(row, "deaths", opponent.deaths);
    Set(row, "net", std::int64_t{opponent.kills} - opponent.deaths);
    SetPercent(row, "efficiency", opponent.kills, opponent.Meetings());
    SetFlag(row, "has_duel_weapons", i < kMostWithWeapons);
    SetData(row, "duel_weapons", [&](Demand asked) {
      return i < kMostWithWeapons ? WeaponsBetween(facts, player, opponent.player, asked)
                                  : Data::EmptyList();
    });
    list.Append(row);
  }
  return list.Done();
}

/// Sets `opponents` and how many more there are.
void SetOpponents(Object& object, const SiteFacts& facts, std::uint32_t player) {
  const std::vector<Opponent> opponents = Opponents(facts, player);
  const std::size_t shown = std::min(opponents.size(), kMostOpponents);
  SetFlag(object, "has_opponents", shown > 0);
  SetData(object, "opponents",
          [&](Demand demand) { return OpponentRows(facts, player, opponents, shown, demand); });
  const std::size_t more = opponents.size() - shown;
  SetOptional(object, "more_opponents", more == 0 ? std::string() : std::to_string(more));
}

Data MapsPlayed(const SiteFacts& facts, std::uint32_t player, Demand demand) {
  return Rows(facts.Maps(player), demand, [&](Object& row, const auto& played) {
    const Map& map = facts.statistics.maps[played.first];
    const Player& there = map.players[played.second];
    SetLabel(row, facts.MapLabel(played.first));
    SetOptional(row, "rank", there.ranked ? std::to_string(there.rank) : std::string());
    Set(row, "games_played", there.games);
    Set(row, "wins", there.wins);
    Set(row, "kills", there.figures.kills);
    Set(row, "deaths", there.figures.deaths);
    Set(row, "suicides", there.figures.suicides);
    Set(row, "score", there.figures.score);
    SetDecimal(row, "ratio", Ratio(there.figures));
    SetDuration(row, there.figures.seconds, there.timed.games > 0);
  });
}

Data GamesPlayed(const SiteFacts& facts, const std::vector<SiteFacts::Appearance>& games,
                 std::size_t shown, Demand demand) {
  List list(demand, shown);
  for (std::size_t i = 0; i < shown; ++i) {
    list.Append(GamePlayed(facts, games[games.size() - 1 - i], demand));
  }
  return list.Done();
}

}  // namespace

Data PlayerData(const SiteFacts& facts, std::uint32_t index, const Highest& highest,
                Demand demand) {
  const Player& player = facts.statistics.players[index];
  Object object = PlayerRow(facts, player, facts.statistics.players, highest, demand);
  SetUses(object, facts, player.figures.weapons, player.figures.itemCounts);
  SetCareer(object, facts, index);
  SetOpponents(object, facts, index);
  SetData(object, "maps", [&](Demand asked) { return MapsPlayed(facts, index, asked); });
  const std::vector<SiteFacts::Appearance>& games = facts.Games(index);
  const std::size_t shown = std::min(games.size(), kMostGames);
  SetData(object, "games", [&](Demand asked) { return GamesPlayed(facts, games, shown, asked); });
  SetOptional(object, "more_games",
              games.size() == shown ? std::string() : std::to_string(games.size() - shown));
  return object.Done();
}

}  // namespace morvane
