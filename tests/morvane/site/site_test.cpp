#include "morvane/site/site.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <spawn.h>
#include <sys/wait.h>

#include <nlohmann/json.hpp>

#include "config/rgb.h"
#include "morvane/site/page_list.h"
#include "morvane/statistics/names.h"
#include "tests/morvane/site_fixture.h"
#include "text/text.h"

extern char** environ;

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

// --- settings -------------------------------------------------------------------------------

/// A setting, and what stands on a page with it that does not stand there with the shipped one.
struct SettingCase {
  const char* section;
  const char* key;
  const char* value;
  const char* page;
  const char* text;
};

void PrintTo(const SettingCase& c, std::ostream* stream) {
  *stream << c.key << "=" << c.value << " on " << c.page;
}

class PageSettings : public testing::TestWithParam<SettingCase> {};

std::string CaseLog() {
  return OneGame({"^4Boss", "^3One", "Two", "Three"}) + Duel("Two", "^4Boss", 1);
}

TEST_P(PageSettings, ChangeThePage) {
  const SettingCase& c = GetParam();
  SiteRun site;
  site.Log(CaseLog());
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page(c.page), c.text), 0U) << "stands there with the shipped setting too";
  site.Set(c.section, c.key, c.value);
  ASSERT_EQ(site.Run(), 0);
  EXPECT_GT(Count(site.Page(c.page), c.text), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PageSettings,
    testing::Values(
        SettingCase{"HTML", "text_color", "#123456", "style.css", "--text: #123456;"},
        SettingCase{"HTML", "link_color", "#12AB56", "style.css", "--link: #12AB56;"},
        SettingCase{"HTML", "vlink_color", "#12AB56", "style.css", "--visited: #12AB56;"},
        SettingCase{"HTML", "alink_color", "#12AB56", "style.css", "--active: #12AB56;"},
        SettingCase{"HTML", "bg_color", "white", "style.css", "--background: #FFFFFF;"},
        SettingCase{"HTML", "name3", "#ABCDEF", "stats.html",
                    "<span style=\"color:#ABCDEF\">One</span>"},
        SettingCase{"HTML", "name4", "#11CC22", "stats.html",
                    "<span style=\"color:#11CC22\">Boss</span>"},
        SettingCase{"HTML", "bg_image", "no\\such.png", "style.css", "url(\"images/such.png\")"},
        SettingCase{"HTML", "file_ext", ".htm", "stats.htm", "href=\"player_boss.htm\""},
        SettingCase{"KILL TABLES", "hilite_minhilite", "1", "gamektable_1.html",
                    "style=\"background:#D0D000;color:#000000\">2<"},
        SettingCase{"KILL TABLES", "hilite_minhilite", "3", "gamektable_1.html",
                    "style=\"background:#00FF00;color:#000000\">3<"},
        SettingCase{"KILL TABLES", "hilite_color0", "#ABCDEF", "allkilltable.html",
                    "--key:#ABCDEF"},
        SettingCase{"KILL TABLES", "hilite_level1", "88", "allkilltable.html",
                    "from percentile 88"},
        SettingCase{"KILL TABLES", "hilite_level3", "62", "allkilltable.html",
                    "from percentile 62"},
        SettingCase{"KILL TABLES", "column1", "#FEDCBA", "style.css",
                    ".c1 { background: #FEDCBA; color: #000000; }"},
        SettingCase{"Main", "time_format", "year %Y", "game_1.html", "year 20"},
        SettingCase{"Main", "players_min_kills", "2", "stats.html", "<tr class=\"unranked\">"},
        SettingCase{"Game", "game_last_placed", "7", "playerGWP.html", "placed is place 7"},
        SettingCase{"USER VARS", "title", "A & B", "stats.html", "A &amp; B"}));

TEST(PageSettings, WithoutLevelsNothingIsHighlighted) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("KILL TABLES", "hilite_minhilite", "1");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_GT(Count(site.Page("gamektable_1.html"), "<td class=\"c0\" style"), 0U);
  site.Set("KILL TABLES", "hilite_levels", "0");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("gamektable_1.html"), "<td class=\"c0\" style"), 0U);
  EXPECT_EQ(Count(site.Page("gamektable_1.html"), "percentile"), 0U);
}

