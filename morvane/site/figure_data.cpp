#include "morvane/site/figure_data.h"

#include <algorithm>
#include <string>

#include "morvane/site/career_data.h"
#include "morvane/site/page_text.h"
#include "morvane/statistics/figures.h"

namespace morvane {
namespace {

double Per(std::int64_t count, double units) {
  return units > 0 ? static_cast<double>(count) / units : 0;
}

double Hours(std::int64_t seconds) { return static_cast<double>(seconds) / 3600; }
double Minutes(std::int64_t seconds) { return static_cast<double>(seconds) / 60; }

double KillsPerHour(const Player& player) {
  return Per(player.timed.kills, Hours(player.timed.seconds));
}

struct RivalNames {
  VariableName name;
  VariableName link;
  VariableName kills;
};
constexpr RivalNames kNemesis = {"nemesis", "nemesis_link", "nemesis_kills"};
constexpr RivalNames kVictim = {"victim", "victim_link", "victim_kills"};

void SetRival(Object& object, const RivalNames& names, const Rival& rival,
              const RivalLabel& label) {
  const bool known = rival.index != kNobody && rival.count > 0;
  SetOptional(object, names.name, [&] { return known ? label(rival.index).text : std::string(); });
  SetOptional(object, names.link, [&] { return known ? label(rival.index).link : std::string(); });
  Set(object, names.kills, known ? rival.count : 0U);
}

/// One figure by a unit: kills_per_game, kills_per_hour and so on; not there for 0 units.
void SetRates(Object& object, const char* unit, const Counts& counts, double units) {
  for (const Counter& counter : kCounters) {
    if (counter.rate == nullptr) continue;
    const std::string name = std::string(counter.rate) + "_per_" + unit;
    const auto count = static_cast<double>(counts.*counter.member);
    SetOptional(object, VariableName(name),
                [&] { return units > 0 ? Fixed(count / units, 2) : std::string(); });
  }
}

std::string Rating(const SiteFacts& facts, const Player& player) {
  return Fixed(player.rating, facts.statistics.customRanking ? 1 : 0);
}

void SetGames(Object& object, const Player& player) {
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

void SetBars(Object& object, const Player& player, const Highest& highest) {
  for (const auto& [name, text] : BarsOf(player, highest)) Set(object, name, text);
}

/// How the rank has changed since before the last evening, and the curve of the last games.
void SetMovement(Object& object, const SiteFacts& facts, const Player& player) {
  const std::uint32_t before = facts.RankBefore(player.player);
  const std::uint32_t now = facts.statistics.players[player.player].rank;
  const bool known = facts.evening.first > 0 && now > 0;
  SetFlag(object, "rank_new", known && before == 0);
  SetOptional(object, "rank_up", known && before > now ? std::to_string(before - now) : "");
  SetOptional(object, "rank_down",
              known && before > 0 && before < now ? std::to_string(now - before) : "");
  SetOptional(object, "spark", [&] { return RatingSpark(facts, player.player); });
}

void SetSeen(Object& object, const SiteFacts& facts, const Seen& seen) {
  SetTime(object, facts, kFirstSeen, seen.first, seen.firstDated);
  SetTime(object, facts, kLastSeen, seen.last, seen.lastDated);
}

std::string WeaponName(const SiteFacts& facts, std::uint16_t weapon) {
  return PageText(WeaponTitle(facts.statistics.vocabulary.weapons[weapon]));
}

/// What the rows of a list of weapons are measured against.
struct WeaponSums {
  double allKills = 0;
  double mostKills = 0;
  double mostDeaths = 0;
};

WeaponSums SumsOf(const std::vector<WeaponUse>& weapons) {
  WeaponSums sums;
  for (const WeaponUse& use : weapons) {
    sums.allKills += use.kills;
    sums.mostKills = std::max<double>(sums.mostKills, use.kills);
    sums.mostDeaths = std::max<double>(sums.mostDeaths, use.deaths);
  }
  return sums;
}

Data WeaponRows(const SiteFacts& facts, const std::vector<WeaponUse>& weapons, Demand demand,
                std::string (*name)(const SiteFacts&, std::uint16_t)) {
  const WeaponSums sums = SumsOf(weapons);
  return Rows(weapons, demand, [&](Object& row, const WeaponUse& use) {
    Set(row, "name", [&] { return name(facts, use.weapon); });
    Set(row, "kills", use.kills);
    Set(row, "deaths", use.deaths);
    SetPercent(row, "kills_percent", use.kills, sums.mostKills);
    SetPercent(row, "deaths_percent", use.deaths, sums.mostDeaths);
    SetPercent(row, "share", use.kills, sums.allKills);
  });
}

}  // namespace

void SetDuration(Object& object, std::int64_t seconds, bool isKnown) {
  SetOptional(object, "time", [&] { return isKnown ? Duration(seconds) : std::string(); });
  Set(object, "seconds", seconds);
}

void SetTime(Object& object, const SiteFacts& facts, const TimeNames& names, std::int64_t seconds,
             Dated dated) {
  SetOptional(object, names.text, [&] { return facts.time.Text(seconds); });
  Set(object, names.seconds, seconds);
  SetFlag(object, names.reckoned, dated == Dated::kReckoned);
  SetFlag(object, names.notAfter, dated == Dated::kNotAfter);
}

std::string TimeText(const SiteFacts& facts, std::int64_t seconds, Dated dated) {
  std::string text = facts.time.Text(seconds);
  if (text.empty()) return text;
  if (dated == Dated::kReckoned) return "\xE2\x89\x88 " + text;  // about
  return dated == Dated::kNotAfter ? "\xE2\x89\xA4 " + text : text;
}

std::string WeaponText(const SiteFacts& facts, std::uint16_t weapon) {
  return PageText(WeaponTitle(WithoutSplash(facts.statistics.vocabulary.weapons[weapon])));
}

std::string FavouriteWeapon(const SiteFacts& facts, const std::vector<WeaponUse>& weapons) {
  const std::vector<WeaponUse> joined = JoinSplash(weapons, facts.splashOf);
  const bool any = !joined.empty() && joined.front().kills > 0;
  return any ? WeaponText(facts, joined.front().weapon) : std::string();
}

double Ratio(const Figures& figures) {
  return static_cast<double>(figures.kills) /
         static_cast<double>(std::max<std::int64_t>(figures.deaths, 1));
}

void SetFigures(Object& object, const SiteFacts& facts, const Figures& figures, bool isTimed,
                const RivalLabel& rival) {
  for (const Counter& counter : kCounters) {
    Set(object, VariableName(std::string_view(counter.name)), figures.*counter.member);
  }
  Set(object, "net", figures.kills - figures.deaths);
  SetDecimal(object, "ratio", Ratio(figures));
  SetPercent(object, "efficiency", figures.kills, figures.kills + figures.deaths);
  SetDuration(object, figures.seconds, isTimed);
  SetOptional(object, "weapon", [&] { return FavouriteWeapon(facts, figures.weapons); });
  SetRival(object, kNemesis, figures.nemesis, rival);
  SetRival(object, kVictim, figures.favouriteVictim, rival);
}

Data WeaponList(const SiteFacts& facts, const std::vector<WeaponUse>& weapons, Demand demand) {
  return WeaponRows(facts, weapons, demand, WeaponName);
}

Data JoinedWeaponList(const SiteFacts& facts, const std::vector<WeaponUse>& weapons,
                      Demand demand) {
  return WeaponRows(facts, JoinSplash(weapons, facts.splashOf), demand, WeaponText);
}

bool HasSplash(const SiteFacts& facts, const std::vector<WeaponUse>& weapons) {
  return JoinSplash(weapons, facts.splashOf).size() < weapons.size();
}

Data ItemList(const SiteFacts& facts, const std::vector<ItemCount>& items, Demand demand) {
  return Rows(items, demand, [&](Object& row, const ItemCount& item) {
    const std::string& name = facts.statistics.vocabulary.items[item.item];
    Set(row, "name", [&] { return PageText(ItemTitle(name)); });
    Set(row, "count", item.count);
    SetPercent(row, "count_percent", item.count, items.front().count);
  });
}

void SetUses(Object& object, const SiteFacts& facts, const std::vector<WeaponUse>& weapons,
             const std::vector<ItemCount>& items) {
  SetFlag(object, "has_weapons", !weapons.empty());
  SetFlag(object, "has_items", !items.empty());
  SetData(object, "has_splash", [&](Demand) { return Data(HasSplash(facts, weapons)); });
  SetData(object, "weapons", [&](Demand demand) { return WeaponList(facts, weapons, demand); });
  SetData(object, "joined_weapons",
          [&](Demand demand) { return JoinedWeaponList(facts, weapons, demand); });
  SetData(object, "items", [&](Demand demand) { return ItemList(facts, items, demand); });
}

std::array<Bar, 7> BarsOf(const Player& player, const Highest& highest) {
  const auto bar = [](const VariableName& name, auto part, auto whole) {
    return Bar{name, ShareText(static_cast<double>(part), static_cast<double>(whole))};
  };
  const Figures& figures = player.figures;
  return {bar("kills_percent", figures.kills, highest.kills),
          bar("deaths_percent", figures.deaths, highest.deaths),
          bar("score_percent", figures.score, highest.score),
          bar("time_percent", figures.seconds, highest.seconds),
          bar("games_percent", player.games, highest.games),
          bar("kills_per_game_percent", Per(figures.kills, player.games), highest.killsPerGame),
          bar("kills_per_hour_percent", KillsPerHour(player), highest.killsPerHour)};
}

Highest HighestOf(const std::vector<Player>& players) {
  Highest highest;
  for (const Player& player : players) {
    const Figures& figures = player.figures;
    highest.kills = std::max(highest.kills, figures.kills);
    highest.deaths = std::max(highest.deaths, figures.deaths);
    highest.score = std::max(highest.score, figures.score);
    highest.seconds = std::max(highest.seconds, figures.seconds);
    highest.games = std::max(highest.games, player.games);
    highest.killsPerGame = std::max(highest.killsPerGame, Per(figures.kills, player.games));
    highest.killsPerHour = std::max(highest.killsPerHour, KillsPerHour(player));
  }
  return highest;
}

Object PlayerRow(const SiteFacts& facts, const Player& player, const std::vector<Player>& rivals,
                 const Highest& highest, Demand demand) {
  Object row(demand);
  SetLabel(row, facts.PlayerLabel(player.player));
  SetFlag(row, "ranked", player.ranked);
  SetOptional(row, "rank", player.ranked ? std::to_string(player.rank) : std::string());
  Set(row, "rating", [&] { return Rating(facts, player); });
  SetFigures(
      row, facts, player.figures, player.timed.games > 0,
      [&](std::uint32_t index) -> const Label& { return facts.PlayerLabel(rivals[index].player); });
  SetRates(row, "game", player.figures, player.games);
  SetRates(row, "hour", player.timed, Hours(player.timed.seconds));
  SetRates(row, "minute", player.timed, Minutes(player.timed.seconds));
  SetGames(row, player);
  SetSeen(row, facts, player.seen);
  if (&rivals == &facts.statistics.players) SetMovement(row, facts, player);
  SetBars(row, player, highest);
  return row;
}

Data PlayerList(const SiteFacts& facts, const std::vector<Player>& players, Demand demand,
                std::size_t first, std::size_t end) {
  const Highest highest = HighestOf(players);
  end = std::min(end, players.size());
  List list(demand, end - first);
  for (std::size_t i = first; i < end; ++i) {
    list.Append(PlayerRow(facts, players[i], players, highest, demand));
  }
  return list.Done();
}

Data SummaryData(const SiteFacts& facts, const Summary& summary, Demand demand) {
  Object object(demand);
  Set(object, "games", Grouped(summary.games));
  SetOptional(object, "time", summary.timedGames > 0 ? Duration(summary.seconds) : std::string());
  for (const Counter& counter : kCounters) {
    if (counter.summary == nullptr) continue;
    Set(object, VariableName(std::string_view(counter.summary)),
        Grouped(summary.figures.*counter.member));
  }
  SetSeen(object, facts, summary.seen);
  return object.Done();
}

}  // namespace morvane
