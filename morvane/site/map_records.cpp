#include "morvane/site/map_records.h"

#include <algorithm>
#include <string>

#include "morvane/site/format.h"
#include "morvane/statistics/history.h"

namespace morvane {

const Player* OwnerOf(const Map& map) {
  const auto owner = std::ranges::max_element(map.players, {}, &Player::wins);
  return owner == map.players.end() || owner->wins == 0 ? nullptr : &*owner;
}

std::optional<Play> BestPlay(const Statistics& statistics, const Map& map) {
  std::int64_t best = 0;
  std::optional<Play> play;
  for (const std::uint32_t game : map.games) {
    const std::vector<Entrant>& entrants = statistics.games[game].entrants;
    for (std::uint32_t i = 0; i < entrants.size(); ++i) {
      if (entrants[i].figures.score <= best) continue;
      best = entrants[i].figures.score;
      play = {game, i};
    }
  }
  return play;
}

std::map<std::pair<int, int>, Played, std::greater<>> MonthsOf(const Statistics& statistics,
                                                               const Map& map) {
  std::map<std::pair<int, int>, Played, std::greater<>> months;
  for (const std::uint32_t index : map.games) {
    const Game& game = statistics.games[index];
    if (!HasDay(game)) continue;
    const WallClock clock = LocalTime(game.start);
    Played& played = months[{clock.year, clock.month}];
    ++played.games;
    played.seconds += game.timed ? game.length : 0;
  }
  return months;
}

std::string MonthText(const std::pair<int, int>& month) {
  return std::to_string(month.first) + (month.second < 10 ? "-0" : "-") +
         std::to_string(month.second);
}

}  // namespace morvane
