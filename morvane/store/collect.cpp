#include "morvane/store/collect.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "morvane/store/continuation.h"
#include "morvane/store/database.h"
#include "morvane/store/digest.h"
#include "morvane/store/open_log.h"
#include "morvane/store/recurrence.h"

namespace morvane {
namespace {

using Kind = OpenLog::Kind;

/// A log's games, as they are counted.
struct LogGames {
  std::int64_t id = 0;
  MarkedLog marked;
};

/// When a game began, as the database or a log before it knows.
struct GameStart {
  std::int64_t seconds = 0;
  Dated dated = Dated::kUnknown;
};

GameStart StartOf(const Game& game) { return {game.start, game.dated}; }

/// What was once reckoned stays, so that a log that was copied or touched changes no date; only
/// what the log itself tells stands above it.
void KeepStart(Game& game, const GameStart& known) {
  if (game.dated == Dated::kKnown) return;
  game.start = known.seconds;
  game.dated = known.dated;
}

/// One run over the logs, with a database or without.
class Collector {
 public:
  Collector(const Sources& sources, bool keepEvents, Report& report, Database* database);

  Collected Collect();

 private:
  // Which log is which.
  void Recognize();
  bool IsInPlace(OpenLog& log, const StoredPath& path);
  void FindElsewhere(std::size_t index);
  bool HasGrown(std::int64_t id) const;
  bool BeginsWith(const OpenLog& log, const StoredLog& stored) const;
  bool IsDisplaced(const StoredLog& stored) const;
  bool MayHaveMoved(const StoredLog& stored);
  void TakeAs(OpenLog& log, const StoredLog& stored);
  OpenLog* TwinOf(const OpenLog& log);

  // What of them is new.
  void SettleGrown(OpenLog& log);
  void SettleNew(std::size_t index);
  bool ReplaceOld(std::size_t index, const StoredLog& old);
  void MoveFollowers(std::int64_t from, std::int64_t to);
  void Refollow(std::size_t index);
  void ReadAgain(OpenLog& log);
  void KeepStarts(OpenLog& log, const StoredGames& known);

  // What they go on with.
  void Follow(std::size_t index);
  std::vector<std::int64_t> LogsBefore(std::size_t index) const;
  std::optional<std::int64_t> LogBeforeInList(std::size_t index) const;
  bool IsFollowed(std::int64_t log, std::size_t index) const;
  std::optional<FrontGames> FrontOf(const OpenLog& log, std::int64_t before);
  void GoOnWith(OpenLog& log, std::int64_t before, FrontGames front);

  void Keep(OpenLog& log);
  void KeepPaths();
  std::string RestOf(std::int64_t log);
  std::int64_t NewId() { return database_ != nullptr ? database_->AddLog() : ++lastId_; }

  // What counts.
  std::vector<std::int64_t> ReadingOrder() const;
  std::map<std::int64_t, std::vector<bool>> Counting();
  void TellTwins();
  void TellStray(const OpenLog& log);
  void TellTwice(const std::map<std::int64_t, std::vector<bool>>& counts);
  Collected Result();

