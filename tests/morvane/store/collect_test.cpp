#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "morvane/store/known_facts.h"
#include "tests/morvane/store/collect_fixture.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using test::Duel;
using test::Init;
using test::Join;
using test::Kill;
using test::kShutdown;

TEST_F(CollectTest, TheSameCountsOnceAndIsSaid) {
  for (const bool useDatabase : {false, true}) {
    Log("a.log", empty_ + empty_);
    Log("b.log", empty_ + empty_);
    EXPECT_EQ(Kills({"a.log", "b.log"}, useDatabase), "0 0 ");
    EXPECT_TRUE(Said("b.log: holds nothing but what a.log holds; counted once")) << said_;
    Log("b.log", empty_ + one_ + two_);
    Log("a.log", one_ + one_);
    EXPECT_EQ(Kills({"a.log", "b.log"}, useDatabase), useDatabase ? "0 0 6 6 0 7 " : "6 6 0 7 ");
    EXPECT_TRUE(Said("b.log: 1 game of it stands in another log too")) << said_;
    fs::remove_all(At("db"));
  }
}

TEST_F(CollectTest, WhatBeginsInMidGameStaysOutOfTheOpenGameOfAnotherServer) {
  const std::string open = Init() + Join(0, "Gus") + Join(1, "Hal") + Kill(0, 1);
  const std::string rest = test::Kills(5, 0, 1) + kShutdown;  // of the second game
  const std::string end = "  5:00 ShutdownGame:";  // the last log begins like what follows it
  const std::string torn = two_.substr(two_.find(" ClientUserinfoChanged: 1")) + third_;
  const struct {
    std::string what;
    std::vector<std::string> logs;
    std::string kills;
    std::string said;
  } kCases[] = {
      {"the whole game is known",
       {two_ + third_ + fourth_, one_ + open, rest + third_ + fourth_},
       "7 9 8 6 1 ",
       "c.log: 2 games of it stand in another log too"},
      {"what follows in it is older than the open game",
       {one_, third_ + open, rest + fourth_ + third_},
       "6 9 1 8 ",
       "c.log: 6 lines of a game before the first \"InitGame:\" left out"},
      {"a broken line fits",
       {one_ + two_ + third_, fourth_.substr(0, fourth_.find(end)) + end, torn},
       "6 7 9 8 ",
       "c.log: 1 game of it stands in another log too"},
      {"a broken line alone", {one_ + two_ + third_, end, torn}, "6 7 9 ", "c.log: 1 game"},
  };
  const std::vector<std::string> names = {"a.log", "b.log", "c.log"};
  for (const auto& test : kCases) {
    for (const bool useDatabase : {false, true}) {
      fs::remove_all(At("db"));
      for (std::size_t i = 0; i < names.size(); ++i) Log(names[i], test.logs[i]);
      EXPECT_EQ(Kills(names, useDatabase), test.kills) << test.what << said_;
      EXPECT_TRUE(Said(test.said)) << test.what << said_;
      Log("b.log", test.logs[1] + "\n  0:19 InitGame: \\g_gametype\\3\\");
      EXPECT_EQ(Kills(names, useDatabase), test.kills) << test.what << ", b grown" << said_;
    }
  }
}

TEST_F(CollectTest, ADayThatIsListedLaterTakesTheGameThatWentOnWithoutIt) {
  const std::string later = third_ + fourth_;
  Log("1.log", one_ + "  0:");
  const std::string day = two_.substr(two_.find("InitGame"));
  const std::string kept = day.substr(0, day.rfind("  1:00 Kill") + 4);
  Log("3.log", day.substr(kept.size()) + later);
  Log("copy.log", later.substr(later.find('\n') + 1));
  EXPECT_EQ(Kills({"1.log", "3.log", "copy.log"}), "6 9 8 ") << said_;
  Log("2.log", "00 " + kept);
  EXPECT_EQ(Kills({"1.log", "2.log", "3.log", "copy.log"}), "6 7 9 8 ") << said_;
  EXPECT_FALSE(Said("severe")) << said_;
}

TEST_F(CollectTest, ALogThatIsShortenedWithinAGameGoesOnWithNoOtherOne) {
  Log("a.log", one_ + two_.substr(0, 400));
  Log("b.log", two_.substr(400) + third_ + fourth_);
  EXPECT_EQ(Kills({"a.log", "b.log"}), "6 7 9 8 ");
  Log("b.log", third_.substr(third_.rfind("  1:00")) + fourth_);
  EXPECT_EQ(Kills({"a.log", "b.log"}), "6 7 9 8 ") << said_;
}

