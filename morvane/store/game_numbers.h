#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_set>

#include "morvane/statistics/game.h"

namespace morvane {

/// Gives the games that count numbers of their own. Warm-ups, which never count, get none.
class GameNumbers {
 public:
  /// `last`: the highest number that was ever given.
  explicit GameNumbers(std::uint32_t last) : last_(last) {}

  /// Whether the game has got a new number: it had none, or that of a game before it, as one of
  /// two copies has that are no copies any more.
  bool Give(Game& game) {
    if (game.warmup) return false;
    const bool isOwn = game.number != 0 && taken_.insert(game.number).second;
    if (!isOwn) taken_.insert(game.number = ++last_);
    last_ = std::max(last_, game.number);
    return !isOwn;
  }

  std::uint32_t Last() const { return last_; }

 private:
  std::uint32_t last_;
  std::unordered_set<std::uint32_t> taken_;
};

}  // namespace morvane
