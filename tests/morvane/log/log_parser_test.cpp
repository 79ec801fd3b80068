#include "morvane/log/log_parser.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

#include "bench/log_generator.h"
#include "morvane/log/game_times.h"
#include "morvane/log/stretches.h"
#include "morvane/store/game_record.h"
#include "tests/morvane/test_support.h"

namespace morvane {
namespace {

using test::Duel;
using test::Init;
using test::Join;
using test::kDashes;
using test::Kill;
using test::Kills;
using test::kShutdown;
using test::OnlyGame;

const std::string kTwo = Join(0, "Ann") + Join(1, "Bob");

/// The entrants of a game as placed: "PLACE NAME SCORE KILLS/DEATHS (longest rows of each)
/// SECONDS", then what there is of suicides, falls, kills of mates, the nemesis; and who won.
std::string EntrantsOf(const Game& game) {
  std::string text;
  const auto add = [&](const char* what, std::int64_t count) {
    if (count > 0) text += what + std::to_string(count);
  };
  for (const Entrant& entrant : game.entrants) {
    const Figures& of = entrant.figures;
    text += (text.empty() ? "" : ", ") + std::to_string(entrant.place) + " " + entrant.name + " " +
            std::to_string(of.score) + " " + std::to_string(of.kills) + "/" +
            std::to_string(of.deaths) + " (" + std::to_string(of.killStreak) + "/" +
            std::to_string(of.deathStreak) + ")";
    add(" ", of.seconds);
    add(" suicides ", of.suicides);
    add(" falls ", of.worldDeaths);
    add(" mates ", of.teamKills);
    if (of.nemesis.index != kNobody) text += " by " + game.entrants[of.nemesis.index].name;
    if (entrant.winner) text += " won";
  }
  return text;
}

TEST(ParseLog, CountsWhatEachDidAndPlacesThem) {
  const std::string teams = Join(0, "Ann", 1) + Join(1, "Bob", 1) + Join(2, "Cid", 2);
  const std::string gone = "  2:00 ClientDisconnect: 0\n";
  const struct {
    std::string what;
    int type;
    std::string lines;
    std::string entrants;
  } kCases[] = {
      {"every kind of kill", 0,
       kTwo + Kill(0, 1) + Kill(0, 1, "ROCKET") + Kill(1, 1) + Kill(1022, 0, "FALLING") +
           Kill(1022, 1, "LAVA"),
       "1 Ann 1 2/1 (2/1) 299 falls 1 won, 2 Bob -2 0/4 (0/4) 299 suicides 1 falls 1 by Ann"},
      {"rows end with a frag and with a death", 0,
       kTwo + Kills(2, 1, 0) + Kills(3, 0, 1) + Kill(1, 0),
       "1 Ann 3 3/3 (3/2) 299 by Bob won, 1 Bob 3 3/3 (2/3) 299 by Ann won"},
      {"all for themselves", 0, teams + Kill(0, 1) + Kill(2, 0),
       "1 Ann 1 1/1 (1/1) 299 by Cid won, 1 Cid 1 1/0 (1/0) 299 won, 3 Bob 0 0/1 (0/1) 299 by Ann"},
      {"team mates", 3, teams + Kill(0, 1) + Kill(2, 0),
       "1 Cid 1 1/0 (1/0) 299 won, 2 Bob 0 0/1 (0/1) 299, 3 Ann -1 0/1 (0/1) 299 mates 1 by Cid"},
      {"in no team", 3, kTwo + Kill(0, 1), "1 Ann 1 1/0 (1/0) 299, 2 Bob 0 0/1 (0/1) 299 by Ann"},
      {"score lines stand above the rule; who left is behind; nobody plays after Exit", 4,
       Join(0, "Ann", 1) + Join(1, "Bob", 2) + Join(2, "Cid", 2) + Kill(0, 1) +
           "  4:00 ClientDisconnect: 2\n  4:00 Exit: Capturelimit hit.\n  4:00 red:3  blue:8\n"
           "  4:00 score: 41  ping: 4  client: 1 Bob\n"
           "  4:00 score: -7  ping: 4  client: 0 Ann\n" +
           Kill(1, 0, "RAILGUN", "  4:00 "),
       "1 Bob 41 1/1 (1/1) 239 by Ann won, 2 Ann -7 1/1 (1/1) 239 by Bob, 3 Cid 0 0/0 (0/0) 239"},
      {"begun anew: from 0", 0, kTwo + Kills(3, 0, 1) + "  2:00 ClientBegin: 0\n" + Kill(0, 1),
       "1 Ann 1 4/0 (4/0) 359 won, 2 Bob 0 0/4 (0/4) 359 by Ann"},
      {"renamed in the game", 0,
       kTwo + Kill(0, 1) + "  2:00 ClientUserinfoChanged: 0 n\\^1Zoe\\t\\0\n" + Kill(0, 1),
       "1 ^1Zoe 2 2/0 (2/0) 359 won, 2 Bob 0 0/2 (0/2) 359 by ^1Zoe"},
      {"gone and back", 0, kTwo + Kill(0, 1) + gone + Join(5, "Ann") + Kill(5, 1),
       "1 Ann 1 2/0 (2/0) 418 won, 2 Bob 0 0/2 (0/2) 418 by Ann"},
      {"slot taken by another", 0, kTwo + Kill(0, 1) + gone + Join(0, "Cid") + Kills(2, 0, 1),
       "1 Cid 2 2/0 (2/0) 299 won, 2 Ann 1 1/0 (1/0) 119, 3 Bob 0 0/3 (0/3) 418 by Cid"},
      {"two of one name", 0, kTwo + Join(2, "bob") + Kills(2, 2, 0) + Kill(1, 0),
       "1 bob 2 2/0 (2/0) 299 won, 2 Bob 1 1/0 (1/0) 299, 3 Ann 0 0/3 (0/3) 299 by bob"},
      {"name given before the connect", 0,
       kTwo +
           "  2:00 ClientUserinfoChanged: 3 n\\Cid\\t\\0\n  2:00 ClientConnect: 3\n"
           "  2:00 ClientBegin: 3\n" +
           Kill(3, 0),
       "1 Cid 1 1/0 (1/0) 240 won, 2 Ann 0 0/1 (0/1) 359 by Cid, 2 Bob 0 0/0 (0/0) 359"},
      {"killed by one who has left", 0, kTwo + gone + Kill(0, 1) + Join(0, "Cid"),
       "1 Ann 1 1/0 (1/0) 119 won, 2 Bob 0 0/1 (0/1) 418 by Ann, 2 Cid 0 0/0 (0/0) 299"},
      {"only looking on", 0, kTwo + Join(2, "Cid", 3) + Kill(0, 1),
       "1 Ann 1 1/0 (1/0) 299 won, 2 Bob 0 0/1 (0/1) 299 by Ann"},
      {"nothing counts in a warm-up", 0, "  0:00 Warmup:\n" + kTwo + Kill(0, 1), ""},
      {"nor from one on", 0, kTwo + Kill(0, 1) + "  2:00 Warmup:\n" + Kill(0, 1),
       "1 Ann 1 1/0 (1/0) 119 won, 2 Bob 0 0/1 (0/1) 119 by Ann"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(EntrantsOf(OnlyGame(Init("q3dm7", test.type) + test.lines + kShutdown)),
              test.entrants)
        << test.what;
  }
}

TEST(ParseLog, KnowsAGameByItsServersVariables) {
  const struct {
    std::string text;  // to the very last byte of memory that may be read
    std::string map;
    int type;
  } kCases[] = {
      {"  0:00 InitGame: \\mapname\\Q3DM1\\g_gametype\\ 4", "Q3DM1", 4},
      {"InitGame: \\G_GameType\\3\\x\\\\MapName\\a\\", "a", 3},
      {"InitGame: \\g_gametype\\x\\mapname", "", 0},
      {"InitGame:", "", 0},
      {"  0:00 InitGame:", "", 0},
      {"InitGame: ", "", 0},
      {"InitGame:\\", "", 0},
      {"InitGame: none", "", 0},
  };
  for (const auto& test : kCases) {
    const std::vector<char> exact(test.text.begin(), test.text.end());
    const ParsedLog parsed = ParseLog({exact.data(), exact.size()}, true);
    ASSERT_EQ(parsed.games.size(), 1U) << test.text;
    EXPECT_EQ(parsed.games[0].map, test.map) << test.text;
    EXPECT_EQ(parsed.games[0].type, test.type) << test.text;
  }
}

TEST(ParseLog, ReadsAnyLineOfKill) {
  const struct {
    std::string line;
    unsigned kills;
    std::string weapon;
  } kCases[] = {
      {"Kill: 0 1 10: a killed b by MOD_RAILGUN", 1, "RAILGUN"},
      {"Kill: 0 1 10: a killed b by MOD_RAILGUN in arena 0", 1, "RAILGUN"},
      {"Kill: 0 1 10: a killed b by MOD_RAILGUN 17", 1, "RAILGUN"},
      {"Kill: 0 1 10: a by MOD_BFG killed b by MOD_RAILGUN in arena 0", 1, "RAILGUN"},
      {"Kill: 0 1 99: a by MOD_BFG killed b by MOD_FAKE by MOD_NAIL", 1, "NAIL"},
      {"Kill: -1 1 0: <world> killed b by MOD_CRUSH", 1, "CRUSH"},
      {"Kill: 0 1 10: a killed b by", 0, ""},
      {"Kill: 0 1 10: a kil", 0, ""},
      {"Kill: 0 64 10: a killed b by MOD_RAILGUN", 0, ""},
      {"Kill: 0 1022 10: a killed b by MOD_RAILGUN", 0, ""},
      {"Kill: x 1 10: a killed b by MOD_RAILGUN", 0, ""},
      {"Kill: 99999999999999999999 1 1: a killed b by MOD_RAILGUN", 0, ""},
      {"Kill: ", 0, ""},
      {"Kill: 0 1 7: Isg  0:00 " + kDashes, 0, ""},
  };
  for (const auto& test : kCases) {
    const ParsedLog log = ParseLog(Init() + kTwo + "  1:00 " + test.line + "\n" + kShutdown, false);
    ASSERT_EQ(log.games.size(), 1U) << test.line;
    EXPECT_EQ(log.games[0].kills, test.kills) << test.line;
    EXPECT_EQ(log.skipped, test.kills > 0 ? 0U : 1U) << test.line;
    EXPECT_EQ(log.vocabulary.weapons.size() > 0 ? log.vocabulary.weapons[0] : "", test.weapon)
        << test.line;
  }
}

// A line that ends like one before it is read by that end alone.
TEST(ParseLog, TakesNoLineForAnotherOfTheSameEnd) {
  const std::string longName(40, 'y');
  std::string lines = Init() + kTwo;
  for (int round = 0; round < 2; ++round) {
    for (const std::string& text : std::initializer_list<std::string>{
             "Item: 0 item_health", "Item: 1 item_health", "Item:  1 item_health", "Item: 0 a",
             "Item: 0 team_item_health", "Item: 0 item_health !", "Item: 0 " + longName,
             "Item: 0 x" + longName, "Item: 64 item_health", "Item: 0/ item_health",
             "Item: item_health", "Kill: 0 1 6: a killed b by MOD_ROCKET",
             "Kill: 0 1 6: a killed b by ROCKET", "Kill: 1 0 6: a killed b by X_ROCKET",
             "Kill: 0 99 6: a killed b by MOD_ROCKET", "Kill: 1 0 6: a killed b by_MOD_ROCKET",
             "Kill: 0 by MOD_ROCKET", "Kill: 1 0 6: killed by MOD_" + longName}) {
      lines += "  1:00 ";
      lines.append(text).append("\n");
    }
  }
  const ParsedLog log = ParseLog(lines, false);
  std::string counts;
  for (const Entrant& entrant : log.games.at(0).entrants) {
    counts += entrant.name + ":";
    for (const auto& [weapon, kills, deaths] : entrant.figures.weapons) {
      counts += " " + log.vocabulary.weapons[weapon] + " " + std::to_string(kills) + "/" +
                std::to_string(deaths);
    }
    for (const auto& [item, count] : entrant.figures.itemCounts) {
      counts += " " + std::to_string(count) + " " + log.vocabulary.items[item];
    }
    counts += "\n";
  }
  EXPECT_EQ(counts, "Ann: ROCKET 4/0 X_ROCKET 0/2 " + longName + " 0/2 4 item_health 2 a" +
                        " 2 team_item_health 2 " + longName + " 2 x" + longName +
                        "\nBob: X_ROCKET 2/0 " + longName + " 2/0 ROCKET 0/4 4 item_health\n");
  EXPECT_EQ(log.damaged, 12U);
}

/// What is said of a game's end and its lead: who won, its teams' scores, the steps of the lead
/// with the leader's score.
std::string ResultOf(const Game& game) {
  const auto leader = [&](std::uint32_t index) -> std::string {
    if (index == kNobody) return "-";
    if (!game.teams) return game.entrants[index].name;
    return index == static_cast<std::uint32_t>(Team::kRed) ? "red" : "blue";
  };
  std::string text = game.teams ? "teams " : "";
  for (const LeadChange& change : game.lead) {
    text += std::to_string(change.second) + ":" + leader(change.leader);
    text += change.leader == kNobody ? " " : "+" + std::to_string(change.score) + " ";
  }
  text += "won";
  if (game.winningTeam != Team::kFree) text += game.winningTeam == Team::kRed ? " red" : " blue";
  for (const Entrant& entrant : game.entrants) text += entrant.winner ? " " + entrant.name : "";
  return text;
}

TEST(ParseLog, TellsLeadAndWinnerOnlyWhereTheLogDoes) {
  const std::string teams = Join(0, "Ann", 1) + Join(1, "Bob", 2);
  const std::string frag = Kill(0, 1, "BFG", "  0:10 ");
  const std::string exit = "  4:00 Exit: Timelimit hit.\n";
  const std::string scores = exit + "  4:00 red:1  blue:2\n";
  const struct {
    std::string what;
    int type;
    std::string lines;
    std::string result;
  } kCases[] = {
      {"free for all", 0, kTwo + frag + exit, "10:Ann+1 won Ann"},
      {"taking the lead from each other", 0,
       kTwo + frag + Kill(1, 0, "BFG", "  0:20 ") + Kill(1, 0, "BFG", "  0:30 ") +
           Kill(1022, 1, "LAVA", "  0:40 "),
       "10:Ann+1 20:- 30:Bob+2 40:- won Bob Ann"},
      {"alone", 0, Join(0, "Ann") + Kill(0, 0), "won"},
      {"alone in the end", 0, kTwo + frag + "  1:00 ClientDisconnect: 1\n" + exit,
       "10:Ann+1 won Ann"},
      {"nobody leads with less than 1, at first", 0,
       kTwo + Kill(0, 0, "BFG", "  0:05 ") + Kill(1, 1, "BFG", "  0:06 ") + frag +
           Kill(0, 1, "BFG", "  0:20 "),
       "20:Ann+1 won Ann"},
      {"nobody leads with less than 1, when the leader has gone", 0,
       kTwo + Join(2, "Cid") + Kill(2, 2, "BFG", "  0:05 ") + frag +
           "  0:20 ClientUserinfoChanged: 0 n\\Ann\\t\\3\n" + Kill(1, 2, "BFG", "  0:30 "),
       "10:Ann+1 20:- 30:Bob+1 won Ann Bob"},
      {"to the spectators", 0, kTwo + frag + "  0:20 ClientUserinfoChanged: 0 n\\Ann\\t\\3\n",
       "10:Ann+1 20:- won Ann"},
      {"to the spectators, begun anew", 0,
       kTwo + frag + "  0:20 ClientUserinfoChanged: 0 n\\Ann\\t\\3\n  0:20 ClientBegin: 0\n" +
           "  0:30 ClientUserinfoChanged: 0 n\\Ann\\t\\0\n  0:30 ClientBegin: 0\n",
       "10:Ann+1 20:- won Ann Bob"},
      {"connected anew", 0, kTwo + frag + "  0:20 ClientConnect: 0\n", "10:Ann+1 20:- won Ann"},
      {"team deathmatch", 3, teams + frag + exit, "teams 10:red+1 won red Ann"},
      {"team deathmatch, frags after the end", 3,
       teams + frag + exit + Kill(1, 0, "BFG", "  4:00 ") + Kill(1, 0, "BFG", "  4:00 "),
       "teams 10:red+1 won red Ann"},
      {"team score against the frags", 3, teams + frag + scores, "teams 10:red+1 won blue Bob"},
      {"a suicide before the first frag", 3,
       teams + Kill(1, 1, "BFG", "  0:05 ") + Kill(1022, 1, "LAVA", "  0:06 ") + frag + exit,
       "teams 10:red+1 won red Ann"},
      {"teams without an opponent", 3, Join(0, "Ann", 1) + Join(1, "Bob", 1) + scores, "teams won"},
      {"flags", 4, teams + frag + exit, "teams won"},
      {"flags with a team score", 4, teams + frag + scores, "teams won blue Bob"},
      {"harvester", 7, teams + frag, "teams won"},
      {"a mod's type, free", 8, kTwo + frag + exit, "10:Ann+1 won Ann"},
      {"a mod's type, in teams", 8, teams + frag + exit, "teams 10:red+1 won red Ann"},
      {"a mod's type, teams from then on", 9,
       kTwo + frag + "  0:20 ClientUserinfoChanged: 0 n\\Ann\\t\\1\n" +
           "  0:20 ClientUserinfoChanged: 1 n\\Bob\\t\\2\n" + Kill(1, 0, "BFG", "  0:30 "),
       "teams 30:blue+1 won blue Bob"},
      {"a mod's type, with a team score", 8, kTwo + frag + scores, "teams won"},
      {"red in a game without teams", 0, teams + frag + scores, "10:Ann+1 won Ann"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(ResultOf(OnlyGame(Init("q3dm7", test.type) + test.lines + kShutdown)), test.result)
        << test.what;
  }
}

TEST(ParseLog, TellsBotsFromPeople) {
  for (const std::string info :
       {"bot n\\Ann\\t\\0\\skill\\    3.00\\w\\0", "bot n\\Ann\\t\\0\\skill\\",
        "bot skill\\1\\n\\Ann", "man n\\Ann\\model\\skill\\hc\\100", "man n\\skill\\t\\0"}) {
    const Game game = OnlyGame(Init() + "  0:01 ClientUserinfoChanged: 0 " + info.substr(4) +
                               "\n  0:01 ClientBegin: 0\n" + kShutdown);
    EXPECT_EQ(game.entrants.at(0).bot, info.starts_with("bot")) << info;
  }
}

TEST(ParseLog, EndsGamesInEveryWay) {
  const std::string play = kTwo + Kill(0, 1, "BFG", "  1:00 ");
  const struct {
    std::string what;
    std::string log;
    std::vector<unsigned> lengths;
    bool openAtEnd;
  } kCases[] = {
      {"shut down", Init() + play + kShutdown, {300}, false},
      {"exit", Init() + play + "  4:00 Exit: Timelimit hit.\n" + kShutdown, {240}, false},
      {"exit after a jump back",
       " 20:00 InitGame: \\mapname\\q3dm1\n 20:30 Item: 0 x\n  0:00 Item: 0 x\n"
       "  0:05 Exit: Fraglimit hit.\n  9:00 ShutdownGame:\n",
       {35},
       false},
      {"no line end", Init() + play + "  5:00 ShutdownGame:", {300}, false},
      {"still running", Init() + play, {60}, true},
      {"crashed", Init() + play + Init() + play, {60, 60}, true},
      {"a stump before the next stamp",
       Init() + play + " 26  0:00 " + kDashes + "\n" + Init() + play + kShutdown,
       {60, 300},
       false},
      {"the clock runs on",
       " 20:37 InitGame: \\mapname\\q3dm1\n 26:09 ShutdownGame:\n",
       {332},
       false},
      {"the clock restarts inside",
       " 20:00 InitGame: \\mapname\\q3dm1\n 20:30 Item: 0 x\n  0:00 Item: 0 x\n"
       "  0:05 ShutdownGame:\n",
       {35},
       false},
      {"tenths", "0.0 InitGame: \\mapname\\a\n97.3 ShutdownGame:\n", {97}, false},
      {"no stamps",
       "InitGame: \\mapname\\a\nKill: 0 1 1: a killed b by MOD_BFG\nShutdownGame:\n",
       {0},
       false},
      {"CR LF", "  0:00 InitGame: \\mapname\\a\r\n  1:00 ShutdownGame:\r\n", {60}, false},
      {"nothing", "", {}, false},
      {"no game", "hello\n\n" + Kill(0, 1), {}, false},
  };
  for (const auto& test : kCases) {
    const ParsedLog log = ParseLog(test.log, false);
    std::vector<unsigned> lengths;
    for (const Game& game : log.games) lengths.push_back(game.length);
    EXPECT_EQ(lengths, test.lengths) << test.what;
    EXPECT_EQ(log.openAtEnd, test.openAtEnd) << test.what;
  }
}

TEST(ParseLog, ARoundEndsAWarmup) {
  const std::string warmup = "  0:00 Warmup:\n" + kTwo + Join(2, "Cid", 3) + Kill(0, 1);
  const std::string round = "  1:40 InitRound: \n";
  const std::string play = Kill(1, 0, "BFG", "  2:00 ");
  const std::string more = Kill(1, 0, "BFG", "  4:00 ");
  const struct {
    std::string what;
    std::string lines;
    std::string game;  // warm-up, start, kills, length, and the seconds of all
  } kCases[] = {
      {"no round", warmup + play, "1 700 0 300"},
      {"a round", warmup + round + play, "0 800 1 200 Bob:200 Ann:200"},
      {"every round", warmup + round + play + "  3:00 InitRound:\n" + more,
       "0 800 2 200 Bob:200 Ann:200"},
      {"a round without a warm-up", kTwo + round + play, "0 700 1 300 Bob:299 Ann:299"},
      {"a warm-up in between",
       kTwo + play + "  2:10 Warmup:\n" + Kill(1, 0, "BFG", "  2:20 ") + "  3:10 InitRound:\n" +
           more,
       "0 700 2 300 Bob:239 Ann:239"},
      {"after the end", kTwo + play + "  2:10 Exit: x\n  2:11 Warmup:\n  3:00 InitRound:\n" + more,
       "0 700 1 130 Bob:129 Ann:129"},
  };
  for (const auto& test : kCases) {
    ParsedLog log = ParseLog(Init() + test.lines + kShutdown, false);
    ASSERT_EQ(log.games.size(), 1U) << test.what;
    SetStarts(log, 1000);
    const Game& game = log.games[0];
    std::string text = std::to_string(game.warmup) + " " + std::to_string(game.start) + " " +
                       std::to_string(game.kills) + " " + std::to_string(game.length);
    for (const Entrant& entrant : game.entrants) {
      text += " " + entrant.name + ":" + std::to_string(entrant.figures.seconds);
    }
    EXPECT_EQ(text, test.game) << test.what;
  }
}

TEST(ParseLog, SkipsWhatIsNoLineOfTheGameAndNotesDamage) {
  const ParsedLog log = ParseLog(Init() + kTwo + Kill(0, 1) +
                                     "Kill: 0 1 1: Ann killed Bob by MOD_BFG\nInitGame: \\a\\b\n"
                                     "  1:01 Weapon_Stats: 0 x\n  1:01 Item: 77 x\n"
                                     "  1:01 Item: 0 -\n" +
                                     kShutdown,
                                 false);
  ASSERT_EQ(log.games.size(), 1U);
  EXPECT_EQ(log.games[0].kills, 1U);
  EXPECT_EQ(log.skipped, 5U);
  ASSERT_EQ(log.notes.size(), 2U);
  EXPECT_EQ(log.notes[0].line, 13U);
}

TEST(ParseLog, SaysWhereToReadOn) {
  const std::string first = Duel("Ann", "Bob", 1);
  const ParsedLog open = ParseLog(first + Init() + kTwo, false);
  EXPECT_EQ(open.resumeAt, first.size() + 68) << "the open game's first line";
  const ParsedLog closed = ParseLog(first + "  5:01 It", false);
  EXPECT_EQ(closed.resumeAt, first.size()) << "half a line is not read";
  EXPECT_EQ(closed.resumeLine, 11U);
}

/// When the games of a log, last changed at 100000, were: "=" known, "~" reckoned, "<" not after.
std::string StartsOf(ParsedLog log) {
  SetStarts(log, 100000);
  std::string text;
  for (const Game& game : log.games) {
    constexpr std::string_view kMarks = "?<~=";
    text += kMarks[static_cast<std::size_t>(game.dated)];
    text += std::to_string(game.start) + " ";
  }
  return text;
}

TEST(SetStarts, KnowsWhatTheLogTellsAndReckonsTheRest) {
  const auto date = [](std::int64_t seconds, const std::string& stamp = "  0:00 ") {
    return test::ServerTime(seconds, stamp);
  };
  const std::string game = Duel("Ann", "Bob", 1);
  const std::string late = "  6:00 InitGame: \\mapname\\a\n  7:00 ShutdownGame:\n";
  const std::string lateDated = "  6:00 InitGame: \\mapname\\a\n" + date(50000, "  6:30 ");
  const std::string later = "  8:00 InitGame: \\mapname\\a\n  9:00 ShutdownGame:\n";
  const struct {
    std::string what;
    std::string log;
    std::string starts;
  } kCases[] = {
      {"one run of the clock", game + late, "~99580 ~99940 "},
      {"the clock begins anew", game + game + late, "<99280 ~99580 ~99940 "},
      {"anew at the end of the last game", Init() + "  0:00 ShutdownGame:\n" + game,
       "<99700 ~99700 "},
      {"inside a game", late + "  0:05 Item: 0 x\n" + game, "<99640 ~99700 "},
      {"the jitter of a mod", "0.0 InitGame: \\a\\b\n9.0 Item: 0 x\n9.+ Item: 0 x\n9.0 Item: 0 x\n",
       "~99991 "},
      {"a date", Init() + date(50000) + kShutdown, "=50000 "},
      {"a date after a while", Init() + date(50000, "  2:00 ") + kShutdown, "=49880 "},
      {"the first date of two", Init() + date(50000) + date(90000) + kShutdown, "=50000 "},
      {"a date of the round",
       Init() + date(50000) + "  0:00 Warmup:\n  1:00 InitRound:\n" + kShutdown, "=50060 "},
      {"dates around it", game + Init() + date(50000) + kShutdown + late + game,
       "<49700 =50000 =50360 ~99700 "},
      {"a date behind it in the same run", game + lateDated + later, "=49610 =49970 =50090 "},
      {"no stamps", "InitGame: \\mapname\\a\nShutdownGame:\n", "?0 "},
      {"no stamps but a date", "InitGame: \\mapname\\a\n" + date(50000, "") + "ShutdownGame:\n",
       "=50000 "},
      {"no date", Init() + "  0:00 ServerTime:\t20190230173140\n" + kShutdown, "~99700 "},
      {"cut off", Init() + "  0:00 ServerTime: 201902\n" + kShutdown, "~99700 "},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(StartsOf(ParseLog(test.log, false)), test.starts) << test.what;
  }
  // What is read in stretches is dated as a whole.
  for (const auto& test : kCases) {
    ParsedLog joined;
    for (const Stretch& stretch : CutLogs({test.log}, 1)) {
      Append(joined,
             ParseLog(std::string_view(test.log).substr(stretch.begin, stretch.end - stretch.begin),
                      false));
    }
    EXPECT_EQ(StartsOf(std::move(joined)), StartsOf(ParseLog(test.log, false))) << test.what;
  }
}

/// A log as text, so that two can be compared.
std::string TextOf(const ParsedLog& log) {
  std::string text = std::to_string(log.lines) + " " + std::to_string(log.skipped) + " " +
                     std::to_string(log.strayLines) + " " + std::to_string(log.resumeAt) + " " +
                     std::to_string(log.resumeLine) + (log.openAtEnd ? " open " : " ") +
                     std::to_string(log.clock) + "\n";
  for (const Game& game : log.games) text += PackGame(game) + "\n";
  for (const GameTime& time : log.times) {
    text += std::to_string(time.clock) + " " + std::to_string(time.run) + " " +
            std::to_string(time.date) + "\n";
  }
  for (const GameText& at : log.texts) {
    text += std::to_string(at.begin) + "-" + std::to_string(at.end) + "\n";
  }
  for (const Note& note : log.notes) text += std::to_string(note.line) + note.text;
  return text;
}

TEST(CutLogs, StretchesJoinedAreTheWholeLog) {
  std::string log;
  bench::GenerateLog(7, 1, [&](std::string_view piece) { log += piece; });
  log.insert(log.size() / 2, "\n  1:00 Kill: 0 77 broken\n");
  const std::string whole = TextOf(ParseLog(log, true));
  for (const std::size_t bytes : {1000UL, 20000UL, 150000UL, 10000000UL}) {
    ParsedLog joined;
    std::size_t end = 0;
    for (const Stretch& stretch : CutLogs({log}, bytes)) {
      EXPECT_EQ(stretch.begin, end);
      end = stretch.end;
      ParsedLog part =
          ParseLog(std::string_view(log).substr(stretch.begin, stretch.end - stretch.begin), true);
      MoveTo(part, stretch.begin);
      Append(joined, std::move(part));
    }
    EXPECT_EQ(end, log.size());
    EXPECT_TRUE(TextOf(joined) == whole) << bytes;
  }
}

TEST(ParseLogs, KeepsTheOrderOfTheLogsReadInStretches) {
  // More than one stretch; the second one brings names that the first does not have.
  const std::string start = Init() + kTwo + Kill(0, 1, "ROCKET") + Kills(190000, 0, 1) + kShutdown;
  const std::string log = start + Init() + kTwo + Kill(1, 0, "BFG") + Kill(1, 0) +
                          Kill(1, 0, "ROCKET") + "  2:00 Item: 1 item_quad\n" + kShutdown;
  ASSERT_GT(start.size(), std::size_t{8} << 20) << "the size of a stretch";
  const std::vector<ParsedLog> read = ParseLogs(
      {log, "", Duel("Cid", "Dan", 2)}, true, [](const Stretch&) {}, 3);
  const ParsedLog whole = ParseLog(log, true);
  ASSERT_EQ(read.size(), 3U);
  EXPECT_TRUE(TextOf(read[0]) == TextOf(whole));
  EXPECT_EQ(read[0].vocabulary.weapons.All(), whole.vocabulary.weapons.All());
  EXPECT_EQ(read[0].vocabulary.items.All(), whole.vocabulary.items.All());
  EXPECT_TRUE(read[1].games.empty());
  EXPECT_EQ(read[2].games[0].kills, 2U);
}

}  // namespace
}  // namespace morvane
