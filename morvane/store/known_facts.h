#pragma once

#include <cstdint>

#include "morvane/statistics/game.h"

namespace morvane {

/// What the database, or a log before it, knows of a game besides its lines.
struct KnownFacts {
  std::int64_t start = 0;
  Dated dated = Dated::kUnknown;
  std::uint32_t number = 0;

  bool operator==(const KnownFacts&) const = default;
};

inline KnownFacts KnownFactsOf(const Game& game) { return {game.start, game.dated, game.number}; }

/// A game that is read again keeps what is known of it. What was once reckoned stays, so that a log
/// that was copied or touched changes no date; only what the log itself tells stands above it. Of
/// two numbers the older one stays.
inline void KeepKnown(Game& game, const KnownFacts& known) {
  if (known.number != 0 && (game.number == 0 || known.number < game.number)) {
    game.number = known.number;
  }
  if (game.dated == Dated::kKnown || known.dated == Dated::kUnknown) return;
  game.start = known.start;
  game.dated = known.dated;
}

}  // namespace morvane
