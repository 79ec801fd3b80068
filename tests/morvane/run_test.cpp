#include "morvane/run.h"

#include <SQLiteCpp/Database.h>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

#include "morvane/store/collect.h"
#include "morvane/store/database.h"
#include "tests/morvane/test_support.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using test::Duel;
using test::Init;
using test::Join;
using test::Kills;
using test::ReadFile;
using test::WriteFile;

const std::string kPage = "{{summary.games}} games\n";

/// A program directory with settings, one template "page" and logs.
class RunTest : public testing::Test {
 protected:
  RunTest() { WriteFile(At("templates/page.htmlt"), kPage); }

  fs::path At(const std::string& name) const { return folder_.Path() / name; }

  /// Writes settings for these logs; `more` holds further lines of "Main".
  void Configure(const std::vector<std::string>& logs, const std::string& more = "") const {
    std::string text =
        "[Main]\nsrc_path=.\\templates\ndest_path=out/site\ndb_path=.\\db\n"
        "use_main_log=5\nuse_logparser_log=5\nuse_templateparser_log=5\n"
        "use_customrank_log=5\n" +
        more + "\n[Logs]\nnumber_of_logs=" + std::to_string(logs.size()) + "\n";
    for (std::size_t i = 0; i < logs.size(); ++i) {
      text += "logpath" + std::to_string(i) + "=" + logs[i] + "\nlogtype" + std::to_string(i) +
              "=1000\n";
    }
    text += "[TEMPLATES]\nmain_templates_number=1\nmain_template0=page\n[HTML]\nfile_ext=.html\n";
    WriteFile(At("morvane.cfg"), text);
  }
  int Go() const { return morvane::Run(folder_.Path().string()); }
  /// How many games the page says were counted after a run; -1: no run, no page.
  int Games() const {
    const bool done = Go() == 0;
    const std::string page = ReadFile(At("out/site/page.html"));
    return done && !page.empty() ? std::stoi(page) : -1;
  }
  std::string ParserLog() const { return ReadFile(At("logparser.log.txt")); }
  std::string MainLog() const { return ReadFile(At("morvane.log.txt")); }

  test::TempFolder folder_;
};

TEST_F(RunTest, WritesThePagesFromItsOwnDirectory) {
  Configure({"logs\\games.log"});
  WriteFile(At("logs/games.log"), Duel("Ann", "Bob", 1) + Duel("Ann", "Bob", 2));
  const fs::path before = fs::current_path();
  fs::current_path("/");
  EXPECT_EQ(Games(), 2);
  fs::current_path(before);
  EXPECT_TRUE(std::regex_search(
      ParserLog(), std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d normal "
                              "logs\\\\games.log: 23 lines read, 0 lines skipped: 2 games, 3 "
                              "kills\n")))
      << ParserLog();
  EXPECT_EQ(ReadFile(At("custrank.log.txt")), "");
  EXPECT_TRUE(fs::exists(At("custrank.log.txt"))) << "begun anew, empty";
}

TEST_F(RunTest, EndsWithOneWhenNothingCouldBeWritten) {
  Configure({});
  EXPECT_EQ(Go(), 1) << "no logs named";
  Configure({"missing.log", "."});
  EXPECT_EQ(Go(), 1) << "no log can be read";
  EXPECT_NE(ParserLog().find("severe missing.log: cannot be read"), std::string::npos);
  EXPECT_NE(ParserLog().find("severe .: cannot be read"), std::string::npos);
  Configure({"games.log"});
  WriteFile(At("games.log"), Duel("Ann", "Bob", 1));
  WriteFile(At("out"), "a file in the way of the folder");
  EXPECT_EQ(Go(), 1) << "no place for the pages";
}

