#include "morvane/site/overview_data.h"

#include <algorithm>
#include <array>
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
constexpr int kHours = 24;
constexpr std::uint32_t kLevels = 4;  // of the heat
constexpr std::array<const char*, 7> kWeekdays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                  "Friday", "Saturday", "Sunday"};

/// The best placed of a game.
Data Podium(const SiteFacts& facts, const Game& game) {
  const std::size_t shown = std::min(game.entrants.size(), kPodium);
  Data list = List(shown);
  for (std::size_t i = 0; i < shown; ++i) {
    Data row;
    SetLabel(row, facts.EntrantLabel(game.entrants[i]));
    SetPlace(row, game.entrants[i]);
    Set(row, "score", game.entrants[i].figures.score);
    Append(list, std::move(row));
  }
  return list;
}

Data Climbers(const SiteFacts& facts, const Evening& evening) {
  Data list = List(evening.climbers.size());
  for (const Evening::Step& step : evening.climbers) {
    Data row;
    SetLabel(row, facts.PlayerLabel(step.player));
    Set(row, "rank", facts.statistics.players[step.player].rank);
    Set(row, "places_up", step.places);
    Append(list, std::move(row));
  }
  return list;
}

Data Newcomers(const SiteFacts& facts, const Evening& evening) {
  Data list = List(evening.newcomers.size());
  for (const std::uint32_t player : evening.newcomers) {
    Data row;
    SetLabel(row, facts.PlayerLabel(player));
    Append(list, std::move(row));
  }
  return list;
}

}  // namespace

Data EveningData(const SiteFacts& facts) {
  const std::vector<Game>& games = facts.statistics.games;
  if (games.empty()) return Data(false);
  const Evening evening = LastEveningOf(facts);
  Data object;
  SetFlag(object, "by_date", facts.evening.byDate);
  SetTime(object, facts, "start", facts.evening.byDate ? games[facts.evening.first].start : 0,
          games[facts.evening.first].dated);
  Set(object, "games_played", games.size() - facts.evening.first);
  Set(object, "player_count", evening.players.size());
  Set(object, "kills", Grouped(evening.kills));
  Data climbers = Climbers(facts, evening);
  Data newcomers = Newcomers(facts, evening);
  SetData(object, "best",
          PlayerList(facts, evening.players, 0, std::min(evening.players.size(), kMostBest)));
  SetFlag(object, "has_climbers", climbers.is_non_empty_list());
  SetData(object, "climbers", std::move(climbers));
  SetFlag(object, "has_newcomers", newcomers.is_non_empty_list());
  SetData(object, "newcomers", std::move(newcomers));
  return object;
}

Data GameCards(const SiteFacts& facts) {
  const std::size_t count = facts.statistics.games.size();
  const std::size_t shown = std::min(count, kCards);
  Data list = List(shown);
  for (std::size_t i = 1; i <= shown; ++i) {
    Data row = GameRow(facts, static_cast<std::uint32_t>(count - i));
    SetData(row, "podium", Podium(facts, facts.statistics.games[count - i]));
    Append(list, std::move(row));
  }
  return list;
}

Data ActivityRows(const SiteFacts& facts) {
  std::array<std::array<std::uint32_t, kHours>, kWeekdays.size()> games{};
  std::uint32_t most = 0;
  for (const Game& game : facts.statistics.games) {
    if (!HasDay(game)) continue;
    const WallClock clock = LocalTime(game.start);
    std::uint32_t& count =
        games[static_cast<std::size_t>(clock.weekday)][static_cast<std::size_t>(clock.hour)];
    most = std::max(most, ++count);
  }
  if (most == 0) return List(0);
  Data rows = List(games.size());
  for (std::size_t day = 0; day < games.size(); ++day) {
    Data cells = List(kHours);
    for (std::size_t hour = 0; hour < kHours; ++hour) {
      const std::uint32_t count = games[day][hour];
      Data cell;
      SetOptional(cell, "count", count == 0 ? std::string() : std::to_string(count));
      Set(cell, "hour", hour);
      Set(cell, "heat", (count * kLevels + most - 1) / most);
      Append(cells, std::move(cell));
    }
    Data row;
    Set(row, "day", std::string(kWeekdays[day]));
    SetData(row, "hours", std::move(cells));
    Append(rows, std::move(row));
  }
  return rows;
}

}  // namespace morvane
