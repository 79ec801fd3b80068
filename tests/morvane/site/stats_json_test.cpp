// The files for other programs.
#include <gtest/gtest.h>
#include <set>

#include <nlohmann/json.hpp>

#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

using nlohmann::json;

json File(const SiteRun& site, const std::string& name) { return json::parse(site.Page(name)); }

TEST(StatsJson, HasTheFiguresOfThePages) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  const json stats = File(site, "stats.json");
  EXPECT_EQ(stats["version"], 2);
  EXPECT_EQ(stats["players"].size(), stats["summary"]["players"]);
  EXPECT_EQ(stats["maps"].size(), stats["summary"]["maps"]);
  std::set<std::string> names;
  std::uint64_t kills = 0;
  for (const auto& player : stats["players"]) {
    names.insert(player["name"]);
    kills += player["kills"].get<std::uint64_t>();
    const std::string page = site.Page(player["page"]);
    EXPECT_EQ(Count(page, "<strong>" + player["kills"].dump() + "</strong> Kills"), 1U);
    EXPECT_EQ(Count(page, "<strong>" + player["score"].dump() + "</strong> Score"), 1U);
  }
  EXPECT_EQ(kills, stats["summary"]["kills"]);
  EXPECT_EQ(names.count("<script>alert(1)</script>"), 1U);
  const json games = File(site, "stats-games-1.json")["games"];
  EXPECT_EQ(games.size(), stats["summary"]["games"]);
  EXPECT_EQ(json(games.end() - 100, games.end()), stats["games"]) << "the latest";
  std::uint64_t gameKills = 0;
  for (const auto& game : games) {
    gameKills += game["kills"].get<std::uint64_t>();
    for (const auto& player : game["players"]) EXPECT_TRUE(names.contains(player["player"]));
  }
  EXPECT_EQ(gameKills, kills);
  EXPECT_EQ(games[1]["red_score"], 3);
  EXPECT_TRUE(games[0]["red_score"].is_null());
}

}  // namespace
}  // namespace morvane::test
