#include "morvane/statistics/statistics.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "morvane/messages.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/ranking.h"
#include "tests/morvane/test_support.h"

namespace morvane {
namespace {

using test::Duel;
using test::Init;
using test::Join;
using test::Kill;
using test::Kills;
using test::kShutdown;

/// Statistics of a log under settings that limit nothing.
Statistics StatisticsOf(const std::string& log, const Limits& limits = {},
                        Ranking* ranking = nullptr) {
  ParsedLog parsed = ParseLog(log, true);
  SetStarts(parsed, 1'000'000);
  return MakeStatistics(limits, std::move(parsed.games), std::move(parsed.vocabulary), ranking);
}

TEST(IsCounted, HonoursEveryLimitOfGames) {
  // Two players, 12 kills, 300 s, no Exit.
  const std::string log = Duel("Ann", "Bob", 12);
  const struct {
    std::string what;
    int Limits::*limit;
    int least;  // the first value that the game misses
  } kCases[] = {{"min_players", &Limits::minPlayers, 3},
                {"min_kills", &Limits::minKills, 13},
                {"min_time", &Limits::minTime, 301}};
  for (const auto& test : kCases) {
    Limits limits;
    limits.*test.limit = test.least - 1;
    EXPECT_EQ(StatisticsOf(log, limits).games.size(), 1U) << test.what;
    limits.*test.limit = test.least;
    const Statistics statistics = StatisticsOf(log, limits);
    EXPECT_TRUE(statistics.games.empty()) << test.what;
    EXPECT_EQ(statistics.gamesFound, 1U) << test.what;
    EXPECT_TRUE(statistics.players.empty()) << test.what;
    limits.*test.limit = -5;
    EXPECT_EQ(StatisticsOf(log, limits).games.size(), 1U) << test.what;
  }
}

TEST(Totals, HoldMoreThan32Bits) {
  std::string log;
  for (int i = 0; i < 5; ++i) {
    log += Init() + Join(0, "Ann") + Join(1, "Bob") + Kill(0, 1) + "  5:00 Exit: Timelimit hit.\n" +
           "  5:00 score: 999999999  ping: 5  client: 0 Ann\n" +
           "  5:00 score: -999999999  ping: 5  client: 1 Bob\n" + kShutdown;
  }
  const Statistics statistics = StatisticsOf(log);
  ASSERT_EQ(statistics.players.size(), 2U);
  EXPECT_EQ(statistics.players[0].figures.score, 4'999'999'995);
  EXPECT_EQ(statistics.players[1].figures.score, -4'999'999'995);
  EXPECT_EQ(statistics.players[0].rating, 4'999'999'995.0);
}

TEST(IsCounted, AsksForAnExitOnlyWhereTold) {
  Limits limits;
  limits.gameComplete = true;
  EXPECT_TRUE(StatisticsOf(Duel("Ann", "Bob", 1), limits).games.empty());
  const std::string complete = Init() + Join(0, "Ann") + Join(1, "Bob") + Kill(0, 1) +
                               "  4:00 Exit: Fraglimit hit.\n" + kShutdown;
  EXPECT_EQ(StatisticsOf(complete, limits).games.size(), 1U);
  const std::string warmup = Init() + "  0:00 Warmup:\n" + kShutdown;
  EXPECT_TRUE(StatisticsOf(warmup).games.empty());
  limits = {};
  limits.minTime = 100;
  const std::string untimed =
      "InitGame: \\mapname\\a\nClientUserinfoChanged: 0 n\\A\\t\\0\n"
      "ClientBegin: 0\nKill: 0 0 1: a killed a by MOD_BFG\n";
  EXPECT_EQ(StatisticsOf(untimed, limits).games.size(), 1U) << "its length is not known";
}

TEST(MakeStatistics, KnowsAPlayerUnderEverySpelling) {
  const Statistics statistics =
      StatisticsOf(Duel("^1A^2nn", "Bob", 3) + Duel("ANN ", "Bob", 2, "Q3DM17") +
                   Duel("Bob", "ann", 1, "q3dm6"));
  ASSERT_EQ(statistics.players.size(), 2U);
  const Player& ann = statistics.players[0];
  EXPECT_EQ(ann.name, "ann");
  EXPECT_EQ(ann.figures.kills, 5U);
  EXPECT_EQ(ann.figures.deaths, 1U);
  EXPECT_EQ(ann.games, 3U);
  EXPECT_EQ(ann.wins, 2U);
  EXPECT_EQ(ann.placings, (std::vector<std::uint32_t>{2, 1}));
  EXPECT_EQ(ann.figures.killStreak, 3U) << "streaks end with their game";
  EXPECT_EQ(ann.firstSeen, 1'000'000 - 900);
  EXPECT_EQ(ann.lastSeen, 1'000'000);
  ASSERT_EQ(statistics.maps.size(), 2U);
  EXPECT_EQ(statistics.maps[0].title, "Q3DM17");
  EXPECT_EQ(statistics.maps[0].games.size(), 2U);
  EXPECT_EQ(statistics.maps[0].players[0].figures.kills, 5U);
  EXPECT_EQ(statistics.maps[1].players[0].name, "Bob");
  EXPECT_EQ(statistics.maps[1].players[0].player, 1U);
}

TEST(MakeStatistics, TwoClientsOfOneNameAreOnePlayer) {
  const Statistics statistics =
      StatisticsOf(Init() + Join(0, "Ann") + Join(1, "Ann") + Join(2, "Bob") + Kills(2, 0, 2) +
                   Kill(1, 2) + Kill(0, 1) + kShutdown);
  ASSERT_EQ(statistics.games[0].entrants.size(), 3U);
  EXPECT_EQ(statistics.games[0].entrants[0].figures.score, 3);
  EXPECT_EQ(statistics.games[0].entrants[1].figures.score, 1);
  ASSERT_EQ(statistics.players.size(), 2U);
  EXPECT_EQ(statistics.players[0].figures.score, 4);
  EXPECT_EQ(statistics.players[0].games, 1U);
  EXPECT_EQ(statistics.players[0].placings, (std::vector<std::uint32_t>{1, 1}));
  EXPECT_EQ(statistics.players[0].figures.nemesis.index, kNobody) << "nobody is his own";
}

TEST(MakeStatistics, RanksOnlyWhoIsWithinTheLimits) {
  const std::string log = Duel("Ann", "Bob", 9) + Duel("Cid", "Bob", 5);
  const struct {
    std::string what;
    int Limits::*limit;
    int value;
    std::vector<std::string> order;  // with rank
  } kCases[] = {
      {"none", &Limits::playersMinGames, 0, {"Ann 1", "Cid 2", "Bob 3"}},
      {"games", &Limits::playersMinGames, 2, {"Bob 1", "Ann 0", "Cid 0"}},
      {"kills", &Limits::playersMinKills, 6, {"Ann 1", "Cid 0", "Bob 0"}},
      {"time", &Limits::playersMinTime, 9, {"Bob 1", "Ann 0", "Cid 0"}},
  };
  for (const auto& test : kCases) {
    for (const bool limitTables : {false, true}) {
      Limits limits;
      limits.*test.limit = test.value;
      limits.limitOverallKillTables = limitTables;
      const Statistics statistics = StatisticsOf(log, limits);
      std::vector<std::string> order;
      for (const Player& player : statistics.players) {
        order.push_back(player.name + " " + std::to_string(player.rank));
      }
      EXPECT_EQ(order, test.order) << test.what;
      const bool unlimited = !limitTables || test.what == "none";
      EXPECT_EQ(statistics.pairs.size(), unlimited ? 2U : 0U) << test.what;
      EXPECT_EQ(statistics.games[0].pairs.size(), 1U) << "only the overall table is limited";
    }
  }
}

TEST(MakeStatistics, EqualScoresShareARank) {
  const Statistics statistics =
      StatisticsOf(Duel("Ann", "Bob", 2) + Duel("Cid", "Bob", 2) + Duel("Dan", "Bob", 1));
  std::vector<std::uint32_t> ranks;
  for (const Player& player : statistics.players) ranks.push_back(player.rank);
  EXPECT_EQ(ranks, (std::vector<std::uint32_t>{1, 1, 3, 4}));
}

TEST(MakeStatistics, IndicesPointAtWhomTheyMean) {
  // Ranks turn the order of coming round.
  const Statistics statistics = StatisticsOf(Duel("Bob", "Cid", 1) + Duel("Ann", "Bob", 7));
  ASSERT_EQ(statistics.players[0].name, "Ann");
  const auto nameOf = [&](const Rival& rival) {
    return rival.index == kNobody ? "" : statistics.players[rival.index].name;
  };
  const Player& bob = statistics.players[1];
  ASSERT_EQ(bob.name, "Bob");
  EXPECT_EQ(nameOf(bob.figures.nemesis), "Ann");
  EXPECT_EQ(nameOf(bob.figures.favouriteVictim), "Cid");
  EXPECT_EQ(FindPair(statistics.pairs, 0, 1)->kills, 7U);
  EXPECT_EQ(statistics.players[statistics.games[0].entrants[0].player].name, "Bob");
  EXPECT_EQ(statistics.summary.kills, 8U);
  EXPECT_EQ(statistics.vocabulary.weapons[statistics.summary.weapons[0].weapon], "RAILGUN");
}

TEST(PairCounts, AddsUpPairsOfAnyNumbers) {
  PairCounts counts;
  for (int round = 0; round < 2; ++round) {
    for (const Pair& pair :
         {Pair{200, 3, 1, 0}, Pair{0, 300, 2, 0}, Pair{3, 0, 0, 1}, Pair{0, 1, 1, 0}}) {
      counts.Add(pair);
      counts.Add(pair);
    }
    std::string text;
    for (const Pair& pair : counts.Take()) {
      text += std::to_string(pair.killer) + ">" + std::to_string(pair.victim) + ":" +
              std::to_string(pair.kills) + "+" + std::to_string(pair.teamKills) + " ";
    }
    EXPECT_EQ(text, "0>1:2+0 0>300:4+0 3>0:0+2 200>3:2+0 ") << round;
  }
}

TEST(EntryOf, CountsSmallAndLargeNumbers) {
  std::vector<ItemCount> items;
  for (const std::uint16_t number : std::vector<std::uint16_t>{70, 3, 64, 70, 63, 3, 70}) {
    ++EntryOf(items, &ItemCount::item, number).count;
  }
  SortItems(items);
  std::string text;
  for (const ItemCount& item : items) {
    text += std::to_string(item.item) + ":" + std::to_string(item.count) + " ";
  }
  EXPECT_EQ(text, "70:3 3:2 63:1 64:1 ");
}

class RankingTest : public testing::Test {
 protected:
  /// The rating of every player after a log, under rules.
  std::string RatingsOf(const std::string& rules, const std::string& log) {
    Messages messages(folder_.Path().string(), {0, 0, 0, 5});
    Ranking ranking(rules, "rules.txt", 1000, messages);
    Limits limits;
    limits.gameLastPlaced = 2;
    std::string ratings;
    for (const Player& player : StatisticsOf(log, limits, &ranking).players) {
      ratings += player.name + " " + std::to_string(std::lround(player.rating)) + " ";
    }
    return ratings;
  }
  std::string Said() const { return test::ReadFile(folder_.Path() / "custrank.log.txt"); }

  test::TempFolder folder_;
};

TEST_F(RankingTest, EveryEventHasItsRule) {
  const std::string play = Init("q3dm7", 3) + Join(0, "Ann", 1) + Join(1, "Bob", 1) +
                           Join(2, "Cid", 2) + Kills(3, 2, 0) + Kill(0, 1, "BFG") + Kill(1, 1) +
                           Kill(1022, 0, "LAVA") + kShutdown;
  const struct {
    std::string rule;
    std::string ratings;
  } kCases[] = {
      {"kill.killer = rank + 10", "Cid 1030 Bob 1000 Ann 1000 "},
      {"kill.victim = rank - 10", "Cid 1000 Bob 1000 Ann 970 "},
      {"suicide = rank - 5", "Cid 1000 Ann 1000 Bob 995 "},
      {"world = rank - 2", "Cid 1000 Bob 1000 Ann 998 "},
      {"teamkill = rank - 7", "Cid 1000 Bob 1000 Ann 993 "},
      {"game.win = rank + 20", "Cid 1020 Bob 1000 Ann 1000 "},
      {"game.placed = rank + 5", "Bob 1005 Cid 1000 Ann 1000 "},
      {"kill.killer = 2000 + kills ; the last counts", "Cid 2003 Bob 1000 Ann 1000 "},
      {"kill.victim = deaths * 100 + players // three", "Cid 1000 Bob 1000 Ann 303 "},
      {"teamkill = mod", "Cid 1000 Bob 1000 Ann 12 "},
      {"game.win = place * 10 + minutes", "Bob 1000 Ann 1000 Cid 15 "},
      {"game.win = other - 1", "Bob 1000 Ann 1000 Cid 999 "},
  };
  for (const auto& test : kCases) EXPECT_EQ(RatingsOf(test.rule, play), test.ratings) << test.rule;
  EXPECT_EQ(Said(), "");
}

TEST_F(RankingTest, BothSidesOfAKillSeeTheRanksBeforeIt) {
  EXPECT_EQ(RatingsOf("kill.killer = rank + other / 10\r\nkill.victim = rank - other / 10\r\n",
                      Duel("Ann", "Bob", 2)),
            "Ann 1190 Bob 790 ");
}

TEST_F(RankingTest, ABadRuleIsSkippedAndSaidWithItsLine) {
  const struct {
    std::string rule;
    std::string said;
  } kCases[] = {
      {"kill.killer = rank +", "does not parse"},
      {"kill.killer = nothing + 1", "does not parse"},
      {"kill.killer rank", "no \"=\""},
      {"kill.owner = 1", "unknown event \"kill.owner\""},
      {"kill.killer = rank / 0", "no number"},
      {"kill.killer = \"text\"", "does not parse"},
      {"suicide = 1\nsuicide = 2", "stands already in line 2"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(
        RatingsOf("// rules\n" + test.rule + "\nkill.victim = rank - 1\n", Duel("Ann", "Bob", 2)),
        "Ann 1000 Bob 998 ")
        << test.rule;
    const std::string said = Said();
    EXPECT_NE(said.find(test.said), said.npos) << said;
    EXPECT_NE(said.find(" severe rules.txt:"), said.npos) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  }
}

TEST_F(RankingTest, TheShippedRulesMoveRankFromLoserToWinner) {
  const std::string rules = test::ReadFile(std::string(MORVANE_TEMPLATES) + "/custrank.htmlt");
  EXPECT_EQ(RatingsOf(rules, Duel("Ann", "Bob", 1)), "Ann 1028 Bob 997 ");
  EXPECT_EQ(Said(), "");
}

}  // namespace
}  // namespace morvane