TEST(PageSettings, BackgroundImageIsCopied) {
  SiteRun site;
  site.Log(CaseLog());
  WriteFile(site.Folder() / "my pictures" / "star field.png", "bytes");
  site.Set("HTML", "bg_image", ".\\my pictures\\star field.png");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(ReadFile(site.Output() / "images" / "star field.png"), "bytes");
  EXPECT_EQ(Count(site.Page("style.css"), "url(\"images/star%20field.png\")"), 1U);
}

TEST(PageSettings, UnusableTimeFormatIsANormalMessageAndIso) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "time_format", "%Q");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "normal the time format \"%Q\""), 1U);
  EXPECT_TRUE(std::regex_search(site.Page("game_1.html"),
                                std::regex(R"(started ≤&nbsp;\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")));
}

TEST(PageSettings, OverallKillTablesLeaveUnrankedPlayersOut) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "players_min_kills", "1");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("allkilltable.html"), ">Three<"), 0U);
  EXPECT_GT(Count(site.Page("playerrank.html"), ">Three<"), 0U) << "never silently missing";
  site.Set("Main", "limit_overall_killtables", "0");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("allkilltable.html"), ">Three<"), 2U) << "a row and a column";
}

TEST(PageSettings, DuelsAndOpponentsNameWhoIsNotRanked) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "players_min_kills", "1");
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("morekilltables.html");
  EXPECT_EQ(Count(page.substr(page.find("fiercest")), ">Three<"), 1U);
  EXPECT_GT(Count(site.Page("player_boss.html"), ">Three<"), 0U);
}

TEST(PageSettings, WhereNobodyIsRankedTablesShowAllAndSayWhy) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "players_min_kills", "7");
  ASSERT_EQ(site.Run(), 0);
  constexpr const char* kWhy =
      "Nobody is ranked: no player has at least 0 minutes, 0 games and 7 kills.";
  for (const char* page : {"allkilltable.html", "otherkilltables.html"}) {
    EXPECT_GT(Count(site.Page(page), ">Three<"), 0U) << page;
    EXPECT_EQ(Count(site.Page(page), kWhy), 1U) << page;
  }
  EXPECT_EQ(Count(site.Page("playerrank.html"), kWhy), 1U);
  site.Set("Main", "players_min_kills", "1");
  ASSERT_EQ(site.Run(), 0);
  for (const auto& [name, text] : site.Pages()) {
    EXPECT_EQ(Count(text, "Nobody is ranked"), 0U) << name;
  }
}