TEST_F(RunTest, ReadsWhatItCanOfTheLogs) {
  Configure({"a.log", "missing.log", "b.log", "./a.log", "c.log", "logs\\games.log*", "logs/none*",
             "logs/broken*", "new.log"});
  std::string settings = ReadFile(At("morvane.cfg"));
  settings.replace(settings.find("logtype2=1000"), 13, "logtype2=1001");
  WriteFile(At("morvane.cfg"), settings);
  WriteFile(At("a.log"), Duel("Ann", "Bob", 1));
  WriteFile(At("b.log"), Duel("Ann", "Bob", 5));
  WriteFile(At("c.log"), "nothing of a game\n");
  WriteFile(At("new.log"), "");
  WriteFile(At("logs/games.log"), Duel("Ann", "Bob", 6));
  WriteFile(At("logs/games.log.1"), test::Packed(Duel("Ann", "Bob", 2) + Duel("Ann", "Bob", 3)));
  WriteFile(At("logs/broken.gz"), test::Packed(Duel("Ann", "Bob", 4)).substr(0, 50));
  EXPECT_EQ(Games(), 4);
  for (const std::string said :
       {"severe b.log: log type 1001 is not known", "normal ./a.log: named twice",
        "severe c.log: holds no game", "normal new.log: is empty\n",
        "severe logs/none*: no file matches this pattern",
        "severe logs/broken.gz: cannot be read: it is packed and its end is missing",
        "normal logs\\games.log.1: 25 lines read"}) {
    EXPECT_NE(ParserLog().find(said), std::string::npos) << said << ParserLog();
  }
  EXPECT_EQ(ParserLog().find("severe new.log"), std::string::npos) << "a log is empty when rotated";
}

TEST_F(RunTest, SaysWhichLimitDroppedHowMany) {
  Configure({"games.log"}, "players_min_time=0\nplayers_min_games=2\nplayers_min_kills=1");
  const std::string exit = "  4:00 Exit: Timelimit hit.\n";
  const std::string warmup =
      Init() + Join(0, "Ann") + Join(1, "Bob") + "  0:02 Warmup:\n" + test::kShutdown;
  const std::string empty = Init() + exit + test::kShutdown;
  const auto whole = [&](const std::string& winner, int kills) {
    std::string game = Duel(winner, "Bob", kills);
    return game.insert(game.size() - test::kShutdown.size(), exit);
  };
  WriteFile(At("games.log"), empty + warmup + warmup + empty + whole("Ann", 5) + whole("Ann", 5) +
                                 whole("Cid", 5) + whole("Ann", 1) + Duel("Ann", "Bob", 5) +
                                 Init() + Join(0, "Ann") + Kills(5, 0, 0) + exit + test::kShutdown);
  std::ofstream(At("morvane.cfg"), std::ios::app)
      << "[Game]\nmin_players=2\nmin_kills=3\ngame_complete=1\n";
  EXPECT_EQ(Games(), 3);
  for (const std::string said :
       {"warm-up: 2 games are not counted\n", "min_players=2: 1 game is not counted\n",
        "min_kills=3: 1 game is not counted\n", "game_complete: 1 game is not counted\n",
        "players_min_games=2: 1 player is not ranked\n",
        "players_min_kills=1: 1 player is not ranked\n", "3 of 8 games counted, 1 of 3 players"}) {
    EXPECT_NE(MainLog().find(said), std::string::npos) << said << MainLog();
  }
  EXPECT_NE(ParserLog().find("games.log: 2 games in which nobody played left out\n"),
            std::string::npos);
  EXPECT_EQ(MainLog().find("min_time"), std::string::npos) << "drops nothing, says nothing";
}

TEST_F(RunTest, MessagesGoWhereTheSettingsSay) {
  WriteFile(At("games.log"), Duel("Ann", "Bob", 1));
  for (int options = 0; options <= 15; ++options) {
    Configure({"games.log", "evil\x1b[2J\xC2\x9B.log"});
    std::string settings = ReadFile(At("morvane.cfg"));
    const std::string key = "use_logparser_log=";
    settings.replace(settings.find(key) + key.size(), 1, std::to_string(options));
    WriteFile(At("morvane.cfg"), settings);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(Go(), 0);
    const std::string screen = testing::internal::GetCapturedStdout();
    const std::string errors = testing::internal::GetCapturedStderr();
    const std::string file = ParserLog();
    EXPECT_EQ(file.find(" normal games.log: ") != file.npos, (options & 1) != 0);
    EXPECT_EQ(screen.find(" normal games.log: ") != file.npos, (options & 2) != 0);
    EXPECT_EQ(file.find(" severe evil?[2J?.log: ") != file.npos, (options & 4) != 0);
    EXPECT_EQ(errors.find(" severe evil?[2J?.log: ") != file.npos, (options & 8) != 0);
    EXPECT_EQ((screen + errors).find_first_of("\x1b\x9B"), file.npos);
  }
}

