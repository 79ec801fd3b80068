#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "morvane/store/database_error.h"
#include "morvane/store/digest.h"
#include "morvane/store/game_record.h"
#include "tests/morvane/store/collect_fixture.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using test::Init;
using test::Join;
using test::Kill;
using test::kShutdown;

const std::string kBob = "B\366b";

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
  Game game = test::OnlyGame(Init("q3dm6", 0) + Join(0, "Ann") + Join(1, kBob) + Kill(0, 1) +
                             Kill(1, 0, "ROCKET") + Kill(0, 1) + Kill(1022, 0, "LAVA") +
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
  EXPECT_EQ(Hex(PackGame(SampleGame())), kFourthRecord);
  EXPECT_EQ(kRecordVersion, 5) << "pack the sample anew, keep the bytes of the old version";
  for (const int version : {1, 2, 3, 4, 5}) {
    const std::string& record = version < 3   ? kFirstRecord
                                : version < 4 ? kThirdRecord
                                              : kFourthRecord;
    const Game game = UnpackGame(FromHex(record), version, 3, 1);
    const Game third = UnpackGame(FromHex(kThirdRecord), 3, 3, 1);
    EXPECT_EQ(Hex(PackGame(game)), version < 4 ? Hex(PackGame(third)) : kFourthRecord) << version;
    EXPECT_EQ(game.map + " " + game.entrants.at(1).name, "q3dm6 " + kBob);
    EXPECT_EQ(game.start, 1700000000);
    EXPECT_EQ(game.events.at(0).second, version < 4 ? 0U : 60U) << version;
  }
  EXPECT_THROW(UnpackGame(FromHex(kFourthRecord), kRecordVersion + 1, 3, 1), DatabaseError);
  // A game of flags knew a lead and a winner once; now it knows that it does not.
  std::string flags = FromHex(kFirstRecord);
  flags[6] = 2 * 4;
  const Game game = UnpackGame(flags, 2, 3, 1);
  EXPECT_TRUE(game.teams && game.lead.empty());
  EXPECT_FALSE(game.entrants[0].winner || game.entrants[1].winner);
}

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
      {"score", [](Game& game) { game.entrants[0].figures.score = std::int64_t{1} << 62; }},
      {"leading score", [](Game& game) { game.lead[0].score = std::int64_t{-1} << 62; }},
      {"start", [](Game& game) { game.start = std::int64_t{1} << 62; }},
  };
  const auto read = [](std::string_view bytes) { return UnpackGame(bytes, kRecordVersion, 3, 1); };
  EXPECT_NO_THROW(read(PackGame(SampleGame())));
  for (const auto& test : kCases) {
    Game game = SampleGame();
    test.damage(game);
    EXPECT_THROW(read(PackGame(game)), DatabaseError) << test.what;
  }
  const std::string bytes = PackGame(SampleGame());
  EXPECT_THROW(read(bytes + '\0'), DatabaseError) << "too long";
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_THROW(read(bytes.substr(0, size)), DatabaseError) << size;
  }
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
  for (const std::uint32_t run : {1U, 2U}) {
    const std::vector<Game> games = Collect({"a.log"});
    ASSERT_EQ(games.size(), 1U) << run << said_;
    EXPECT_EQ(games[0].number, 1U) << run;
  }
}

TEST_F(CollectTest, ADatabaseOfTheFirstVersionIsTakenOver) {
  const std::string log = Init("q3dm6") + Join(0, "Ann") + Join(1, kBob) + kShutdown;
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