  const Sources& sources_;
  Report& report_;
  Database* database_;
  Wanted wanted_;
  bool keepEvents_;
  std::vector<OpenLog> logs_;
  std::map<std::string, StoredPath> paths_;   // as they were when the run began
  std::map<std::int64_t, StoredLog> stored_;  // all logs by id
  std::set<std::int64_t> found_;              // those that a file of this run holds
  std::map<std::int64_t, std::string> rests_;
  std::map<std::int64_t, GameStart> openStarts_;  // of open last games that were read
  std::int64_t lastId_ = 0;
};

Collector::Collector(const Sources& sources, bool keepEvents, Report& report, Database* database)
    : sources_(sources), report_(report), database_(database), keepEvents_(keepEvents) {
  logs_ = OpenLogs(sources.logs, report);
  wanted_.events = keepEvents || database != nullptr;
  wanted_.marks = database != nullptr || logs_.size() > 1;
  if (database_ == nullptr) return;
  paths_ = database_->Paths();
  for (const StoredLog& log : database_->Logs()) stored_[log.id] = log;
}

Collected Collector::Collect() {
  Recognize();
  std::vector<OpenLog*> unread;
  std::size_t unchanged = 0;
  for (OpenLog& log : logs_) {
    if (log.kind == Kind::kNew || log.kind == Kind::kGrown) unread.push_back(&log);
    if (log.kind == Kind::kUnchanged) ++unchanged;
  }
  TellTwins();
  if (unchanged > 0) {
    report_.Normal(Log::kParser, Count(unchanged, "log") +
                                     " unchanged since the last run, taken from the database");
  }
  ReadLogs(unread, wanted_, report_);
  for (OpenLog& log : logs_) {
    if (log.kind == Kind::kGrown) SettleGrown(log);
  }
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    if (logs_[i].kind == Kind::kNew) SettleNew(i);
    if (logs_[i].kind == Kind::kUnchanged || logs_[i].kind == Kind::kGrown) Refollow(i);
  }
  for (const OpenLog* log : unread) {
    Tell(*log, report_);
    TellStray(*log);
  }
  if (database_ != nullptr) KeepPaths();
  Collected collected = Result();
  if (database_ != nullptr) database_->Commit();
  return collected;
}

/// Notes which log each file holds, and from which names logs have gone.
void Collector::KeepPaths() {
  std::map<std::string, StoredPath> paths = paths_;
  for (auto& [path, state] : paths) {
    if (found_.contains(state.log)) state = {state.log, -1, 0, false};
  }
  for (OpenLog& log : logs_) {
    if (log.kind == Kind::kTwin && log.stored.id == 0) log.stored.id = TwinOf(log)->stored.id;
    const auto size = static_cast<std::int64_t>(log.Bytes().size());
    paths[log.file.path] = {log.stored.id, size, log.mapped.LastChange(),
                            size == stored_[log.stored.id].size};
  }
  for (const auto& [path, state] : paths) {
    const auto before = paths_.find(path);
    if (before == paths_.end() || before->second != state) database_->SetPath(path, state);
  }
}

// ---- which log is which

/// A log is known by its bytes: first those that are where they were, then those that moved.
void Collector::Recognize() {
  std::vector<std::size_t> rest;
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    const auto path = paths_.find(logs_[i].file.path);
    if (path == paths_.end() || !IsInPlace(logs_[i], path->second)) rest.push_back(i);
  }
  for (const std::size_t i : rest) FindElsewhere(i);
}

bool Collector::IsInPlace(OpenLog& log, const StoredPath& path) {
  if (path.size < 0) return false;
  const StoredLog& stored = stored_[path.log];
  const bool untouched = path.size == static_cast<std::int64_t>(log.Bytes().size()) &&
                         path.changed == log.mapped.LastChange();
  if (untouched && !path.whole) {  // the log goes on elsewhere
    log.kind = Kind::kTwin;
    log.stored.id = path.log;
    return true;
  }
  if (untouched && stored.marked) {
    const bool isTwin = found_.contains(stored.id);
    TakeAs(log, stored);
    log.kind = isTwin ? Kind::kTwin : Kind::kUnchanged;
    return true;
  }
  log.digest = Digest(log.Bytes());
  if (const OpenLog* twin = TwinOf(log); twin != nullptr && twin->stored.id == path.log) {
    log.kind = Kind::kTwin;
    log.stored.id = path.log;
    return true;
  }
  if (HasGrown(path.log) || !BeginsWith(log, stored)) return false;
  const bool isAnother = std::ranges::any_of(stored_, [&](const auto& entry) {
    const StoredLog& other = entry.second;
    return other.id != stored.id && other.size == static_cast<std::int64_t>(log.Bytes().size()) &&
           other.digest == log.digest && IsDisplaced(other);
  });
  if (isAnother) return false;  // names were swapped
  TakeAs(log, stored);
  return true;
}

bool Collector::BeginsWith(const OpenLog& log, const StoredLog& stored) const {
  const std::string_view bytes = log.Bytes();
  if (stored.size == 0 || stored.size > static_cast<std::int64_t>(bytes.size())) return false;
  if (stored.beginning != 0 && stored.beginning != StoredLog::Beginning(bytes, stored.size)) {
    return false;
  }
  return Digest(bytes.substr(0, static_cast<std::size_t>(stored.size))) == stored.digest;
}