/// What the links of a page lead to, without those within it.
std::vector<std::string> LinksOf(const std::string& page) {
  static const std::regex kLink(R"re((?:href|src)="([^"]*)")re");
  std::vector<std::string> links;
  for (std::sregex_iterator at(page.begin(), page.end(), kLink), end; at != end; ++at) {
    if (!(*at)[1].str().starts_with("#")) links.push_back((*at)[1]);
  }
  return links;
}

void ExpectLinksResolve(const SiteRun& site) {
  const std::map<std::string, std::string> pages = site.Pages();
  for (const auto& [name, text] : pages) {
    if (!name.ends_with(".html")) continue;
    for (const std::string& link : LinksOf(text)) {
      EXPECT_EQ(pages.count(link), 1U) << name << " leads to " << link;
    }
  }
}

// --- what the log does not tell ---------------------------------------------------------------

/// A log without its stamps.
std::string WithoutStamps(const std::string& log) {
  std::istringstream lines(log);
  std::string text;
  for (std::string line; std::getline(lines, line);) text += line.substr(7) + "\n";
  return text;
}

TEST(Site, ShowsNoTimeThatIsNotKnown) {
  const std::string log = OneGame({"Ann", "Bob"});
  const struct {
    const char* page;
    const char* text;  // what stands there of a log with stamps
    const char* unknown;
  } kCases[] = {
      {"stats.html", "<strong>5:00</strong> Time played", "<strong>–</strong> Time played"},
      {"gamelist.html", "<td data-sort=\"300\">5:00</td>", "<td data-sort=\"\">–</td>"},
      {"game_1.html", ", 5:00 long", "<td data-sort=\"\">–</td>"},
      {"gameplayer_1.html", "0 deaths in 4:59", "0 deaths</p>"},
      {"map_q3dm17.html", "<strong>5:00</strong> Time played", "<strong>–</strong> Time played"},
      {"maplist.html", "<td data-sort=\"300\">5:00</td>", "<td data-sort=\"\">–</td>"},
      {"playerrank.html", "<td data-sort=\"299\">4:59</td>", "<td data-sort=\"\">–</td>"},
      {"playerperhour.html", "<td class=\"bar\">12.04<", "<td class=\"bar\">–<"},
      {"playerpermin.html", "<td class=\"bar\">0.20<", "<td class=\"bar\">–<"},
      {"player_ann.html", "<strong>0.20</strong> Kills per minute",
       "<strong>–</strong> Kills per minute"},
      {"player_ann.html", "<strong>4:59</strong> Time played", "<strong>–</strong> Time played"},
      {"playerlist.html", "≈&nbsp;20", "<td class=\"text\" data-sort=\"\">–</td>"},
  };
  SiteRun site;
  site.Set("Main", "time_format", "%Y");
  site.Log(log);
  ASSERT_EQ(site.Run(), 0);
  for (const auto& test : kCases)
    EXPECT_GT(Count(site.Page(test.page), test.text), 0U) << test.page;
  site.Log(WithoutStamps(log));
  ASSERT_EQ(site.Run(), 0);
  for (const auto& test : kCases) {
    EXPECT_EQ(Count(site.Page(test.page), test.text), 0U) << test.page << test.text;
    EXPECT_GT(Count(site.Page(test.page), test.unknown), 0U) << test.page << test.unknown;
  }
  EXPECT_EQ(Count(site.Page("stats.html"), "kills per minute"), 0U);
}

TEST(Site, MarksHowWellATimeIsKnown) {
  const std::string game = OneGame({"Ann", "Bob"});
  std::string dated = game;
  dated.insert(dated.find("  0:01"), "  0:00 ServerTime:\t20190304173140\t17:31:40 (4 MAR 2019)\n");
  SiteRun site;
  site.Set("Main", "time_format", "%Y-%m-%d %H:%M:%S");
  site.Log(dated + game + game);
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("game_1.html"), "started 2019-03-04 17:31:40,"), 1U);
  EXPECT_EQ(Count(site.Page("game_2.html"), "started ≤&nbsp;20"), 1U);
  EXPECT_EQ(Count(site.Page("game_3.html"), "started ≈&nbsp;20"), 1U);
  const char* const kReckoned = "≈: reckoned back";
  const char* const kNotAfter = "≤: then or earlier";
  for (const auto& [page, reckoned, notAfter] :
       {std::tuple("game_1.html", 0U, 0U), std::tuple("game_2.html", 0U, 1U),
        std::tuple("game_3.html", 1U, 0U), std::tuple("gamelist.html", 1U, 1U)}) {
    EXPECT_EQ(Count(site.Page(page), kReckoned), reckoned) << page;
    EXPECT_EQ(Count(site.Page(page), kNotAfter), notAfter) << page;
  }
}

TEST(Site, MarksBots) {
  SiteRun site;
  site.Log(Init() + Join(0, "Ann") + JoinBot(1, "Bob") + Kill(0, 1) + kShutdown);
  ASSERT_EQ(site.Run(), 0);
  const auto isMarked = [&](const char* page, const std::string& name) {
    const std::regex mark(name + "</bdi></a>(</span>)? <span class=\"bot\">bot</span>");
    return std::regex_search(site.Page(page), mark);
  };
  for (const char* page : {"stats.html", "playerrank.html", "allkilltable.html", "game_1.html",
                           "player_ann.html", "maprank_q3dm17.html"}) {
    EXPECT_TRUE(isMarked(page, "Bob")) << page;
    EXPECT_FALSE(isMarked(page, "Ann")) << page;
  }
  EXPECT_EQ(Count(site.Page("player_bob.html"), "Bob</bdi> <span class=\"bot\">"), 1U);
}

