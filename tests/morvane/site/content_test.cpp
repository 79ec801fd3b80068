// What the pages tell of the course of things: charts, form, awards, evenings.
#include <gtest/gtest.h>

#include "morvane/site/chart.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

TEST(Chart, DrawsPointsWhereTheyBelongAndSaysWhatIsSeen) {
  Chart chart;
  chart.text = "Score of <b>";
  chart.lines.push_back({"main", {{0, 0}, {5, 20}, {10, 10}}, ChartLine::Form::kLine});
  chart.lines.push_back({"part", {{0, 0}, {10, 20}}, ChartLine::Form::kSteps});
  chart.lines.push_back({"t0", {{5, 10}}, ChartLine::Form::kDots});
  chart.foot = {"first", "last"};
  const std::string html = ChartHtml(chart);
  EXPECT_EQ(Count(html, "aria-label=\"Score of &lt;b&gt;\""), 1U);
  EXPECT_EQ(Count(html, "<path class=\"main\" d=\"M0 1000L500 0L1000 500\"/>"), 1U) << html;
  EXPECT_EQ(Count(html, "<path class=\"part\" d=\"M0 1000H1000V0\"/>"), 1U) << html;
  EXPECT_EQ(Count(html, "<path class=\"dots t0\" d=\"M500 500h0\"/>"), 1U) << html;
  EXPECT_EQ(Count(html, ">0</text>"), 1U);
  EXPECT_EQ(Count(html, ">20</text>"), 1U);
  EXPECT_EQ(Count(html, "<span>first</span><span>last</span>"), 1U);
}

TEST(Chart, HasNoRoomForNonsense) {
  EXPECT_EQ(ChartHtml({}), "");
  EXPECT_EQ(SparkHtml({1}, "one"), "");
  EXPECT_EQ(Count(SparkHtml({3, 3, 3}, "flat"), "points=\"0,1 30,1 60,1\""), 1U);
  Chart flat;
  flat.lines.push_back({"main", {{1, 7}, {1, 7}}, ChartLine::Form::kLine});
  EXPECT_EQ(Count(ChartHtml(flat), "nan"), 0U);
  Chart wide;
  wide.lines.push_back({"main", {{0, -2e9}, {1, 2e9}}, ChartLine::Form::kLine});
  EXPECT_LE(Count(ChartHtml(wide), "<line "), 8U);
  Chart longer;
  longer.lines.push_back({"main", {}, ChartLine::Form::kLine});
  for (int i = 0; i < 10000; ++i) longer.lines[0].points.push_back({1.0 * i, 1.0 * (i % 7)});
  EXPECT_LE(Count(ChartHtml(longer), "L"), 160U);
  EXPECT_EQ(Count(ChartHtml(longer), "L1000 "), 1U) << "the last point stays";
}

/// Ann beats Bob in each game but the last; Cid comes only then.
std::string Season() {
  std::string log;
  for (int kills = 1; kills <= 12; ++kills) log += Duel("Ann", "Bob", kills);
  return log + Init("q3dm6") + Join(0, "Ann") + Join(1, "Bob") + Join(2, "Cid") +
         Kill(1, 0, "ROCKET") + Kill(1, 0, "ROCKET_SPLASH") + Kill(1, 0) + Kill(0, 2) + kShutdown;
}

TEST(PlayerPage, TellsFormBestGameStreakAndDuels) {
  SiteRun site;
  site.Log(Season());
  ASSERT_EQ(site.Run(), 0);
  const std::string ann = site.Page("player_ann.html");
  EXPECT_EQ(Count(ann, "title=\"Game 4 on q3dm17: place 1, score 4\""), 1U);
  EXPECT_EQ(Count(ann, "title=\"Game 3 on"), 0U) << "the form is that of ten games";
  EXPECT_EQ(Count(ann, "<li class=\"won\" "), 9U);
  EXPECT_EQ(Count(ann,
                  "Best game</span> <strong>12 points</strong> <span class=\"by\"><a "
                  "href=\"game_12.html\">"),
            1U);
  EXPECT_EQ(Count(ann, "<strong>12 kills</strong>"), 2U) << "the streak, and the award for it";
  EXPECT_EQ(Count(ann, "aria-label=\"Score in 13 games: first 1, last 1, lowest 1, highest 12\""),
            1U);
  EXPECT_EQ(Count(ann, "<th scope=\"row\">Rocket</th><td>0</td><td>2</td>"), 1U)
      << "the splash counts as the weapon";
  EXPECT_EQ(Count(ann, "<th scope=\"row\">Railgun</th><td>78</td><td>1</td>"), 1U);
  EXPECT_EQ(
      Count(site.Page("player_bob.html"), "<th scope=\"row\">Railgun</th><td>1</td><td>78</td>"),
      1U);
  EXPECT_EQ(Count(site.Page("player_bob.html"), "of all players&#39; kills"), 0U);
  EXPECT_EQ(Count(site.Page("player_cid.html"), "class=\"chart\""), 0U) << "one game is no curve";
}

