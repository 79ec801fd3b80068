#include <algorithm>
#include <iterator>
#include <utility>

#include "morvane/statistics/figures.h"
#include "morvane/store/collector.h"
#include "morvane/store/continuation.h"
#include "morvane/store/digest.h"
#include "morvane/store/known_facts.h"
#include "morvane/store/recurrence.h"

namespace morvane {

/// Looks for the log whose open game this one goes on with. Where its games stand in another log
/// too, that one tells how the game ends that this one begins in.
void Collector::Follow(std::size_t index) {
  OpenLog& log = logs_[index];
  if (log.stored.head < 0) return;
  const std::optional<GameMark> known = log.stored.head > 0 ? GameBefore(log) : std::nullopt;
  const std::vector<std::int64_t> candidates = LogsBefore(index);
  for (const std::int64_t before : candidates) {
    std::optional<FrontGames> front = FrontOf(log, before);
    if (!front || IsOlder(log, before)) continue;
    if (known && !EndsWith(before, *front, *known)) continue;
    return GoOnWith(log, before, std::move(*front));
  }
  if (known) {
    log.stored.head = -1;
  } else {
    log.stored.goesOnRest = DigestOfRests(candidates);
  }
}

/// Whether the last game of a log, or what becomes of it in `front` of the next one, is a known
/// one. A broken line alone makes no game, and fits many a log: it may yet become the line that
/// opens one.
bool Collector::EndsWith(std::int64_t id, const FrontGames& front, const GameMark& known) {
  const std::vector<GameMark> marks = front.marks.empty() ? MarksOf(id) : front.marks;
  return !marks.empty() && IsSameGame(marks.back(), known);
}

/// The games that begin in a log itself, not in one that was open at the end of the log before it.
std::vector<GameMark> Collector::OwnMarks(const OpenLog& log) {
  if (log.kind == Kind::kNew) return log.marks;
  std::vector<GameMark> marks = MarksOf(log.stored.id);
  if (BeganBefore(log) && !marks.empty()) marks.erase(marks.begin());
  return marks;
}

/// Whether the first game of a log is one that was open at the end of the log before it.
bool Collector::BeganBefore(const OpenLog& log) const {
  const auto before = stored_.find(log.stored.goesOnWith);
  return before != stored_.end() && before->second.openAtEnd;
}

std::vector<GameMark> Collector::MarksOf(std::int64_t id) {
  if (database_ != nullptr) return database_->GamesOf(id).marks;
  const OpenLog* log = Holding(id);
  return log != nullptr ? log->marks : std::vector<GameMark>();
}

/// The file of this run that holds a log.
OpenLog* Collector::Holding(std::int64_t id) {
  const auto log = std::ranges::find_if(
      logs_, [&](const OpenLog& open) { return open.kind != Kind::kTwin && open.stored.id == id; });
  return log != logs_.end() ? &*log : nullptr;
}

/// The game of another log in which one begins, see FindGameBefore. An empty mark where that one
/// begins in it too, and it is known which it is.
std::optional<GameMark> Collector::GameBefore(const OpenLog& log) {
  std::vector<std::vector<GameMark>> others;
  for (const auto& [id, stored] : stored_) {
    if (id == log.stored.id) continue;
    others.push_back(MarksOf(id));
    const bool isKnown = stored.goesOnWith != 0 || stored.head < 0;
    if (isKnown) others.back().insert(others.back().begin(), GameMark());
  }
  for (const OpenLog& other : logs_) {
    const bool isUnsettled = other.kind == Kind::kNew && other.stored.id == 0;
    if (isUnsettled && &other != &log) others.push_back(other.marks);
  }
  return FindGameBefore(OwnMarks(log), others);
}

/// Whether a log begins before another one ends: they share games, or it does so with one that the
/// other goes on with.
bool Collector::IsOlder(const OpenLog& log, std::int64_t than) {
  const std::vector<GameMark> own = OwnMarks(log);
  for (std::int64_t id = than; id != 0; id = stored_[id].goesOnWith) {
    if (!FindRecurring(MarksOf(id), own).empty()) return true;
  }
  return false;
}

/// Of what is unfinished in logs: a log that was held against it need not be once more.
std::uint64_t Collector::DigestOfRests(const std::vector<std::int64_t>& logs) {
  std::string digests;
  for (const std::int64_t log : logs) {
    if (const std::string rest = RestOf(log); !rest.empty()) {
      digests += std::to_string(Digest(rest)) + ' ';
    }
  }
  return digests.empty() ? 0 : Digest(digests);
}

/// The logs with which one may go on: that of which it took the place, and that before it in the
/// list. What it goes on with already stays so, unless a log has come between them in the list that
/// goes on with the same.
std::vector<std::int64_t> Collector::LogsBefore(std::size_t index) const {
  const StoredLog& log = logs_[index].stored;
  std::vector<std::int64_t> before = LogsBeforeInList(index);
  if (log.goesOnWith != 0) {
    std::erase_if(before,
                  [&](std::int64_t id) { return stored_.at(id).goesOnWith != log.goesOnWith; });
    before.push_back(log.goesOnWith);
  }
  if (log.inPlaceOf != 0) before.insert(before.begin(), log.inPlaceOf);
  std::erase_if(before, [&](std::int64_t id) { return IsFollowed(id, index); });
  return before;
}

/// The log before one in the list; and those before it of which a copy stands between the two.
std::vector<std::int64_t> Collector::LogsBeforeInList(std::size_t index) const {
  std::vector<std::int64_t> before;
  for (std::size_t i = index; i-- > 0;) {
    const OpenLog& log = logs_[i];
    if (log.Size() == 0) continue;
    for (const OpenLog& held : logs_) {  // the log itself, or what it is a twin of
      const bool same = &held == &log || (log.kind == Kind::kTwin && held.Size() == log.Size() &&
                                          held.digest == log.digest && log.digest != 0);
      const std::int64_t id = held.kind == Kind::kTwin || !same ? 0 : held.stored.id;
      if (id != 0 && id != logs_[index].stored.id) before.push_back(id);
    }
    if (log.kind != Kind::kTwin && log.stored.id != logs_[index].stored.id) break;
  }
  return before;
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
  return ReadFront(log, rest, wantMarks_);
}

void Collector::GoOnWith(OpenLog& log, std::int64_t before, FrontGames front) {
  log.stored.goesOnWith = before;
  log.stored.goesOnRest = Digest(front.carried);
  PutInFront(log, std::move(front));
}

/// Gives games that go on in new logs what is known of them, once it is known which games are one.
void Collector::PassOnFacts(const std::map<std::int64_t, CountedGames>& games) {
  for (OpenLog& log : logs_) {
    const std::int64_t before = log.stored.goesOnWith;
    if (log.kind == Kind::kTwin || !BeganBefore(log)) continue;
    if (database_ == nullptr) {
      std::vector<Game>& read = log.parsed.games;  // it may have left out those of nobody
      if (!read.empty()) {
        KeepKnown(read.front(), KnownFactsOf(Holding(before)->parsed.games.back()));
      }
      continue;
    }
    const std::vector<std::int64_t>& own = games.at(log.stored.id).ids;
    const std::vector<std::int64_t>& others = games.at(before).ids;
    if (own.empty() || others.empty() || !IsNew({log.stored.id, own.front()})) continue;
    GiveFacts(others.back(), own.front());
  }
}

std::string Collector::RestOf(std::int64_t log) {
  if (const auto rest = rests_.find(log); rest != rests_.end()) return rest->second;
  return database_ != nullptr ? database_->UnfinishedOf(log).rest : std::string();
}

/// Takes what was read of a log into the database.
void Collector::Keep(OpenLog& log) {
  Settle(log);
  rests_[log.stored.id] = log.unfinished.rest;
  stored_[log.stored.id] = log.stored;
  if (database_ == nullptr) return;
  Renumber(log.parsed.games, log.parsed.vocabulary, database_->Words());
  log.parsed.vocabulary = database_->Words();
  firstNew_[log.stored.id] = database_->AddGames(log.stored.id, log.parsed.games, log.marks);
  database_->UpdateLog(log.stored);
  database_->SetUnfinished(log.stored.id, log.unfinished);
}

}  // namespace morvane