TEST_F(CollectTest, AnEditedLogIsNotTheOneThatWasRotated) {
  Log("a.log.2", one_ + third_);
  Log("a.log", two_.substr(0, 400));
  EXPECT_EQ(Kills({"a.log.2", "a.log"}), "6 9 1 ");
  Log("a.log.2", one_ + Duel("Dan", "Bob", 8));
  Log("a.log", two_.substr(400));
  EXPECT_EQ(Kills({"a.log.2", "a.log"}), "6 8 7 ") << said_;
  EXPECT_TRUE(Said("a.log.2: has changed") && !Said("left out")) << said_;
}

TEST_F(CollectTest, ALogThatDiffersHasNotGrown) {
  const std::string start = Duel("Ann", "Bob", 200);
  ASSERT_GT(start.size(), 8192U) << "what is looked at first";
  for (const char* name : {"Bob", "Cid"}) {
    fs::remove_all(At("db"));
    Log("a.log", start + two_);
    Kills({"a.log"});
    std::string other = start + two_ + one_;
    other[other.find(name)] = 'D';
    Log("a.log", other);
    Kills({"a.log"});
    const auto lines = std::to_string(std::count(other.begin(), other.end(), '\n'));
    EXPECT_TRUE(Said("a.log: " + lines + " lines read")) << said_;
  }
}

TEST_F(CollectTest, TheLastGameOfAnEditedLogKeepsItsDateAndNumber) {
  const std::string open = Init("q3dm6") + Join(0, "Ann") + Kill(0, 0);
  const struct {
    std::string before;
    std::string after;
  } kCases[] = {{one_ + two_, one_ + Duel("Cid", "Bob", 5)},
                {one_ + two_ + open, one_ + open + Kill(0, 0)}};
  for (const auto& test : kCases) {
    fs::remove_all(At("db"));
    Log("a.log", test.before);
    const Game before = Collect({"a.log"}).back();
    clock_ += 5000;
    Log("a.log", test.after);
    const Game after = Collect({"a.log"}).back();
    EXPECT_NE(after.kills, before.kills);
    EXPECT_EQ(KnownFactsOf(after), KnownFactsOf(before)) << said_;
  }
}

TEST_F(CollectTest, AGameWhoseFirstLineIsTornHasItsTime) {
  const std::size_t cut = two_.find("Game:");
  for (const std::string& later : {std::string(), empty_}) {
    Log("a.log", one_ + two_.substr(0, cut));
    Log("b.log", two_.substr(cut) + later);
    const Game torn = Collect({"a.log", "b.log"}, false).at(1);
    Log("b.log", two_ + later);
    const Game whole = Collect({"b.log"}, false).at(0);
    EXPECT_EQ(torn.start + 1, whole.start) << later;
    EXPECT_EQ(torn.dated, whole.dated) << later;
  }
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

TEST_F(CollectTest, ALogCutWhileItIsReadIsLeftOutOnce) {
  for (const bool useDatabase : {false, true}) {
    fs::remove_all(At("db"));
    Log("a.log", one_);
    Log("b.log", third_);
    Collect({"a.log", "b.log"}, useDatabase);
    Log("a.log", one_ + two_);
    Log("b.log", third_ + empty_);
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

TEST_F(CollectTest, APackedLogCountsOnce) {
  for (const bool useDatabase : {false, true}) {
    Log("a.log", empty_ + one_ + two_.substr(0, 300));
    EXPECT_EQ(Kills({"a.log"}, useDatabase), "0 6 0 ");
    Log("a.log.1.gz", test::Packed(empty_ + one_ + two_.substr(0, 300)));
    EXPECT_EQ(Kills({"a.log", "a.log.1.gz"}, useDatabase), "0 6 0 ");
    EXPECT_TRUE(Said("a.log.1.gz: holds nothing but what a.log holds; counted once")) << said_;
    Log("a.log", two_.substr(300) + empty_);
    for (int run = 0; run < 2; ++run) {
      EXPECT_EQ(Kills({"a.log.1.gz", "a.log"}, useDatabase), "0 6 7 0 ") << said_;
    }
    EXPECT_EQ(Said("2 logs unchanged"), useDatabase) << said_;
    fs::rename(At("a.log.1.gz"), At("a.log.2.gz"));
    EXPECT_EQ(Kills({"a.log.2.gz", "a.log"}, useDatabase), "0 6 7 0 ") << said_;
    EXPECT_EQ(Kills({"a.log"}, useDatabase), useDatabase ? "0 6 7 0 " : "0 ") << said_;
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

TEST_F(CollectTest, WhoIsABotAndWhenStaysWithAGameThatRecurs) {
  std::string first =
      Init() + test::JoinBot(0, "Xaero") + Join(1, "Bob") + test::Kills(5, 1, 0) + kShutdown;
  first.insert(first.find("  0:01"), test::ServerTime(50000));
  const std::string open =
      Init("q3dm6") + test::JoinBot(0, "Orbb") + Join(1, "Bob") + test::Kills(4, 1, 0);
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

}  // namespace
}  // namespace morvane