TEST(PlayerPage, ShowsTheRatingOfTheUsersOwnRules) {
  SiteRun site;
  site.Log(Season());
  const auto folder = site.OwnTemplates();
  WriteFile(folder / "custrank.htmlt", "kill.killer = rank + 2\nkill.victim = rank - 1\n");
  site.Set("Main", "use_cust_rank", "1");
  site.Set("Main", "cust_rank_start", "100");
  ASSERT_EQ(site.Run(), 0);
  // 78 frags in twelve games, then one, and three deaths.
  EXPECT_EQ(
      Count(site.Page("player_ann.html"),
            "aria-label=\"Rating in 13 games: first 102, last 255, lowest 102, highest 256\""),
      1U);
}

TEST(PlayerPage, LeavesNoTraceOfWhoIsLeftOut) {
  SiteRun site;
  site.Log(Season());
  WriteFile(site.Folder() / "players.txt", "- Bob\n");
  ASSERT_EQ(site.Run(), 0);
  const std::string ann = site.Page("player_ann.html");
  EXPECT_EQ(Count(ann, "Bob"), 0U);
  EXPECT_EQ(Count(ann, "<th scope=\"row\">Railgun</th><td>1</td><td>0</td>"), 1U) << "of Cid";
  EXPECT_EQ(Count(ann, "<th scope=\"row\">Rocket</th><td>0</td>"), 0U);
}

TEST(Overview, TellsTheLastEvening) {
  SiteRun site;
  site.Log(Weekend());
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("stats.html");
  EXPECT_EQ(Count(page, "<p class=\"lede\">Up to <a href=\"game_5.html\">Game 5</a>, "), 1U);
  EXPECT_EQ(Count(page, "<h2>The last evening</h2>"), 1U);
  EXPECT_EQ(Count(page, "Games: 2, players: 3, kills: 18, from "), 1U);
  EXPECT_EQ(Count(page, "New: <span class=\"item\"><a href=\"player_cid.html\">"), 1U);
  EXPECT_EQ(Count(page, "<bdi>Bob</bdi></a> 1 to rank 1</span>"), 1U);
  EXPECT_EQ(Count(page, "1 played, 1 won, 15 kills</span> <strong>15 points</strong>"), 1U);
  EXPECT_EQ(Count(page, "<td class=\"h4\">2</td>"), 2U) << "Friday and Saturday";
  EXPECT_EQ(Count(page, "<ul class=\"cards\">"), 1U);
  EXPECT_EQ(Count(page, "<h3><a href=\"game_5.html\">Game 5</a> on "), 1U);
}

TEST(Overview, WithoutDatesSpeaksOfGames) {
  SiteRun site;
  std::string log;
  for (int i = 0; i < 30; ++i) log += Duel(i < 5 ? "Ann" : "Bob", "Cid", 1);
  site.Log(log);
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Page("stats.html"), "<h2>The last games</h2>\n<p>Games: 20, players: 2"),
            1U);
  EXPECT_EQ(Count(site.Page("playerrank.html"), ">Last 20 games</label>"), 1U);
}

TEST(Overview, AwardsGoToPeopleAndNameTheGame) {
  SiteRun site;
  std::string log = Weekend();
  for (int i = 0; i < 6; ++i) {
    log += Init() + JoinBot(0, "Robot") + Join(1, "Ann") + Kills(50, 0, 1) + kShutdown;
  }
  site.Log(log);
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("stats.html");
  const std::string awards = page.substr(page.find("<h2>Awards</h2>"),
                                         page.find("<h2>Records</h2>") - page.find("<h2>Awards"));
  EXPECT_EQ(Count(awards, "Robot"), 0U);
  EXPECT_EQ(Count(awards,
                  "Longest kill streak</span> <strong>15 kills</strong> <span "
                  "class=\"by\"><a href=\"player_bob.html\"><bdi>Bob</bdi></a>, <a "
                  "href=\"game_4.html\">"),
            1U);
  EXPECT_EQ(Count(site.Page("player_bob.html"), "Longest kill streak</span>"), 2U)
      << "the award and the game";
}