/// Whether a file of this run holds more than all of a stored log.
bool Collector::HasGrown(std::int64_t id) const {
  return std::ranges::any_of(
      logs_, [&](const OpenLog& log) { return log.kind == Kind::kGrown && log.stored.id == id; });
}

/// A log holds all of a stored one, and perhaps more.
void Collector::TakeAs(OpenLog& log, const StoredLog& stored) {
  const bool all = stored.size == static_cast<std::int64_t>(log.Bytes().size());
  log.kind = all && stored.marked ? Kind::kUnchanged : Kind::kGrown;
  log.stored = stored;
  if (!found_.insert(stored.id).second) {
    if (all) {
      log.kind = Kind::kTwin;
    } else {  // one that did not grow with it is a beginning of it now
      for (OpenLog& other : logs_) {
        if (&other != &log && other.stored.id == stored.id) other.kind = Kind::kTwin;
      }
    }
  }
  if (log.kind != Kind::kGrown || !stored.marked) return;
  log.begin = static_cast<std::size_t>(stored.resumeAt);
  log.linesBefore = static_cast<std::size_t>(stored.resumeLine);
}

/// The log before in the list, or one further on that is known, with the same bytes.
OpenLog* Collector::TwinOf(const OpenLog& log) {
  for (OpenLog& other : logs_) {
    if (&other == &log) break;
    if (other.kind == Kind::kTwin || other.Bytes().empty() ||
        other.Bytes().size() != log.Bytes().size()) {
      continue;
    }
    if (other.digest == 0) other.digest = Digest(other.Bytes());
    if (log.digest != 0 && other.digest == log.digest) return &other;
  }
  return nullptr;
}

void Collector::FindElsewhere(std::size_t index) {
  OpenLog& log = logs_[index];
  const bool twinPossible = std::ranges::any_of(logs_, [&](const OpenLog& other) {
    return &other != &log && other.Bytes().size() == log.Bytes().size();
  });
  if (log.digest == 0 && (database_ != nullptr || twinPossible)) log.digest = Digest(log.Bytes());
  if (const OpenLog* twin = TwinOf(log)) {
    log.kind = Kind::kTwin;
    log.stored.id = twin->stored.id;
    return;
  }
  const StoredLog* best = nullptr;
  for (const auto& [id, stored] : stored_) {
    if (best != nullptr && stored.size <= best->size) continue;
    if (BeginsWith(log, stored) && (stored.size == static_cast<std::int64_t>(log.Bytes().size()) ||
                                    (!HasGrown(id) && MayHaveMoved(stored)))) {
      best = &stored;
    }
  }
  if (best != nullptr) TakeAs(log, *best);
}

/// Whether a log that begins with all of a stored one can be that log under another name, grown:
/// what it begins with must prove it, or the stored one's own place be taken by another log. The
/// same few lines of an empty server may begin many logs.
bool Collector::MayHaveMoved(const StoredLog& stored) {
  const std::vector<GameMark> marks = database_->GamesOf(stored.id).marks;
  std::uint32_t weight = 0;
  for (const GameMark& mark : marks) weight += mark.weight;
  return weight >= kEvidence || IsDisplaced(stored);
}

/// Whether another log stands in a stored one's place.
bool Collector::IsDisplaced(const StoredLog& stored) const {
  return std::ranges::any_of(logs_, [&](const OpenLog& other) {
    const auto path = paths_.find(other.file.path);
    return path != paths_.end() && path->second.log == stored.id && path->second.whole &&
           !BeginsWith(other, stored);
  });
}

// ---- what of them is new