TEST(Site, ShowsTheSameWinnerOnEveryPage) {
  const std::string play = Join(0, "Ann", 1) + Join(1, "Bob", 2) + Kill(0, 1) + kShutdown;
  const struct {
    int type;
    const char* winner;  // in the list of games
    unsigned wins;
  } kCases[] = {{3, "<td class=\"text\">Red", 1}, {4, "<td class=\"text\">–", 0}};
  for (const auto& test : kCases) {
    SiteRun site;
    site.Log(Init("q3dm7", test.type) + play);
    ASSERT_EQ(site.Run(), 0);
    EXPECT_EQ(Count(site.Page("gamelist.html"), test.winner), 1U) << test.type;
    EXPECT_EQ(Count(site.Page("game_1.html"), "class=\"winner\""), test.wins) << test.type;
    EXPECT_EQ(Count(site.Page("player_ann.html"), std::to_string(test.wins) + " of 1</strong>"),
              1U);
    EXPECT_EQ(Count(site.Page("game_1.html"), "The lead"), test.wins) << test.type;
  }
}

TEST(Site, ShowsAWeaponAndItsSplashAsOneToo) {
  SiteRun site;
  const std::string game = Init() + Join(0, "Ann") + Join(1, "Bob") + Kills(3, 0, 1) +
                           Kill(0, 1, "ROCKET") + Kill(0, 1, "ROCKET") +
                           Kill(0, 1, "ROCKET_SPLASH") + Kill(0, 1, "ROCKET_SPLASH");
  site.Log(game + kShutdown);
  ASSERT_EQ(site.Run(), 0);
  for (const char* page : {"stats.html", "game_1.html", "map_q3dm17.html", "player_ann.html"}) {
    const std::string text = site.Page(page);
    EXPECT_EQ(Count(text, "its splash included"), 1U) << page;
    EXPECT_EQ(Count(text, ">57.1&nbsp;%<"), 1U) << page;
    EXPECT_EQ(Count(text, ">28.6&nbsp;%<"), 2U) << page;
  }
  EXPECT_EQ(Count(site.Page("playerFSES.html"), "<td class=\"text\">Rocket</td>"), 1U);
}

// --- players.txt --------------------------------------------------------------------------------

TEST(Site, NoPageNamesWhoIsLeftOut) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  ASSERT_GT(Count(site.Page("stats.html"), "RedBaron") + Count(site.Page("stats.html"), "Baron"),
            0U);
  WriteFile(site.Folder() / "players.txt", "- redbaron\nGuest7 = Guest8\nnothing\n");
  fs::remove_all(site.Output());
  ASSERT_EQ(site.Run(), 0);
  for (const auto& [name, text] : site.Pages()) {
    EXPECT_EQ(Count(text, "Baron") + Count(text, "redbaron") + Count(name, "baron"), 0U) << name;
  }
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "severe players.txt:3: neither"), 1U);
  EXPECT_EQ(site.Page("player_guest7.html"), "");
  EXPECT_GT(Count(site.Page("gameplayer_3.html"), "player_guest8.html\"><bdi>Guest7<"), 0U)
      << "the name borne in the game";
  ExpectLinksResolve(site);
}

// --- hostile input --------------------------------------------------------------------------

TEST(Site, HostileNamesStayTextAndInsideTheFolder) {
  SiteRun site;
  site.Log(RichLog());
  site.Set("USER VARS", "secret", "<i>leak</i>");
  ASSERT_EQ(site.Run(), 0);
  std::size_t playerPages = 0;
  for (const auto& [name, text] : site.Pages()) {
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                     "0123456789_-."),
              name.npos)
        << name;
    for (const char* raw :
         {"<script>alert", "<img", "<i>leak", "\xE2\x80\xAE", "\x1B", "\x07", "caf\xE9 "}) {
      EXPECT_EQ(Count(text, raw), 0U) << name << ": " << raw;
    }
    if (name.starts_with("player_")) ++playerPages;
  }
  EXPECT_GT(Count(site.Page("playerrank.html"), "&lt;script&gt;alert(1)&lt;/script&gt;</bdi>"), 0U);
  EXPECT_EQ(playerPages, 3U + kHostileNames.size() + 120U) << "two players shared a page";
}

TEST(Site, KeepsTheNamesOfPlayerPages) {
  SiteRun site;
  site.Log(OneGame({"A.B", "a b", "Zeh"}));
  ASSERT_EQ(site.Run(), 0);
  std::set<std::string> before;
  for (const auto& [name, text] : site.Pages()) before.insert(name);
  site.Log(OneGame({"zeh", "^1A.b", "Other", "A B"}));
  ASSERT_EQ(site.Run(), 0);
  for (const auto& [name, text] : site.Pages()) {
    if (name.starts_with("player_")) {
      EXPECT_TRUE(before.count(name) == 1 || name == "player_other.html") << name;
    }
  }
}

