#include "morvane/site/map_data.h"

#include <algorithm>
#include <map>
#include <utility>

#include "morvane/site/figure_data.h"
#include "morvane/site/game_data.h"
#include "morvane/site/kill_table.h"

namespace morvane {
namespace {

constexpr std::size_t kMostGames = 100;

Data MapRow(const SiteFacts& facts, std::uint32_t index, const MostOfMaps& most) {
  const Map& map = facts.statistics.maps[index];
  Data row;
  SetLabel(row, facts.MapLabel(index));
  Set(row, "games_played", map.summary.games);
  SetDuration(row, map.summary.seconds, map.summary.timedGames > 0);
  Set(row, "kills", map.summary.figures.kills);
  Set(row, "deaths", map.summary.figures.deaths);
  Set(row, "suicides", map.summary.figures.suicides);
  Set(row, "world_deaths", map.summary.figures.worldDeaths);
  Set(row, "player_count", map.players.size());
  for (const auto& [name, text] : BarsOf(map, most)) Set(row, name, text);
  SetOptional(row, "weapon", FavouriteWeapon(facts, map.summary.figures.weapons));
  SetOptional(
      row, "best_link",
      map.players.empty() ? std::string() : facts.PlayerLabel(map.players.front().player).link);
  SetTime(row, facts, "last_seen", map.summary.seen.last, map.summary.seen.lastDated);
  return row;
}

Data MapTable(const SiteFacts& facts, const Map& map) {
  return KillTableData(
      facts.settings, map.players, map.pairs,
      [&](const Player& player) -> const Label& { return facts.PlayerLabel(player.player); });
}

/// Who won most games on the map; a false flag where nobody did.
Data Owner(const SiteFacts& facts, const Map& map) {
  const auto owner = std::ranges::max_element(map.players, {}, &Player::wins);
  if (owner == map.players.end() || owner->wins == 0) return Data(false);
  Data row;
  SetLabel(row, facts.PlayerLabel(owner->player));
  Set(row, "wins", owner->wins);
  Set(row, "games_played", owner->games);
  return row;
}

/// The highest score of a game on the map; a false flag where none is above 0.
Data BestGame(const SiteFacts& facts, const Map& map) {
  std::int64_t best = 0;
  std::uint32_t bestGame = 0;
  const Entrant* who = nullptr;
  for (const std::uint32_t game : map.games) {
    for (const Entrant& entrant : facts.statistics.games[game].entrants) {
      if (entrant.figures.score <= best) continue;
      best = entrant.figures.score;
      bestGame = game;
      who = &entrant;
    }
  }
  if (who == nullptr) return Data(false);
  Data row = GameRow(facts, bestGame);
  Set(row, "player_link", facts.EntrantLabel(*who).link);
  Set(row, "score", best);
  return row;
}

/// How often and how long the map was played, month by month, the last one first; games whose day
/// is not known are left out.
Data Months(const SiteFacts& facts, const Map& map) {
  constexpr std::size_t kMostMonths = 24;
  struct Sum {
    std::uint32_t games = 0;
    std::int64_t seconds = 0;
  };
  std::map<std::pair<int, int>, Sum, std::greater<>> months;
  std::uint32_t most = 0;
  for (const std::uint32_t index : map.games) {
    const Game& game = facts.statistics.games[index];
    if (!HasDay(game)) continue;
    const WallClock clock = LocalTime(game.start);
    Sum& sum = months[{clock.year, clock.month}];
    most = std::max(most, ++sum.games);
    sum.seconds += game.timed ? game.length : 0;
  }
  Data list = List(std::min(months.size(), kMostMonths));
  for (const auto& [month, sum] : months) {
    if (list.list_value().size() == kMostMonths) break;
    Data row;
    Set(row, "month",
        std::to_string(month.first) + (month.second < 10 ? "-0" : "-") +
            std::to_string(month.second));
    Set(row, "games_played", sum.games);
    SetDuration(row, sum.seconds, sum.seconds > 0);
    SetPercent(row, "games_percent", sum.games, most);
    Append(list, std::move(row));
  }
  return list;
}

}  // namespace

MostOfMaps MostOf(const std::vector<Map>& maps) {
  MostOfMaps most;
  for (const Map& map : maps) {
    most.games = std::max(most.games, map.summary.games);
    most.kills = std::max(most.kills, map.summary.figures.kills);
  }
  return most;
}

std::array<Bar, 2> BarsOf(const Map& map, const MostOfMaps& most) {
  return {Bar{"games_percent", ShareText(map.summary.games, most.games)},
          Bar{"kills_percent", ShareText(static_cast<double>(map.summary.figures.kills),
                                         static_cast<double>(most.kills))}};
}

Data MapList(const SiteFacts& facts) {
  const MostOfMaps most = MostOf(facts.statistics.maps);
  Data list = List(facts.statistics.maps.size());
  for (std::uint32_t i = 0; i < facts.statistics.maps.size(); ++i) {
    Append(list, MapRow(facts, i, most));
  }
  return list;
}

Data MapData(const SiteFacts& facts, std::uint32_t index) {
  const Map& map = facts.statistics.maps[index];
  Data object = MapRow(facts, index, MostOf(facts.statistics.maps));
  SetData(object, "summary", SummaryData(facts, map.summary));
  SetFlag(object, "has_players", !map.players.empty());
  SetUses(object, facts, map.summary.figures.weapons, map.summary.figures.itemCounts);
  SetData(object, "kill_table", MapTable(facts, map));
  SetData(object, "owner", Owner(facts, map));
  SetData(object, "best_game", BestGame(facts, map));
  Data months = Months(facts, map);
  SetFlag(object, "has_months", months.is_non_empty_list());
  SetData(object, "months", std::move(months));
  SetData(object, "games", LatestGames(facts, map.games, kMostGames));
  const std::size_t more = map.games.size() - std::min(map.games.size(), kMostGames);
  SetOptional(object, "more_games", more == 0 ? std::string() : std::to_string(more));
  return object;
}

}  // namespace morvane