void Collector::SettleGrown(OpenLog& log) {
  const StoredGames known = database_->GamesOf(log.stored.id);
  std::vector<Game>& games = log.parsed.games;
  if (log.begin == 0 || static_cast<std::int64_t>(log.begin) <= log.stored.head) {
    log.stored.head = static_cast<std::int64_t>(log.FirstGame());
  }
  if (!log.stored.marked) {  // read again from its first byte, for the marks
    for (std::size_t i = 0; i < std::min(known.ids.size(), games.size()); ++i) {
      KeepStart(games[i], StartOf(database_->ReadGame(known.ids[i])));
    }
    for (const std::int64_t id : known.ids) database_->DeleteGame(id);
  } else {
    const std::string carried = database_->UnfinishedOf(log.stored.id).carried;
    if (!carried.empty()) PutInFront(log, ReadFront(log, carried, wanted_));
    if (log.stored.openAtEnd && !known.ids.empty()) {
      if (!games.empty()) KeepStart(games[0], StartOf(database_->ReadGame(known.ids.back())));
      database_->DeleteGame(known.ids.back());
    }
  }
  Keep(log);
}

void Collector::SettleNew(std::size_t index) {
  OpenLog& log = logs_[index];
  log.stored.head = static_cast<std::int64_t>(log.FirstGame());
  const auto path = paths_.find(log.file.path);
  if (path != paths_.end() && !found_.contains(path->second.log) &&
      ReplaceOld(index, stored_[path->second.log])) {
    return;
  }
  if (path != paths_.end() && stored_[path->second.log].size > 0) {
    report_.Normal(Log::kParser, "is a new log; the games of the old one stay", log.file.name);
  }
  if (path != paths_.end() && !found_.contains(path->second.log) &&
      stored_[path->second.log].size == 0) {
    log.stored = stored_[path->second.log];  // was empty when it was last read
    log.stored.head = static_cast<std::int64_t>(log.FirstGame());
    found_.insert(log.stored.id);
  } else {
    log.stored.id = NewId();
    if (path != paths_.end()) log.stored.inPlaceOf = path->second.log;
    if (path != paths_.end() &&
        !FindRecurring(database_->GamesOf(path->second.log).marks, log.marks).empty()) {
      log.stored.head = -1;  // the same log, shortened, of which a copy is left
    }
  }
  Follow(index);
  Keep(log);
}

/// The log at a known path is another than it was. Where its games tell that it is still the same,
/// shortened or edited, they take the place of those that are not in it any more.
bool Collector::ReplaceOld(std::size_t index, const StoredLog& old) {
  OpenLog& log = logs_[index];
  StoredGames known = database_->GamesOf(old.id);
  std::optional<FrontGames> front;
  if (old.goesOnWith != 0) front = FrontOf(log, old.goesOnWith);
  std::vector<GameMark> marks = log.marks;
  if (front) {
    marks.erase(marks.begin(), marks.begin() + static_cast<std::ptrdiff_t>(front->replaced));
    marks.insert(marks.begin(), front->marks.begin(), front->marks.end());
  }
  if (const std::string rest = RestOf(old.id); !known.marks.empty() && !rest.empty()) {
    const bool recurs = std::ranges::any_of(log.parsed.texts, [&](const GameText& text) {
      return log.Bytes().substr(text.begin).starts_with(rest);
    });
    if (!recurs) known.marks.back().beginning = 0;  // begins alike, and goes on in another way
  }
  const std::vector<SamePair> pairs = FindRecurring(known.marks, marks);
  if (pairs.empty()) return false;
  report_.Normal(Log::kParser, "has changed since the last run; its games are read anew",
                 log.file.name);
  const std::size_t first = pairs.front().left;
  if (first == 0) {
    log.stored.id = old.id;
    log.stored.inPlaceOf = old.inPlaceOf;
    if (front) {
      GoOnWith(log, old.goesOnWith, std::move(*front));
    } else {
      log.stored.head = -1;
    }
  } else {
    // What lies before its first game is the end of a game that stays.
    log.stored.id = NewId();
    log.stored.head = -1;
    database_->SetUnfinished(old.id, {});
    MoveFollowers(old.id, log.stored.id);
  }
  KeepStarts(log, known);
  if (first == 0 || !front) {
    const std::size_t moved = log.parsed.games.size() - marks.size();
    for (const SamePair& pair : pairs) {
      KeepStart(log.parsed.games[pair.right + moved],
                StartOf(database_->ReadGame(known.ids[pair.left])));
    }
  }
  for (std::size_t i = first; i < known.ids.size(); ++i) database_->DeleteGame(known.ids[i]);
  found_.insert(log.stored.id);
  Keep(log);
  return true;
}