// --- the site as a whole --------------------------------------------------------------------

TEST(Site, LinksResolveAndLeadNowhereElse) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  ExpectLinksResolve(site);
  for (const auto& [name, text] : site.Pages()) {
    // The name of SVG is an address, but nobody asks for what is there.
    const std::size_t names = Count(text, "xmlns=\"http://www.w3.org/2000/svg\"");
    EXPECT_EQ(Count(text, "://") + Count(text, "url(//"), names) << name;
  }
}

TEST(Site, IsConsistentWithFewTemplates) {
  for (const char* lone : {"player_template", "lastgame_template", "gamelist_template", "none"}) {
    SiteRun site;
    site.Log(RichLog());
    for (const char* key : {"map_templates_number", "game_templates_number"}) {
      site.Set("TEMPLATES", key, "0");
    }
    site.Set("TEMPLATES", "main_templates_number", "2");
    for (const char* key : {"player_template", "lastgame_template", "gamelist_template"}) {
      if (std::string_view(key) != lone) site.Set("TEMPLATES", key, "");
    }
    ASSERT_EQ(site.Run(), 0);
    ExpectLinksResolve(site);
    EXPECT_EQ(Count(site.Page("stats.html"), "href=\"playerKDS.html\""), 1U);
  }
}

TEST(Site, WorksWithoutCountedGames) {
  SiteRun site;
  site.Log("");
  ASSERT_EQ(site.Run(), 0);
  ExpectLinksResolve(site);
  EXPECT_EQ(Count(site.Page("stats.html"), "No player has been seen"), 1U);
  EXPECT_EQ(Count(site.Page("lastgame.html"), "No game has been counted"), 1U);
}

/// Runs tidy over files; the result is what it says about them.
std::string Tidy(const fs::path& report, const std::vector<std::string>& files) {
  std::vector<std::string> arguments = {"tidy", "-q", "-e", "-f", report.string()};
  arguments.insert(arguments.end(), files.begin(), files.end());
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawnp(&child, "tidy", nullptr, nullptr, pointers.data(), environ) != 0) {
    return "tidy cannot be started";
  }
  int status = 0;
  waitpid(child, &status, 0);
  return ReadFile(report);
}

TEST(Site, PagesAreValid) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  std::vector<std::string> files;
  for (const auto& [name, text] : site.Pages()) {
    const bool oneOfMany = name.find("_9") != name.npos || name.find("_guest") != name.npos;
    if (name.ends_with(".html") && !oneOfMany) files.push_back((site.Output() / name).string());
  }
  ASSERT_GT(files.size(), 40U);
  std::istringstream lines(Tidy(site.Folder() / "tidy.txt", files));
  for (std::string line; std::getline(lines, line);) {
    // This tidy is older than these attributes; and a table may well have no rows.
    const bool known = line.find("\"aria-current\"") != line.npos ||
                       line.find("\"viewbox\"") != line.npos ||
                       line.find("\"preserveaspectratio\"") != line.npos ||
                       line.find("trimming empty <tbody>") != line.npos;
    EXPECT_TRUE(known) << line;
  }
}

TEST(Site, RewritesOnlyWhatChanges) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1);
  for (const auto& entry : fs::directory_iterator(site.Output())) {
    fs::last_write_time(entry.path(), past);
  }
  const auto rewritten = [&] {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(site.Output())) {
      const std::string name = entry.path().filename().string();
      if (entry.last_write_time() > past && name != PageList::kFileName) names.insert(name);
    }
    return names;
  };
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(rewritten(), std::set<std::string>());
  site.Set("HTML", "link_color", "#101010");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(rewritten().count("style.css"), 1U);
  EXPECT_EQ(rewritten().count("playerrank.html"), 0U);
}

// --- what the engine adds -------------------------------------------------------------------

std::set<std::string> NamesOf(const SiteRun& site) {
  std::set<std::string> names;
  for (const auto& [name, text] : site.Pages()) names.insert(name);
  return names;
}

