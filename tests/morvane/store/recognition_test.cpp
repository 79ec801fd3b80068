#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/log/log_parser.h"
#include "morvane/store/continuation.h"
#include "morvane/store/game_mark.h"
#include "morvane/store/recurrence.h"
#include "tests/morvane/test_support.h"

namespace morvane {
namespace {

using test::Duel;
using test::Init;
using test::Join;
using test::Kill;
using test::Kills;

/// A letter a game: capitals prove something, small ones do not. "!" after the last: not over; "'"
/// before that: only its start was seen.
std::vector<GameMark> Marks(const std::string& letters) {
  std::vector<GameMark> marks;
  for (const char letter : letters) {
    const std::uint64_t number = static_cast<unsigned char>(letter);
    if (letter == '!') {
      marks.back().open = true;
    } else if (letter == '\'') {
      marks.back().digest += 1000;
      marks.back().kills = 4;
    } else {
      const bool proves = letter < 'a';
      marks.push_back({number, proves ? number + 2000 : 0, number + 3000, 0, proves ? kEvidence : 0,
                       9, 99, false});
    }
  }
  return marks;
}

TEST(FindRecurring, TellsWhatStays) {
  const struct {
    std::string stored;
    std::string read;
    int stay;  // stored games before the first that recurs; -1: another log
  } kCases[] = {
      {"ABC", "BC", 1},   {"ABC", "ABC", 0},  {"ABC", "AXC", 0},     {"ABC", "C", 2},
      {"ABC", "XBC", 1},  {"ABC", "AB", 0},   {"ABC", "XYZ", -1},    {"ABC", "", -1},
      {"", "ABC", -1},    {"xyB", "yB", 1},   {"xxB", "xB", 1},      {"xyz", "xyz", -1},
      {"xyz", "yz", -1},  {"AxB", "AB", 0},   {"ABC", "CAB", 0},     {"ABC'!", "C", 2},
      {"Abb'!", "Ab", 0}, {"AB'!", "B'!", 1}, {"ABCDE", "EABCD", 0},
  };
  for (const auto& test : kCases) {
    const auto pairs = FindRecurring(Marks(test.stored), Marks(test.read));
    EXPECT_EQ(pairs.empty() ? -1 : static_cast<int>(pairs.front().left), test.stay)
        << test.stored << " " << test.read;
  }
  std::vector<GameMark> weak = Marks("pqr");
  for (GameMark& mark : weak) mark.weight = kEvidence / 3;
  EXPECT_EQ(FindRecurring(weak, weak).size(), 3U) << "together they are evidence";
  weak.pop_back();
  EXPECT_TRUE(FindRecurring(weak, weak).empty());
}

TEST(CountOnce, LeavesOutWhatStandsInAnotherLog) {
  const struct {
    std::vector<std::string> logs;
    std::string counts;
  } kCases[] = {
      {{"ABC", "BCD"}, "111 001"},      {{"AA", "A"}, "11 0"},
      {{"xyz", "xyz"}, "111 111"},      {{"xAy", "xAy"}, "111 000"},
      {{"xAy", "yAx"}, "111 101"},      {{"AB'!", "AB"}, "10 01"},
      {{"AB", "AB'!"}, "11 00"},        {{"Ab'!", "Abc"}, "10 011"},
      {{"AB'!", "AB'!"}, "11 00"},      {{"ABC", "AXC"}, "111 010"},
      {{"AB", "BC", "CA"}, "11 01 00"},
  };
  for (const auto& test : kCases) {
    std::vector<MarkedLog> logs;
    for (const std::string& letters : test.logs) logs.push_back({Marks(letters), {}});
    std::string counts;
    for (const std::vector<bool>& log : CountOnce(logs).counts) {
      counts += counts.empty() ? "" : " ";
      for (const bool count : log) counts += count ? '1' : '0';
    }
    EXPECT_EQ(counts, test.counts) << test.logs[0] << " " << test.logs[1];
  }
  // B is open in the first log and ends in the second; a copy of the first lies beside them.
  const auto counts =
      CountOnce({{Marks("AB'!"), {}}, {Marks("BC"), 0}, {Marks("AB'!"), {}}}).counts;
  EXPECT_EQ(counts, (std::vector<std::vector<bool>>{{true, false}, {true, true}, {false, false}}));
  // B lies in three logs and is still open.
  const auto chain = CountOnce({{Marks("AB!"), {}}, {Marks("B!"), 0}, {Marks("B!"), 1}}).counts;
  EXPECT_EQ(chain, (std::vector<std::vector<bool>>{{true, false}, {false}, {true}}));
}

TEST(MarkGame, KnowsAGameByItsLines) {
  const auto mark = [](const std::string& text, bool open = false) {
    const ParsedLog log = ParseLog(text, true);
    const GameText& at = log.texts.at(0);
    return MarkGame(std::string_view(text).substr(at.begin, at.end - at.begin), log.games.at(0),
                    open, log.vocabulary);
  };
  const std::string duel = Duel("Ann", "Bob", 10);
  std::string windows = duel;
  for (std::size_t at = 0; (at = windows.find('\n', at)) != windows.npos; at += 2) {
    windows.insert(at, "\r");
  }
  EXPECT_TRUE(IsSameGame(mark(duel), mark(windows)));
  EXPECT_TRUE(IsSameGame(mark(duel), mark(duel.substr(test::kDashes.size() + 10)))) << "torn stamp";
  EXPECT_FALSE(IsSameGame(mark(duel), mark(Duel("Ann", "Bob", 11)))) << "two games of instagib";
  EXPECT_TRUE(IsSameGame(mark(duel),
                         mark(Init() + Join(0, "Ann") + Join(1, "Bob") + Kills(4, 0, 1), true)));
  EXPECT_GE(mark(Duel("Ann", "Bob", 3)).weight, kEvidence);
  EXPECT_LT(mark(Duel("Ann", "Bob", 2)).weight, kEvidence);
  std::string plain = "InitGame: \\mapname\\q3dm17\n";
  for (int i = 0; i < 40; ++i) plain += Kill(0, 1, "RAILGUN", "");
  EXPECT_LT(mark(plain).weight, kEvidence) << "no stamps, and every kill the same";
}

TEST(GoesOn, WhereAGameOrALineIsTorn) {
  const std::string open = Init() + Join(0, "Ann") + Kill(0, 0);
  const std::string rest = open.substr(open.find('\n') + 1);
  const struct {
    std::string rest;
    std::string log;
    bool goesOn;
  } kCases[] = {
      {rest, Kill(0, 0), true},
      {rest, Kill(0, 0, "RAILGUN", "  0:30 "), false},  // the clock went back
      {rest, "  1:10 Award: 0 x\n", true},
      {rest, "  1:10 " + test::kDashes + "\n", false},
      {rest, "  1:10 InitGa", false},  // not whole yet
      {"", Kill(0, 0), false},
      {rest + "  1:10 Kill: 0 0 10: x ki", "lled y by MOD_BFG\n", true},
      {rest + "  1:10 Kill: 0 0 10: x ki", "lled y by", false},  // not whole yet
      {rest + "  1:10 Kill: 0 0 10: x ki", "  0:00 " + test::kDashes + "\n", false},
      {"  0:0", "0 InitGame: \\mapname\\x\n", true},
      {"  0:00 ", "InitGame: \\mapname\\x\n", true},
      {"  0:00 ", "InitGame: \\mapname\\x\n  0:01 ClientConnect: 0\n", true},
      {"  0:00 ", "InitGame: \\mapname\\x\nClientConnect: 0\n", false},  // a log without stamps
      {rest + "  0:01 Client", "InitGame: \\mapname\\x\nClientConnect: 0\n", false},
      {"  0:00 ------", std::string(54, '-') + "\n", true},
      {"  0:00 -------", std::string(54, '-') + "\n", false},  // a dash too many
      {"  0:0", "  0:00 InitGame: \\mapname\\x\n", false},
      {"InitGame: \\mapname\\x\nKi", "ll: 0 1 10: a killed b by MOD_BFG\n", true},
      {"InitGame: \\mapname\\x\n", "Kill: 0 1 10: a killed b by MOD_BFG\n", true},
      {"InitGame: \\mapname\\x\n", "say: Ann: -\n", true},
      {"InitGame: \\mapname\\x\n", "hitch warning\n", false},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(GoesOn(test.rest, test.log, test.log.size()), test.goesOn)
        << test.rest << "|" << test.log;
  }
}

}  // namespace
}  // namespace morvane
