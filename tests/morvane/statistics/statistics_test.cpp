#include "morvane/statistics/statistics.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "morvane/log/game_times.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"
#include "morvane/statistics/player_names.h"
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
                        Ranking* ranking = nullptr, const PlayerNames& names = {}) {
  ParsedLog parsed = ParseLog(log, true);
  SetStarts(parsed, 1'000'000);
  return MakeStatistics(limits, std::move(parsed.games), std::move(parsed.vocabulary), names,
                        ranking);
}

std::string NameOf(const Rival& rival, const std::vector<Player>& players) {
  return rival.index == kNobody ? "-" : players[rival.index].plain;
}

/// Players as text: "RANK NAME KILLS/DEATHS SCORE, GAMES WINS PLACED: PLACINGS; NEMESIS VICTIM".
std::string TextOf(const std::vector<Player>& players) {
  std::string text;
  for (const Player& player : players) {
    const Figures& of = player.figures;
    text += std::to_string(player.rank) + " " + player.name + " " + std::to_string(of.kills) + "/" +
            std::to_string(of.deaths) + " " + std::to_string(of.score) + ", " +
            std::to_string(player.games) + " " + std::to_string(player.wins) + " " +
            std::to_string(player.placed) + ":";
    for (const std::uint32_t times : player.placings) text += " " + std::to_string(times);
    text += "; " + NameOf(of.nemesis, players) + " " + NameOf(of.favouriteVictim, players) + "\n";
  }
  return text;
}

