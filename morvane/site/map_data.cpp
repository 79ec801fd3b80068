#include "morvane/site/map_data.h"

#include <algorithm>
#include <optional>

#include "morvane/site/figure_data.h"
#include "morvane/site/game_data.h"
#include "morvane/site/kill_table.h"
#include "morvane/site/map_records.h"

namespace morvane {
namespace {

constexpr std::size_t kMostGames = 100;

Object MapRow(const SiteFacts& facts, std::uint32_t index, const MostOfMaps& most, Demand demand) {
  const Map& map = facts.statistics.maps[index];
  Object row(demand);
  SetLabel(row, facts.MapLabel(index));
  Set(row, "games_played", map.summary.games);
  SetDuration(row, map.summary.seconds, map.summary.timedGames > 0);
  Set(row, "kills", map.summary.figures.kills);
  Set(row, "deaths", map.summary.figures.deaths);
  Set(row, "suicides", map.summary.figures.suicides);
  Set(row, "world_deaths", map.summary.figures.worldDeaths);
  Set(row, "player_count", map.players.size());
  for (const auto& [name, text] : BarsOf(map, most)) Set(row, name, text);
  SetOptional(row, "weapon", [&] { return FavouriteWeapon(facts, map.summary.figures.weapons); });
  SetOptional(
      row, "best_link",
      map.players.empty() ? std::string() : facts.PlayerLabel(map.players.front().player).link);
  SetOptional(
      row, "best_score",
      map.players.empty() ? std::string() : std::to_string(map.players.front().figures.score));
  SetTime(row, facts, kLastSeen, map.summary.seen.last, map.summary.seen.lastDated);
  return row;
}

Data MapTable(const SiteFacts& facts, const Map& map, Demand demand) {
  return KillTableData(
      facts.settings, map.players, map.pairs, demand,
      [&](const Player& player) -> const Label& { return facts.PlayerLabel(player.player); });
}

/// Who won most games on the map; a false flag where nobody did.
Data Owner(const SiteFacts& facts, const Map& map, Demand demand) {
  const Player* owner = OwnerOf(map);
  if (owner == nullptr) return Data(false);
  Object row(demand);
  SetLabel(row, facts.PlayerLabel(owner->player));
  Set(row, "wins", owner->wins);
  Set(row, "games_played", owner->games);
  return row.Done();
}

/// The highest score of a game on the map; a false flag where none is above 0.
Data BestGame(const SiteFacts& facts, const Map& map, Demand demand) {
  const std::optional<Play> best = BestPlay(facts.statistics, map);
  if (!best) return Data(false);
  const Entrant& entrant = facts.statistics.games[best->game].entrants[best->entrant];
  Object row = GameRow(facts, best->game, demand);
  Set(row, "player_link", facts.EntrantLabel(entrant).link);
  Set(row, "score", entrant.figures.score);
  return row.Done();
}

using MapMonths = decltype(MonthsOf({}, {}));

Data MonthRows(const MapMonths& months, Demand demand) {
  constexpr std::size_t kMostMonths = 24;
  std::uint32_t most = 0;
  for (const auto& [month, played] : months) most = std::max(most, played.games);
  List list(demand, std::min(months.size(), kMostMonths));
  std::size_t shown = 0;
  for (const auto& [month, played] : months) {
    if (shown++ == kMostMonths) break;
    Object row(demand);
    Set(row, "month", MonthText(month));
    Set(row, "games_played", played.games);
    SetDuration(row, played.seconds, played.seconds > 0);
    SetPercent(row, "games_percent", played.games, most);
    list.Append(row);
  }
  return list.Done();
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

Data MapList(const SiteFacts& facts, Demand demand) {
  const MostOfMaps most = MostOf(facts.statistics.maps);
  List list(demand, facts.statistics.maps.size());
  for (std::uint32_t i = 0; i < facts.statistics.maps.size(); ++i) {
    list.Append(MapRow(facts, i, most, demand));
  }
  return list.Done();
}

Object MapData(const SiteFacts& facts, std::uint32_t index, ListPages::Range players,
               Demand demand) {
  const Map& map = facts.statistics.maps[index];
  Object object = MapRow(facts, index, MostOf(facts.statistics.maps), demand);
  SetData(object, "summary", [&](Demand asked) { return SummaryData(facts, map.summary, asked); });
  SetFlag(object, "has_players", !map.players.empty());
  SetData(object, "players", [&](Demand asked) {
    return PlayerList(facts, map.players, asked, players.first, players.end);
  });
  SetUses(object, facts, map.summary.figures.weapons, map.summary.figures.itemCounts);
  SetData(object, "kill_table", [&](Demand asked) { return MapTable(facts, map, asked); });
  SetData(object, "owner", [&](Demand asked) { return Owner(facts, map, asked); });
  SetData(object, "best_game", [&](Demand asked) { return BestGame(facts, map, asked); });
  const MapMonths months = MonthsOf(facts.statistics, map);
  SetFlag(object, "has_months", !months.empty());
  SetData(object, "months", [&](Demand asked) { return MonthRows(months, asked); });
  SetData(object, "games",
          [&](Demand asked) { return LatestGames(facts, map.games, kMostGames, asked); });
  const std::size_t more = map.games.size() - std::min(map.games.size(), kMostGames);
  SetOptional(object, "more_games", more == 0 ? std::string() : std::to_string(more));
  return object;
}

}  // namespace morvane
