#include <algorithm>
#include <iterator>
#include <utility>

#include "morvane/statistics/figures.h"
#include "morvane/store/collector.h"
#include "morvane/store/continuation.h"
#include "morvane/store/digest.h"

namespace morvane {

/// Looks for the log whose open game this one goes on with.
void Collector::Follow(std::size_t index) {
  if (logs_[index].stored.head < 0) return;
  const std::vector<std::int64_t> candidates = LogsBefore(index);
  for (const std::int64_t before : candidates) {
    if (std::optional<FrontGames> front = FrontOf(logs_[index], before)) {
      return GoOnWith(logs_[index], before, std::move(*front));
    }
  }
  logs_[index].stored.goesOnRest = DigestOfRests(candidates);
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
  if (free) std::ranges::copy(LogsBeforeInList(index), std::back_inserter(before));
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
  if (!front.parsed.games.empty()) {
    if (const auto start = openFacts_.find(before); start != openFacts_.end()) {
      KeepKnown(front.parsed.games[0], start->second);
    } else if (database_ != nullptr && stored_[before].openAtEnd) {
      const StoredGames games = database_->GamesOf(before);
      if (!games.ids.empty()) {
        KeepKnown(front.parsed.games[0], KnownFactsOf(database_->ReadGame(games.ids.back())));
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
    openFacts_[log.stored.id] = KnownFactsOf(log.parsed.games.back());
  } else {
    openFacts_.erase(log.stored.id);
  }
  stored_[log.stored.id] = log.stored;
  if (database_ == nullptr) return;
  Renumber(log.parsed.games, log.parsed.vocabulary, database_->Words());
  log.parsed.vocabulary = database_->Words();
  firstNew_[log.stored.id] = database_->AddGames(log.stored.id, log.parsed.games, log.marks);
  database_->UpdateLog(log.stored);
  database_->SetUnfinished(log.stored.id, log.unfinished);
}

}  // namespace morvane
