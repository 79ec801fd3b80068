#include "morvane/store/database.h"

#include <filesystem>
#include <sqlite3.h>
#include <system_error>
#include <utility>

#include "morvane/store/game_record.h"

namespace morvane {
namespace {

constexpr int kVersion = 1;
constexpr int kBusyMilliseconds = 5000;
enum NameKind { kWeaponNames, kItemNames };

constexpr const char* kSchema = R"(
  CREATE TABLE logs(id INTEGER PRIMARY KEY, path BLOB, size INTEGER DEFAULT 0,
    changed INTEGER DEFAULT 0, digest INTEGER DEFAULT 0, resume_at INTEGER DEFAULT 0,
    resume_line INTEGER DEFAULT 0, open_at_end INTEGER DEFAULT 0);
  CREATE UNIQUE INDEX log_paths ON logs(path);
  CREATE TABLE games(id INTEGER PRIMARY KEY, log INTEGER NOT NULL, digest INTEGER NOT NULL,
    data BLOB NOT NULL);
  CREATE INDEX games_of_logs ON games(log);
  CREATE TABLE names(kind INTEGER NOT NULL, number INTEGER NOT NULL, name BLOB NOT NULL,
    PRIMARY KEY(kind, number));
  PRAGMA user_version = 1;
)";

[[noreturn]] void Throw(sqlite3* handle) {
  throw DatabaseError(handle != nullptr ? sqlite3_errmsg(handle) : "out of memory");
}

}  // namespace

/// One SQL statement; values are always bound, never part of its text.
class Database::Statement {
 public:
  Statement(sqlite3* handle, std::string_view sql) : handle_(handle) {
    if (sqlite3_prepare_v2(handle, sql.data(), static_cast<int>(sql.size()), &statement_,
                           nullptr) != SQLITE_OK) {
      Throw(handle);
    }
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(statement_); }

  /// Binds the values to the statement's "?", in their order.
  template <class... Values>
  Statement& Bind(const Values&... values) {
    sqlite3_reset(statement_);
    int index = 0;
    (BindOne(++index, values), ...);
    return *this;
  }
  /// Runs to the next row; false when there is none.
  bool Step() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) Throw(handle_);
    return result == SQLITE_ROW;
  }
  std::int64_t Number(int column) { return sqlite3_column_int64(statement_, column); }
  std::string_view Bytes(int column) {
    const void* data = sqlite3_column_blob(statement_, column);
    const int size = sqlite3_column_bytes(statement_, column);
    return {static_cast<const char*>(data), data == nullptr ? 0U : static_cast<std::size_t>(size)};
  }

 private:
  void BindOne(int index, std::int64_t value) {
    if (sqlite3_bind_int64(statement_, index, value) != SQLITE_OK) Throw(handle_);
  }
  void BindOne(int index, const std::string& bytes) {
    if (sqlite3_bind_blob64(statement_, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT) !=
        SQLITE_OK) {
      Throw(handle_);
    }
  }

  sqlite3* handle_;
  sqlite3_stmt* statement_ = nullptr;
};

Database::Database(const std::string& directory) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) throw DatabaseError(directory + ": " + error.message());
  const std::string path = (std::filesystem::path(directory) / kFileName).string();
  if (sqlite3_open(path.c_str(), &handle_) == SQLITE_OK) {
    try {
      Prepare();
      return;
    } catch (const DatabaseError& failure) {
      sqlite3_close(std::exchange(handle_, nullptr));
      throw DatabaseError(path + ": " + failure.what());
    }
  }
  const std::string why = handle_ != nullptr ? sqlite3_errmsg(handle_) : "out of memory";
  sqlite3_close(handle_);
  throw DatabaseError(path + ": " + why);
}

Database::~Database() { sqlite3_close(handle_); }

void Database::Prepare() {
  sqlite3_busy_timeout(handle_, kBusyMilliseconds);
  Execute("BEGIN IMMEDIATE");
  std::int64_t version = 0;
  std::int64_t tables = 0;
  {
    Statement pragma(handle_, "PRAGMA user_version");
    if (pragma.Step()) version = pragma.Number(0);
    Statement schema(handle_, "SELECT count(*) FROM sqlite_schema");
    if (schema.Step()) tables = schema.Number(0);
  }
  if (version == 0 && tables == 0) {
    Execute(kSchema);
  } else if (version != kVersion) {
    throw DatabaseError("not a database of this version of the engine");
  }
  Execute("CREATE TEMP TABLE listed(position INTEGER PRIMARY KEY, path BLOB)");
  ReadNames(kWeaponNames, words_.weapons);
  ReadNames(kItemNames, words_.items);
}

