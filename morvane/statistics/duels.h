#pragma once

#include <cstdint>
#include <vector>

#include "morvane/statistics/statistics.h"

namespace morvane {

/// How often one killed another with a weapon, its splash included.
struct WeaponKills {
  std::uint32_t victim = 0;
  std::uint16_t weapon = 0;
  std::uint32_t kills = 0;  ///< frags
};

/// Who killed whom with what, over all games. Players are indices into Statistics::players.
class WeaponDuels {
 public:
  /// `splashOf`: see SplashOf. Game::events must be there.
  WeaponDuels(const Statistics& statistics, const std::vector<std::uint16_t>& splashOf);

  /// What a player killed whom with, by victim, then weapon.
  const std::vector<WeaponKills>& Of(std::uint32_t killer) const { return kills_[killer]; }

  /// One weapon between two players.
  struct Balance {
    std::uint16_t weapon = 0;
    std::uint32_t kills = 0;   ///< of the other by the one
    std::uint32_t deaths = 0;  ///< the other way
  };
  /// The weapons with which two killed each other, most kills of both first.
  std::vector<Balance> Between(std::uint32_t one, std::uint32_t other) const;

 private:
  std::vector<std::vector<WeaponKills>> kills_;  // by killer
};

}  // namespace morvane
