#include "morvane/site/site_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <utility>

#include "config/file_names.h"
#include "morvane/site/career_data.h"
#include "morvane/site/duel_data.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/game_data.h"
#include "morvane/site/kill_table.h"
#include "morvane/site/map_data.h"
#include "morvane/site/overview_data.h"
#include "morvane/site/page_text.h"

namespace morvane {
namespace {

using config::ColorText;
using config::InkOn;
using config::Mix;
using config::Readable;
using config::Rgb;

constexpr std::size_t kTopPlayers = 100;
constexpr std::size_t kRecentGames = 20;

/// Their names are the user's, with dots and all.
Data UserVariables(const SiteSettings& settings, Demand demand) {
  ValueStore& store = demand.Store();
  Data object = store.NewObject();
  for (const auto& [name, value] : settings.userVariables) {
    store.SetMember(object, VariableName(name), store.Text(PageText(value)));
  }
  return object;
}

/// The page colors and shades made from them, so that a page of any two colors can have panels,
/// lines and links that are told apart and read.
Data Colors(const SiteSettings& settings, Demand demand) {
  const Rgb text = settings.textColor;
  const Rgb background = settings.backgroundColor;
  const config::Shades shades = ShadesOf(background, text);
  Object object(demand);
  const auto set = [&](const VariableName& name, Rgb color) {
    Set(object, name, ColorText(color));
  };
  const auto setLink = [&](const std::string& name, Rgb color) {
    set(VariableName(name), color);
    set(VariableName(name + "_text"), Readable(color, shades.stripe));
    set(VariableName(name + "_ink"), InkOn(color));
  };
  set("text", text);
  set("background", background);
  setLink("link", settings.linkColor);
  setLink("visited", settings.visitedLinkColor);
  setLink("active", settings.activeLinkColor);
  set("panel", shades.panel);
  set("stripe", shades.stripe);
  set("line", Mix(background, text, 0.28));
  set("muted", Readable(Mix(background, text, 0.7), shades.stripe));
  set("strong", Readable(Mix(text, InkOn(background), 0.6), shades.stripe));
  const bool dark = InkOn(background) == Rgb{255, 255, 255};
  Set(object, "scheme", std::string(dark ? "dark" : "light"));
  const std::string image = std::filesystem::path(settings.backgroundImage).filename().string();
  SetOptional(object, "image",
              image.empty() ? image : std::string(config::kImageFolder) + "/" + UrlText(image));
  return object.Done();
}

Data NameColorList(const SiteSettings& settings, Demand demand) {
  List list(demand, settings.nameColors.size());
  for (std::size_t i = 0; i < settings.nameColors.size(); ++i) {
    Object row(demand);
    Set(row, "code", i);
    Set(row, "color", ColorText(settings.nameColors[i]));
    list.Append(row);
  }
  return list.Done();
}

/// A color, and the ink that reads best on it.
void SetColor(Object& row, Rgb color) {
  Set(row, "color", ColorText(color));
  Set(row, "ink", ColorText(InkOn(color)));
}

Data HiliteList(const SiteSettings& settings, Demand demand) {
  return Rows(settings.hiliteLevels, demand, [](Object& row, const HiliteLevel& level) {
    Set(row, "percentile", Fixed(level.percentile, 0));
    SetColor(row, level.color);
  });
}

Data ColumnColorList(const SiteSettings& settings, Demand demand) {
  List list(demand, settings.columnColors.size());
  for (std::size_t i = 0; i < settings.columnColors.size(); ++i) {
    Object row(demand);
    Set(row, "tone", i);
    SetColor(row, settings.columnColors[i]);
    list.Append(row);
  }
  return list.Done();
}

/// From the panel to the color of links, in which text can be read: what happens often.
Data HeatColorList(const SiteSettings& settings, Demand demand) {
  constexpr int kLevels = 4;
  const Rgb text = settings.textColor;
  const Rgb background = settings.backgroundColor;
  const config::Shades shades = ShadesOf(background, text);
  const Rgb hot = Readable(settings.linkColor, shades.stripe);
  List list(demand, kLevels);
  for (int level = 1; level <= kLevels; ++level) {
    Object row(demand);
    Set(row, "heat", level);
    SetColor(row, Mix(shades.panel, hot, double{1.0} * level / kLevels));
    list.Append(row);
  }
  return list.Done();
}

Data LimitData(const SiteFacts& facts, Demand demand) {
  const Limits& limits = facts.statistics.limits;
  Object object(demand);
  Set(object, "minutes", limits.playersMinTime);
  Set(object, "games", limits.playersMinGames);
  Set(object, "kills", limits.playersMinKills);
  Set(object, "last_placed", limits.gameLastPlaced);
  Set(object, "hilite", Fixed(facts.settings.hiliteMinimum, 0));
  return object.Done();
}

/// How many of the players, the first ones, the overall kill tables show. Where nobody is ranked
/// nobody is left out.
std::size_t TablePlayers(const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  const bool limited = statistics.limits.limitOverallKillTables && statistics.ranked > 0;
  return limited ? statistics.ranked : statistics.players.size();
}

Data KillTable(const SiteFacts& facts, Demand demand) {
  const std::span players(facts.statistics.players.data(), TablePlayers(facts));
  return KillTableData(
      facts.settings, players, facts.statistics.pairs, demand,
      [&](const Player& player) -> const Label& { return facts.PlayerLabel(player.player); });
}

/// Players by weapon. `count` takes what is counted from a player's use of one.
Data WeaponTable(const SiteFacts& facts, Demand demand,
                 const std::function<std::uint32_t(const WeaponUse&)>& count) {
  const Statistics& statistics = facts.statistics;
  CountTable table;
  std::vector<std::size_t> columnOf(statistics.vocabulary.weapons.size(),
                                    statistics.vocabulary.weapons.size());
  for (const WeaponUse& use : statistics.summary.figures.weapons) {
    if (count(use) == 0) continue;
    columnOf[use.weapon] = table.columns.size();
    const std::string name = PageText(WeaponTitle(statistics.vocabulary.weapons[use.weapon]));
    table.columns.push_back({name, EscapeHtml(name), {}, EscapeHtml(name), false});
  }
  const std::size_t shown = std::min(TablePlayers(facts), kTopPlayers);
  table.more = TablePlayers(facts) - shown;
  for (std::uint32_t i = 0; i < shown; ++i) {
    table.rows.push_back(facts.PlayerLabel(i));
    std::vector<std::uint32_t> row(table.columns.size());
    for (const WeaponUse& use : statistics.players[i].figures.weapons) {
      const std::size_t column = columnOf[use.weapon];
      if (column < row.size()) row[column] = count(use);
    }
    table.counts.push_back(std::move(row));
  }
  return TableData(facts.settings, table, demand);
}

/// A record: what it is called and what of a player it takes, the greater the better.
struct RecordKind {
  const char* title;
  double (*value)(const Player&);
  int decimals;
};

double KillsPerMinute(const Player& player) {
  const auto seconds = static_cast<double>(player.timed.seconds);
  return seconds == 0 ? 0 : 60.0 * static_cast<double>(player.timed.kills) / seconds;
}

template <std::int64_t Counts::*kMember>
double Counted(const Player& player) {
  return static_cast<double>(player.figures.*kMember);
}

constexpr std::array<RecordKind, 8> kRecords = {{
    {"Most kills", Counted<&Counts::kills>, 0},
    {"Best kills per death", [](const Player& p) { return Ratio(p.figures); }, 2},
    {"Most kills per minute", KillsPerMinute, 2},
    {"Longest kill streak", Counted<&Counts::killStreak>, 0},
    {"Most games won", [](const Player& p) -> double { return p.wins; }, 0},
    {"Most items taken", Counted<&Counts::items>, 0},
    {"Longest row of deaths", Counted<&Counts::deathStreak>, 0},
    {"Most suicides", Counted<&Counts::suicides>, 0},
}};

/// The best at one thing among the ranked players, or among all where nobody is ranked.
Data RecordList(const SiteFacts& facts, Demand demand) {
  const Statistics& statistics = facts.statistics;
  const std::size_t count = statistics.ranked > 0 ? statistics.ranked : statistics.players.size();
  List list(demand, kRecords.size());
  for (const RecordKind& kind : kRecords) {
    const auto first = statistics.players.begin();
    const auto best = std::max_element(
        first, first + static_cast<std::ptrdiff_t>(count),
        [&](const Player& a, const Player& b) { return kind.value(a) < kind.value(b); });
    if (count == 0 || kind.value(*best) <= 0) continue;
    Object row(demand);
    Set(row, "title", std::string(kind.title));
    Set(row, "value",
        kind.decimals == 0 ? Grouped(std::llround(kind.value(*best)))
                           : Fixed(kind.value(*best), kind.decimals));
    Set(row, "link", facts.PlayerLabel(static_cast<std::uint32_t>(best - first)).link);
    list.Append(row);
  }
  return list.Done();
}

std::string CountText(std::size_t count) { return Grouped(static_cast<std::int64_t>(count)); }

void DefineSettings(SharedData& shared, const SiteFacts& facts) {
  const SiteSettings& settings = facts.settings;
  const auto define = [&](const char* name, Data (*make)(const SiteSettings&, Demand)) {
    shared.Define(
        name, [&settings, make](Demand demand) { return make(settings, demand); },
        SharedData::From::kSettings);
  };
  define("vars", UserVariables);
  define("colors", Colors);
  define("name_colors", NameColorList);
  define("column_colors", ColumnColorList);
  define("heat_colors", HeatColorList);
  define("hilites", HiliteList);
  shared.DefineFlag("has_hilites", [&] { return !settings.hiliteLevels.empty(); });
  shared.Define(
      "limits", [&](Demand demand) { return LimitData(facts, demand); },
      SharedData::From::kSettings);
}

/// What has happened of late.
void DefineCourse(SharedData& shared, const SiteFacts& facts) {
  shared.Define("awards", [&](Demand demand) { return AwardList(facts, facts.Awards(), demand); });
  shared.DefineFlag("has_awards", [&] { return !facts.Awards().empty(); });
  shared.Define("evening", [&](Demand demand) { return EveningData(facts, demand); });
  shared.Define("last_game", [&](Demand demand) {
    const auto games = static_cast<std::uint32_t>(facts.statistics.games.size());
    return games == 0 ? Data(false) : GameRow(facts, games - 1, demand).Done();
  });
  shared.Define("game_cards", [&](Demand demand) { return GameCards(facts, demand); });
  shared.Define("activity", [&](Demand demand) { return ActivityRows(facts, demand); });
  shared.DefineFlag("has_activity",
                    [&] { return std::ranges::any_of(facts.statistics.games, HasDay); });
  shared.DefineFlag("has_recent", [&] { return facts.days.first > 0; });
  shared.DefineText("recent_title", [&] {
    return facts.days.byDate ? "Last " + std::to_string(kDaysOfLate) + " days"
                             : "Last " + std::to_string(kGamesOfLate) + " games";
  });
  shared.Define("recent_players", [&](Demand demand) {
    return PlayerList(facts, PlayersSince(facts.statistics, facts.days.first), demand, 0,
                      kTopPlayers);
  });
}

void DefineCounts(SharedData& shared, const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  const std::size_t players = statistics.players.size();
  const std::size_t games = statistics.games.size();
  const auto count = [&](const char* name, std::size_t number) {
    shared.DefineText(name, [number] { return CountText(number); });
  };
  count("player_count", players);
  count("ranked_count", statistics.ranked);
  count("map_count", statistics.maps.size());
  count("game_count", games);
  count("games_found", statistics.gamesFound);
  const auto more = [&](const char* name, std::size_t all, std::size_t shown) {
    shared.DefineText(name, [=] { return all <= shown ? std::string() : CountText(all - shown); });
  };
  more("more_players", players, kTopPlayers);
  more("more_games", games, kRecentGames);
  shared.DefineFlag("has_players", [=] { return players > 0; });
  shared.DefineFlag("nobody_ranked",
                    [=, &statistics] { return players > 0 && statistics.ranked == 0; });
  const auto anyGame = [&statistics](Dated dated) {
    return std::ranges::any_of(statistics.games,
                               [=](const Game& game) { return game.dated == dated; });
  };
  shared.DefineFlag("has_reckoned", [=] { return anyGame(Dated::kReckoned); });
  shared.DefineFlag("has_not_after", [=] { return anyGame(Dated::kNotAfter); });
  shared.DefineFlag("custom_ranking", [&] { return statistics.customRanking; });
}

/// What was used in all games.
void DefineUses(SharedData& shared, const SiteFacts& facts) {
  const Figures& all = facts.statistics.summary.figures;
  shared.DefineFlag("has_weapons", [&] { return !all.weapons.empty(); });
  shared.DefineFlag("has_items", [&] { return !all.itemCounts.empty(); });
  shared.DefineFlag("has_splash", [&] { return HasSplash(facts, all.weapons); });
  shared.Define("weapons", [&](Demand demand) { return WeaponList(facts, all.weapons, demand); });
  shared.Define("joined_weapons",
                [&](Demand demand) { return JoinedWeaponList(facts, all.weapons, demand); });
  shared.Define("items", [&](Demand demand) { return ItemList(facts, all.itemCounts, demand); });
}

/// What a page says whose list is not split.
void DefineUnsplit(SharedData& shared) {
  shared.DefineFlag("first_page", [] { return true; });
  shared.DefineFlag("has_pages", [] { return false; });
  shared.DefineFlag("page_range", [] { return false; });
  shared.Define(
      "pages", [](Demand /*demand*/) { return Data::EmptyList(); }, SharedData::From::kSettings);
}

}  // namespace

void DefineSharedData(SharedData& shared, const SiteFacts& facts) {
  DefineSettings(shared, facts);
  DefineCounts(shared, facts);
  const Statistics& statistics = facts.statistics;
  DefineUnsplit(shared);
  DefineCourse(shared, facts);
  shared.Define("summary",
                [&](Demand demand) { return SummaryData(facts, statistics.summary, demand); });
  shared.Define("players",
                [&](Demand demand) { return PlayerList(facts, statistics.players, demand); });
  shared.Define("top_players", [&](Demand demand) {
    return PlayerList(facts, statistics.players, demand, 0, kTopPlayers);
  });
  shared.Define("maps", [&](Demand demand) { return MapList(facts, demand); });
  const std::size_t games = statistics.games.size();
  shared.Define("games",
                [&facts, games](Demand demand) { return GameList(facts, 0, games, demand); });
  shared.Define("recent_games", [&facts, games](Demand demand) {
    return GameList(facts, games - std::min(games, kRecentGames), games, demand);
  });
  DefineUses(shared, facts);
  shared.Define("kill_table", [&](Demand demand) { return KillTable(facts, demand); });
  shared.Define("weapon_table", [&](Demand demand) {
    return WeaponTable(facts, demand, [](const WeaponUse& use) { return use.kills; });
  });
  shared.Define("death_table", [&](Demand demand) {
    return WeaponTable(facts, demand, [](const WeaponUse& use) { return use.deaths; });
  });
  shared.Define("has_duels", [&](Demand /*demand*/) {
    return Data(std::ranges::any_of(statistics.pairs, [](const Pair& pair) {
      return pair.kills > 0 && pair.killer != pair.victim;
    }));
  });
  shared.Define("duels", [&](Demand demand) { return DuelList(facts, demand); });
  shared.Define("duel_tables", [&](Demand demand) { return DuelTables(facts, demand); });
  shared.Define("records", [&](Demand demand) { return RecordList(facts, demand); });
}

}  // namespace morvane
