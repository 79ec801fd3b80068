#include <algorithm>
#include <utility>

#include "morvane/store/collector.h"
#include "morvane/store/continuation.h"
#include "morvane/store/digest.h"
#include "morvane/store/known_facts.h"
#include "morvane/store/recurrence.h"

namespace morvane {

void Collector::SettleGrown(OpenLog& log) {
  const StoredGames known = database_->GamesOf(log.stored.id);
  std::vector<Game>& games = log.parsed.games;
  if (static_cast<std::int64_t>(log.begin) <= log.stored.head) {
    log.stored.head = static_cast<std::int64_t>(log.FirstGame());
  }
  if (!log.stored.marked) {  // read again from its first byte, for the marks
    for (std::size_t i = 0; i < std::min(known.ids.size(), games.size()); ++i) {
      KeepKnown(games[i], KnownFactsOf(database_->ReadGame(known.ids[i])));
    }
    for (const std::int64_t id : known.ids) database_->DeleteGame(id);
  } else {
    const std::string carried = database_->UnfinishedOf(log.stored.id).carried;
    if (!carried.empty()) PutInFront(log, ReadFront(log, carried, wantMarks_));
    if (log.stored.openAtEnd && !known.ids.empty()) {
      if (!games.empty()) KeepKnown(games[0], KnownFactsOf(database_->ReadGame(known.ids.back())));
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
    // Where that log moved away in an earlier run, the list tells better what came before.
    if (path != paths_.end() && path->second.size >= 0) log.stored.inPlaceOf = path->second.log;
  }
  if (const std::int64_t moved = RotatedFrom(index); moved != 0 && path != paths_.end()) {
    log.stored.inPlaceOf = moved;
  }
  Follow(index);
  Keep(log);
}

/// The log that stood at the path of a new one since the last run, and was rotated: it is new,
/// not one that was edited where it stood, and bears the name with something behind it. 0: none.
std::int64_t Collector::RotatedFrom(std::size_t index) const {
  for (std::size_t i = index; i-- > 0;) {
    const OpenLog& log = logs_[i];
    if (log.kind == Kind::kTwin) continue;
    const auto path = paths_.find(log.file.path);
    const bool wasThere = path != paths_.end() && path->second.log == log.stored.id;
    const bool isNew = log.kind == Kind::kNew && !wasThere;
    return isNew && log.file.path.starts_with(logs_[index].file.path) ? log.stored.id : 0;
  }
  return 0;
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
    // The log before it tells how they begin: that proves nothing of this one.
    for (std::size_t i = 0; i < front->marks.size(); ++i) marks[i].beginning = 0;
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
  log.stored.id = old.id;
  log.stored.inPlaceOf = old.inPlaceOf;
  if (first == 0 && front) {
    GoOnWith(log, old.goesOnWith, std::move(*front));
  } else {  // what lies before its first game is the end of one that is known
    log.stored.head = -1;
    if (first > 0) log.stored.goesOnWith = old.goesOnWith;
    if (first > 0) log.stored.goesOnRest = old.goesOnRest;
  }
  KeepAllKnown(log, known);
  for (std::size_t i = first; i < known.ids.size(); ++i) database_->DeleteGame(known.ids[i]);
  found_.insert(log.stored.id);
  Keep(log);
  return true;
}

/// A log that was read before goes on with the one before it: that may be another one now, or have
/// grown, or only now be known to fit.
void Collector::Refollow(std::size_t index) {
  OpenLog& log = logs_[index];
  if (log.stored.head < 0) return;
  const std::vector<std::int64_t> candidates = LogsBefore(index);
  const std::uint64_t unfinished = DigestOfRests(candidates);
  const bool alone = log.stored.goesOnWith == 0;
  if (alone && log.kind == Kind::kUnchanged && log.stored.goesOnRest == unfinished) return;
  std::int64_t before = 0;
  std::string rest;
  for (const std::int64_t candidate : candidates) {
    rest = RestOf(candidate);
    if (candidate == log.stored.goesOnWith && Digest(rest) == log.stored.goesOnRest) return;
    if (!GoesOn(rest, log.Bytes(), static_cast<std::size_t>(log.stored.head))) continue;
    if (IsOlder(log, candidate)) continue;
    before = candidate;
    break;
  }
  if (before == 0) {
    if (!alone || log.stored.goesOnRest == unfinished) return;
    log.stored.goesOnRest = unfinished;
    stored_[log.stored.id] = log.stored;
    return database_->UpdateLog(log.stored);
  }
  if (before != log.stored.goesOnWith && GameBefore(log)) {
    if (!alone) return;
    log.stored.head = -1;
    stored_[log.stored.id] = log.stored;
    return database_->UpdateLog(log.stored);
  }
  ReadAgain(log);
  GoOnWith(log, before, ReadFront(log, rest, wantMarks_));
  const StoredGames known = database_->GamesOf(log.stored.id);
  KeepAllKnown(log, known);
  for (const std::int64_t id : known.ids) database_->DeleteGame(id);
  Keep(log);
}

/// Gives the games that a log had before, and has again in the same order, what is known of them.
/// So it does those that stand between two of them in the place of as many others.
void Collector::KeepAllKnown(OpenLog& log, const StoredGames& known) {
  std::size_t next = 0;  // both: what is not settled
  std::size_t unsettled = 0;
  const auto settle = [&](std::size_t stored, std::size_t read) {
    if (stored - next == read - unsettled) {
      for (; unsettled < read; ++unsettled, ++next) {
        KeepKnown(log.parsed.games[unsettled], KnownFactsOf(database_->ReadGame(known.ids[next])));
      }
    }
    next = stored;
    unsettled = read;
  };
  for (std::size_t i = 0; i < log.marks.size(); ++i) {
    std::size_t same = next;
    while (same < known.marks.size() && !IsSameGame(known.marks[same], log.marks[i])) ++same;
    if (same == known.marks.size()) continue;
    settle(same, i);
    settle(same + 1, i + 1);
  }
  // Of the last games, where they were edited, no more is the same than how they begin.
  const auto beginAlike = [&] {
    return next < known.marks.size() && unsettled < log.marks.size() &&
           known.marks[next].opening == log.marks[unsettled].opening;
  };
  while (beginAlike()) settle(next + 1, unsettled + 1);
  // An open last game has grown.
  std::size_t last = unsettled;
  const bool open = next < known.marks.size() && known.marks.back().open;
  while (open && last < log.marks.size() && !MayBeSameGame(known.marks.back(), log.marks[last])) {
    ++last;
  }
  if (open && last < log.marks.size()) {
    settle(known.marks.size() - 1, last);
    settle(known.marks.size(), last + 1);
  }
}

void Collector::ReadAgain(OpenLog& log) {
  if (log.digest == 0) log.digest = Digest(log.Bytes());
  log.begin = 0;
  log.linesBefore = 0;
  log.unfinished = {};
  ReadLogs({&log}, wantMarks_, report_);
}

}  // namespace morvane
