#include "morvane/log/game_times.h"

#include <cstddef>

namespace morvane {

void SetStarts(ParsedLog& log, std::int64_t lastChange) {
  struct {
    GameTime at;
    Dated dated;
  } anchor = {{log.clock, lastChange, log.runs}, Dated::kReckoned};
  const auto start = [&](const GameTime& time) {
    return anchor.at.date - (anchor.at.clock - time.clock) / 10;
  };
  for (std::size_t i = log.games.size(); i-- > 0;) {
    Game& game = log.games[i];
    const GameTime& time = log.times[i];
    if (time.date != 0) anchor = {time, Dated::kKnown};
    if (time.date == 0 && !game.timed) continue;
    game.start = start(time);
    game.dated = time.run == anchor.at.run ? anchor.dated : Dated::kNotAfter;
  }
  anchor.dated = Dated::kUnknown;
  for (std::size_t i = 0; i < log.games.size(); ++i) {
    Game& game = log.games[i];
    const GameTime& time = log.times[i];
    if (time.date != 0) anchor = {time, Dated::kKnown};
    if (!game.timed || anchor.dated != Dated::kKnown || time.run != anchor.at.run) continue;
    game.start = start(time);
    game.dated = Dated::kKnown;
  }
}

}  // namespace morvane