/// Runs with a database; every step changes the logs and tells what is to come out.
class DatabaseTest : public RunTest {
 protected:
  DatabaseTest() { Use({"games.log"}); }

  void Use(const std::vector<std::string>& logs) const { Configure(logs, "use_db=1"); }
  void Write(const std::string& name, const std::string& log) const { WriteFile(At(name), log); }
  /// How many lines the last run read of the logs.
  int LinesRead() const {
    const std::string log = ParserLog();
    const std::regex count("(\\d+) lines? read");
    int lines = 0;
    for (auto i = std::sregex_iterator(log.begin(), log.end(), count); i != std::sregex_iterator();
         ++i) {
      lines += std::stoi((*i)[1]);
    }
    return lines;
  }

  const std::string one_ = Duel("Ann", "Bob", 6);
  const std::string two_ = Duel("Cid", "Bob", 7);
  const std::string three_ = Duel("Ann", "Cid", 8);
};

TEST_F(DatabaseTest, AnUnchangedLogIsNotReadAgainNorNeeded) {
  Write("games.log", one_ + two_);
  EXPECT_EQ(Games(), 2);
  EXPECT_GT(LinesRead(), 0);
  const auto page = fs::last_write_time(At("out/site/page.html"));
  EXPECT_EQ(Games(), 2);
  EXPECT_EQ(LinesRead(), 0);
  EXPECT_EQ(fs::last_write_time(At("out/site/page.html")), page);
  fs::remove(At("games.log"));
  EXPECT_EQ(Games(), 2) << "no log at all";
  Use({});
  EXPECT_EQ(Games(), 2) << "no log named";
}

TEST_F(DatabaseTest, AGrownLogIsReadOnFromWhereItEnded) {
  Write("games.log", one_ + two_.substr(0, two_.size() - 200));
  EXPECT_EQ(Games(), 2);
  Write("games.log", one_ + two_ + three_);
  EXPECT_EQ(Games(), 3) << "the open game is counted once";
  const auto linesOf = [](const std::string& log) {
    return static_cast<int>(std::count(log.begin(), log.end(), '\n'));
  };
  EXPECT_EQ(LinesRead(), linesOf(two_ + three_) - 1) << "from the open game's first line";
  const std::string before = one_ + two_ + three_ + one_ + "  5:01 Item: 77 x\n" + Init();
  Write("games.log", before + "  0:02 Item: 77 x\n  1:0");
  EXPECT_EQ(Games(), 4) << "in the last one nobody plays yet";
  const std::string line = std::to_string(linesOf(before) + 1);
  EXPECT_NE(ParserLog().find(" games.log:" + line + ": damaged item line"), std::string::npos);
}