TEST(Ranking, ShowsMovementAndTheLastDays) {
  SiteRun site;
  site.Log(Weekend());
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("playerrank.html");
  EXPECT_EQ(Count(page, "up </span>1</span>"), 1U) << "Bob";
  EXPECT_EQ(Count(page, "down </span>1</span>"), 1U) << "Ann";
  EXPECT_EQ(Count(page, "<span class=\"new\">new</span>"), 1U) << "Cid";
  EXPECT_EQ(Count(page, ">Last 30 days</label>"), 1U);
  const std::string late = page.substr(page.find("<div class=\"span-late\">"));
  EXPECT_EQ(Count(late, ">17<svg"), 1U) << "Bob's score, without the ten deaths of long ago";
  EXPECT_EQ(Count(late, ">4<svg"), 1U) << "Ann's";
  EXPECT_EQ(Count(page, "class=\"spark\""), 2U) << "Cid has one game";
}

TEST(Ranking, OfTheUsersRulesCountsWhatWasGained) {
  SiteRun site;
  site.Log(Weekend());
  const auto folder = site.OwnTemplates();
  WriteFile(folder / "custrank.htmlt", "kill.killer = rank + 2\nkill.victim = rank - 1\n");
  site.Set("Main", "use_cust_rank", "1");
  site.Set("Main", "cust_rank_start", "100");
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("playerrank.html");
  const std::string late = page.substr(page.find("<div class=\"span-late\">"));
  EXPECT_EQ(Count(late, "<td class=\"lead\">30.0</td>"), 1U) << "Bob: 17 kills, 4 deaths";
  EXPECT_EQ(Count(late, "<td class=\"lead\">6.0</td>"), 1U) << "Cid began at 100";
}

TEST(GamePage, TellsItsCourse) {
  for (const char* use : {"0", "1", "1"}) {  // the last time from the database
    SiteRun site;
    site.Log(Turnaround());
    site.Set("Main", "use_db", use);
    ASSERT_EQ(site.Run(), 0);
    ASSERT_EQ(site.Run(), 0);
    const std::string page = site.Page("game_1.html");
    EXPECT_EQ(Count(page, "<span class=\"what\">First frag, 1:10</span> <strong>Rocket</strong>"),
              1U);
    EXPECT_EQ(Count(page, "Longest run, 3:00 to 3:00</span> <strong>10 kills</strong>"), 1U);
    EXPECT_EQ(Count(page, "Comeback: won, though behind at 1:10 by</span> <strong>8</strong>"), 1U);
    EXPECT_EQ(Count(page, "<bdi>Cid</bdi></a> 2:30</span>"), 1U);
    EXPECT_EQ(Count(page, "<bdi>Dan</bdi></a> 2:00</span>"), 1U);
    EXPECT_EQ(Count(page,
                    "<span class=\"item\">Excellent 1</span></span> <span class=\"by\"><a "
                    "href=\"player_ann.html\">"),
              1U);
    EXPECT_EQ(Count(page, ">Flag captured 1<"), 1U);
    EXPECT_EQ(Count(page, "Impressive"), 0U) << "of nobody who plays";
    // Ann's curve: nothing until three minutes of four, then ten.
    EXPECT_EQ(Count(page, "<path class=\"t0\" d=\"M0 1000H750V0H1000V0\"/>"), 1U);
    EXPECT_EQ(Count(page, "Score by the frags at the end: Ann 10, Bob 8, Cid 0, Dan 0"), 1U);
  }
}

TEST(GamePage, SaysNothingThatTheLogDoesNotTell) {
  SiteRun site;
  site.Log(
      "InitGame: \\g_gametype\\0\\mapname\\q3dm17\nClientUserinfoChanged: 0 n\\Ann\\t\\0\n"
      "ClientBegin: 0\nClientUserinfoChanged: 1 n\\Bob\\t\\0\nClientBegin: 1\n"
      "Kill: 0 1 10: a killed b by MOD_RAILGUN\nShutdownGame:\n");
  ASSERT_EQ(site.Run(), 0);
  const std::string page = site.Page("game_1.html");
  EXPECT_EQ(Count(page, "class=\"chart\""), 0U);
  EXPECT_EQ(Count(page, "<span class=\"what\">First frag</span> <strong>Railgun</strong>"), 1U);
  EXPECT_EQ(Count(page, "Joined late") + Count(page, "Left before") + Count(page, "Comeback"), 0U);
}

}  // namespace
}  // namespace morvane::test
