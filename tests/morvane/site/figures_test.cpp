// What pages show of times, bots, winners, weapons, maps and duels.
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

/// A log without its stamps.
std::string WithoutStamps(const std::string& log) {
  std::istringstream lines(log);
  std::string text;
  for (std::string line; std::getline(lines, line);) text += line.substr(7) + "\n";
  return text;
}

TEST(Pages, ShowsNoTimeThatIsNotKnown) {
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

TEST(Pages, MarksHowWellATimeIsKnown) {
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

TEST(Pages, MarksBots) {
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

TEST(Pages, ShowsTheSameWinnerOnEveryPage) {
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

TEST(Pages, ShowsAWeaponAndItsSplashAsOneToo) {
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

TEST(MapPage, TellsOwnerBestGameAndMonths) {
  SiteRun site;
  site.Log(Weekend() + DatedDuel(kFriday + kDay + 1200, "Bob", "Ann", 1));
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("map_q3dm17.html");
  const std::string by = " <span class=\"by\"><a href=\"player_bob.html\">";
  EXPECT_EQ(Count(page, "Owner: most games won here</span> <strong>3 of 5</strong>" + by), 1U);
  EXPECT_EQ(Count(page, "Highest score of all games here</span> <strong>18 points</strong>" + by),
            1U);
  EXPECT_TRUE(std::regex_search(
      page, std::regex("Best game: <a href=\"game_4.html\">Game 4</a>, [^≈≤<]*</span> "
                       "<strong>15 points</strong>" +
                       by)));
  EXPECT_TRUE(std::regex_search(
      page,
      std::regex("2026-03</th><td class=\"bar\">5<.* width=\"100.0%\".*<td "
                 "data-sort=\"1500\">25:00</td></tr>\n.*"
                 "2026-01</th><td class=\"bar\">1<.* width=\"20.0%\".*>5:00</td></tr>\n</tbody>")));
}

/// The cells of a matrix of duels: "-" for an empty one, "*" before one who is ahead.
std::string Matrix(const std::string& page, int number) {
  const std::size_t begin = page.find("class=\"scroll matrix-" + std::to_string(number) + "\"");
  const std::string table = page.substr(begin, page.find("</table>", begin) - begin);
  const std::regex cell("<td( class=\"ahead\")?>([^<]*)</td>|</tr>");
  std::string cells;
  for (std::sregex_iterator at(table.begin(), table.end(), cell), end; at != end; ++at) {
    const bool isRowEnd = (*at)[0] == "</tr>";
    cells += isRowEnd ? "/" : (*at)[1].matched ? "*" : "";
    if (!isRowEnd) cells += ((*at)[2].length() == 0 ? "-" : (*at)[2].str()) + " ";
  }
  return cells;
}

TEST(Duels, TellWhoIsAheadWeaponByWeapon) {
  std::string log = Init() + Join(0, "Ann") + Join(1, "Bob") + Join(2, "Cid") + Kills(3, 0, 1) +
                    Kill(1, 0) + Kill(0, 2, "SHOTGUN") + Kill(1, 0, "ROCKET");
  for (int i = 0; i < 4; ++i) log += Kill(1, 0, "ROCKET_SPLASH");
  SiteRun site;
  site.Log(log + kShutdown);
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("morekilltables.html");
  const char* const kWeapons[] = {"All weapons", "Rocket", "Railgun", "Shotgun"};
  const char* const kTables[] = {"/- *6:3 - /3:6 - *1:0 /- 0:1 - /", "/- *5:0 - /0:5 - - /- - - /",
                                 "/- 1:3 - /*3:1 - - /- - - /", "/- - - /- - *1:0 /- 0:1 - /"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(Matrix(page, i), kTables[i]) << kWeapons[i];
    EXPECT_EQ(Count(page, "weapon-" + std::to_string(i) + "\">" + kWeapons[i] + "</label>"), 1U);
  }
  EXPECT_EQ(Count(page, "matrix-4"), 0U);
  EXPECT_EQ(Count(page,
                  "<tr><th scope=\"row\">Rocket</th><td>5</td><td>0</td></tr><tr><th "
                  "scope=\"row\">Railgun</th><td>1</td><td>3</td></tr></tbody>"),
            1U);
}

}  // namespace
}  // namespace morvane::test