TEST_F(DatabaseTest, AGameKeepsItsNumber) {
  WriteFile(At("templates/page.htmlt"), "{{#games}}{{map}} {{number}};{{/games}}");
  const std::string warmup = Init("dm0") + "  0:01 Warmup:\n" + test::kShutdown;
  const std::string one = Duel("Ann", "Bob", 6, "dm1");
  const std::string two = warmup + Duel("Ann", "Bob", 7, "dm2");
  const std::string three = Duel("Ann", "Bob", 8, "dm3");
  Write("older.log", Duel("Ann", "Bob", 9, "older"));
  Write("games.log", one + two);
  const struct {
    std::string what;
    std::vector<std::string> logs;
    std::string settings;
    std::string newest;  // what games.log holds from now on
    std::string page;
  } kSteps[] = {
      {"the first run", {"games.log"}, "use_db=1", "", "dm2 2;dm1 1;"},
      {"another limit", {"games.log"}, "use_db=1\n[Game]\nmin_kills=7", "", "dm2 2;"},
      {"the log rotated, one put in front",
       {"older.log", "games.log"},
       "use_db=1",
       three,
       "dm3 4;older 3;dm2 2;dm1 1;"},
      {"in another order",
       {"games.log", "older.log"},
       "use_db=1",
       "",
       "older 3;dm3 4;dm2 2;dm1 1;"},
      {"without the database", {"older.log", "games.log"}, "use_db=0", "", "dm3 2;older 1;"},
      {"one game more",
       {"games.log"},
       "use_db=1",
       three + Duel("Ann", "Bob", 5, "dm4"),
       "dm4 5;dm3 4;older 3;dm2 2;dm1 1;"},
      {"another one in its place",
       {"games.log"},
       "use_db=1",
       three + Duel("Ann", "Bob", 4, "dm5"),
       "dm5 6;dm3 4;older 3;dm2 2;dm1 1;"},
  };
  for (const auto& step : kSteps) {
    if (!step.newest.empty()) Write("games.log", step.newest);
    Configure(step.logs, step.settings);
    ASSERT_EQ(Go(), 0) << step.what;
    EXPECT_EQ(ReadFile(At("out/site/page.html")), step.page) << step.what;
  }
}

TEST_F(DatabaseTest, ADamagedDatabaseIsSaidAndDoneWithout) {
  Write("games.log", one_);
  ASSERT_EQ(Games(), 1);
  const std::string good = ReadFile(At("db/morvane.db"));
  std::string scrambled = good;
  for (std::size_t i = 5000; i < scrambled.size(); i += 7) scrambled[i] = '\x5a';
  for (const std::string& bytes :
       {std::string("no database at all, but long enough to be looked at as one"), scrambled,
        good.substr(0, good.size() / 2)}) {
    Write("db/morvane.db", bytes);
    EXPECT_EQ(Go(), 1) << "not all was written";
    EXPECT_EQ(ReadFile(At("out/site/page.html")), "1 games\n");
    EXPECT_NE(MainLog().find("severe the database cannot be used"), std::string::npos) << MainLog();
    EXPECT_EQ(ReadFile(At("db/morvane.db")), bytes) << "left as it is";
  }
  fs::remove_all(At("db"));
  Write("db", "a file in the way of the folder");
  EXPECT_EQ(Go(), 1);
}

TEST_F(DatabaseTest, WhereAnotherRunHoldsItThePagesStay) {
  Write("games.log", one_);
  ASSERT_EQ(Games(), 1);
  Write("games.log", two_);
  {
    SQLite::Database other(At("db/morvane.db").string(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN EXCLUSIVE");
    EXPECT_EQ(Go(), 1);
  }
  EXPECT_EQ(ReadFile(At("out/site/page.html")), "1 games\n") << "and not those of the log alone";
  EXPECT_NE(MainLog().find("severe the database is in use by another run"), std::string::npos);
  EXPECT_EQ(Games(), 2);
}

TEST_F(DatabaseTest, HostileNamesStayData) {
  const std::string name = "'); DROP TABLE games; --";
  Write("games.log", Duel(name, "Bob", 6));
  ASSERT_EQ(Games(), 1);
  Write("games.log", Duel(name, "Bob", 6) + one_);
  EXPECT_EQ(Games(), 2);
  Database database(At("db").string());
  const std::vector<Game> games = database.ReadGames(1);
  ASSERT_EQ(games.size(), 2U);
  EXPECT_EQ(games[0].entrants[0].name, name);
  EXPECT_EQ(games[0].events.size(), 6U);
}

TEST_F(DatabaseTest, WithoutCommitNothingIsKept) {
  { Database(At("db").string()).SetPath("x", {1, 2, 3}); }
  EXPECT_TRUE(Database(At("db").string()).Paths().empty());
}

}  // namespace
}  // namespace morvane