/// What went on with one log goes on with another one.
void Collector::MoveFollowers(std::int64_t from, std::int64_t to) {
  const auto move = [&](StoredLog& log) {
    const bool follows = log.goesOnWith == from || log.inPlaceOf == from;
    if (log.goesOnWith == from) log.goesOnWith = to;
    if (log.inPlaceOf == from) log.inPlaceOf = to;
    return follows;
  };
  for (OpenLog& log : logs_) move(log.stored);
  for (auto& [id, log] : stored_) {
    if (move(log)) database_->UpdateLog(log);
  }
}

/// A log that was read before goes on with the one before it: that may be another one now, or have
/// grown, or only now be known to fit.
void Collector::Refollow(std::size_t index) {
  OpenLog& log = logs_[index];
  if (log.stored.head < 0) return;
  std::int64_t before = 0;
  std::string rest;
  for (const std::int64_t candidate : LogsBefore(index)) {
    rest = RestOf(candidate);
    if (!GoesOn(rest, log.Bytes(), static_cast<std::size_t>(log.stored.head))) continue;
    before = candidate;
    break;
  }
  if (before == 0) return;
  if (before == log.stored.goesOnWith && Digest(rest) == log.stored.goesOnRest) return;
  ReadAgain(log);
  GoOnWith(log, before, ReadFront(log, rest, wanted_));
  const StoredGames known = database_->GamesOf(log.stored.id);
  KeepStarts(log, known);
  for (const std::int64_t id : known.ids) database_->DeleteGame(id);
  Keep(log);
}

/// Gives the games that a log had before, and has again in the same order, the starts they had.
void Collector::KeepStarts(OpenLog& log, const StoredGames& known) {
  std::size_t next = 0;
  for (std::size_t i = 0; i < log.marks.size(); ++i) {
    std::size_t same = next;
    while (same < known.marks.size() && !IsSameGame(known.marks[same], log.marks[i])) ++same;
    if (same == known.marks.size()) continue;
    KeepStart(log.parsed.games[i], StartOf(database_->ReadGame(known.ids[same])));
    next = same + 1;
  }
}

void Collector::ReadAgain(OpenLog& log) {
  if (log.digest == 0) log.digest = Digest(log.Bytes());
  log.begin = 0;
  log.linesBefore = 0;
  log.unfinished = {};
  ReadLogs({&log}, wanted_, report_);
}

// ---- what they go on with

/// Looks for the log whose open game this one goes on with.
void Collector::Follow(std::size_t index) {
  if (logs_[index].stored.head < 0) return;
  for (const std::int64_t before : LogsBefore(index)) {
    if (std::optional<FrontGames> front = FrontOf(logs_[index], before)) {
      return GoOnWith(logs_[index], before, std::move(*front));
    }
  }
}

/// The logs with which one may go on: that of which it took the place, and that before it in the
/// list.
std::vector<std::int64_t> Collector::LogsBefore(std::size_t index) const {
  const StoredLog& log = logs_[index].stored;
  std::vector<std::int64_t> before;
  if (log.inPlaceOf != 0) before.push_back(log.inPlaceOf);
  // What it goes on with stays so, unless a log comes between them in the list.
  const bool free =
      log.goesOnWith == 0 ||
      (log.goesOnWith != log.inPlaceOf &&
       std::any_of(logs_.begin(), logs_.begin() + static_cast<std::ptrdiff_t>(index),
                   [&](const OpenLog& other) { return other.stored.id == log.goesOnWith; }));
  if (const auto inList = LogBeforeInList(index); inList && free) before.push_back(*inList);
  std::erase_if(before, [&](std::int64_t id) { return IsFollowed(id, index); });
  return before;
}

std::optional<std::int64_t> Collector::LogBeforeInList(std::size_t index) const {
  for (std::size_t i = index; i-- > 0;) {
    const OpenLog& log = logs_[i];
    if (log.kind == Kind::kTwin || log.Bytes().empty()) continue;
    if (log.stored.id != logs_[index].stored.id) return log.stored.id;
  }
  return std::nullopt;
}

