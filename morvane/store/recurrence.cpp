#include "morvane/store/recurrence.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace morvane {
namespace {

/// Games that follow each other in two logs and are the same.
struct Run {
  std::size_t log = 0;  ///< the log of `right`
  std::size_t left = 0;
  std::size_t right = 0;
  std::size_t length = 0;
};

/// Finds games of known logs by what they are known by.
class GameIndex {
 public:
  using Marks = std::vector<GameMark>;

  /// Adds a log, which must live on; its position is the next number.
  void Add(const Marks& games);
  /// All runs that the log shares with those that were added.
  std::vector<Run> RunsOf(const Marks& games) const;

 private:
  static constexpr std::size_t kMostAlike = 16;  // what stands oftener is no help

  void Add(std::uint64_t key, GamePlace place);
  std::vector<GamePlace> Find(const GameMark& mark) const;
  /// The run through a pair of same games. Weighs it.
  Run Extend(const Marks& games, std::size_t at, GamePlace place, std::uint32_t& weight) const;

  std::vector<const Marks*> logs_;
  std::unordered_map<std::uint64_t, std::vector<GamePlace>> places_;
};

void GameIndex::Add(const Marks& games) {
  for (std::size_t i = 0; i < games.size(); ++i) {
    if (games[i].weight == 0) continue;
    for (const std::uint64_t key : {games[i].digest, games[i].beginning, games[i].facts}) {
      if (key != 0) Add(key, {logs_.size(), i});
    }
  }
  logs_.push_back(&games);
}

void GameIndex::Add(std::uint64_t key, GamePlace place) {
  std::vector<GamePlace>& places = places_[key];
  if (places.size() < kMostAlike) places.push_back(place);
}

std::vector<GamePlace> GameIndex::Find(const GameMark& mark) const {
  std::vector<GamePlace> found;
  for (const std::uint64_t key : {mark.digest, mark.beginning, mark.facts}) {
    const auto places = key != 0 ? places_.find(key) : places_.end();
    if (places == places_.end()) continue;
    for (const GamePlace& place : places->second) {
      if (IsSameGame(mark, (*logs_[place.log])[place.game])) found.push_back(place);
    }
  }
  return found;
}

Run GameIndex::Extend(const Marks& games, std::size_t at, GamePlace place,
                      std::uint32_t& weight) const {
  const Marks& others = *logs_[place.log];
  Run run{place.log, at, place.game, 0};
  while (run.left > 0 && run.right > 0 && IsSameGame(games[run.left - 1], others[run.right - 1])) {
    --run.left;
    --run.right;
  }
  const std::size_t most = std::min(games.size() - run.left, others.size() - run.right);
  const auto left = [&] { return games[run.left + run.length]; };
  const auto right = [&] { return others[run.right + run.length]; };
  for (; run.length < most && IsSameGame(left(), right()); ++run.length) {
    weight += std::min(left().weight, right().weight);
  }
  if (run.length < most && MayBeSameGame(left(), right())) ++run.length;
  return run;
}

std::vector<Run> GameIndex::RunsOf(const Marks& games) const {
  std::vector<Run> runs;
  // A run lies on a diagonal: how far each has been looked at.
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> lookedAt;
  for (std::size_t at = 0; at < games.size(); ++at) {
    if (games[at].weight == 0) continue;
    for (const GamePlace& place : Find(games[at])) {
      std::size_t& end = lookedAt[{place.log, at + (*logs_[place.log]).size() - place.game}];
      if (at < end) continue;
      std::uint32_t weight = 0;
      const Run run = Extend(games, at, place, weight);
      end = run.left + run.length;
      if (weight >= kEvidence) runs.push_back(run);
    }
  }
  return runs;
}

bool IsBefore(const Run& first, const Run& second) {
  return first.left + first.length <= second.left && first.right + first.length <= second.right;
}

/// The runs in one order in both logs that hold most games.
std::vector<Run> LongestChain(std::vector<Run> runs) {
  constexpr std::size_t kMostRuns = 2000;  // a log in shreds: the square of this is still quick
  if (runs.size() > kMostRuns) runs.resize(kMostRuns);
  std::ranges::sort(runs, {}, [](const Run& run) { return std::tuple(run.left, run.right); });
  std::vector<std::size_t> games(runs.size());
  std::vector<std::size_t> before(runs.size());
  std::size_t best = 0;
  for (std::size_t i = 0; i < runs.size(); ++i) {
    before[i] = i;
    for (std::size_t j = 0; j < i; ++j) {
      if (IsBefore(runs[j], runs[i]) && games[j] > games[i]) {
        games[i] = games[j];
        before[i] = j;
      }
    }
    games[i] += runs[i].length;
    if (games[i] > games[best]) best = i;
  }
  std::vector<Run> chain;
  if (runs.empty()) return chain;
  for (chain.push_back(runs[best]); before[best] != best; chain.push_back(runs[best])) {
    best = before[best];
  }
  std::ranges::reverse(chain);
  return chain;
}

/// Whether of two games that are one the later log's counts.
bool IsBetter(const GameMark& later, const GameMark& earlier) {
  const auto worth = [](const GameMark& mark) {
    return mark.open ? std::tuple(false, mark.size, mark.kills) : std::tuple(true, 0U, 0U);
  };
  return worth(later) > worth(earlier);
}

/// Finds the games that do not count.
class OnceCounter {
 public:
  explicit OnceCounter(const std::vector<MarkedLog>& logs) : logs_(logs) {
    for (const MarkedLog& log : logs_) counts_.emplace_back(log.games.size(), true);
  }
  Once Count();