TEST(Site, PagesOfEarlierRunsGoAndNothingElse) {
  SiteRun site;
  site.Log(CaseLog());
  WriteFile(site.Folder() / "stars.png", "stars");
  site.Set("HTML", "bg_image", "stars.png");
  ASSERT_EQ(site.Run(), 0);
  const std::set<std::string> first = NamesOf(site);
  ASSERT_TRUE(first.contains("player_three.html") && first.contains("index.html"));
  WriteFile(site.Output() / "player_one.html", "changed by hand");
  WriteFile(site.Output() / "own.html", "own");
  WriteFile(site.Output() / "images" / "own.png", "own");

  site.Log(OneGame({"^4Boss", "Two"}));
  site.Set("HTML", "bg_image", "");
  site.Set("HTML", "file_ext", ".htm");
  ASSERT_EQ(site.Run(), 0);
  for (const std::string& name : NamesOf(site)) {
    const bool isOwn = name == "player_one.html" || name == "own.html";
    EXPECT_TRUE(isOwn || !name.ends_with(".html")) << name;
  }
  EXPECT_EQ(site.Page("player_one.html"), "changed by hand");
  EXPECT_EQ(site.Page("images/stars.png") + site.Page("images/own.png"), "own");
  EXPECT_EQ(Count(site.Page("index.htm"), "url=stats.htm\""), 1U);

  // Back again: what stood there by hand does not keep the page from being made.
  site.Log(CaseLog());
  site.Set("HTML", "file_ext", ".html");
  ASSERT_EQ(site.Run(), 0);
  std::set<std::string> expected = first;
  expected.insert("own.html");
  EXPECT_EQ(NamesOf(site), expected);

  const fs::path former = site.Output();
  site.Set("Main", "dest_path", "elsewhere");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(NamesOf(site), expected) << "another folder is no reason to empty this one: " << former;
}

TEST(Site, TemplatesThatCannotBeReadKeepTheirPages) {
  SiteRun site;
  site.Log(CaseLog());
  const fs::path templates = site.OwnTemplates();
  ASSERT_EQ(site.Run(), 0);
  const std::set<std::string> all = NamesOf(site);
  fs::rename(templates / "game.htmlt", templates / "game.off");
  site.Set("TEMPLATES", "player_template", "");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_TRUE(NamesOf(site).contains("game_1.html"));
  EXPECT_FALSE(NamesOf(site).contains("player_boss.html"));
  fs::rename(templates, site.Folder() / "gone");
  EXPECT_EQ(site.Run(), 1) << "nothing could be written";
  EXPECT_TRUE(NamesOf(site).contains("game_1.html") && NamesOf(site).contains("style.css"));
  fs::rename(site.Folder() / "gone", templates);
  fs::rename(templates / "game.off", templates / "game.htmlt");
  site.Set("TEMPLATES", "player_template", "player");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(NamesOf(site), all);
}

TEST(Site, AFirstPageAndStatsJsonKeepOutOfTheWay) {
  SiteRun site;
  site.Log(CaseLog());
  fs::create_directories(site.Output());
  WriteFile(site.Output() / "index.html", "own");
  WriteFile(site.Output() / "stats.json", "own");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(site.Page("index.html") + site.Page("stats.json"), "ownown");
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "is not the engine's"), 2U);
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), " severe "), 0U);

  const fs::path templates = site.OwnTemplates();
  WriteFile(templates / "Index.htmlt", "by a template");
  site.Set("TEMPLATES", "main_template1", "Index");
  site.Set("HTML", "file_ext", ".json");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(site.Page("Index.json"), "by a template");
  EXPECT_EQ(site.Page("index.json"), "");
  EXPECT_EQ(Count(site.Page("stats.json"), "<!DOCTYPE html>"), 1U);
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), " severe "), 0U);
}

