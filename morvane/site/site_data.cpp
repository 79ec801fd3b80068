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

Data UserVariables(const SiteSettings& settings) {
  Data object;
  for (const auto& [name, value] : settings.userVariables) object[name] = Data(PageText(value));
  return object;
}

/// The page colors and shades made from them, so that a page of any two colors can have panels,
/// lines and links that are told apart and read.
Data Colors(const SiteSettings& settings) {
  const Rgb text = settings.textColor;
  const Rgb background = settings.backgroundColor;
  const config::Shades shades = ShadesOf(background, text);
  Data object;
  const auto set = [&](const char* name, Rgb color) { Set(object, name, ColorText(color)); };
  const auto setLink = [&](const std::string& name, Rgb color) {
    set(name.c_str(), color);
    set((name + "_text").c_str(), Readable(color, shades.stripe));
    set((name + "_ink").c_str(), InkOn(color));
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
  return object;
}

Data NameColorList(const SiteSettings& settings) {
  Data list = List(settings.nameColors.size());
  for (std::size_t i = 0; i < settings.nameColors.size(); ++i) {
    Data row;
    Set(row, "code", i);
    Set(row, "color", ColorText(settings.nameColors[i]));
    Append(list, std::move(row));
  }
  return list;
}

/// A color, and the ink that reads best on it.
void SetColor(Data& row, Rgb color) {
  Set(row, "color", ColorText(color));
  Set(row, "ink", ColorText(InkOn(color)));
}

Data HiliteList(const SiteSettings& settings) {
  Data list = List(settings.hiliteLevels.size());
  for (const HiliteLevel& level : settings.hiliteLevels) {
    Data row;
    Set(row, "percentile", Fixed(level.percentile, 0));
    SetColor(row, level.color);
    Append(list, std::move(row));
  }
  return list;
}

Data ColumnColorList(const SiteSettings& settings) {
  Data list = List(settings.columnColors.size());
  for (std::size_t i = 0; i < settings.columnColors.size(); ++i) {
    const Rgb color = settings.columnColors[i];
    Data row;
    Set(row, "tone", i);
    SetColor(row, color);
    Append(list, std::move(row));
  }
  return list;
}

/// From the panel to the color of links, in which text can be read: what happens often.
Data HeatColorList(const SiteSettings& settings) {
  constexpr int kLevels = 4;
  const Rgb text = settings.textColor;
  const Rgb background = settings.backgroundColor;
  const config::Shades shades = ShadesOf(background, text);
  const Rgb hot = Readable(settings.linkColor, shades.stripe);
  Data list = List(kLevels);
  for (int level = 1; level <= kLevels; ++level) {
    const Rgb color = Mix(shades.panel, hot, double{1.0} * level / kLevels);
    Data row;
    Set(row, "heat", level);
    SetColor(row, color);
    Append(list, std::move(row));
  }
  return list;
}

Data LimitData(const SiteFacts& facts) {
  const Limits& limits = facts.statistics.limits;
  Data object;
  Set(object, "minutes", limits.playersMinTime);
  Set(object, "games", limits.playersMinGames);
  Set(object, "kills", limits.playersMinKills);
  Set(object, "last_placed", limits.gameLastPlaced);
  Set(object, "hilite", Fixed(facts.settings.hiliteMinimum, 0));
  return object;
}

/// How many of the players, the first ones, the overall kill tables show. Where nobody is ranked
/// nobody is left out.
std::size_t TablePlayers(const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  const bool limited = statistics.limits.limitOverallKillTables && statistics.ranked > 0;
  return limited ? statistics.ranked : statistics.players.size();
}

Data KillTable(const SiteFacts& facts) {
  const std::span players(facts.statistics.players.data(), TablePlayers(facts));
  return KillTableData(
      facts.settings, players, facts.statistics.pairs,
      [&](const Player& player) -> const Label& { return facts.PlayerLabel(player.player); });
}

/// Players by weapon. `count` takes what is counted from a player's use of one.
Data WeaponTable(const SiteFacts& facts,
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
  return TableData(facts.settings, table);
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
Data RecordList(const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  const std::size_t count = statistics.ranked > 0 ? statistics.ranked : statistics.players.size();
  Data list = List(kRecords.size());
  for (const RecordKind& kind : kRecords) {
    const auto first = statistics.players.begin();
    const auto best = std::max_element(
        first, first + static_cast<std::ptrdiff_t>(count),
        [&](const Player& a, const Player& b) { return kind.value(a) < kind.value(b); });
    if (count == 0 || kind.value(*best) <= 0) continue;
    Data row;
    Set(row, "title", std::string(kind.title));
    Set(row, "value",
        kind.decimals == 0 ? Grouped(std::llround(kind.value(*best)))
                           : Fixed(kind.value(*best), kind.decimals));
    Set(row, "link", facts.PlayerLabel(static_cast<std::uint32_t>(best - first)).link);
    Append(list, std::move(row));
  }
  return list;
}

Data Uses(const SiteFacts& facts, const char* list) {
  Data object;
  const Figures& all = facts.statistics.summary.figures;
  SetUses(object, facts, all.weapons, all.itemCounts);
  return std::move(object[list]);
}

Data CountText(std::size_t count) { return Data(Grouped(static_cast<std::int64_t>(count))); }

void DefineSettings(SharedData& shared, const SiteFacts& facts) {
  const SiteSettings& settings = facts.settings;
  const auto define = [&](const char* name, Data (*make)(const SiteSettings&)) {
    shared.Define(
        name, [&settings, make] { return make(settings); }, SharedData::From::kSettings);
  };
  define("vars", UserVariables);
  define("colors", Colors);
  define("name_colors", NameColorList);
  define("column_colors", ColumnColorList);
  define("heat_colors", HeatColorList);
  define("hilites", HiliteList);
  shared.Define(
      "has_hilites", [&] { return Data(HiliteList(settings).is_non_empty_list()); },
      SharedData::From::kText);
  shared.Define(
      "limits", [&] { return LimitData(facts); }, SharedData::From::kSettings);
}

/// What has happened of late.
void DefineCourse(SharedData& shared, const SiteFacts& facts) {
  shared.Define("awards", [&] { return AwardList(facts, facts.Awards()); });
  shared.Define(
      "has_awards", [&] { return Data(!facts.Awards().empty()); }, SharedData::From::kText);
  shared.Define("evening", [&] { return EveningData(facts); });
  shared.Define("last_game", [&] {
    const auto games = static_cast<std::uint32_t>(facts.statistics.games.size());
    return games == 0 ? Data(false) : GameRow(facts, games - 1);
  });
  shared.Define("game_cards", [&] { return GameCards(facts); });
  shared.Define("activity", [&] { return ActivityRows(facts); });
  shared.Define(
      "has_activity", [&] { return Data(std::ranges::any_of(facts.statistics.games, HasDay)); },
      SharedData::From::kText);
  shared.Define(
      "has_recent", [&] { return Data(facts.days.first > 0); }, SharedData::From::kText);
  shared.Define(
      "recent_title",
      [&] {
        return Data(facts.days.byDate ? "Last " + std::to_string(kDaysOfLate) + " days"
                                      : "Last " + std::to_string(kGamesOfLate) + " games");
      },
      SharedData::From::kText);
  shared.Define("recent_players", [&] {
    return PlayerList(facts, PlayersSince(facts.statistics, facts.days.first), 0, kTopPlayers);
  });
}

void DefineCounts(SharedData& shared, const SiteFacts& facts) {
  const auto define = [&](const char* name, SharedData::Maker maker) {
    shared.Define(name, std::move(maker), SharedData::From::kText);
  };
  const Statistics& statistics = facts.statistics;
  const std::size_t players = statistics.players.size();
  define("has_players", [=] { return Data(players > 0); });
  define("player_count", [=] { return CountText(players); });
  define("ranked_count", [&] { return CountText(statistics.ranked); });
  define("nobody_ranked",
         [=, ranked = statistics.ranked] { return Data(players > 0 && ranked == 0); });
  const auto anyGame = [&statistics](Dated dated) {
    return Data(std::ranges::any_of(statistics.games,
                                    [=](const Game& game) { return game.dated == dated; }));
  };
  define("has_reckoned", [=] { return anyGame(Dated::kReckoned); });
  define("has_not_after", [=] { return anyGame(Dated::kNotAfter); });
  define("map_count", [&] { return CountText(statistics.maps.size()); });
  define("game_count", [&] { return CountText(statistics.games.size()); });
  define("games_found", [&] { return CountText(statistics.gamesFound); });
  define("more_players",
         [=] { return players <= kTopPlayers ? Data(false) : CountText(players - kTopPlayers); });
  define("more_games", [&] {
    const std::size_t games = statistics.games.size();
    return games <= kRecentGames ? Data(false) : CountText(games - kRecentGames);
  });
  define("custom_ranking", [&] { return Data(statistics.customRanking); });
}

/// What a page says whose list is not split.
void DefineUnsplit(SharedData& shared) {
  for (const auto& [name, value] : {std::pair("first_page", true), std::pair("has_pages", false),
                                    std::pair("page_range", false)}) {
    shared.Define(
        name, [value = value] { return Data(value); }, SharedData::From::kText);
  }
  shared.Define(
      "pages", [] { return List(0); }, SharedData::From::kSettings);
}

}  // namespace

void DefineSharedData(SharedData& shared, const SiteFacts& facts) {
  DefineSettings(shared, facts);
  DefineCounts(shared, facts);
  const Statistics& statistics = facts.statistics;
  DefineUnsplit(shared);
  DefineCourse(shared, facts);
  shared.Define("summary", [&] { return SummaryData(facts, statistics.summary); });
  shared.Define("players", [&] { return PlayerList(facts, statistics.players); });
  shared.Define("top_players",
                [&] { return PlayerList(facts, statistics.players, 0, kTopPlayers); });
  shared.Define("maps", [&] { return MapList(facts); });
  const std::size_t games = statistics.games.size();
  shared.Define("games", [&facts, games] { return GameList(facts, 0, games); });
  shared.Define("recent_games", [&facts, games] {
    return GameList(facts, games - std::min(games, kRecentGames), games);
  });
  shared.Define(
      "has_weapons", [&] { return Data(!statistics.summary.figures.weapons.empty()); },
      SharedData::From::kText);
  shared.Define(
      "has_items", [&] { return Data(!statistics.summary.figures.itemCounts.empty()); },
      SharedData::From::kText);
  shared.Define("weapons", [&] { return Uses(facts, "weapons"); });
  shared.Define("items", [&] { return Uses(facts, "items"); });
  shared.Define(
      "has_splash", [&] { return Uses(facts, "has_splash"); }, SharedData::From::kText);
  shared.Define("joined_weapons", [&] { return Uses(facts, "joined_weapons"); });
  shared.Define("kill_table", [&] { return KillTable(facts); });
  shared.Define("weapon_table",
                [&] { return WeaponTable(facts, [](const WeaponUse& use) { return use.kills; }); });
  shared.Define("death_table", [&] {
    return WeaponTable(facts, [](const WeaponUse& use) { return use.deaths; });
  });
  shared.Define("has_duels", [&] {
    return Data(std::ranges::any_of(statistics.pairs, [](const Pair& pair) {
      return pair.kills > 0 && pair.killer != pair.victim;
    }));
  });
  shared.Define("duels", [&] { return DuelList(facts); });
  shared.Define("duel_tables", [&] { return DuelTables(facts); });
  shared.Define("records", [&] { return RecordList(facts); });
}

}  // namespace morvane