/// Whether another log than that one, and none further on in the list, goes on with a log; or that
/// one goes on, over others, with this one.
bool Collector::IsFollowed(std::int64_t log, std::size_t index) const {
  const std::int64_t own = logs_[index].stored.id;
  const auto before = [&](std::int64_t id) {
    const auto stored = stored_.find(id);
    return stored == stored_.end() ? 0 : stored->second.goesOnWith;
  };
  for (std::int64_t id = log; id != 0; id = before(id)) {
    if (id == own) return true;
  }
  return std::ranges::any_of(stored_, [&](const auto& entry) {
    const StoredLog& other = entry.second;
    if (other.goesOnWith != log || other.id == own) return false;
    const bool isFurtherOn =
        std::any_of(logs_.begin() + static_cast<std::ptrdiff_t>(index) + 1, logs_.end(),
                    [&](const OpenLog& listed) { return listed.stored.id == other.id; });
    return other.goesOnWith == other.inPlaceOf || !isFurtherOn;
  });
}

std::optional<FrontGames> Collector::FrontOf(const OpenLog& log, std::int64_t before) {
  const std::string rest = RestOf(before);
  if (!GoesOn(rest, log.Bytes(), log.FirstGame())) return std::nullopt;
  return ReadFront(log, rest, wanted_);
}

void Collector::GoOnWith(OpenLog& log, std::int64_t before, FrontGames front) {
  if (!front.parsed.games.empty()) {
    if (const auto start = openStarts_.find(before); start != openStarts_.end()) {
      KeepStart(front.parsed.games[0], start->second);
    } else if (database_ != nullptr && stored_[before].openAtEnd) {
      const StoredGames games = database_->GamesOf(before);
      if (!games.ids.empty()) {
        KeepStart(front.parsed.games[0], StartOf(database_->ReadGame(games.ids.back())));
      }
    }
  }
  log.stored.goesOnWith = before;
  log.stored.goesOnRest = Digest(front.carried);
  PutInFront(log, std::move(front));
}

std::string Collector::RestOf(std::int64_t log) {
  if (const auto rest = rests_.find(log); rest != rests_.end()) return rest->second;
  return database_ != nullptr ? database_->UnfinishedOf(log).rest : std::string();
}

/// Takes what was read of a log into the database.
void Collector::Keep(OpenLog& log) {
  Settle(log);
  rests_[log.stored.id] = log.unfinished.rest;
  if (log.stored.openAtEnd && !log.parsed.games.empty()) {
    openStarts_[log.stored.id] = StartOf(log.parsed.games.back());
  } else {
    openStarts_.erase(log.stored.id);
  }
  stored_[log.stored.id] = log.stored;
  if (database_ == nullptr) return;
  Renumber(log.parsed.games, log.parsed.vocabulary, database_->Words());
  log.parsed.vocabulary = database_->Words();
  database_->AddGames(log.stored.id, log.parsed.games, log.marks);
  database_->UpdateLog(log.stored);
  database_->SetUnfinished(log.stored.id, log.unfinished);
}

// ---- what counts

/// First the logs that the user does not name any more, the oldest first, then those of the list.
std::vector<std::int64_t> Collector::ReadingOrder() const {
  std::vector<std::int64_t> listed;
  for (const LogFile& file : sources_.logs) {
    const auto open =
        std::ranges::find_if(logs_, [&](const OpenLog& log) { return log.file.path == file.path; });
    const auto path = paths_.find(file.path);
    std::int64_t id = open != logs_.end() ? open->stored.id : 0;
    if (open == logs_.end() && path != paths_.end()) id = path->second.log;
    if (id != 0 && std::ranges::find(listed, id) == listed.end()) listed.push_back(id);
  }
  std::vector<std::int64_t> order;
  for (const auto& [id, log] : stored_) {
    if (std::ranges::find(listed, id) == listed.end()) order.push_back(id);
  }
  order.insert(order.end(), listed.begin(), listed.end());
  return order;
}

