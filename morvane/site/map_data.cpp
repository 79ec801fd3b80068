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
  SetOptional(
      row, "best_score",
      map.players.empty() ? std::string() : std::to_string(map.players.front().figures.score));
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
  const Player* owner = OwnerOf(map);
  if (owner == nullptr) return Data(false);
  Data row;
  SetLabel(row, facts.PlayerLabel(owner->player));
  Set(row, "wins", owner->wins);
  Set(row, "games_played", owner->games);
  return row;
}

/// The highest score of a game on the map; a false flag where none is above 0.
Data BestGame(const SiteFacts& facts, const Map& map) {
  const std::optional<Play> best = BestPlay(facts.statistics, map);
  if (!best) return Data(false);
  const Entrant& entrant = facts.statistics.games[best->game].entrants[best->entrant];
  Data row = GameRow(facts, best->game);
  Set(row, "player_link", facts.EntrantLabel(entrant).link);
  Set(row, "score", entrant.figures.score);
  return row;
}

Data Months(const SiteFacts& facts, const Map& map) {
  constexpr std::size_t kMostMonths = 24;
  const auto months = MonthsOf(facts.statistics, map);
  std::uint32_t most = 0;
  for (const auto& [month, played] : months) most = std::max(most, played.games);
  Data list = List(std::min(months.size(), kMostMonths));
  for (const auto& [month, played] : months) {
    if (list.list_value().size() == kMostMonths) break;
    Data row;
    Set(row, "month", MonthText(month));
    Set(row, "games_played", played.games);
    SetDuration(row, played.seconds, played.seconds > 0);
    SetPercent(row, "games_percent", played.games, most);
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