TEST(Site, StatsJsonHasTheFiguresOfThePages) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  const auto json = nlohmann::json::parse(site.Page("stats.json"));
  EXPECT_EQ(json["version"], 1);
  EXPECT_EQ(json["players"].size(), json["summary"]["players"]);
  EXPECT_EQ(json["maps"].size(), json["summary"]["maps"]);
  EXPECT_EQ(json["games"].size(), json["summary"]["games"]);
  std::set<std::string> names;
  std::uint64_t kills = 0;
  for (const auto& player : json["players"]) {
    names.insert(player["name"]);
    kills += player["kills"].get<std::uint64_t>();
    const std::string page = site.Page(player["page"]);
    EXPECT_EQ(Count(page, "<strong>" + player["kills"].dump() + "</strong> Kills"), 1U);
    EXPECT_EQ(Count(page, "<strong>" + player["score"].dump() + "</strong> Score"), 1U);
  }
  EXPECT_EQ(kills, json["summary"]["kills"]);
  EXPECT_EQ(names.count("<script>alert(1)</script>"), 1U);
  std::uint64_t gameKills = 0;
  for (const auto& game : json["games"]) {
    gameKills += game["kills"].get<std::uint64_t>();
    for (const auto& player : game["players"]) EXPECT_TRUE(names.contains(player["player"]));
  }
  EXPECT_EQ(gameKills, kills);
  EXPECT_EQ(json["games"][1]["red_score"], 3);
  EXPECT_TRUE(json["games"][0]["red_score"].is_null());
}

/// Numbers of the games or ranks that the rows of a page hold, in order.
std::vector<int> RowsOf(const std::string& page, const std::string& pattern) {
  const std::regex row(pattern);
  std::vector<int> rows;
  for (std::sregex_iterator at(page.begin(), page.end(), row), end; at != end; ++at) {
    rows.push_back(std::stoi((*at)[1]));
  }
  return rows;
}

TEST(Site, LongListsHaveSeveralPages) {
  SiteRun site;
  std::string log;
  for (int i = 0; i < 401; ++i) log += Duel("Player" + std::to_string(i), "Victim", 1);
  site.Log(log);
  for (const char* key : {"game_templates_number", "map_templates_number"}) {
    site.Set("TEMPLATES", key, "0");
  }
  const fs::path templates = site.OwnTemplates();
  WriteFile(templates / "every.htmlt", "{{#games}}game {{number}};{{/games}}");
  WriteFile(templates / "some.htmlt", "{{! split: games }}{{#games}}game {{number}};{{/games}}");
  site.Set("TEMPLATES", "main_template0", "every");
  site.Set("TEMPLATES", "main_template1", "some");
  ASSERT_EQ(site.Run(), 0);
  ExpectLinksResolve(site);
  const std::string number = R"re(<th scope="row" data-sort="(\d+)">)re";
  const auto descending = [](int last, int first) {
    std::vector<int> rows;
    for (int i = last; i >= first; --i) rows.push_back(i);
    return rows;
  };
  EXPECT_EQ(RowsOf(site.Page("gamelist.html"), number), descending(401, 202));
  EXPECT_EQ(RowsOf(site.Page("gamelist-2.html"), number), descending(201, 201));
  EXPECT_EQ(RowsOf(site.Page("gamelist-1.html"), number), descending(200, 1));
  EXPECT_EQ(RowsOf(site.Page("every.html"), "game (\\d+);"), descending(401, 1));
  EXPECT_EQ(RowsOf(site.Page("some.html"), "game (\\d+);"), descending(401, 202));
  EXPECT_EQ(RowsOf(site.Page("some-1.html"), "game (\\d+);"), descending(200, 1));
  const std::string player = "<th scope=\"row\"><a href=\"player_";
  const std::string first = site.Page("playerrank.html");
  EXPECT_EQ(Count(first.substr(0, first.find("<div class=\"span-late\"")), player), 200U);
  EXPECT_GT(Count(first, "class=\"span-late\""), 0U) << "once, beside the first page";
  EXPECT_EQ(Count(site.Page("playerrank-2.html"), player), 200U);
  EXPECT_EQ(Count(site.Page("playerrank-3.html"), player), 2U);
  EXPECT_EQ(Count(site.Page("playerrank-2.html"),
                  "<a href=\"playerrank-2.html\" aria-current=\"page\">201–400</a>"),
            1U);
  // A list that grows leaves its older pages alone.
  const std::string oldest = site.Page("gamelist-1.html");
  site.Log(log + Duel("Victim", "Player1", 1));
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(RowsOf(site.Page("gamelist.html"), number), descending(402, 203));
  EXPECT_EQ(RowsOf(site.Page("gamelist-1.html"), number), descending(200, 1));
}