void Database::Execute(const char* sql) {
  if (sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Throw(handle_);
}

void Database::ReadNames(int kind, Names& names) {
  Statement statement(handle_, "SELECT number, name FROM names WHERE kind = ? ORDER BY number");
  statement.Bind(std::int64_t{kind});
  while (statement.Step()) {
    if (names.Number(statement.Bytes(1)) != statement.Number(0)) {
      throw DatabaseError("its names are damaged");
    }
  }
}

void Database::WriteNames(int kind, const Names& names) {
  Statement statement(handle_, "INSERT OR IGNORE INTO names VALUES(?, ?, ?)");
  for (std::size_t i = 0; i < names.size(); ++i) {
    statement.Bind(std::int64_t{kind}, static_cast<std::int64_t>(i), names.All()[i]).Step();
  }
}

std::optional<StoredLog> Database::FindLog(const std::string& path) {
  Statement statement(handle_,
                      "SELECT id, size, changed, digest, resume_at, resume_line, open_at_end "
                      "FROM logs WHERE path = ?");
  if (!statement.Bind(path).Step()) return std::nullopt;
  StoredLog log;
  log.id = statement.Number(0);
  log.size = statement.Number(1);
  log.changed = statement.Number(2);
  log.digest = static_cast<std::uint64_t>(statement.Number(3));
  log.resumeAt = statement.Number(4);
  log.resumeLine = statement.Number(5);
  log.openAtEnd = statement.Number(6) != 0;
  return log;
}

std::int64_t Database::AddLog(const std::string& path) {
  Statement(handle_, "INSERT INTO logs(path) VALUES(?)").Bind(path).Step();
  return sqlite3_last_insert_rowid(handle_);
}

void Database::UpdateLog(const StoredLog& log) {
  Statement(handle_,
            "UPDATE logs SET size = ?, changed = ?, digest = ?, resume_at = ?, resume_line = ?, "
            "open_at_end = ? WHERE id = ?")
      .Bind(log.size, log.changed, static_cast<std::int64_t>(log.digest), log.resumeAt,
            log.resumeLine, std::int64_t{log.openAtEnd ? 1 : 0}, log.id)
      .Step();
}

void Database::RetireLog(std::int64_t log) {
  Statement(handle_, "UPDATE logs SET path = NULL WHERE id = ?").Bind(log).Step();
}

std::vector<StoredGame> Database::ReadStored(Statement& statement) {
  std::vector<StoredGame> games;
  while (statement.Step()) {
    games.push_back({statement.Number(0), static_cast<std::uint64_t>(statement.Number(1))});
  }
  return games;
}

std::vector<StoredGame> Database::GamesOf(std::int64_t log) {
  Statement statement(handle_, "SELECT id, digest FROM games WHERE log = ? ORDER BY id");
  return ReadStored(statement.Bind(log));
}

Game Database::ReadGame(std::int64_t game) {
  Statement statement(handle_, "SELECT data FROM games WHERE id = ?");
  if (!statement.Bind(game).Step()) throw DatabaseError("a game is missing");
  return Unpack(statement.Bytes(0));
}

Game Database::Unpack(std::string_view bytes) const {
  Game game;
  if (!UnpackGame(bytes, words_.weapons.size(), words_.items.size(), game)) {
    throw DatabaseError("a game in it is damaged");
  }
  return game;
}

void Database::AddGames(std::int64_t log, const std::vector<Game>& games) {
  WriteNames(kWeaponNames, words_.weapons);
  WriteNames(kItemNames, words_.items);
  Statement statement(handle_, "INSERT INTO games(log, digest, data) VALUES(?, ?, ?)");
  for (const Game& game : games) {
    const std::uint64_t digest = game.kills > 0 ? GameDigest(game) : 0;
    statement.Bind(log, static_cast<std::int64_t>(digest), PackGame(game)).Step();
  }
}

void Database::DeleteGame(std::int64_t game) {
  Statement(handle_, "DELETE FROM games WHERE id = ?").Bind(game).Step();
}

void Database::DeleteGamesOf(std::int64_t log) {
  Statement(handle_, "DELETE FROM games WHERE log = ?").Bind(log).Step();
}

void Database::MarkListed(const std::vector<std::string>& paths) {
  Execute("DELETE FROM listed");
  Statement statement(handle_, "INSERT INTO listed(path) VALUES(?)");
  for (const std::string& path : paths) statement.Bind(path).Step();
}

std::vector<StoredGame> Database::GamesBut(const std::vector<std::string>& paths) {
  MarkListed(paths);
  Statement statement(handle_,
                      "SELECT games.id, games.digest FROM games JOIN logs ON logs.id = games.log "
                      "WHERE games.digest <> 0 AND (logs.path IS NULL OR logs.path NOT IN "
                      "(SELECT path FROM listed)) ORDER BY games.id");
  return ReadStored(statement);
}

std::vector<StoredGame> Database::OpenGamesBut(const std::vector<std::string>& paths) {
  MarkListed(paths);
  Statement statement(handle_,
                      "SELECT max(games.id), 0 FROM games JOIN logs ON logs.id = games.log "
                      "WHERE logs.open_at_end <> 0 AND (logs.path IS NULL OR logs.path NOT IN "
                      "(SELECT path FROM listed)) GROUP BY games.log");
  return ReadStored(statement);
}

std::vector<Game> Database::ReadAll(const std::vector<std::string>& paths, bool keepEvents) {
  MarkListed(paths);
  Statement statement(handle_,
                      "SELECT games.data FROM games JOIN logs ON logs.id = games.log "
                      "LEFT JOIN listed ON listed.path = logs.path "
                      "ORDER BY ifnull(listed.position, 0), games.log, games.id");
  std::vector<Game> games;
  while (statement.Step()) {
    games.push_back(Unpack(statement.Bytes(0)));
    if (!keepEvents) games.back().events = {};
  }
  return games;
}

void Database::Commit() { Execute("COMMIT"); }

}  // namespace morvane
