#include "morvane/store/database.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <algorithm>
#include <filesystem>
#include <sqlite3.h>
#include <system_error>
#include <utility>

#include "morvane/store/digest.h"
#include "morvane/store/game_record.h"

namespace morvane {
namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr std::int64_t kBeginningBytes = 4096;
enum NameKind { kWeaponNames, kItemNames };

constexpr const char* kNames = R"(
  CREATE TABLE names(kind INTEGER NOT NULL, number INTEGER NOT NULL, name BLOB NOT NULL,
    PRIMARY KEY(kind, number));
)";

constexpr const char* kSchema = R"(
  CREATE TABLE logs(id INTEGER PRIMARY KEY, size INTEGER NOT NULL DEFAULT 0,
    digest INTEGER NOT NULL DEFAULT 0, beginning INTEGER NOT NULL DEFAULT 0,
    resume_at INTEGER NOT NULL DEFAULT 0, resume_line INTEGER NOT NULL DEFAULT 0,
    open_at_end INTEGER NOT NULL DEFAULT 0, head INTEGER NOT NULL DEFAULT 0,
    goes_on_with INTEGER NOT NULL DEFAULT 0, goes_on_rest INTEGER NOT NULL DEFAULT 0,
    in_place_of INTEGER NOT NULL DEFAULT 0, marked INTEGER NOT NULL DEFAULT 1,
    carried BLOB, rest BLOB);
  CREATE TABLE paths(path BLOB PRIMARY KEY, log INTEGER NOT NULL, size INTEGER NOT NULL,
    changed INTEGER NOT NULL, whole INTEGER NOT NULL DEFAULT 1);
  CREATE TABLE games(id INTEGER PRIMARY KEY, log INTEGER NOT NULL, version INTEGER NOT NULL,
    digest INTEGER NOT NULL DEFAULT 0, beginning INTEGER NOT NULL DEFAULT 0,
    opening INTEGER NOT NULL DEFAULT 0, facts INTEGER NOT NULL DEFAULT 0,
    weight INTEGER NOT NULL DEFAULT 0, kills INTEGER NOT NULL DEFAULT 0, size INTEGER NOT NULL DEFAULT 0,
    open INTEGER NOT NULL DEFAULT 0, data BLOB NOT NULL);
  CREATE INDEX games_of_logs ON games(log);
)";

// The numbers of games, and the highest that was ever given; not there before version 5. They stand
// beside the games so that giving one to each of many does not write those anew.
constexpr const char* kNumbers = R"(
  CREATE TABLE numbers(game INTEGER PRIMARY KEY, number INTEGER NOT NULL);
  CREATE TABLE last_number(number INTEGER NOT NULL);
  INSERT INTO last_number VALUES(0);
)";
constexpr int kFirstWithNumbers = 5;

constexpr const char* kReadGames =
    "SELECT data, version, ifnull(number, 0) FROM games LEFT JOIN numbers ON game = id ";

// The first version knew a log by its path alone, and a game by what was counted in it.
constexpr const char* kFromVersion1 = R"(
  INSERT INTO logs(id, size, digest, resume_at, resume_line, open_at_end, marked)
    SELECT id, size, digest, resume_at, resume_line, open_at_end, 0 FROM old_logs;
  INSERT INTO paths(path, log, size, changed) SELECT path, id, size, changed FROM old_logs WHERE path IS NOT NULL;
  INSERT INTO games(id, log, version, data) SELECT id, log, 1, data FROM old_games;
  DROP TABLE old_games;
  DROP TABLE old_logs;
)";

std::int64_t Signed(std::uint64_t number) { return static_cast<std::int64_t>(number); }

std::uint64_t Unsigned(const SQLite::Column& column) {
  return static_cast<std::uint64_t>(column.getInt64());
}

std::string_view Bytes(const SQLite::Column& column) {
  const void* data = column.getBlob();
  return {static_cast<const char*>(data),
          data == nullptr ? 0 : static_cast<std::size_t>(column.size())};
}

void BindOne(SQLite::Statement& statement, int index, std::int64_t value) {
  statement.bind(index, value);
}

void BindOne(SQLite::Statement& statement, int index, const std::string& bytes) {
  statement.bind(index, static_cast<const void*>(bytes.data()), static_cast<int>(bytes.size()));
}

