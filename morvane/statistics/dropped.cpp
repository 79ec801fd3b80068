#include "morvane/statistics/dropped.h"

#include <algorithm>
#include <string>
#include <utility>

namespace morvane {
namespace {

/// One limit of the settings, and no other.
struct OneLimit {
  std::string name;
  Limits limits;
};

OneLimit Only(const std::string& name, int Limits::*limit, const Limits& limits) {
  OneLimit one{name + "=" + std::to_string(limits.*limit), {}};
  one.limits.*limit = limits.*limit;
  return one;
}

std::vector<OneLimit> LimitsOfGames(const Limits& limits) {
  OneLimit complete{"game_complete", {}};
  complete.limits.gameComplete = limits.gameComplete;
  return {{"warm-up", {}},
          Only("min_players", &Limits::minPlayers, limits),
          Only("min_time", &Limits::minTime, limits),
          Only("min_kills", &Limits::minKills, limits),
          std::move(complete)};
}

std::vector<OneLimit> LimitsOfPlayers(const Limits& limits) {
  return {Only("players_min_time", &Limits::playersMinTime, limits),
          Only("players_min_games", &Limits::playersMinGames, limits),
          Only("players_min_kills", &Limits::playersMinKills, limits)};
}

/// `reaches(item, limits)`: whether an item is not left out. `one`, `many`: of what is told.
template <class Item, class Reaches>
void Tell(const std::vector<Item>& items, const std::vector<OneLimit>& limits,
          const Reaches& reaches, const std::string& one, const std::string& many, Report& report) {
  std::vector<std::size_t> counts(limits.size());
  for (const Item& item : items) {
    const auto missed = std::find_if(limits.begin(), limits.end(), [&](const OneLimit& limit) {
      return !reaches(item, limit.limits);
    });
    if (missed != limits.end()) ++counts[static_cast<std::size_t>(missed - limits.begin())];
  }
  for (std::size_t i = 0; i < limits.size(); ++i) {
    if (counts[i] == 0) continue;
    report.Normal(Log::kMain, limits[i].name + ": " + std::to_string(counts[i]) + " " +
                                  (counts[i] == 1 ? one : many));
  }
}

}  // namespace

void TellDroppedGames(const std::vector<Game>& games, const Limits& limits, Report& report) {
  Tell(games, LimitsOfGames(limits), IsCounted, "game is not counted", "games are not counted",
       report);
}

void TellDroppedPlayers(const std::vector<Player>& players, const Limits& limits, Report& report) {
  Tell(players, LimitsOfPlayers(limits), IsRanked, "player is not ranked", "players are not ranked",
       report);
}

}  // namespace morvane
