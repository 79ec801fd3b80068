#include "morvane/statistics/duels.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace morvane {
namespace {

/// Sorts kills by victim and weapon and makes those of the same two one.
void Join(std::vector<WeaponKills>& list) {
  const auto key = [](const WeaponKills& kills) { return std::tie(kills.victim, kills.weapon); };
  std::sort(list.begin(), list.end(), [&](const WeaponKills& left, const WeaponKills& right) {
    return key(left) < key(right);
  });
  std::size_t used = 0;
  for (const WeaponKills& kills : list) {
    if (used > 0 && key(list[used - 1]) == key(kills)) {
      list[used - 1].kills += kills.kills;
    } else {
      list[used++] = kills;
    }
  }
  list.resize(used);
}

std::span<const WeaponKills> OfVictim(const std::vector<WeaponKills>& list, std::uint32_t victim) {
  const auto before = [](const WeaponKills& kills, std::uint32_t wanted) {
    return kills.victim < wanted;
  };
  const auto first = std::lower_bound(list.begin(), list.end(), victim, before);
  return {first, std::lower_bound(first, list.end(), victim + 1, before)};
}

}  // namespace

WeaponDuels::WeaponDuels(const Statistics& statistics, const std::vector<std::uint16_t>& splashOf)
    : kills_(statistics.players.size()) {
  constexpr std::size_t kUnjoined = 256;
  std::vector<std::size_t> joined(kills_.size());
  for (const Game& game : statistics.games) {
    for (const KillEvent& event : game.events) {
      if (!IsFrag(event)) continue;
      const std::uint32_t killer = game.entrants[event.killer].player;
      std::vector<WeaponKills>& list = kills_[killer];
      list.push_back({game.entrants[event.victim].player, splashOf[event.weapon], 1});
      // The same two meet again and again: what has doubled is worth being made one.
      if (list.size() < 2 * joined[killer] + kUnjoined) continue;
      Join(list);
      joined[killer] = list.size();
    }
  }
  for (std::vector<WeaponKills>& list : kills_) {
    Join(list);
    list.shrink_to_fit();
  }
}

std::vector<WeaponDuels::Balance> WeaponDuels::Between(std::uint32_t one,
                                                       std::uint32_t other) const {
  std::vector<Balance> weapons;
  for (const WeaponKills& kills : OfVictim(kills_[one], other)) {
    weapons.push_back({kills.weapon, kills.kills, 0});
  }
  for (const WeaponKills& kills : OfVictim(kills_[other], one)) {
    const auto known = std::ranges::find(weapons, kills.weapon, &Balance::weapon);
    if (known == weapons.end()) {
      weapons.push_back({kills.weapon, 0, kills.kills});
    } else {
      known->deaths = kills.kills;
    }
  }
  std::ranges::stable_sort(weapons, std::ranges::greater(),
                           [](const Balance& use) { return use.kills + use.deaths; });
  return weapons;
}

}  // namespace morvane