/// Runs a statement with these values for its "?"; it may be run again with others.
template <class... Values>
void Run(SQLite::Statement& statement, const Values&... values) {
  int index = 0;
  (BindOne(statement, ++index, values), ...);
  statement.exec();
  statement.reset();
}

GameMark ReadMark(SQLite::Statement& row, int column) {
  GameMark mark;
  mark.digest = Unsigned(row.getColumn(column));
  mark.beginning = Unsigned(row.getColumn(column + 1));
  mark.opening = Unsigned(row.getColumn(column + 2));
  mark.facts = Unsigned(row.getColumn(column + 3));
  mark.weight = row.getColumn(column + 4).getUInt();
  mark.kills = row.getColumn(column + 5).getUInt();
  mark.size = row.getColumn(column + 6).getUInt();
  mark.open = row.getColumn(column + 7).getInt() != 0;
  return mark;
}

}  // namespace

std::uint64_t StoredLog::Beginning(std::string_view bytes, std::int64_t size) {
  const std::uint64_t digest =
      Digest(bytes.substr(0, static_cast<std::size_t>(std::min(size, kBeginningBytes))));
  return digest != 0 ? digest : 1;
}

Database::Database(const std::string& directory, Use use) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) throw DatabaseError(directory + ": " + error.message());
  const std::string path = (std::filesystem::path(directory) / kFileName).string();
  try {
    Open(path, use);
    Prepare();
  } catch (const DatabaseError& failure) {
    throw DatabaseError(path + ": " + failure.what(), failure.getErrorCode());
  }
}

