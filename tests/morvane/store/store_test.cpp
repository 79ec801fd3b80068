#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "morvane/store/collect.h"
#include "morvane/store/continuation.h"
#include "morvane/store/database.h"
#include "morvane/store/digest.h"
#include "morvane/store/game_record.h"
#include "morvane/store/known_facts.h"
#include "morvane/store/recurrence.h"
#include "tests/morvane/test_support.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using test::Duel;
using test::Init;
using test::Join;
using test::Kill;
using test::Kills;
using test::kShutdown;

/// A letter a game: capitals prove something, small ones do not. "!" after the last: not over; "'"
/// before that: only its start was seen.
std::vector<GameMark> Marks(const std::string& letters) {
  std::vector<GameMark> marks;
  for (const char letter : letters) {
    const auto number = static_cast<std::uint64_t>(letter);
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

std::string Hex(const std::string& bytes) {
  std::string text;
  char digits[3];
  for (const char byte : bytes) {
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
    text += digits;
  }
  return text;
}

std::string FromHex(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(text.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

Game SampleGame() {
  Game game =
      test::OnlyGame(Init("q3dm6", 0) + Join(0, "Ann") +
                     Join(1,
                          "B\xF6"
                          "b") +
                     Kill(0, 1) + Kill(1, 0, "ROCKET") + Kill(0, 1) + Kill(1022, 0, "LAVA") +
                     "  2:00 Item: 1 item_quad\n  3:00 Exit: Fraglimit hit.\n" +
                     "  3:00 score: 20  ping: 50  client: 0 Ann\n" + kShutdown);
  game.start = 1700000000;
  game.dated = Dated::kNotAfter;
  game.lead = {{60, 0, 1}, {70, kNobody, 1}};
  return game;
}

// When the record of a game changes its form, kRecordVersion rises, and the bytes of the version
// before are read as they were. A field that the parser gives another value is none of that.
const std::string kFirstRecord =
    "057133646d360080c49fd50cac0201000109467261676c696d697400000004030203416e6e000101"
    "01020200000128b301010100000101010203000200010001020001000342f6620002010001020000"
    "0002b301010101010002000102010100000002010001020001020001000100023c000246ffffffff"
    "0f0204000100000100010000010000ffff03000200";

const std::string kThirdRecord =
    "057133646d360080c49fd50cac0201000109467261676c696d697400000004030100000203416e6e"
    "0001010100020200000128b3010101000101010203000200010001020001000342f6620002010000"
    "010200000002b3010101010002000102010100000002010001020001020001000100023c000246ff"
    "ffffff0f0204000100000100010000010000ffff03000200";

const std::string kFourthRecord =
    "057133646d360080c49fd50cb40101000109467261676c696d697400000004030100000203416e6e"
    "0001010100010000020200000128b3010101000101010203000200010001020001000342f6620002"
    "010000010000010200000002b3010101010002000102010100000002010001020001020001000100"
    "023c000246ffffffff0f0204000100003c010001003c000100003cffff030002003c";

TEST(GameRecord, KeepsItsFormWithItsVersion) {
  EXPECT_EQ(kRecordVersion, 5) << "pack the sample anew, keep the bytes of the old version";
  for (const int version : {1, 2, 3, 4, 5}) {
    const std::string& record = version < 3   ? kFirstRecord
                                : version < 4 ? kThirdRecord
                                              : kFourthRecord;
    Game game;
    ASSERT_TRUE(UnpackGame(FromHex(record), version, 3, 1, game)) << version;
    EXPECT_EQ(game.events.at(0).second, version < 4 ? 0U : 60U) << version;
    Game third;
    ASSERT_TRUE(UnpackGame(FromHex(kThirdRecord), 3, 3, 1, third));
    if (version < 4) {
      EXPECT_EQ(Hex(PackGame(game)), Hex(PackGame(third))) << version;
    }
    EXPECT_EQ(game.map, "q3dm6");
    EXPECT_EQ(game.start, 1700000000);
    EXPECT_EQ(game.dated, Dated::kNotAfter);
    EXPECT_EQ(game.entrants.at(1).name,
              "B\xF6"
              "b");
    EXPECT_EQ(game.entrants.at(0).figures.score, 20);
    EXPECT_EQ(game.events.size(), 4U);
  }
  Game game;
  EXPECT_FALSE(UnpackGame(FromHex(kFourthRecord), kRecordVersion + 1, 3, 1, game));
  // A game of flags knew a lead and a winner once; now it knows that it does not.
  std::string flags = FromHex(kFirstRecord);
  flags[6] = 2 * 4;
  ASSERT_TRUE(UnpackGame(flags, 2, 3, 1, game));
  EXPECT_TRUE(game.teams && game.lead.empty());
  EXPECT_FALSE(game.entrants[0].winner || game.entrants[1].winner);
}

TEST(GameRecord, HasTheFormOfItsVersion) { EXPECT_EQ(Hex(PackGame(SampleGame())), kFourthRecord); }

TEST(GameRecord, ADamagedOneIsNotRead) {
  const struct {
    std::string what;
    void (*damage)(Game&);
  } kCases[] = {
      {"leader", [](Game& game) { game.lead[0].leader = 2; }},
      {"leading team",
       [](Game& game) {
         game.teams = true;
         game.lead[0].leader = 4;
       }},
      {"weapon of a kill", [](Game& game) { game.events[0].weapon = 3; }},
      {"killer", [](Game& game) { game.events[0].killer = 2; }},
      {"victim", [](Game& game) { game.events[0].victim = 2; }},
      {"killer of a pair", [](Game& game) { game.pairs[0].killer = 2; }},
      {"victim of a pair", [](Game& game) { game.pairs[0].victim = 2; }},
      {"weapon", [](Game& game) { game.entrants[0].figures.weapons[0].weapon = 3; }},
      {"item", [](Game& game) { game.entrants[1].figures.itemCounts[0].item = 1; }},
      {"nemesis", [](Game& game) { game.entrants[0].figures.nemesis.index = 2; }},
      {"favourite victim", [](Game& game) { game.entrants[0].figures.favouriteVictim.index = 2; }},
      {"place", [](Game& game) { game.entrants[0].place = 3; }},
      {"no place", [](Game& game) { game.entrants[0].place = 0; }},
      {"winning team", [](Game& game) { game.winningTeam = Team::kSpectator; }},
      {"date", [](Game& game) { game.dated = static_cast<Dated>(4); }},
      {"team", [](Game& game) { game.entrants[0].team = static_cast<Team>(4); }},
  };
  Game read;
  ASSERT_TRUE(UnpackGame(PackGame(SampleGame()), kRecordVersion, 3, 1, read));
  for (const auto& test : kCases) {
    Game game = SampleGame();
    test.damage(game);
    EXPECT_FALSE(UnpackGame(PackGame(game), kRecordVersion, 3, 1, read)) << test.what;
  }
  const std::string bytes = PackGame(SampleGame());
  EXPECT_FALSE(UnpackGame(bytes + '\0', kRecordVersion, 3, 1, read)) << "too long";
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(UnpackGame(bytes.substr(0, size), kRecordVersion, 3, 1, read)) << size;
  }
}

/// Runs over logs in a folder, with what they say.
class CollectTest : public testing::Test, protected Report {
 protected:
  void Write(const Message& message) override {
    said_ += (message.severe ? "severe " : "") + message.file + ": " + message.text + "\n";
  }
  void Progress(std::string_view, std::size_t, std::size_t) override {
    if (const auto act = std::exchange(whileReading_, nullptr)) act();
  }

  fs::path At(const std::string& name) const { return folder_.Path() / name; }
  void Log(const std::string& name, const std::string& text) const {
    test::WriteFile(At(name), text);
    fs::last_write_time(At(name), fs::file_time_type::clock::now() - std::chrono::hours(1000) +
                                      std::chrono::seconds(++clock_));
  }
  std::vector<Game> Collect(const std::vector<std::string>& logs, bool useDatabase = true) {
    Sources sources;
    for (const std::string& log : logs) sources.logs.push_back({log, At(log).string()});
    sources.useDatabase = useDatabase;
    sources.databasePath = At("db").string();
    said_.clear();
    return CollectGames(sources, *this).games;
  }
  bool Said(const std::string& text) const { return said_.find(text) != said_.npos; }

  test::TempFolder folder_;
  std::string said_;
  std::function<void()> whileReading_;  // done once, when the first log has been read
  mutable int clock_ = 0;
  const std::string one_ = Duel("Ann", "Bob", 6);
  const std::string two_ = Duel("Cid", "Bob", 7);
  const std::string empty_ = Duel("Ann", "Bob", 0);
};

TEST_F(CollectTest, AGameThatGoesOnInTheNextLogIsOne) {
  const std::string all = one_ + two_;
  for (const bool useDatabase : {false, true}) {
    for (const std::size_t cut : {one_.size() + 100, one_.size() + 200, one_.size() + 400}) {
      fs::remove_all(At("db"));
      Log("a.log", all.substr(0, cut));
      Log("b.log", all.substr(cut) + one_.substr(0, 300));
      const std::vector<Game> games = Collect({"a.log", "b.log"}, useDatabase);
      ASSERT_EQ(games.size(), 3U) << cut;
      EXPECT_EQ(games[1].kills, 7U) << cut;
    }
  }
  Collect({"b.log"}, false);
  EXPECT_TRUE(Said("b.log: ") && Said("before the first \"InitGame:\" left out")) << said_;
}

TEST_F(CollectTest, TheSameCountsOnceAndIsSaid) {
  for (const bool useDatabase : {false, true}) {
    Log("a.log", empty_ + empty_);
    Log("b.log", empty_ + empty_);
    EXPECT_EQ(Collect({"a.log", "b.log"}, useDatabase).size(), 2U);
    EXPECT_TRUE(Said("b.log: holds nothing but what a.log holds; counted once")) << said_;
    Log("b.log", empty_ + one_ + two_);
    Log("a.log", one_ + one_);
    EXPECT_EQ(Collect({"a.log", "b.log"}, useDatabase).size(), useDatabase ? 6U : 4U);
    EXPECT_TRUE(Said("b.log: 1 game of it stand in another log too")) << said_;
    fs::remove_all(At("db"));
  }
}

TEST_F(CollectTest, AStaleCopyOfAShortenedLogCountsNothingTwice) {
  Log("a.log", empty_ + one_ + two_);
  Log("copy.log", empty_ + one_);
  EXPECT_EQ(Collect({"a.log", "copy.log"}).size(), 3U);
  Log("a.log", one_ + two_);
  EXPECT_EQ(Collect({"a.log", "copy.log"}).size(), 3U) << said_;
}

TEST_F(CollectTest, OneDateHoldsForAGameAndItsCopies) {
  Log("a.log", one_ + two_.substr(0, 400));
  const std::int64_t start = Collect({"a.log"})[1].start;
  clock_ += 5000;
  Log("copy.log", empty_ + one_ + two_);
  const Game game = Collect({"a.log", "copy.log"})[2];
  EXPECT_EQ(game.kills, 7U) << "the copy's counts: it is over";
  EXPECT_EQ(game.start, start);
}

TEST_F(CollectTest, AMovedLogWithoutKillsIsNotDoubled) {
  Log("a.log", empty_ + empty_);
  EXPECT_EQ(Collect({"a.log"}).size(), 2U);
  fs::rename(At("a.log"), At("a.log.1"));
  Log("a.log", empty_);
  EXPECT_EQ(Collect({"a.log.1", "a.log"}).size(), 3U);
  EXPECT_EQ(Collect({"a.log"}).size(), 3U);
}

TEST_F(CollectTest, ALogThatDiffersAtItsStartHasNotGrown) {
  Log("a.log", one_ + two_);
  Collect({"a.log"});
  Log("a.log", two_ + one_ + Duel("Ann", "Cid", 8));
  EXPECT_EQ(Collect({"a.log"}).size(), 3U);
  EXPECT_TRUE(Said("a.log: 51 lines read")) << said_;
  std::string other = two_ + one_ + Duel("Ann", "Cid", 8) + Duel("Dan", "Bob", 9);
  other[other.find("Cid")] = 'D';
  Log("a.log", other);
  EXPECT_EQ(Collect({"a.log"}).size(), 4U + 1U) << "an edited first game stays in both forms";
}

TEST_F(CollectTest, ALogThatDiffersFarBehindItsStartHasNotGrown) {
  const std::string start = Duel("Ann", "Bob", 200);
  ASSERT_GT(start.size(), 8192U);
  Log("a.log", start + two_);
  EXPECT_EQ(Collect({"a.log"}).size(), 2U);
  std::string other = start + two_ + one_;
  other[other.find("Cid")] = 'D';
  Log("a.log", other);
  Collect({"a.log"});
  const auto lines = std::to_string(std::count(other.begin(), other.end(), '\n'));
  EXPECT_TRUE(Said("a.log: " + lines + " lines read")) << said_;
}

TEST_F(CollectTest, DatesStayWhenALogIsTouchedMovedOrCopied) {
  Log("a.log", one_ + two_.substr(0, 300));
  const std::int64_t start = Collect({"a.log"})[1].start;
  clock_ += 5000;
  Log("a.log", one_ + two_);
  EXPECT_EQ(Collect({"a.log"})[1].start, start) << "it was open and has grown";
  clock_ += 5000;
  Log("b.log", one_ + two_);
  EXPECT_EQ(Collect({"b.log", "a.log"})[1].start, start);
  clock_ += 5000;
  Log("b.log", two_);
  EXPECT_EQ(Collect({"b.log"})[1].start, start);
}

TEST(KeepKnown, OnlyWhatTheLogTellsStandsAboveWhatWasStored) {
  for (const Dated dated : {Dated::kUnknown, Dated::kNotAfter, Dated::kReckoned, Dated::kKnown}) {
    Game game;
    game.start = 7;
    game.dated = dated;
    KeepKnown(game, {5, Dated::kReckoned});
    const bool stays = dated == Dated::kKnown;
    EXPECT_EQ(game.start, stays ? 7 : 5);
    EXPECT_EQ(game.dated, stays ? Dated::kKnown : Dated::kReckoned);
  }
}

TEST_F(CollectTest, WhatWasStoredOfADateStaysAsWellKnownAsItWas) {
  const auto dates = [&](const std::string& log) {
    Log("a.log", log);
    std::string text;
    constexpr std::string_view kMarks = "?<~=";
    for (const Game& game : Collect({"a.log"})) {
      text += kMarks[static_cast<std::size_t>(game.dated)];
    }
    return text;
  };
  EXPECT_EQ(dates(one_), "~");
  EXPECT_EQ(dates(one_ + two_), "~~") << "reckoned while it was the last";
  std::string dated = Duel("Ann", "Cid", 8);
  dated.insert(dated.find("  0:01"), test::ServerTime(50000));
  EXPECT_EQ(dates(one_ + two_ + dated + Duel("Dan", "Bob", 9)), "~~=~");
}

TEST_F(CollectTest, ALogCutWhileItIsReadIsLeftOutOnce) {
  const std::string third = Duel("Dan", "Bob", 9);
  for (const bool useDatabase : {false, true}) {
    fs::remove_all(At("db"));
    Log("a.log", one_);
    Log("b.log", third);
    Collect({"a.log", "b.log"}, useDatabase);
    Log("a.log", one_ + two_);
    Log("b.log", third + empty_);
    whileReading_ = [&] { fs::resize_file(At("a.log"), 400); };
    EXPECT_EQ(Collect({"a.log", "b.log"}, useDatabase).size(), useDatabase ? 3U : 2U) << said_;
    EXPECT_TRUE(Said("severe a.log: was cut or written anew while it was read")) << said_;
    EXPECT_FALSE(Said("severe b.log")) << said_;
    EXPECT_FALSE(Said("a.log: is a new log")) << said_;
    Log("a.log", one_ + two_ + one_);
    EXPECT_EQ(Collect({"a.log", "b.log"}, useDatabase).size(), 5U) << said_;
    EXPECT_FALSE(Said("severe")) << said_;
  }
}

TEST_F(CollectTest, ALogRotatedByCopyWhileItIsReadLosesNothing) {
  Log("a.log", one_);
  Collect({"a.log"});
  Log("a.log", one_ + two_.substr(0, 300));
  whileReading_ = [&] {
    fs::copy(At("a.log"), At("a.log.1"));
    Log("a.log", two_.substr(300, 100));
  };
  EXPECT_EQ(Collect({"a.log"}).size(), 1U) << said_;
  EXPECT_TRUE(Said("severe a.log: was cut")) << said_;
  const std::vector<Game> games = Collect({"a.log.1", "a.log"});
  ASSERT_EQ(games.size(), 2U) << said_;
  Log("a.log", two_.substr(300));
  EXPECT_EQ(Collect({"a.log.1", "a.log"})[1].kills, 7U) << said_;
}

TEST_F(CollectTest, APackedLogCountsOnce) {
  for (const bool useDatabase : {false, true}) {
    Log("a.log", empty_ + one_ + two_.substr(0, 300));
    EXPECT_EQ(Collect({"a.log"}, useDatabase).size(), 3U);
    Log("a.log.1.gz", test::Packed(empty_ + one_ + two_.substr(0, 300)));
    EXPECT_EQ(Collect({"a.log", "a.log.1.gz"}, useDatabase).size(), 3U) << said_;
    EXPECT_TRUE(Said("a.log.1.gz: holds nothing but what a.log holds; counted once")) << said_;
    Log("a.log", two_.substr(300) + empty_);
    for (int run = 0; run < 2; ++run) {
      const std::vector<Game> games = Collect({"a.log.1.gz", "a.log"}, useDatabase);
      ASSERT_EQ(games.size(), 4U) << said_;
      EXPECT_EQ(games[2].kills, 7U);
    }
    EXPECT_EQ(Said("2 logs unchanged"), useDatabase) << said_;
    fs::rename(At("a.log.1.gz"), At("a.log.2.gz"));
    EXPECT_EQ(Collect({"a.log.2.gz", "a.log"}, useDatabase).size(), 4U) << said_;
    EXPECT_EQ(Collect({"a.log"}, useDatabase).size(), useDatabase ? 4U : 1U) << said_;
  }
}

TEST_F(CollectTest, AnUnchangedPackedLogIsNotUnpacked) {
  Log("a.log", one_ + two_.substr(0, 300));
  Log("b.log.gz", test::Packed(two_ + empty_));
  Collect({"a.log", "b.log.gz"});
  std::string packed = test::ReadFile(At("b.log.gz"));
  packed[packed.size() / 2] ^= 0x55;
  const fs::file_time_type changed = fs::last_write_time(At("b.log.gz"));
  test::WriteFile(At("b.log.gz"), packed);
  fs::last_write_time(At("b.log.gz"), changed);
  for (const char* grown : {"c.log", "d.log"}) {  // one that is new is looked for among all
    Log(grown, Duel("Dan", grown, 9));
    EXPECT_GE(Collect({"c.log", "d.log", "a.log", "b.log.gz"}).size(), 5U);
    EXPECT_FALSE(Said("b.log.gz")) << said_;
  }
  Log("a.log", one_ + two_.substr(0, 350));  // may go on there
  EXPECT_EQ(Collect({"a.log", "b.log.gz"}).size(), 6U);
  EXPECT_TRUE(Said("severe b.log.gz: cannot be read: it is packed and damaged")) << said_;
  Log("b.log.gz", test::Packed(two_ + empty_ + one_));
  EXPECT_EQ(Collect({"a.log", "b.log.gz"}).size(), 6U) << said_;
}

TEST_F(CollectTest, UnfinishedLinesOfLogsLongGoneAreDropped) {
  const std::string open = one_ + two_.substr(0, 300);
  Log("a.log", open);
  for (int day = 0; day < 50; ++day) {
    const std::string log = "day" + std::to_string(day) + ".log";
    Log(log, Init("q3dm6") + Join(0, "Day" + std::to_string(day)));
    Collect({"a.log", log});
  }
  const auto logs = [&] {
    return SQLite::Database(At("db/morvane.db").string())
        .execAndGet("SELECT count(*) FROM logs WHERE length(rest) > 0")
        .getInt();
  };
  EXPECT_EQ(logs(), 32 + 1);
  Log("z.log", two_.substr(300));
  const std::vector<Game> games = Collect({"a.log", "z.log"});
  ASSERT_EQ(games.size(), 52U) << said_;
  EXPECT_EQ(games[51].kills, 7U) << "the first is in the list, and goes on";
  EXPECT_EQ(Collect({"z.log"}).size(), 52U);
  EXPECT_EQ(logs(), 31 + 1);
}

TEST_F(CollectTest, WhoIsABotAndWhenStaysWithAGameThatRecurs) {
  std::string first =
      Init() + test::JoinBot(0, "Xaero") + Join(1, "Bob") + Kills(5, 1, 0) + kShutdown;
  first.insert(first.find("  0:01"), test::ServerTime(50000));
  const std::string open =
      Init("q3dm6") + test::JoinBot(0, "Orbb") + Join(1, "Bob") + Kills(4, 1, 0);
  const auto facts = [&](const std::vector<std::string>& logs) {
    std::string text;
    for (const Game& game : Collect(logs)) {
      text += std::to_string(game.start) + "?<~="[static_cast<std::size_t>(game.dated)];
      for (const Entrant& entrant : game.entrants) text += entrant.bot ? 'b' : 'p';
      text += ' ';
    }
    return text;
  };
  Log("a.log", first + one_ + open);
  const std::string known = facts({"a.log"});
  EXPECT_TRUE(known.starts_with("50000=pb ")) << known;
  clock_ += 5000;
  Log("a.log", one_ + open);
  EXPECT_EQ(facts({"a.log"}), known) << "shortened: " << said_;
  clock_ += 5000;
  Log("a.log", one_ + open + Kill(1, 0));
  EXPECT_EQ(facts({"a.log"}), known) << "grown: " << said_;
  fs::rename(At("a.log"), At("a.log.1"));
  clock_ += 5000;
  Log("a.log", Kill(1, 0) + kShutdown);
  EXPECT_EQ(facts({"a.log.1", "a.log"}), known) << "rotated: " << said_;
  clock_ += 5000;
  Log("copy.log", first + one_ + open + Kill(1, 0) + Kill(1, 0) + kShutdown);
  EXPECT_EQ(facts({"copy.log"}), known) << "copied: " << said_;
}

TEST_F(CollectTest, TwoRunsAtOnceCountEveryGameOnce) {
  struct Silent : Report {
    void Write(const Message& message) override { failed |= message.log == morvane::Log::kMain; }
    void Progress(std::string_view, std::size_t, std::size_t) override {}
    bool failed = false;
  };
  Log("a.log", one_ + two_);
  const auto run = [&](const std::string& log, std::size_t& games) {
    const Sources sources{{{log, At(log).string()}}, true, At("db").string()};
    Silent silent;
    for (int i = 0; i < 5; ++i) games = CollectGames(sources, silent).games.size();
    if (silent.failed) games = 0;
  };
  Log("b.log", Duel("Dan", "Eve", 9) + two_);
  std::size_t first = 0;
  std::size_t second = 0;
  {
    const std::jthread other([&] { run("a.log", first); });
    run("b.log", second);
  }
  EXPECT_EQ(std::max(first, second), 3U);
  EXPECT_GE(std::min(first, second), 2U);
  EXPECT_EQ(Collect({"a.log", "b.log"}).size(), 3U);
  EXPECT_TRUE(Said("2 logs unchanged")) << said_;
}

TEST_F(CollectTest, ADatabaseOfANewerVersionIsLeftAsItIs) {
  Log("a.log", one_);
  Collect({"a.log"});
  SQLite::Database(At("db/morvane.db").string(), SQLite::OPEN_READWRITE)
      .exec("PRAGMA user_version = 1000");
  EXPECT_EQ(Collect({"a.log"}).size(), 1U);
  EXPECT_TRUE(Said("made by a newer version of this program and is left as it is")) << said_;
}

/// A database as the first version made it: with a log, of which the file is `size` bytes long, and
/// one that is gone.
void WriteFirstVersion(const std::string& path, const std::string& log, std::size_t size,
                       std::uint64_t digest) {
  SQLite::Database database(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  database.exec(
      "CREATE TABLE logs(id INTEGER PRIMARY KEY, path BLOB, size INTEGER DEFAULT 0,"
      "changed INTEGER DEFAULT 0, digest INTEGER DEFAULT 0, resume_at INTEGER DEFAULT 0,"
      "resume_line INTEGER DEFAULT 0, open_at_end INTEGER DEFAULT 0);"
      "CREATE UNIQUE INDEX log_paths ON logs(path);"
      "CREATE TABLE games(id INTEGER PRIMARY KEY, log INTEGER NOT NULL, digest INTEGER NOT NULL,"
      "data BLOB NOT NULL);"
      "CREATE INDEX games_of_logs ON games(log);"
      "CREATE TABLE names(kind INTEGER NOT NULL, number INTEGER NOT NULL, name BLOB NOT NULL,"
      "PRIMARY KEY(kind, number));"
      "INSERT INTO names VALUES(0, 0, CAST('RAILGUN' AS BLOB)), (0, 1, CAST('ROCKET' AS BLOB)),"
      "(0, 2, CAST('LAVA' AS BLOB)), (1, 0, CAST('item_quad' AS BLOB));"
      "INSERT INTO logs(id) VALUES(1);"
      "PRAGMA user_version = 1;");
  SQLite::Statement row(database, "INSERT INTO logs VALUES(2, ?, ?, 7, ?, ?, 3, 0)");
  row.bind(1, log.data(), static_cast<int>(log.size()));
  row.bind(2, static_cast<std::int64_t>(size));
  row.bind(3, static_cast<std::int64_t>(digest));
  row.bind(4, static_cast<std::int64_t>(size));
  row.exec();
  database.exec("INSERT INTO games(log, digest, data) SELECT id, 5, x'" + kFirstRecord +
                "' FROM logs");
}

TEST_F(CollectTest, GamesOfADatabaseWithoutNumbersGetTheirs) {
  Log("a.log", one_ + two_);
  Collect({"a.log"});
  Log("a.log", one_);
  SQLite::Database(At("db/morvane.db").string(), SQLite::OPEN_READWRITE)
      .exec("DROP TABLE numbers; DROP TABLE last_number; PRAGMA user_version = 4");
  for (const std::uint32_t run : {1, 2}) {
    const std::vector<Game> games = Collect({"a.log"});
    ASSERT_EQ(games.size(), 1U) << run << said_;
    EXPECT_EQ(games[0].number, 1U) << run;
  }
}

TEST_F(CollectTest, ADatabaseOfTheFirstVersionIsTakenOver) {
  const std::string log = Init("q3dm6") + Join(0, "Ann") +
                          Join(1,
                               "B\xF6"
                               "b") +
                          kShutdown;
  Log("a.log", log);
  fs::create_directories(At("db"));
  WriteFirstVersion(At("db/morvane.db").string(), At("a.log").string(), log.size(), Digest(log));
  std::vector<Game> games = Collect({"a.log"});
  ASSERT_EQ(games.size(), 2U) << said_;
  EXPECT_EQ(games[0].kills, 4U) << "from the log that is gone";
  EXPECT_EQ(games[1].kills, 0U) << "read again";
  EXPECT_EQ(games[1].start, 1700000000) << "with the date it had";
  EXPECT_EQ(Collect({"a.log"}).size(), 2U);
  EXPECT_TRUE(Said("1 log unchanged")) << said_;
}

}  // namespace
}  // namespace morvane