TEST(IsCounted, HonoursEveryLimitOfGames) {
  // Two players, 10 frags among 12 kills, 300 s, no Exit.
  const std::string play = Init() + Join(0, "Ann") + Join(1, "Bob") + Kills(10, 0, 1) + Kill(1, 1) +
                           Kill(1022, 1, "LAVA");
  const std::string log = play + kShutdown;
  const std::string complete = play + "  4:00 Exit: Fraglimit hit.\n" + kShutdown;
  const std::string untimed =
      "InitGame: \\mapname\\a\nClientUserinfoChanged: 0 n\\A\\t\\0\n"
      "ClientBegin: 0\nKill: 0 0 1: a killed a by MOD_BFG\n";
  const struct {
    std::string what;
    std::string log;
    Limits limits;
    std::size_t games;
  } kCases[] = {
      {"players", log, {.minPlayers = 2}, 1},
      {"too few", log, {.minPlayers = 3}, 0},
      {"kills", log, {.minKills = 10}, 1},
      {"too few kills", log, {.minKills = 11}, 0},
      {"time", log, {.minTime = 300}, 1},
      {"too short", log, {.minTime = 301}, 0},
      {"its length is not known", untimed, {.minTime = 100}, 1},
      {"no limits", log, {.minPlayers = -5, .minTime = -5, .minKills = -5}, 1},
      {"broken off", log, {.gameComplete = true}, 0},
      {"complete", complete, {.gameComplete = true}, 1},
      {"warm-up", Init() + "  0:00 Warmup:\n" + kShutdown, {}, 0},
  };
  for (const auto& test : kCases) {
    const Statistics statistics = StatisticsOf(test.log, test.limits);
    EXPECT_EQ(statistics.games.size(), test.games) << test.what;
    EXPECT_EQ(statistics.gamesFound, 1U) << test.what;
    EXPECT_EQ(statistics.players.empty(), test.games == 0) << test.what;
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

TEST(MakeStatistics, AddsUpPlayersOfAllGamesAndOfMaps) {
  // Ranks turn the order of coming round; Cid and Dan are equal.
  const Statistics statistics = StatisticsOf(
      Duel("Bob", "ann", 1, "q3dm6") + Duel("^1A^2nn", "Bob", 3) + Duel("ANN ", "Bob", 2) +
      Duel("Cid", "Bob", 2) + Duel("Dan", "Bob", 2, "Q3DM17"));
  EXPECT_EQ(TextOf(statistics.players),
            "1 ANN  5/1 5, 3 2 0: 2 1; Bob Bob\n"
            "2 Cid 2/0 2, 1 1 0: 1; - Bob\n"
            "2 Dan 2/0 2, 1 1 0: 1; - Bob\n"
            "4 Bob 1/9 1, 5 1 0: 1 4; ANN ANN\n");
  EXPECT_EQ(statistics.players[0].figures.killStreak, 3U) << "streaks end with their game";
  EXPECT_EQ(statistics.players[0].seen.first, 1'000'000 - 1500);
  EXPECT_EQ(statistics.players[0].seen.last, 1'000'000 - 600);
  ASSERT_NE(FindPair(statistics.pairs, 0, 3), nullptr);
  EXPECT_EQ(FindPair(statistics.pairs, 0, 3)->kills, 5U);
  std::string maps;
  for (const Map& map : statistics.maps) {
    maps += map.title + " " + std::to_string(map.games.size()) + " games\n" + TextOf(map.players);
    for (const Player& player : map.players) {
      EXPECT_EQ(PlayerKey(statistics.players[player.player].name), PlayerKey(player.name));
    }
  }
  EXPECT_EQ(maps,
            "Q3DM17 4 games\n"
            "1 ANN  5/0 5, 2 2 0: 2; - Bob\n"
            "2 Cid 2/0 2, 1 1 0: 1; - Bob\n"
            "2 Dan 2/0 2, 1 1 0: 1; - Bob\n"
            "4 Bob 0/9 0, 4 0 0: 0 4; ANN -\n"
            "q3dm6 1 games\n"
            "1 Bob 1/0 1, 1 1 0: 1; - ann\n"
            "2 ann 0/1 0, 1 0 0: 0 1; Bob -\n");
  const Figures& all = statistics.summary.figures;
  EXPECT_EQ(all.kills, 10U);
  EXPECT_EQ(statistics.vocabulary.weapons[all.weapons[0].weapon], "RAILGUN");
  EXPECT_EQ(statistics.players[statistics.games[0].entrants[0].player].name, "Bob");
}

/// A game without stamps in which the first kills the second `kills` times.
std::string UntimedDuel(const std::string& winner, const std::string& loser, int kills) {
  std::string log = "InitGame: \\mapname\\a\n" + Join(0, winner, 0, "") + Join(1, loser, 0, "");
  for (int i = 0; i < kills; ++i) log += Kill(0, 1, "BFG", "");
  return log + "ShutdownGame:\n";
}

TEST(MakeStatistics, RanksOnlyWhoIsWithinTheLimits) {
  const std::string log = Duel("Ann", "Bob", 9) + Duel("Cid", "Bob", 5);
  const struct {
    std::string what;
    std::string log;
    Limits limits;
    std::string order;  // with rank and the kills of timed games
  } kCases[] = {
      {"none", log, {}, "Ann 1 9 Cid 2 5 Bob 3 0 "},
      {"games", log, {.playersMinGames = 2}, "Bob 1 0 Ann 0 9 Cid 0 5 "},
      {"kills", log, {.playersMinKills = 6}, "Ann 1 9 Cid 0 5 Bob 0 0 "},
      {"time", log, {.playersMinTime = 9}, "Bob 1 0 Ann 0 9 Cid 0 5 "},
      {"time, not known", UntimedDuel("Ann", "Bob", 2), {.playersMinTime = 6}, "Ann 1 0 Bob 2 0 "},
  };
  for (auto test : kCases) {
    for (const bool limitTables : {false, true}) {
      test.limits.limitOverallKillTables = limitTables;
      const Statistics statistics = StatisticsOf(test.log, test.limits);
      std::string order;
      for (const Player& player : statistics.players) {
        order += player.name + " " + std::to_string(player.rank) + " " +
                 std::to_string(player.timed.kills) + " ";
      }
      EXPECT_EQ(order, test.order) << test.what;
      EXPECT_EQ(statistics.pairs.size(), statistics.players.size() - 1) << "duels have no limit";
    }
  }
}

TEST(MakeStatistics, NamesakesAreOnePlayerWhoWinsAndPlacesOnceAGame) {
  const std::string three = Init() + Join(0, "Ann") + Join(1, "^1ann") + Join(2, "Bob");
  const struct {
    std::string what;
    std::string log;
    std::string players;
  } kCases[] = {
      {"first and second", three + Kills(2, 0, 2) + Kill(1, 2) + kShutdown,
       "1 ^1ann 3/0 3, 1 1 1: 1; - Bob\n"
       "2 Bob 0/3 0, 1 0 1: 0 0 1; ann -\n"},
      {"both first", three + Kill(0, 2) + Kill(1, 2) + kShutdown,
       "1 ^1ann 2/0 2, 1 1 1: 1; - Bob\n"
       "2 Bob 0/2 0, 1 0 1: 0 0 1; ann -\n"},
      {"nobody is his own nemesis, nor beats himself",
       Init() + Join(0, "Ann") + Join(1, "^1ann") + Kill(0, 1) + kShutdown,
       "1 ^1ann 1/1 1, 1 0 1: 1; - -\n"},
      {"first, but the other one's team won",
       Init("q3dm7", 3) + Join(0, "Ann", 1) + Join(1, "ann", 2) + Join(2, "Bob", 2) +
           Kills(2, 0, 2) + Kills(2, 2, 0) + Kill(1, 0) + kShutdown,
       "1 ann 3/3 3, 1 1 1: 1; Bob Bob\n"
       "2 Bob 2/2 2, 1 1 1: 1; ann ann\n"},
      {"one second and one third", three + Kills(3, 2, 0) + Kill(0, 2) + kShutdown,
       "1 Bob 3/1 3, 1 1 1: 1; ann ann\n"
       "2 ^1ann 1/3 1, 1 0 1: 0 1; Bob Bob\n"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(TextOf(StatisticsOf(test.log, {.gameLastPlaced = 3}).players), test.players)
        << test.what;
  }
}

TEST(MakeStatistics, KnowsWhenAPlayerWasSeen) {
  const std::string warmup = Init() + "  0:00 Warmup:\n  0:10 ShutdownGame:\n";
  const std::string untimed = UntimedDuel("Ann", "Bob", 1);
  const std::size_t second = Init().size();
  const std::string dated = Duel("Ann", "Bob", 1).insert(second, test::ServerTime(50000));
  const std::string later = Duel("Ann", "Bob", 1).insert(second, test::ServerTime(60000));
  const struct {
    std::string what;
    std::string log;
    std::string seen;
  } kCases[] = {
      {"in the last run", Duel("Ann", "Bob", 1), "~999700 ~1000000"},
      {"before it", Duel("Ann", "Bob", 1) + warmup, "<999690 <999990"},
      {"in both", Duel("Ann", "Bob", 1) + Duel("Ann", "Bob", 1), "<999400 ~1000000"},
      {"without stamps", untimed, "?0 ?0"},
      {"by a date first", dated + Duel("Ann", "Bob", 1) + warmup, "=50000 <999990"},
      {"by a date last", Duel("Ann", "Bob", 1) + dated + warmup, "<49700 =50300"},
      {"by a clock set back", Duel("Ann", "Bob", 1) + later + dated, "<50000 =60300"},
  };
  for (const auto& test : kCases) {
    const Seen& seen = StatisticsOf(test.log).summary.seen;
    constexpr std::string_view kMarks = "?<~=";
    EXPECT_EQ(kMarks[static_cast<std::size_t>(seen.firstDated)] + std::to_string(seen.first) + " " +
                  kMarks[static_cast<std::size_t>(seen.lastDated)] + std::to_string(seen.last),
              test.seen)
        << test.what;
  }
}

TEST(MakeStatistics, ABotIsOneInEveryGame) {
  const auto game = [](const std::string& ann) {
    return Init() + ann + test::JoinBot(1, "Bob") + Kill(0, 1) + kShutdown;
  };
  const struct {
    std::string log;
    bool annIsBot;
  } kCases[] = {{game(test::JoinBot(0, "Ann")) + game(test::JoinBot(0, "Ann")), true},
                {game(test::JoinBot(0, "Ann")) + game(Join(0, "Ann")), false},
                {game(Join(0, "Ann")) + game(test::JoinBot(0, "Ann")), false}};
  for (const auto& test : kCases) {
    const Statistics statistics = StatisticsOf(test.log);
    EXPECT_EQ(statistics.players[0].bot, test.annIsBot);
    EXPECT_TRUE(statistics.players[1].bot);
  }
}

/// Names of players.txt of which nothing is to be said.
PlayerNames NamesOf(const std::string& text) {
  test::Told told;
  PlayerNames names(text, "players.txt", told);
  EXPECT_EQ(told.severe, "") << text;
  return names;
}

TEST(PlayerNames, ReadsJoinsAndPlayersToLeaveOut) {
  const struct {
    std::string text;
    std::string name;
    std::string is;  // the name it is joined to, or "-" when left out
  } kCases[] = {
      {"old = Ann", "^1OLD", "Ann"},
      {"  ^1o^2ld\t=  ^3Ann  \r\n", "old", "^3Ann"},
      {"a=b\nb=c", "a", "c"},
      {"b=c\ra=b", "a", "c"},
      {"\xEF\xBB\xBFold = Ann", "old", "Ann"},
      {"\"a = b\" = Ann", "a = b", "Ann"},
      {"old = \"- Ann\"", "old", "- Ann"},
      {"-x- = Ann", "-x-", "Ann"},
      {"// a = b\n; a = b\n\n", "a", ""},
      {"caf\xE9 = Ann", "CAF\xC3\x89", "Ann"},
      {"- old", "Old", "-"},
      {"-\t\"- old\"", "- old", "-"},
      {"- \"a = b\"", "a = b", "-"},
      {"- (no name)", "   ", "-"},
      {"- Ann", "Bob", ""},
      {"", "Bob", ""},
  };
  for (const auto& test : kCases) {
    const PlayerNames names = NamesOf(test.text);
    const std::string key = PlayerKey(test.name);
    const std::string* to = names.JoinedTo(key);
    EXPECT_EQ(to != nullptr ? *to : names.IsLeftOut(key) ? "-" : "", test.is) << test.text;
  }
}

TEST(PlayerNames, SaysWhichLineCannotBeUsed) {
  const struct {
    std::string line;
    std::string said;
  } kCases[] = {
      {"Ann", "neither"},
      {"-Ann", "neither"},
      {"= Ann", "a name is missing"},
      {"Ann =", "a name is missing"},
      {"- ", "neither"},
      {"- \"\"", "a name is missing"},
      {"\"Ann = Bob", "quotes that do not end"},
      {"a = b = c", "more than two names"},
      {"- a = b", "more than one name"},
      {"a = A", "to itself"},
      {"kept = x", "stands already in line 2"},
      {"- kept", "stands already in line 2"},
      {"- out", "stands already in line 3"},
      {"new = kept", "to itself"},
  };
  for (const auto& test : kCases) {
    test::Told told;
    const PlayerNames names("// names\nkept = new\n- out\n" + test.line + "\nb = Bea",
                            "players.txt", told);
    EXPECT_TRUE(told.severe.starts_with("players.txt:4: ")) << told.severe;
    EXPECT_NE(told.severe.find(test.said), std::string::npos) << told.severe;
    EXPECT_EQ(std::ranges::count(told.severe, '\n'), 1) << told.severe;
    EXPECT_EQ(*names.JoinedTo("b"), "Bea") << "the other lines count";
  }
}

TEST(PlayerNames, JoinedNamesAreOnePlayer) {
  const std::string log = Duel("Nan", "Bob", 2) + Duel("^1Ann", "Bob", 3) + Duel("NAN", "Bob", 1);
  const struct {
    std::string text;
    std::string players;
  } kCases[] = {{"nan = ann", "^1Ann 6 3, Bob 0 3, "},
                {"nan = ^2Zoe\nann = Zoe", "^2Zoe 6 3, Bob 0 3, "},
                {"nan = Bob", "^1Ann 3 1, Bob 3 3, "},
                {"", "^1Ann 3 1, NAN 3 2, Bob 0 3, "}};
  for (const auto& test : kCases) {
    std::string players;
    for (const Player& player : StatisticsOf(log, {}, nullptr, NamesOf(test.text)).players) {
      players += player.name + " " + std::to_string(player.figures.kills) + " " +
                 std::to_string(player.games) + ", ";
    }
    EXPECT_EQ(players, test.players) << test.text;
  }
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

/// The rating of every player after a log, under rules; then what is said of them.
std::string RatingsOf(const std::string& rules, const std::string& log) {
  test::Told told;
  Ranking ranking(rules, "rules.txt", 1000, told);
  std::string ratings;
  for (const Player& player : StatisticsOf(log, {.gameLastPlaced = 2}, &ranking).players) {
    ratings += player.name + " " + std::to_string(std::lround(player.rating)) + " ";
  }
  return ratings + told.severe;
}

TEST(Ranking, EveryEventHasItsRule) {
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
}

TEST(Ranking, NamesakesWinOnceAndBothSidesOfAKillSeeTheRanksBeforeIt) {
  const std::string game = Init() + Join(0, "Ann") + Join(1, "ann") + Join(2, "Bob") + Kill(0, 2) +
                           Kill(1, 2) + kShutdown;
  EXPECT_EQ(RatingsOf("game.win = rank + 20\ngame.placed = rank + 5", game), "ann 1020 Bob 1000 ");
  EXPECT_EQ(
      RatingsOf(
          "\xEF\xBB\xBFkill.killer = rank + other / 10\r\nkill.victim = rank - other / 10\r\n",
          Duel("Ann", "Bob", 2)),
      "Ann 1190 Bob 790 ");
}

TEST(Ranking, ABadRuleIsSkippedAndSaidWithItsLine) {
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
      {"kill.killer = rank + 5, rank - 5", "gives 2 results"},
      {"kill.killer = rank + 1,5 * max(1, 2)", "the decimal sign is a point"},
      {"suicide = 1\nsuicide = 2", "stands already in line 2"},
  };
  for (const auto& test : kCases) {
    const std::string found =
        RatingsOf("// rules\n" + test.rule + "\nkill.victim = rank - 1\n", Duel("Ann", "Bob", 2));
    EXPECT_TRUE(found.starts_with("Ann 1000 Bob 998 rules.txt:")) << found;
    EXPECT_NE(found.find(test.said), found.npos) << found;
    EXPECT_EQ(std::ranges::count(found, '\n'), 1) << found;
  }
}

TEST(Ranking, TheShippedRulesMoveRankFromLoserToWinner) {
  const std::string rules = test::ReadFile(std::string(MORVANE_TEMPLATES) + "/custrank.htmlt");
  EXPECT_EQ(RatingsOf(rules, Duel("Ann", "Bob", 1)), "Ann 1028 Bob 997 ");
}

}  // namespace
}  // namespace morvane
