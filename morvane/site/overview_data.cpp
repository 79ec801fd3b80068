#include "morvane/site/overview_data.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

#include "morvane/site/evening.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/game_data.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

constexpr std::size_t kCards = 6;
constexpr std::size_t kPodium = 3;
constexpr std::size_t kMostBest = 5;
constexpr std::size_t kHours = 24;
constexpr std::uint32_t kLevels = 4;  // of the heat
constexpr std::array<const char*, 7> kWeekdays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                  "Friday", "Saturday", "Sunday"};

/// The best placed of a game.
Data Podium(const SiteFacts& facts, const Game& game, Demand demand) {
  const std::span best(game.entrants.data(), std::min(game.entrants.size(), kPodium));
  return Rows(best, demand, [&](Object& row, const Entrant& entrant) {
    SetLabel(row, facts.EntrantLabel(entrant));
    SetPlace(row, entrant);
    Set(row, "score", entrant.figures.score);
  });
}

using GamesByHour = std::array<std::uint32_t, kHours>;

Data HourCells(const GamesByHour& games, std::uint32_t most, Demand demand) {
  List cells(demand, games.size());
  for (std::size_t hour = 0; hour < games.size(); ++hour) {
    const std::uint32_t count = games[hour];
    Object cell(demand);
    SetOptional(cell, "count", count == 0 ? std::string() : std::to_string(count));
    Set(cell, "hour", hour);
    Set(cell, "heat", (count * kLevels + most - 1) / most);
    cells.Append(cell);
  }
  return cells.Done();
}

}  // namespace

Data EveningData(const SiteFacts& facts, Demand demand) {
  const std::vector<Game>& games = facts.statistics.games;
  if (games.empty()) return Data(false);
  const Evening evening = LastEveningOf(facts);
  Object object(demand);
  SetFlag(object, "by_date", facts.evening.byDate);
  SetTime(object, facts, kStartTime, facts.evening.byDate ? games[facts.evening.first].start : 0,
          games[facts.evening.first].dated);
  Set(object, "games_played", games.size() - facts.evening.first);
  Set(object, "player_count", evening.players.size());
  Set(object, "kills", Grouped(evening.kills));
  SetData(object, "best",
          [&](Demand asked) { return PlayerList(facts, evening.players, asked, 0, kMostBest); });
  SetFlag(object, "has_climbers", !evening.climbers.empty());
  SetRows(object, "climbers", evening.climbers, [&](Object& row, const Evening::Step& step) {
    SetLabel(row, facts.PlayerLabel(step.player));
    Set(row, "rank", facts.statistics.players[step.player].rank);
    Set(row, "places_up", step.places);
  });
  SetFlag(object, "has_newcomers", !evening.newcomers.empty());
  SetRows(object, "newcomers", evening.newcomers,
          [&](Object& row, std::uint32_t player) { SetLabel(row, facts.PlayerLabel(player)); });
  return object.Done();
}

Data GameCards(const SiteFacts& facts, Demand demand) {
  const std::size_t count = facts.statistics.games.size();
  const std::size_t shown = std::min(count, kCards);
  List list(demand, shown);
  for (std::size_t i = 1; i <= shown; ++i) {
    Object row = GameRow(facts, static_cast<std::uint32_t>(count - i), demand);
    SetData(row, "podium",
            [&](Demand asked) { return Podium(facts, facts.statistics.games[count - i], asked); });
    list.Append(row);
  }
  return list.Done();
}

Data ActivityRows(const SiteFacts& facts, Demand demand) {
  std::array<GamesByHour, kWeekdays.size()> games{};
  std::uint32_t most = 0;
  for (const Game& game : facts.statistics.games) {
    if (!HasDay(game)) continue;
    const WallClock clock = LocalTime(game.start);
    std::uint32_t& count =
        games[static_cast<std::size_t>(clock.weekday)][static_cast<std::size_t>(clock.hour)];
    most = std::max(most, ++count);
  }
  if (most == 0) return Data::EmptyList();
  List rows(demand, games.size());
  for (std::size_t day = 0; day < games.size(); ++day) {
    Object row(demand);
    Set(row, "day", std::string(kWeekdays[day]));
    SetData(row, "hours", [&](Demand asked) { return HourCells(games[day], most, asked); });
    rows.Append(row);
  }
  return rows.Done();
}

}  // namespace morvane
