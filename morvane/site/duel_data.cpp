#include "morvane/site/duel_data.h"

#include <algorithm>
#include <string>
#include <vector>

#include "morvane/site/figure_data.h"
#include "morvane/statistics/figures.h"

namespace morvane {
namespace {

constexpr std::size_t kMostDuels = 100;
constexpr std::uint32_t kMostInMatrix = 15;
constexpr std::size_t kMostWeapons = 5;

/// Kills of each by each among the first players, with one weapon or with all.
using Kills = std::vector<std::vector<std::uint32_t>>;

/// `weapon`: Names::kUnknown for all.
Kills KillsAmongFirst(const SiteFacts& facts, std::uint32_t players, std::uint16_t weapon) {
  Kills kills(players, std::vector<std::uint32_t>(players));
  for (std::uint32_t killer = 0; killer < players; ++killer) {
    for (const WeaponKills& entry : facts.Duels().Of(killer)) {
      const bool isAsked = weapon == Names::kUnknown || entry.weapon == weapon;
      if (entry.victim < players && isAsked) kills[killer][entry.victim] += entry.kills;
    }
  }
  return kills;
}

Data MatrixRow(const SiteFacts& facts, const Kills& kills, std::uint32_t player) {
  Data cells = List(kills.size());
  for (std::uint32_t other = 0; other < kills.size(); ++other) {
    const std::uint32_t own = kills[player][other];
    const std::uint32_t back = kills[other][player];
    const bool met = other != player && own + back > 0;
    Data cell;
    SetOptional(cell, "kills", met ? std::to_string(own) : std::string());
    SetOptional(cell, "deaths", met ? std::to_string(back) : std::string());
    SetFlag(cell, "ahead", met && own > back);
    SetFlag(cell, "behind", met && own < back);
    Append(cells, std::move(cell));
  }
  Data row;
  SetLabel(row, facts.PlayerLabel(player));
  SetData(row, "pairs", std::move(cells));
  return row;
}

}  // namespace

std::vector<Duel> FiercestDuels(const Statistics& statistics) {
  std::vector<Duel> duels;
  for (const Pair& pair : statistics.pairs) {
    const Pair* reverse = FindPair(statistics.pairs, pair.victim, pair.killer);
    const std::uint32_t back = reverse == nullptr ? 0 : reverse->kills;
    const bool counted = pair.kills > back || (pair.kills == back && pair.killer < pair.victim);
    if (counted && pair.kills > 0 && pair.killer != pair.victim) duels.push_back({pair, back});
  }
  std::stable_sort(duels.begin(), duels.end(), [](const Duel& left, const Duel& right) {
    return left.Kills() > right.Kills();
  });
  if (duels.size() > kMostDuels) duels.resize(kMostDuels);
  return duels;
}

Data WeaponsBetween(const SiteFacts& facts, std::uint32_t player, std::uint32_t other) {
  const std::vector<WeaponDuels::Balance> weapons = facts.Duels().Between(player, other);
  Data list = List(weapons.size());
  for (const WeaponDuels::Balance& use : weapons) {
    Data row;
    Set(row, "name", WeaponText(facts, use.weapon));
    Set(row, "kills", use.kills);
    Set(row, "deaths", use.deaths);
    Append(list, std::move(row));
  }
  return list;
}

Data DuelList(const SiteFacts& facts) {
  const std::vector<Duel> duels = FiercestDuels(facts.statistics);
  Data list = List(duels.size());
  for (const Duel& duel : duels) {
    Data row;
    Set(row, "winner_link", facts.PlayerLabel(duel.one.killer).link);
    Set(row, "loser_link", facts.PlayerLabel(duel.one.victim).link);
    Set(row, "winner_kills", duel.one.kills);
    Set(row, "loser_kills", duel.back);
    Set(row, "kills", duel.Kills());
    SetPercent(row, "winner_percent", duel.one.kills, duel.Kills());
    SetData(row, "duel_weapons", WeaponsBetween(facts, duel.one.killer, duel.one.victim));
    Append(list, std::move(row));
  }
  return list;
}

Data DuelTables(const SiteFacts& facts) {
  const auto players = static_cast<std::uint32_t>(
      std::min<std::size_t>(facts.statistics.players.size(), kMostInMatrix));
  std::vector<std::uint16_t> weapons = {Names::kUnknown};
  for (const WeaponUse& use :
       JoinSplash(facts.statistics.summary.figures.weapons, facts.splashOf)) {
    if (use.kills > 0 && weapons.size() <= kMostWeapons) weapons.push_back(use.weapon);
  }
  Data tables = List(weapons.size());
  for (std::size_t i = 0; i < weapons.size() && players > 1; ++i) {
    const Kills kills = KillsAmongFirst(facts, players, weapons[i]);
    Data rows = List(players);
    for (std::uint32_t player = 0; player < players; ++player) {
      Append(rows, MatrixRow(facts, kills, player));
    }
    Data table;
    Set(table, "number", i);
    SetFlag(table, "is_first", i == 0);
    Set(table, "name", i == 0 ? "All weapons" : WeaponText(facts, weapons[i]));
    SetData(table, "rivals", std::move(rows));
    Append(tables, std::move(table));
  }
  return tables;
}

}  // namespace morvane
