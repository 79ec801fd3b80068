// The files for other programs.
#include <gtest/gtest.h>
#include <set>

#include <nlohmann/json.hpp>

#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

using nlohmann::json;

json File(const SiteRun& site, const std::string& name) { return json::parse(site.Page(name)); }

TEST(StatsJson, TellsTheLatestGamesAndTheOthersInFilesOfTheirOwn) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  const json stats = File(site, "stats.json");
  std::set<std::string> names;
  for (const auto& player : stats["players"]) {
    names.insert(player["name"]);
    EXPECT_NE(site.Page(player["page"]), "");
  }
  EXPECT_EQ(names.count("<script>alert(1)</script>"), 1U);
  const json games = File(site, "stats-games-1.json")["games"];
  EXPECT_EQ(games.size(), stats["summary"]["games"]);
  EXPECT_EQ(json(games.end() - 100, games.end()), stats["games"]);
  for (const auto& game : games) {
    for (const auto& player : game["players"]) EXPECT_TRUE(names.contains(player["player"]));
  }
  EXPECT_EQ(games[1]["red_score"], 3);
  EXPECT_TRUE(games[0]["red_score"].is_null());
}

}  // namespace
}  // namespace morvane::test
