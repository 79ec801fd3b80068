// What each setting changes on the pages.
#include <gtest/gtest.h>
#include <regex>

#include "config/rgb.h"
#include "morvane/statistics/names.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

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

TEST(PageSettings, WhoIsNotRankedIsLeftOutOfOverallKillTablesAlone) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "players_min_kills", "1");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("allkilltable.html"), ">Three<"), 0U);
  EXPECT_GT(Count(site.Page("playerrank.html"), ">Three<"), 0U) << "never silently missing";
  const std::string duels = site.Page("morekilltables.html");
  EXPECT_EQ(Count(duels.substr(duels.find("fiercest")), ">Three<"), 1U);
  EXPECT_GT(Count(site.Page("player_boss.html"), ">Three<"), 0U);
  for (const auto& [name, text] : site.Pages()) {
    EXPECT_EQ(Count(text, "Nobody is ranked"), 0U) << name;
  }
  site.Set("Main", "limit_overall_killtables", "0");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("allkilltable.html"), ">Three<"), 2U) << "a row and a column";
}

TEST(PageSettings, WhereNobodyIsRankedTablesShowAllAndSayWhy) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "players_min_kills", "7");
  ASSERT_EQ(site.Run(), 0);
  constexpr const char* kWhy =
      "Nobody is ranked: no player has at least 0 minutes, 0 games and 7 kills.";
  for (const char* page : {"allkilltable.html", "otherkilltables.html", "playerrank.html"}) {
    EXPECT_GT(Count(site.Page(page), ">Three<"), 0U) << page;
    EXPECT_EQ(Count(site.Page(page), kWhy), 1U) << page;
  }
}

/// The colors that names are drawn in and on, over every page.
TEST(PageSettings, NamesCanBeReadOnEverySurface) {
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

}  // namespace
}  // namespace morvane::test
