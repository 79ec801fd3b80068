#include <algorithm>
#include <numeric>

#include "morvane/store/collector.h"
#include "morvane/store/digest.h"

namespace morvane {

/// A log is known by its bytes: first those that are where they were, then those that moved.
void Collector::Recognize() {
  std::vector<std::size_t> order(logs_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&](std::size_t i) { return RankOf(logs_[i]); });
  std::erase_if(order, [&](std::size_t i) {
    const auto path = paths_.find(logs_[i].file.path);
    return path != paths_.end() && IsInPlace(logs_[i], path->second);
  });
  for (const std::size_t i : order) FindElsewhere(i, true);
  for (const std::size_t i : order) {
    if (logs_[i].kind == Kind::kNew) FindElsewhere(i, false);
  }
}

/// Which of several logs with the same bytes is the log, and the others are its twins: that of the
/// lowest rank.
Collector::Rank Collector::RankOf(const OpenLog& log) const {
  return {log.isLink, !paths_.contains(log.file.path), &log - logs_.data()};
}

/// Whether a file is the one that was read, of a log of which nothing has to be read again.
bool Collector::IsUntouched(const OpenLog& log) const {
  const auto path = paths_.find(log.file.path);
  if (path == paths_.end() || path->second.size != static_cast<std::int64_t>(log.text.FileSize()) ||
      path->second.changed != log.text.LastChange()) {
    return false;
  }
  const auto stored = stored_.find(path->second.log);
  return stored != stored_.end() && (stored->second.marked || !path->second.whole);
}

bool Collector::IsInPlace(OpenLog& log, const StoredPath& path) {
  if (path.size < 0) return false;
  const StoredLog& stored = stored_[path.log];
  if (IsUntouched(log)) {
    // What held no more than its beginning goes on elsewhere.
    const bool isTwin = !path.whole || !found_.insert(stored.id).second;
    log.kind = isTwin ? Kind::kTwin : Kind::kUnchanged;
    if (path.whole) log.stored = stored;
    log.stored.id = path.log;
    if (static_cast<std::int64_t>(log.Size()) == stored.size) log.digest = stored.digest;
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
    if (other.size <= stored.size || !BeginsWith(log, other)) return false;
    const bool isAll = other.size == static_cast<std::int64_t>(log.Bytes().size());
    return DisplacedBy(other) || (isAll && !IsNamed(other.id));
  });
  if (isAnother || HasMoved(path)) return false;  // names were passed on
  TakeAs(log, stored);
  return true;
}

/// Whether a log of which nothing proves that it has grown stands under a new name, as it was.
bool Collector::HasMoved(const StoredPath& path) const {
  return !IsEvident(path.log) && std::ranges::any_of(logs_, [&](const OpenLog& log) {
    return log.text.LastChange() == path.changed && !IsUntouched(log) &&
           static_cast<std::int64_t>(log.text.FileSize()) == path.size &&
           BeginsWith(log, stored_.at(path.log));
  });
}

bool Collector::BeginsWith(const OpenLog& log, const StoredLog& stored) const {
  const std::string_view bytes = log.Bytes();
  if (stored.size == 0 || stored.size > static_cast<std::int64_t>(bytes.size())) return false;
  if (stored.beginning != 0 && stored.beginning != StoredLog::Beginning(bytes, stored.size)) {
    return false;
  }
  return Digest(bytes.substr(0, static_cast<std::size_t>(stored.size))) == stored.digest;
}

/// Whether no two logs hold the games of a stored one by chance.
bool Collector::IsEvident(std::int64_t id) const {
  std::uint32_t weight = 0;
  for (const GameMark& mark : database_->GamesOf(id).marks) weight += mark.weight;
  return weight >= kEvidence;
}

/// Whether a file of this run holds more than all of a stored log.
bool Collector::HasGrown(std::int64_t id) const {
  return std::ranges::any_of(
      logs_, [&](const OpenLog& log) { return log.kind == Kind::kGrown && log.stored.id == id; });
}

/// Whether the list has a path at which a stored log stood.
bool Collector::IsNamed(std::int64_t id) const {
  return std::ranges::any_of(logs_, [&](const OpenLog& log) {
    const auto path = paths_.find(log.file.path);
    return path != paths_.end() && path->second.log == id;
  });
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

/// The log of which one is the twin, of those of a lower rank.
OpenLog* Collector::TwinOf(const OpenLog& log) {
  for (OpenLog& other : logs_) {
    if (other.kind == Kind::kTwin || other.Size() == 0 || other.Size() != log.Size()) continue;
    if (RankOf(other) >= RankOf(log)) continue;
    if (other.digest == 0) other.digest = Digest(other.Bytes());
    if (log.digest != 0 && other.digest == log.digest) return &other;
  }
  return nullptr;
}

void Collector::FindElsewhere(std::size_t index, bool whole) {
  OpenLog& log = logs_[index];
  const bool twinPossible = std::ranges::any_of(
      logs_, [&](const OpenLog& other) { return &other != &log && other.Size() == log.Size(); });
  if (log.digest == 0 && (database_ != nullptr || twinPossible)) log.digest = Digest(log.Bytes());
  if (const OpenLog* twin = TwinOf(log)) {
    log.kind = Kind::kTwin;
    log.stored.id = twin->stored.id;
    return;
  }
  const StoredLog* best = nullptr;
  for (const auto& [id, stored] : stored_) {
    if (best != nullptr && stored.size <= best->size) continue;
    const bool isAll = stored.size == static_cast<std::int64_t>(log.Bytes().size());
    if (isAll != whole || !BeginsWith(log, stored)) continue;
    // A few lines of an empty server that recur while their own log grows are those of a new log.
    const bool isIt = HasGrown(id) ? isAll && IsEvident(id) : isAll || MayHaveMoved(stored, index);
    if (isIt) best = &stored;
  }
  if (best != nullptr) TakeAs(log, *best);
}

/// Whether a log that begins with all of a stored one can be that log under another name, grown:
/// what it begins with must prove it, or the stored one's own place be taken by another log. The
/// same few lines of an empty server may begin many logs: then it is the one that stands nearest to
/// that place in the list, as a rotated log does.
bool Collector::MayHaveMoved(const StoredLog& stored, std::size_t to) {
  if (database_->GamesOf(stored.id).ids.empty()) return false;  // nothing would count twice
  if (IsEvident(stored.id)) return true;
  const std::optional<std::size_t> place = DisplacedBy(stored);
  if (!place || found_.contains(stored.id)) return false;
  const auto distance = [&](std::size_t from) {
    return std::max(from, *place) - std::min(from, *place);
  };
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    const bool nearer = distance(i) < distance(to);
    if (nearer && logs_[i].kind == Kind::kNew && BeginsWith(logs_[i], stored)) return false;
  }
  return true;
}

/// The log that stands in a stored one's place, if another one does.
std::optional<std::size_t> Collector::DisplacedBy(const StoredLog& stored) const {
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    const auto path = paths_.find(logs_[i].file.path);
    if (path != paths_.end() && path->second.log == stored.id && path->second.whole &&
        !BeginsWith(logs_[i], stored)) {
      return i;
    }
  }
  return std::nullopt;
}

}  // namespace morvane
