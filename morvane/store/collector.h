#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "morvane/store/collect.h"
#include "morvane/store/database.h"
#include "morvane/store/open_log.h"

namespace morvane {

/// A game in the database and the log it stands in.
struct StoredGame {
  std::int64_t log = 0;
  std::int64_t id = 0;
};

/// Two games that are one.
struct SameStored {
  StoredGame earlier;
  StoredGame later;
};

/// The games of a log and which of them count.
struct CountedGames {
  std::vector<std::int64_t> ids;  ///< in the database; without one empty
  std::vector<bool> counts;
};

/// One run over the logs, with a database or without.
class Collector {
 public:
  Collector(const Sources& sources, Report& report, Database* database);

  /// Nothing, and no change of the database, where a log was cut while it was read, see Torn.
  std::optional<Collected> Collect();

  /// The paths of the logs that were cut or written anew while they were read, or could not be read
  /// after all.
  const std::vector<std::string>& Torn() const { return torn_; }

 private:
  using Kind = OpenLog::Kind;
  /// Whether it is a link, whether its path is new, and its place in the list.
  using Rank = std::tuple<bool, bool, std::ptrdiff_t>;

  // Which log is which: recognition.cpp.
  void Recognize();
  Rank RankOf(const OpenLog& log) const;
  bool IsUntouched(const OpenLog& log) const;
  bool IsInPlace(OpenLog& log, const StoredPath& path);
  void FindElsewhere(std::size_t index, bool whole);
  bool HasMoved(const StoredPath& path) const;
  bool IsEvident(std::int64_t id) const;
  bool HasGrown(std::int64_t id) const;
  bool IsNamed(std::int64_t id) const;
  bool BeginsWith(const OpenLog& log, const StoredLog& stored) const;
  std::optional<std::size_t> DisplacedBy(const StoredLog& stored) const;
  bool MayHaveMoved(const StoredLog& stored, std::size_t to);
  void TakeAs(OpenLog& log, const StoredLog& stored);
  OpenLog* TwinOf(const OpenLog& log);

  // What of them is new: renewal.cpp.
  void SettleGrown(OpenLog& log);
  void SettleNew(std::size_t index);
  bool ReplaceOld(std::size_t index, const StoredLog& old);
  std::int64_t RotatedFrom(std::size_t index) const;
  void Refollow(std::size_t index);
  void ReadAgain(OpenLog& log);
  void KeepAllKnown(OpenLog& log, const StoredGames& known);

  // What they go on with: following.cpp.
  void Follow(std::size_t index);
  std::vector<GameMark> OwnMarks(const OpenLog& log);
  bool BeganBefore(const OpenLog& log) const;
  std::vector<GameMark> MarksOf(std::int64_t id);
  OpenLog* Holding(std::int64_t id);
  std::optional<GameMark> GameBefore(const OpenLog& log);
  bool IsOlder(const OpenLog& log, std::int64_t than);
  bool EndsWith(std::int64_t id, const FrontGames& front, const GameMark& known);
  std::vector<std::int64_t> LogsBefore(std::size_t index) const;
  std::vector<std::int64_t> LogsBeforeInList(std::size_t index) const;
  std::uint64_t DigestOfRests(const std::vector<std::int64_t>& logs);
  bool IsFollowed(std::int64_t log, std::size_t index) const;
  std::optional<FrontGames> FrontOf(const OpenLog& log, std::int64_t before);
  void GoOnWith(OpenLog& log, std::int64_t before, FrontGames front);
  void PassOnFacts(const std::map<std::int64_t, CountedGames>& games);

  bool FindTorn();
  void Keep(OpenLog& log);
  void KeepPaths();
  void DropUnfinished();
  void ForgetRead();
  std::string RestOf(std::int64_t log);
  std::int64_t NewId() { return database_ != nullptr ? database_->AddLog() : ++lastId_; }

  // What counts.
  std::vector<std::int64_t> ReadingOrder() const;
  std::map<std::int64_t, CountedGames> Counting();
  bool IsNew(const StoredGame& game) const;
  void ShareFacts(const StoredGame& earlier, const StoredGame& later);
  void GiveFacts(std::int64_t from, std::int64_t to);
  void TellTwins();
  void TellStray(const OpenLog& log);
  void TellTwice(const std::map<std::int64_t, CountedGames>& counts);
  std::vector<Game> GamesIn(std::int64_t log, Vocabulary& words);
  void KeepNumbers(const std::map<std::int64_t, std::uint32_t>& given, std::uint32_t last);
  Collected Result();

  const Sources& sources_;
  Report& report_;
  Database* database_;
  bool wantMarks_ = false;
  std::vector<OpenLog> logs_;
  std::vector<std::string> torn_;
  std::map<std::string, StoredPath> paths_;   // as they were when the run began
  std::map<std::int64_t, StoredLog> stored_;  // all logs by id
  std::set<std::int64_t> found_;              // those that a file of this run holds
  std::map<std::int64_t, std::string> rests_;
  std::int64_t lastId_ = 0;
  std::map<std::int64_t, std::int64_t> firstNew_;  // by log: the first game stored in this run
  std::vector<SameStored> same_;
};

}  // namespace morvane
