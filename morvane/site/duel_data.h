#pragma once

#include <cstdint>
#include <vector>

#include "morvane/site/site_facts.h"

namespace morvane {

/// Two players and how often each killed the other.
struct Duel {
  Pair one;                ///< the killer is who killed more often
  std::uint32_t back = 0;  ///< kills the other way
  std::uint32_t Kills() const { return one.kills + back; }
};

/// The pairs of players who killed each other most often, a hundred of them.
std::vector<Duel> FiercestDuels(const Statistics& statistics);

/// The weapons with which two players killed each other; the kills are those of the first.
Data WeaponsBetween(const SiteFacts& facts, std::uint32_t player, std::uint32_t other,
                    Demand demand);

/// Those pairs as rows, each with its weapons.
Data DuelList(const SiteFacts& facts, Demand demand);

/// Who is ahead of whom among the first players: a table with all weapons, and one for each of
/// those used most.
Data DuelTables(const SiteFacts& facts, Demand demand);

}  // namespace morvane