/// Which games count, by log. The oldest log is the first: what was stored first stays.
std::map<std::int64_t, std::vector<bool>> Collector::Counting() {
  std::vector<MarkedLog> marked;
  std::map<std::int64_t, std::size_t> positions;
  for (const auto& [id, log] : stored_) {
    positions[id] = marked.size();
    marked.emplace_back();
    if (database_ != nullptr) marked.back().games = database_->GamesOf(id).marks;
  }
  for (const auto& [id, log] : stored_) {
    const auto before = positions.find(log.goesOnWith);
    if (before != positions.end()) marked[positions[id]].goesOnWith = before->second;
  }
  if (database_ == nullptr) {
    for (const OpenLog& log : logs_) {
      if (log.kind != Kind::kTwin) marked[positions[log.stored.id]].games = log.marks;
    }
  }
  const std::vector<std::vector<bool>> counts = CountOnce(marked);
  std::map<std::int64_t, std::vector<bool>> result;
  for (const auto& [id, position] : positions) result[id] = counts[position];
  return result;
}

void Collector::TellTwins() {
  for (const OpenLog& log : logs_) {
    if (log.kind != Kind::kTwin) continue;
    const auto twin = std::ranges::find_if(logs_, [&](const OpenLog& other) {
      return other.kind != Kind::kTwin &&
             (log.stored.id != 0 ? other.stored.id == log.stored.id : other.digest == log.digest);
    });
    if (twin == logs_.end()) continue;
    report_.Normal(Log::kParser,
                   "holds nothing but what " + twin->file.name + " holds; counted once",
                   log.file.name);
  }
}

void Collector::TellStray(const OpenLog& log) {
  const bool fromStart = static_cast<std::int64_t>(log.begin) <= log.stored.head;
  if (log.parsed.strayLines == 0 || !fromStart || log.stored.goesOnWith != 0) return;
  report_.Normal(Log::kParser,
                 Count(log.parsed.strayLines, "line") +
                     " of a game before the first \"InitGame:\" left out: no log before it is "
                     "known that ends in that game",
                 log.file.name);
}

void Collector::TellTwice(const std::map<std::int64_t, std::vector<bool>>& counts) {
  for (const OpenLog& log : logs_) {
    if (log.kind == Kind::kTwin) continue;
    const std::vector<bool>& games = counts.at(log.stored.id);
    auto twice = static_cast<std::size_t>(std::ranges::count(games, false));
    const bool followed = std::ranges::any_of(
        stored_, [&](const auto& other) { return other.second.goesOnWith == log.stored.id; });
    if (twice > 0 && followed && log.stored.openAtEnd && !games.back()) --twice;
    if (twice > 0) {
      report_.Normal(Log::kParser,
                     Count(twice, "game") +
                         " of it stand in another log too, and "
                         "count once",
                     log.file.name);
    }
  }
}

Collected Collector::Result() {
  const std::map<std::int64_t, std::vector<bool>> counts = Counting();
  TellTwice(counts);
  Collected collected;
  for (const std::int64_t id : ReadingOrder()) {
    std::vector<Game> games;
    if (database_ != nullptr) {
      games = database_->ReadGames(id, keepEvents_);
    } else {
      OpenLog& log = *std::ranges::find_if(logs_, [&](const OpenLog& open) {
        return open.kind != Kind::kTwin && open.stored.id == id;
      });
      games = std::move(log.parsed.games);
      Renumber(games, log.parsed.vocabulary, collected.vocabulary);
    }
    const std::vector<bool>& counting = counts.at(id);
    for (std::size_t i = 0; i < games.size(); ++i) {
      if (i >= counting.size() || counting[i]) collected.games.push_back(std::move(games[i]));
    }
  }
  if (database_ != nullptr) collected.vocabulary = database_->Words();
  collected.usable = !logs_.empty() || !collected.games.empty();
  return collected;
}

}  // namespace

Collected CollectGames(const Sources& sources, bool keepEvents, Report& report) {
  if (sources.useDatabase) {
    try {
      Database database(sources.databasePath);
      return Collector(sources, keepEvents, report, &database).Collect();
    } catch (const DatabaseError& error) {
      report.Severe(Log::kMain, std::string("the database cannot be used, the logs are read "
                                            "without it: ") +
                                    error.what());
    }
  }
  return Collector(sources, keepEvents, report, nullptr).Collect();
}

}  // namespace morvane