/// The colors that names are drawn in and on, over every page.
TEST(Site, NamesCanBeReadOnEverySurface) {
  const std::regex surface("--(?:background|panel|stripe): (#[0-9A-F]{6});");
  const std::regex name(
      "<bdi(?: style=\"background:(#[0-9A-F]{6});color:(#[0-9A-F]{6})\")?>(.*?)</bdi>");
  const std::regex piece("style=\"color:(#[0-9A-F]{6})\"");
  for (const auto& [text, background] : {std::pair{"#C0C0C0", "#000000"},
                                         {"#202020", "#FFFFFF"},
                                         {"#FFFFFF", "#777777"},
                                         {"#FFE0A0", "#203060"}}) {
    SiteRun site;
    site.Set("HTML", "text_color", text);
    site.Set("HTML", "bg_color", background);
    site.Log(OneGame(
        {"^1a^2b^3c^4d^5e^6f^7g^8h^9i^0j", "^1Red", "^4Blue", "^7White", "x^3y", "^1a^4b"}));
    ASSERT_EQ(site.Run(), 0);
    const std::string style = site.Page("style.css");
    std::vector<config::Rgb> surfaces;
    for (std::sregex_iterator at(style.begin(), style.end(), surface), end; at != end; ++at) {
      surfaces.push_back(config::ParseColor((*at)[1].str()).value());
    }
    ASSERT_GE(surfaces.size(), 3U);
    const std::string page = site.Page("playerrank.html");
    std::size_t pieces = 0;
    for (std::sregex_iterator at(page.begin(), page.end(), name), end; at != end; ++at) {
      const std::string inner = (*at)[3];
      const bool isOnChip = (*at)[1].matched;
      const std::vector<config::Rgb> behind =
          isOnChip ? std::vector{config::ParseColor((*at)[1].str()).value()} : surfaces;
      EXPECT_EQ(Count(inner, "background"), 0U) << "a chip behind a part: " << inner;
      std::vector<std::string> inks;
      if (isOnChip) inks.push_back((*at)[2]);
      for (std::sregex_iterator ink(inner.begin(), inner.end(), piece); ink != end; ++ink) {
        inks.push_back((*ink)[1]);
      }
      pieces += inks.size();
      for (const std::string& ink : inks) {
        for (const config::Rgb& one : behind) {
          EXPECT_GE(Contrast(config::ParseColor(ink).value(), one), 4.5)
              << inner << " on " << background;
        }
      }
    }
    EXPECT_GE(pieces, 15U);
  }
}

// --- templates ------------------------------------------------------------------------------

TEST(Site, MissingAndBrokenTemplatesCostOnlyTheirPages) {
  SiteRun site;
  site.Log(CaseLog());
  const fs::path folder = site.OwnTemplates();
  WriteFile(folder / "game.htmlt", "one\n{{#players}}\n");
  fs::remove(folder / "map.htmlt");
  site.Set("TEMPLATES", "main_template3", "own.tpl");
  WriteFile(folder / "own.tpl", "own {{vars.x}}");
  site.Set("TEMPLATES", "main_template4", "stats");
  ASSERT_EQ(site.Run(), 0);
  const std::string messages = site.Messages("templateparser.log.txt");
  EXPECT_EQ(Count(messages, " severe "), 2U);
  EXPECT_EQ(Count(messages, "game.htmlt:2: Unclosed section \"players\""), 1U);
  EXPECT_EQ(Count(messages, "map.htmlt: the template cannot be read"), 1U);
  EXPECT_EQ(site.Page("game_1.html") + site.Page("map_q3dm17.html"), "");
  EXPECT_NE(site.Page("gameplayer_1.html"), "");
  EXPECT_EQ(site.Page("own.html"), "own ");
  ExpectLinksResolve(site);
}

TEST(Site, TwoPagesOfOneNameAreASevereMessage) {
  SiteRun site;
  site.Log(OneGame({"Zeh", "Mal"}));
  const fs::path templates = site.OwnTemplates();
  WriteFile(templates / "player_zeh.htmlt", "own");
  WriteFile(templates / "Player_Mal.htmlt", "own");
  site.Set("TEMPLATES", "main_template1", "player_zeh");
  site.Set("TEMPLATES", "main_template2", "Player_Mal");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(text::FoldCase(site.Messages("morvane.log.txt")),
                  "two pages have the name player_mal.html"),
            1U)
      << "where the file system does not tell A from a, they are the same";
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "two pages have the name player_zeh.html"), 1U);
}

}  // namespace
}  // namespace morvane::test
