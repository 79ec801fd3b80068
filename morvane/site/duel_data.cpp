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

Data MatrixCells(const Kills& kills, std::uint32_t player, Demand demand) {
  List cells(demand, kills.size());
  for (std::uint32_t other = 0; other < kills.size(); ++other) {
    const std::uint32_t own = kills[player][other];
    const std::uint32_t back = kills[other][player];
    const bool met = other != player && own + back > 0;
    Object cell(demand);
    SetOptional(cell, "kills", met ? std::to_string(own) : std::string());
    SetOptional(cell, "deaths", met ? std::to_string(back) : std::string());
    SetFlag(cell, "ahead", met && own > back);
    SetFlag(cell, "behind", met && own < back);
    cells.Append(cell);
  }
  return cells.Done();
}

Data MatrixRows(const SiteFacts& facts, const Kills& kills, Demand demand) {
  List rows(demand, kills.size());
  for (std::uint32_t player = 0; player < kills.size(); ++player) {
    Object row(demand);
    SetLabel(row, facts.PlayerLabel(player));
    SetData(row, "pairs", [&](Demand asked) { return MatrixCells(kills, player, asked); });
    rows.Append(row);
  }
  return rows.Done();
}

}  // namespace

std::vector<Duel> FiercestDuels(const Statistics& statistics) {
  std::vector<Duel> duels;
  std::uint32_t least = 1;  // kills of both together that a duel must have
  const auto keepMost = [&] {
    std::ranges::stable_sort(duels, std::ranges::greater(), &Duel::Kills);
    if (duels.size() < kMostDuels) return;
    duels.resize(kMostDuels);
    least = duels.back().Kills();
  };
  for (const Pair& pair : statistics.pairs) {
    // The duel is that of the one who killed more often. This spares most of the search.
    if (2 * pair.kills < least || pair.killer == pair.victim) continue;
    const Pair* reverse = FindPair(statistics.pairs, pair.victim, pair.killer);
    const std::uint32_t back = reverse == nullptr ? 0 : reverse->kills;
    const bool counted = pair.kills > back || (pair.kills == back && pair.killer < pair.victim);
    if (counted) duels.push_back({pair, back});
    if (duels.size() == 4 * kMostDuels) keepMost();
  }
  keepMost();
  return duels;
}

Data WeaponsBetween(const SiteFacts& facts, std::uint32_t player, std::uint32_t other,
                    Demand demand) {
  return Rows(facts.Duels().Between(player, other), demand,
              [&](Object& row, const WeaponDuels::Balance& use) {
                Set(row, "name", [&] { return WeaponText(facts, use.weapon); });
                Set(row, "kills", use.kills);
                Set(row, "deaths", use.deaths);
              });
}

Data DuelList(const SiteFacts& facts, Demand demand) {
  return Rows(FiercestDuels(facts.statistics), demand, [&](Object& row, const Duel& duel) {
    Set(row, "winner_link", facts.PlayerLabel(duel.one.killer).link);
    Set(row, "loser_link", facts.PlayerLabel(duel.one.victim).link);
    Set(row, "winner_kills", duel.one.kills);
    Set(row, "loser_kills", duel.back);
    Set(row, "kills", duel.Kills());
    SetPercent(row, "winner_percent", duel.one.kills, duel.Kills());
    SetData(row, "duel_weapons", [&](Demand asked) {
      return WeaponsBetween(facts, duel.one.killer, duel.one.victim, asked);
    });
  });
}

Data DuelTables(const SiteFacts& facts, Demand demand) {
  const auto players = static_cast<std::uint32_t>(
      std::min<std::size_t>(facts.statistics.players.size(), kMostInMatrix));
  std::vector<std::uint16_t> weapons = {Names::kUnknown};
  for (const WeaponUse& use :
       JoinSplash(facts.statistics.summary.figures.weapons, facts.splashOf)) {
    if (use.kills > 0 && weapons.size() <= kMostWeapons) weapons.push_back(use.weapon);
  }
  List tables(demand, weapons.size());
  for (std::size_t i = 0; i < weapons.size() && players > 1; ++i) {
    Object table(demand);
    Set(table, "number", i);
    SetFlag(table, "is_first", i == 0);
    Set(table, "name", i == 0 ? "All weapons" : WeaponText(facts, weapons[i]));
    SetData(table, "rivals", [&](Demand asked) {
      return MatrixRows(facts, KillsAmongFirst(facts, players, weapons[i]), asked);
    });
    tables.Append(table);
  }
  return tables.Done();
}

}  // namespace morvane
