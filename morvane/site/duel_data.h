#pragma once

#include <cstdint>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The weapons with which two players killed each other; the kills are those of the first.
Data WeaponsBetween(const SiteFacts& facts, std::uint32_t player, std::uint32_t other);

/// The pairs of players who killed each other most often, each with its weapons.
Data DuelList(const SiteFacts& facts);

/// Who is ahead of whom among the first players: a table with all weapons, and one for each of
/// those used most.
Data DuelTables(const SiteFacts& facts);

}  // namespace morvane
