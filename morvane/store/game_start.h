#pragma once

#include <cstdint>

#include "morvane/statistics/game.h"

namespace morvane {

/// When a game began, as the database or a log before it knows.
struct GameStart {
  std::int64_t seconds = 0;
  Dated dated = Dated::kUnknown;

  bool operator==(const GameStart&) const = default;
};

inline GameStart StartOf(const Game& game) { return {game.start, game.dated}; }

/// What was once reckoned stays, so that a log that was copied or touched changes no date; only
/// what the log itself tells stands above it.
inline void KeepStart(Game& game, const GameStart& known) {
  if (game.dated == Dated::kKnown || known.dated == Dated::kUnknown) return;
  game.start = known.seconds;
  game.dated = known.dated;
}

}  // namespace morvane