void Database::Open(const std::string& path, Use use) {
  // Who wants a copy has waited before.
  const int patience = use == Use::kCopy ? kBusyMilliseconds / 5 : kBusyMilliseconds;
  auto file = std::make_unique<SQLite::Database>(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE,
                                                 patience);
  if (use == Use::kCopy) {
    database_ = std::make_unique<SQLite::Database>(":memory:",
                                                   SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    const int result = SQLite::Backup(*database_, *file).executeStep();
    if (result != SQLITE_DONE) throw DatabaseError("it is in use", result);
  } else {
    database_ = std::move(file);
  }
}

// The transaction ends with the connection.
Database::~Database() = default;

void Database::Prepare() {
  database_->exec("BEGIN IMMEDIATE");
  const int version = database_->execAndGet("PRAGMA user_version").getInt();
  const int tables = database_->execAndGet("SELECT count(*) FROM sqlite_schema").getInt();
  if (version > kRecordVersion) {
    throw DatabaseError(
        "it was made by a newer version of this program and is left as it is; run that version, or "
        "name another folder in db_path");
  }
  if (version == 0 && tables > 0) throw DatabaseError("it is not a database of this program");
  if (version == 0) {
    database_->exec(std::string(kSchema) + kNames);
  } else {
    ReadNames(kWeaponNames, words_.weapons);
    ReadNames(kItemNames, words_.items);
  }
  if (version == 1) UpgradeFirst();
  if (version < kFirstWithNumbers) database_->exec(kNumbers);
  if (version != kRecordVersion) {
    database_->exec("PRAGMA user_version = " + std::to_string(kRecordVersion));
  }
}

void Database::UpgradeFirst() {
  database_->exec(
      "DROP INDEX log_paths; DROP INDEX games_of_logs;"
      "ALTER TABLE logs RENAME TO old_logs; ALTER TABLE games RENAME TO old_games;");
  database_->exec(kSchema);
  database_->exec(kFromVersion1);
  MarkOldGames();
}

/// Gives the games of the first version the marks that can be had without their lines.
void Database::MarkOldGames() {
  SQLite::Statement read(*database_,
                         "SELECT games.id, data, version, open_at_end AND games.id = "
                         "(SELECT max(id) FROM games AS others WHERE others.log = games.log) "
                         "FROM games JOIN logs ON logs.id = games.log");
  std::vector<std::pair<std::int64_t, GameMark>> marks;
  while (read.executeStep()) {
    const Game game = Unpack(Bytes(read.getColumn(1)), read.getColumn(2).getInt());
    marks.emplace_back(read.getColumn(0).getInt64(),
                       MarkGame(game, read.getColumn(3).getInt() != 0, words_));
  }
  SQLite::Statement write(
      *database_, "UPDATE games SET facts = ?, weight = ?, kills = ?, open = ? WHERE id = ?");
  for (const auto& [id, mark] : marks) {
    Run(write, Signed(mark.facts), std::int64_t{mark.weight}, std::int64_t{mark.kills},
        std::int64_t{mark.open}, id);
  }
}

void Database::ReadNames(int kind, Names& names) {
  SQLite::Statement statement(*database_,
                              "SELECT number, name FROM names WHERE kind = ? ORDER BY number");
  statement.bind(1, kind);
  while (statement.executeStep()) {
    if (names.Number(Bytes(statement.getColumn(1))) != statement.getColumn(0).getInt64()) {
      throw DatabaseError("its names are damaged");
    }
  }
}

void Database::WriteNames(int kind, const Names& names) {
  SQLite::Statement statement(*database_, "INSERT OR IGNORE INTO names VALUES(?, ?, ?)");
  for (std::size_t i = 0; i < names.size(); ++i) {
    Run(statement, std::int64_t{kind}, static_cast<std::int64_t>(i), names.All()[i]);
  }
}

std::map<std::string, StoredPath> Database::Paths() {
  SQLite::Statement row(*database_, "SELECT path, log, size, changed, whole FROM paths");
  std::map<std::string, StoredPath> paths;
  while (row.executeStep()) {
    paths[std::string(Bytes(row.getColumn(0)))] = {
        row.getColumn(1).getInt64(), row.getColumn(2).getInt64(), row.getColumn(3).getInt64(),
        row.getColumn(4).getInt() != 0};
  }
  return paths;
}

void Database::SetPath(const std::string& path, const StoredPath& state) {
  SQLite::Statement statement(*database_, "INSERT OR REPLACE INTO paths VALUES(?, ?, ?, ?, ?)");
  Run(statement, path, state.log, state.size, state.changed, std::int64_t{state.whole});
}

std::vector<StoredLog> Database::Logs() {
  SQLite::Statement row(*database_,
                        "SELECT id, size, digest, beginning, resume_at, resume_line, open_at_end, "
                        "head, goes_on_with, goes_on_rest, in_place_of, marked "
                        "FROM logs ORDER BY id");
  std::vector<StoredLog> logs;
  while (row.executeStep()) {
    StoredLog& log = logs.emplace_back();
    log.id = row.getColumn(0).getInt64();
    log.size = row.getColumn(1).getInt64();
    log.digest = Unsigned(row.getColumn(2));
    log.beginning = Unsigned(row.getColumn(3));
    log.resumeAt = row.getColumn(4).getInt64();
    log.resumeLine = row.getColumn(5).getInt64();
    log.openAtEnd = row.getColumn(6).getInt() != 0;
    log.head = row.getColumn(7).getInt64();
    log.goesOnWith = row.getColumn(8).getInt64();
    log.goesOnRest = Unsigned(row.getColumn(9));
    log.inPlaceOf = row.getColumn(10).getInt64();
    log.marked = row.getColumn(11).getInt() != 0;
  }
  return logs;
}

std::int64_t Database::AddLog() {
  database_->exec("INSERT INTO logs DEFAULT VALUES");
  return database_->getLastInsertRowid();
}

void Database::UpdateLog(const StoredLog& log) {
  SQLite::Statement statement(
      *database_,
      "UPDATE logs SET size = ?, digest = ?, beginning = ?, resume_at = ?, resume_line = ?, "
      "open_at_end = ?, head = ?, goes_on_with = ?, goes_on_rest = ?, in_place_of = ?, "
      "marked = ? WHERE id = ?");
  Run(statement, log.size, Signed(log.digest), Signed(log.beginning), log.resumeAt, log.resumeLine,
      std::int64_t{log.openAtEnd}, log.head, log.goesOnWith, Signed(log.goesOnRest), log.inPlaceOf,
      std::int64_t{log.marked}, log.id);
}

Unfinished Database::UnfinishedOf(std::int64_t log) {
  SQLite::Statement row(*database_, "SELECT carried, rest FROM logs WHERE id = ?");
  row.bind(1, log);
  if (!row.executeStep()) return {};
  return {std::string(Bytes(row.getColumn(0))), std::string(Bytes(row.getColumn(1)))};
}

void Database::SetUnfinished(std::int64_t log, const Unfinished& unfinished) {
  SQLite::Statement statement(*database_, "UPDATE logs SET carried = ?, rest = ? WHERE id = ?");
  Run(statement, unfinished.carried, unfinished.rest, log);
}

std::vector<std::int64_t> Database::UnfinishedLogs() {
  SQLite::Statement row(*database_, "SELECT id FROM logs WHERE length(rest) > 0");
  std::vector<std::int64_t> logs;
  while (row.executeStep()) logs.push_back(row.getColumn(0).getInt64());
  return logs;
}

StoredGames Database::GamesOf(std::int64_t log) {
  SQLite::Statement row(*database_,
                        "SELECT id, digest, beginning, opening, facts, weight, kills, size, open "
                        "FROM games WHERE log = ? ORDER BY id");
  row.bind(1, log);
  StoredGames games;
  while (row.executeStep()) {
    games.ids.push_back(row.getColumn(0).getInt64());
    games.marks.push_back(ReadMark(row, 1));
  }
  return games;
}

Game Database::ReadRow(SQLite::Statement& row) const {
  Game game = Unpack(Bytes(row.getColumn(0)), row.getColumn(1).getInt());
  game.number = row.getColumn(2).getUInt();
  return game;
}

Game Database::ReadGame(std::int64_t game) {
  SQLite::Statement row(*database_, std::string(kReadGames) + "WHERE id = ?");
  row.bind(1, game);
  if (!row.executeStep()) throw DatabaseError("a game is missing");
  return ReadRow(row);
}

std::vector<Game> Database::ReadGames(std::int64_t log) {
  SQLite::Statement row(*database_, std::string(kReadGames) + "WHERE log = ? ORDER BY id");
  row.bind(1, log);
  std::vector<Game> games;
  while (row.executeStep()) games.push_back(ReadRow(row));
  return games;
}

Game Database::Unpack(std::string_view bytes, int version) const {
  return UnpackGame(bytes, version, words_.weapons.size(), words_.items.size());
}

std::int64_t Database::AddGames(std::int64_t log, const std::vector<Game>& games,
                                const std::vector<GameMark>& marks) {
  const std::int64_t first =
      database_->execAndGet("SELECT ifnull(max(id), 0) + 1 FROM games").getInt64();
  WriteNames(kWeaponNames, words_.weapons);
  WriteNames(kItemNames, words_.items);
  SQLite::Statement statement(
      *database_,
      "INSERT INTO games(log, version, digest, beginning, opening, facts, weight, kills, size, "
      "open, data) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  for (std::size_t i = 0; i < games.size(); ++i) {
    const GameMark& mark = marks[i];
    Run(statement, log, std::int64_t{kRecordVersion}, Signed(mark.digest), Signed(mark.beginning),
        Signed(mark.opening), Signed(mark.facts), std::int64_t{mark.weight},
        std::int64_t{mark.kills}, std::int64_t{mark.size}, std::int64_t{mark.open},
        PackGame(games[i]));
    if (games[i].number != 0) SetNumber(database_->getLastInsertRowid(), games[i].number);
  }
  return first;
}

void Database::ReplaceGame(std::int64_t id, const Game& game) {
  SQLite::Statement statement(*database_, "UPDATE games SET version = ?, data = ? WHERE id = ?");
  Run(statement, std::int64_t{kRecordVersion}, PackGame(game), id);
  if (game.number != 0) SetNumber(id, game.number);
}

void Database::DeleteGame(std::int64_t game) {
  for (const char* sql : {"DELETE FROM games WHERE id = ?", "DELETE FROM numbers WHERE game = ?"}) {
    SQLite::Statement statement(*database_, sql);
    Run(statement, game);
  }
}

void Database::SetNumber(std::int64_t game, std::uint32_t number) {
  SQLite::Statement statement(*database_, "INSERT OR REPLACE INTO numbers VALUES(?, ?)");
  Run(statement, game, std::int64_t{number});
}

std::uint32_t Database::LastNumber() {
  return database_->execAndGet("SELECT number FROM last_number").getUInt();
}

void Database::SetLastNumber(std::uint32_t number) {
  SQLite::Statement statement(*database_, "UPDATE last_number SET number = ?");
  Run(statement, std::int64_t{number});
}

void Database::Commit() { database_->exec("COMMIT"); }

}  // namespace morvane
