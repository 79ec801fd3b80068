#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"
#include "morvane/store/database_error.h"
#include "morvane/store/game_mark.h"

namespace SQLite {
class Database;
class Statement;
}  // namespace SQLite

namespace morvane {

/// What a database knows of a log that was read. It is known by its bytes, whatever its name.
struct StoredLog {
  std::int64_t id = 0;
  std::int64_t size = 0;        ///< bytes
  std::uint64_t digest = 0;     ///< of all its bytes
  std::uint64_t beginning = 0;  ///< of its first bytes, see Beginning
  std::int64_t resumeAt = 0;    ///< where to read on, in bytes, see ParsedLog
  std::int64_t resumeLine = 0;
  bool openAtEnd = false;       ///< its last game was not over
  std::int64_t head = 0;        ///< bytes before its first game; -1: they belong to a known one
  std::int64_t goesOnWith = 0;  ///< the log whose open game it goes on with; 0: none
  /// The digest of what was unfinished there; of what it does not go on with, where that is 0.
  std::uint64_t goesOnRest = 0;
  std::int64_t inPlaceOf = 0;  ///< the log that stood at its path before; 0: none
  bool marked = true;          ///< its games have full marks, see GameMark

  /// The digest of the first bytes of a log of at least this size: for finding it quickly.
  static std::uint64_t Beginning(std::string_view bytes, std::int64_t size);
};

/// What is unfinished in a log.
struct Unfinished {
  std::string carried;  ///< from the log before it, where its first game began and is still open
  std::string rest;     ///< `carried` and what stands from StoredLog::resumeAt on; may be left out
};

/// What a path held when it was last looked at.
struct StoredPath {
  std::int64_t log = 0;
  std::int64_t size = 0;     ///< of the file, in bytes; -1: the log has moved away since
  std::int64_t changed = 0;  ///< of the file, in nanoseconds since 1970
  bool whole = true;         ///< it held all of the log, not only its beginning

  bool operator==(const StoredPath&) const = default;
};

/// The games of a log in a database, in their order.
struct StoredGames {
  std::vector<std::int64_t> ids;
  std::vector<GameMark> marks;
};

/// The games of all logs ever read, in the SQLite file morvane.db.
/// Everything from construction on is one transaction: without `Commit` nothing is changed.
/// Every member throws DatabaseError.
class Database {
 public:
  static constexpr std::string_view kFileName = "morvane.db";

  enum class Use {
    kStore,
    kCopy  ///< in memory: nothing that is changed is kept
  };

  /// Opens the database in `directory`, and makes directory and database where they are missing. A
  /// database of an older version is brought to this one. Waits for another run, but not for ever.
  explicit Database(const std::string& directory, Use use = Use::kStore);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  std::map<std::string, StoredPath> Paths();
  void SetPath(const std::string& path, const StoredPath& state);

  /// All logs, the oldest first.
  std::vector<StoredLog> Logs();
  /// Adds a log; its new id, higher than all others.
  std::int64_t AddLog();
  void UpdateLog(const StoredLog& log);
  Unfinished UnfinishedOf(std::int64_t log);
  void SetUnfinished(std::int64_t log, const Unfinished& unfinished);
  /// The logs with an Unfinished::rest.
  std::vector<std::int64_t> UnfinishedLogs();

  StoredGames GamesOf(std::int64_t log);
  Game ReadGame(std::int64_t game);
  /// The games of a log, with their numbers, in the order of GamesOf.
  std::vector<Game> ReadGames(std::int64_t log);
  /// Adds games, with the numbers that they have; their ids are not lower than the returned one.
  std::int64_t AddGames(std::int64_t log, const std::vector<Game>& games,
                        const std::vector<GameMark>& marks);
  /// Puts another form of a game, known by the same mark, into its place, its number included.
  void ReplaceGame(std::int64_t id, const Game& game);
  void DeleteGame(std::int64_t game);
  /// Gives a game a number of its own, see Game::number. Deleting the game takes it away.
  void SetNumber(std::int64_t game, std::uint32_t number);
  /// The highest of the numbers that were ever given to games.
  std::uint32_t LastNumber();
  void SetLastNumber(std::uint32_t number);

  /// The names by which games are numbered. A new one is kept by the next AddGames.
  Vocabulary& Words() { return words_; }

  void Commit();

 private:
  void Open(const std::string& path, Use use);
  void Prepare();
  void UpgradeFirst();
  void MarkOldGames();
  void ReadNames(int kind, Names& names);
  void WriteNames(int kind, const Names& names);
  Game ReadRow(SQLite::Statement& row) const;
  Game Unpack(std::string_view bytes, int version) const;

  std::unique_ptr<SQLite::Database> database_;
  Vocabulary words_;
};

}  // namespace morvane