 private:
  void LeaveOutOne(GamePlace later, GamePlace earlier);
  /// Whether it is the open game of a log with which another one goes on.
  bool IsContinued(GamePlace place) const { return continued_[place.log] && IsOpen(place); }
  bool GoesOnWith(std::size_t log, std::size_t before) const;
  bool IsOpen(GamePlace place) const { return logs_[place.log].games[place.game].open; }
  void LeaveOut(GamePlace place) { counts_[place.log][place.game] = false; }

  const std::vector<MarkedLog>& logs_;
  std::vector<bool> continued_;
  std::vector<std::vector<bool>> counts_;
  std::vector<SameGames> same_;
};

Once OnceCounter::Count() {
  continued_.assign(logs_.size(), false);
  for (const MarkedLog& log : logs_) {
    if (log.goesOnWith) continued_[*log.goesOnWith] = true;
  }
  GameIndex index;
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    for (const Run& run : index.RunsOf(logs_[i].games)) {
      for (std::size_t at = 0; at < run.length; ++at) {
        same_.push_back({{i, run.left + at}, {run.log, run.right + at}});
        LeaveOutOne(same_.back().later, same_.back().earlier);
      }
    }
    index.Add(logs_[i].games);
  }
  for (std::size_t i = 0; i < logs_.size(); ++i) {
    if (!logs_[i].games.empty() && IsContinued({i, logs_[i].games.size() - 1})) {
      counts_[i].back() = false;
    }
  }
  return {std::move(counts_), std::move(same_)};
}

void OnceCounter::LeaveOutOne(GamePlace later, GamePlace earlier) {
  for (const auto& [one, other] : {std::pair(later, earlier), std::pair(earlier, later)}) {
    if (!IsContinued(one)) continue;
    // That one will not count: what goes on with it does. So a copy of it does not count either.
    if (IsOpen(other) && !GoesOnWith(other.log, one.log)) LeaveOut(other);
    return;
  }
  const bool better =
      IsBetter(logs_[later.log].games[later.game], logs_[earlier.log].games[earlier.game]);
  LeaveOut(better ? earlier : later);
}

/// Whether a log goes on with another one, over further ones or not.
bool OnceCounter::GoesOnWith(std::size_t log, std::size_t before) const {
  for (std::size_t steps = 0; steps < logs_.size() && logs_[log].goesOnWith; ++steps) {
    log = *logs_[log].goesOnWith;
    if (log == before) return true;
  }
  return false;
}

}  // namespace

std::vector<SamePair> FindRecurring(const std::vector<GameMark>& stored,
                                    const std::vector<GameMark>& read) {
  GameIndex index;
  index.Add(read);
  std::vector<SamePair> pairs;
  for (const Run& run : LongestChain(index.RunsOf(stored))) {
    for (std::size_t i = 0; i < run.length; ++i) pairs.push_back({run.left + i, run.right + i});
  }
  return pairs;
}

std::optional<GameMark> FindGameBefore(const std::vector<GameMark>& games,
                                       const std::vector<std::vector<GameMark>>& others) {
  GameIndex index;
  for (const std::vector<GameMark>& other : others) index.Add(other);
  for (const Run& run : index.RunsOf(games)) {
    if (run.left == 0 && run.right > 0) return others[run.log][run.right - 1];
  }
  return std::nullopt;
}

Once CountOnce(const std::vector<MarkedLog>& logs) { return OnceCounter(logs).Count(); }

}  // namespace morvane
