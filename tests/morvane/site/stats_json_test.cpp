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

TEST(StatsJson, TellsTheCourseOfAGame) {
  SiteRun site;
  site.Log(Turnaround());
  ASSERT_EQ(site.Run(), 0);
  const json game = File(site, "stats.json")["games"][0];
  EXPECT_EQ(game["number"], 1);
  EXPECT_EQ(game["first_frag"],
            json::parse(R"({"player": "Bob", "victim": "Ann", "weapon": "Rocket", "at": 70})"));
  EXPECT_EQ(game["longest_run"],
            json::parse(R"({"player": "Ann", "kills": 10, "from": 180, "to": 180})"));
  EXPECT_EQ(game["comeback"], json::parse(R"({"player": "Ann", "behind": 8, "at": 70})"));
  EXPECT_EQ(game["players"][0], json::parse(R"({"player": "Ann", "place": 1, "winner": true,
      "kills": 10, "deaths": 8, "score": 10, "seconds": 239, "kill_streak": 10,
      "death_streak": 8, "feats": {"Excellent": 1}})"));
  EXPECT_EQ(game["players"][2]["came"], 150) << "Cid";
  EXPECT_EQ(game["players"][3]["left"], 120) << "Dan";
}

TEST(StatsJson, TellsFormEveningAwardsDuelsAndMaps) {
  SiteRun site;
  site.Log(Weekend() + DatedDuel(kFriday + kDay + 1200, "Bob", "Cid", 1));
  ASSERT_EQ(site.Run(), 0);
  const json stats = File(site, "stats.json");
  const json& bob = stats["players"][0];
  EXPECT_EQ(bob["name"], "Bob");
  EXPECT_EQ(bob["rank_before"], 2);
  EXPECT_EQ(bob["form"], json::parse("[[1,2,0,0],[2,2,0,0],[3,1,2,1],[4,1,15,1],[6,1,1,1]]"));
  EXPECT_EQ(bob["best_game"], json::parse(R"({"score": 15, "game": 4})"));
  EXPECT_EQ(bob["streak_game"], json::parse(R"({"kills": 15, "game": 4})"));
  EXPECT_EQ(bob["late"], json::parse(R"({"rank": 1, "rating": 18, "games": 4, "wins": 3,
      "kills": 18, "deaths": 4})"));
  EXPECT_EQ(bob["weapons"], json::parse(R"({"Railgun": [18, 14]})"));
  EXPECT_EQ(stats["late"], json::parse(R"({"by_date": true, "games": 5})"));
  EXPECT_EQ(stats["evening"]["first_game"], 4);
  EXPECT_EQ(stats["evening"]["climbers"],
            json::parse(R"([{"name": "Bob", "rank": 1, "places_up": 1}])"));
  EXPECT_EQ(stats["evening"]["newcomers"], json::parse(R"(["Cid"])"));
  EXPECT_EQ(stats["evening"]["players"][0]["name"], "Bob");
  EXPECT_EQ(stats["awards"][0], json::parse(R"({"title": "Best single game",
      "value": "15 points", "player": "Bob", "game": 4})"));
  EXPECT_EQ(stats["duels"][0], json::parse(R"({"ahead": "Bob", "behind": "Ann", "kills": 17,
      "deaths": 14, "weapons": {"Railgun": [17, 14]}})"));
  const json& map = stats["maps"][0];
  EXPECT_EQ(map["owner"], json::parse(R"({"name": "Bob", "wins": 3, "games": 5})"));
  EXPECT_EQ(map["best_game"], json::parse(R"({"name": "Bob", "score": 15, "game": 4})"));
  EXPECT_EQ(map["months"]["2026-03"], json::parse(R"({"games": 5, "seconds": 1500})"));
  EXPECT_EQ(map["players"][0]["name"], "Bob");
}

}  // namespace
}  // namespace morvane::test
