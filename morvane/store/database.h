#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"

struct sqlite3;

namespace morvane {

/// The database is damaged, locked, full, or of another version; `what` says which.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What a database knows of a log that was read.
struct StoredLog {
  std::int64_t id = 0;
  std::int64_t size = 0;      ///< bytes
  std::int64_t changed = 0;   ///< nanoseconds since 1970
  std::uint64_t digest = 0;   ///< of all its bytes
  std::int64_t resumeAt = 0;  ///< where to read on, in bytes, see ParsedLog
  std::int64_t resumeLine = 0;
  bool openAtEnd = false;  ///< its last game was not over
};

/// Games of a log in a database.
struct StoredGame {
  std::int64_t id = 0;
  std::uint64_t digest = 0;  ///< see GameDigest; 0 for a game without a kill, which may have a twin
};

/// The games of all logs ever read, in the SQLite file morvane.db. A log is known by its path; one
/// whose path now belongs to another log, or that is gone, is retired and keeps its games.
/// Everything from construction on is one transaction: without `Commit` nothing is changed.
/// Every member throws DatabaseError.
class Database {
 public:
  static constexpr std::string_view kFileName = "morvane.db";

  /// Opens the database in `directory`, and makes directory and database where they are missing.
  explicit Database(const std::string& directory);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  std::optional<StoredLog> FindLog(const std::string& path);
  /// Adds a log; its new id.
  std::int64_t AddLog(const std::string& path);
  void UpdateLog(const StoredLog& log);
  /// Keeps a log's games, but frees its path.
  void RetireLog(std::int64_t log);

  /// The games of a log in their order, and a game with its events.
  std::vector<StoredGame> GamesOf(std::int64_t log);
  Game ReadGame(std::int64_t game);
  void AddGames(std::int64_t log, const std::vector<Game>& games);
  void DeleteGame(std::int64_t game);
  void DeleteGamesOf(std::int64_t log);

  /// The last games, not over when they were read, of the logs but those of `paths`; and all games
  /// with a kill of these logs.
  std::vector<StoredGame> OpenGamesBut(const std::vector<std::string>& paths);
  std::vector<StoredGame> GamesBut(const std::vector<std::string>& paths);

  /// All games: first those of logs that are not among `paths`, the oldest log first, then those of
  /// `paths` in this order. `keepEvents`: fill Game::events.
  std::vector<Game> ReadAll(const std::vector<std::string>& paths, bool keepEvents);

  /// The names by which games are numbered. A new one is kept by the next AddGames.
  Vocabulary& Words() { return words_; }

  void Commit();

 private:
  class Statement;

  void Execute(const char* sql);
  void Prepare();
  void ReadNames(int kind, Names& names);
  void WriteNames(int kind, const Names& names);
  void MarkListed(const std::vector<std::string>& paths);
  std::vector<StoredGame> ReadStored(Statement& statement);
  Game Unpack(std::string_view bytes) const;

  sqlite3* handle_ = nullptr;
  Vocabulary words_;
};

}  // namespace morvane
