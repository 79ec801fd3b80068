#include "morvane/site/figure_data.h"

#include <algorithm>
#include <string>

#include "morvane/statistics/names.h"

namespace morvane {
namespace {

constexpr double kSecondsPerHour = 3600;
constexpr double kSecondsPerMinute = 60;

double Per(double count, double units) { return units > 0 ? count / units : 0; }

void SetRival(Data& object, const char* name, const Rival& rival, const RivalLabel& label) {
  const std::string prefix = name;
  const bool known = rival.index != kNobody && rival.count > 0;
  SetOptional(object, name, known ? label(rival.index).text : std::string());
  SetOptional(object, (prefix + "_link").c_str(), known ? label(rival.index).link : std::string());
  Set(object, (prefix + "_kills").c_str(), known ? rival.count : 0U);
}

/// One figure by a unit: kills_per_game, kills_per_hour and so on.
void SetRates(Data& object, const char* unit, const Figures& figures, double units) {
  const auto set = [&](const char* what, double count) {
    SetDecimal(object, (std::string(what) + "_per_" + unit).c_str(), Per(count, units));
  };
  set("kills", figures.kills);
  set("deaths", figures.deaths);
  set("suicides", figures.suicides);
  set("score", figures.score);
  set("items", figures.items);
}

std::string Rating(const SiteFacts& facts, const Player& player) {
  return Fixed(player.rating, facts.statistics.customRanking ? 1 : 0);
}

void SetGames(Data& object, const Player& player) {
  const auto times = [&](std::size_t place) {
    return place < player.placings.size() ? player.placings[place] : 0U;
  };
  Set(object, "games_played", player.games);
  Set(object, "wins", player.wins);
  SetPercent(object, "win_percent", player.wins, player.games);
  Set(object, "placed", player.placed);
  SetPercent(object, "placed_percent", player.placed, player.games);
  Set(object, "first", times(0));
  Set(object, "second", times(1));
  Set(object, "third", times(2));
}

void SetBars(Data& object, const Player& player, const Highest& highest) {
  const Figures& figures = player.figures;
  SetPercent(object, "kills_percent", figures.kills, highest.kills);
  SetPercent(object, "deaths_percent", figures.deaths, highest.deaths);
  SetPercent(object, "score_percent", figures.score, highest.score);
  SetPercent(object, "time_percent", figures.seconds, highest.seconds);
  SetPercent(object, "games_percent", player.games, highest.games);
  SetPercent(object, "kills_per_game_percent", Per(figures.kills, player.games),
             highest.killsPerGame);
  SetPercent(object, "kills_per_hour_percent",
             Per(figures.kills, figures.seconds / kSecondsPerHour), highest.killsPerHour);
}

void SetSeen(Data& object, const SiteFacts& facts, std::int64_t first, std::int64_t last) {
  SetOptional(object, "first_seen", facts.time.Text(first));
  SetOptional(object, "last_seen", facts.time.Text(last));
  Set(object, "first_seen_seconds", first);
  Set(object, "last_seen_seconds", last);
}

std::string WeaponName(const SiteFacts& facts, std::uint16_t weapon) {
  return PageText(WeaponTitle(facts.statistics.vocabulary.weapons[weapon]));
}

Data WeaponRow(const SiteFacts& facts, const WeaponUse& use, double mostKills, double mostDeaths,
               double allKills) {
  Data row;
  Set(row, "name", WeaponName(facts, use.weapon));
  Set(row, "kills", use.kills);
  Set(row, "deaths", use.deaths);
  SetPercent(row, "kills_percent", use.kills, mostKills);
  SetPercent(row, "deaths_percent", use.deaths, mostDeaths);
  SetPercent(row, "share", use.kills, allKills);
  return row;
}

}  // namespace

double Ratio(const Figures& figures) {
  return static_cast<double>(figures.kills) / std::max(figures.deaths, 1U);
}

void SetFigures(Data& object, const SiteFacts& facts, const Figures& figures,
                const RivalLabel& rival) {
  Set(object, "kills", figures.kills);
  Set(object, "deaths", figures.deaths);
  Set(object, "suicides", figures.suicides);
  Set(object, "team_kills", figures.teamKills);
  Set(object, "world_deaths", figures.worldDeaths);
  Set(object, "score", figures.score);
  Set(object, "net", std::int64_t{figures.kills} - figures.deaths);
  SetDecimal(object, "ratio", Ratio(figures));
  SetPercent(object, "efficiency", figures.kills, double{1.0} * figures.kills + figures.deaths);
  Set(object, "time", Duration(figures.seconds));
  Set(object, "seconds", figures.seconds);
  Set(object, "items_taken", figures.items);
  Set(object, "kill_streak", figures.killStreak);
  Set(object, "death_streak", figures.deathStreak);
  SetOptional(object, "weapon",
              figures.favouriteWeapon == kNoWeapon ? std::string()
                                                   : WeaponName(facts, figures.favouriteWeapon));
  SetRival(object, "nemesis", figures.nemesis, rival);
  SetRival(object, "victim", figures.favouriteVictim, rival);
}

void SetUses(Data& object, const SiteFacts& facts, const std::vector<WeaponUse>& weapons,
             const std::vector<ItemCount>& items) {
  double kills = 0;
  WeaponUse most;
  for (const WeaponUse& use : weapons) {
    kills += use.kills;
    most.kills = std::max(most.kills, use.kills);
    most.deaths = std::max(most.deaths, use.deaths);
  }
  Data weaponRows = List(weapons.size());
  for (const WeaponUse& use : weapons) {
    Append(weaponRows, WeaponRow(facts, use, most.kills, most.deaths, kills));
  }
  Data itemRows = List(items.size());
  for (const ItemCount& item : items) {
    Data row;
    Set(row, "name", PageText(ItemTitle(facts.statistics.vocabulary.items[item.item])));
    Set(row, "count", item.count);
    SetPercent(row, "count_percent", item.count, items.front().count);
    Append(itemRows, std::move(row));
  }
  SetFlag(object, "has_weapons", !weapons.empty());
  SetFlag(object, "has_items", !items.empty());
  SetData(object, "weapons", std::move(weaponRows));
  SetData(object, "items", std::move(itemRows));
}

Highest HighestOf(const std::vector<Player>& players) {
  Highest highest;
  for (const Player& player : players) {
    const Figures& figures = player.figures;
    highest.kills = std::max<double>(highest.kills, figures.kills);
    highest.deaths = std::max<double>(highest.deaths, figures.deaths);
    highest.score = std::max<double>(highest.score, figures.score);
    highest.seconds = std::max<double>(highest.seconds, figures.seconds);
    highest.games = std::max<double>(highest.games, player.games);
    highest.killsPerGame = std::max(highest.killsPerGame, Per(figures.kills, player.games));
    highest.killsPerHour =
        std::max(highest.killsPerHour, Per(figures.kills, figures.seconds / kSecondsPerHour));
  }
  return highest;
}

Data PlayerRow(const SiteFacts& facts, const Player& player, const std::vector<Player>& rivals,
               const Highest& highest) {
  Data row;
  SetLabel(row, facts.PlayerLabel(player.player));
  SetFlag(row, "ranked", player.ranked);
  SetOptional(row, "rank", player.ranked ? std::to_string(player.rank) : std::string());
  Set(row, "rating", Rating(facts, player));
  SetFigures(row, facts, player.figures, [&](std::uint32_t index) -> const Label& {
    return facts.PlayerLabel(rivals[index].player);
  });
  SetRates(row, "game", player.figures, player.games);
  SetRates(row, "hour", player.figures, player.figures.seconds / kSecondsPerHour);
  SetRates(row, "minute", player.figures, player.figures.seconds / kSecondsPerMinute);
  SetGames(row, player);
  SetSeen(row, facts, player.firstSeen, player.lastSeen);
  SetBars(row, player, highest);
  return row;
}

Data PlayerList(const SiteFacts& facts, const std::vector<Player>& players, std::size_t first,
                std::size_t end) {
  const Highest highest = HighestOf(players);
  end = std::min(end, players.size());
  Data list = List(end - first);
  for (std::size_t i = first; i < end; ++i) {
    Append(list, PlayerRow(facts, players[i], players, highest));
  }
  return list;
}

Data SummaryData(const SiteFacts& facts, const Summary& summary) {
  Data object;
  Set(object, "games", Grouped(summary.games));
  Set(object, "time", Duration(summary.seconds));
  Set(object, "kills", Grouped(summary.kills));
  Set(object, "deaths", Grouped(summary.deaths));
  Set(object, "suicides", Grouped(summary.suicides));
  Set(object, "team_kills", Grouped(summary.teamKills));
  Set(object, "world_deaths", Grouped(summary.worldDeaths));
  Set(object, "items", Grouped(summary.items));
  SetSeen(object, facts, summary.firstSeen, summary.lastSeen);
  return object;
}

}  // namespace morvane
