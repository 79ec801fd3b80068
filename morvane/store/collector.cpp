#include "morvane/store/collector.h"

#include <algorithm>
#include <utility>

#include "morvane/statistics/figures.h"
#include "morvane/store/game_numbers.h"
#include "morvane/store/known_facts.h"
#include "morvane/store/recurrence.h"
#include "platform/this_process.h"

namespace morvane {

Collector::Collector(const Sources& sources, Report& report, Database* database)
    : sources_(sources), report_(report), database_(database) {
  if (database_ != nullptr) {
    paths_ = database_->Paths();
    for (const StoredLog& log : database_->Logs()) stored_[log.id] = log;
  }
  logs_ = OpenLogs(
      sources.logs, [&](const OpenLog& log) { return IsUntouched(log); }, report);
  wantMarks_ = database != nullptr || logs_.size() > 1;
}

bool Collector::FindTorn() {
  for (const OpenLog& log : logs_) {
    if (log.text.IsWhole() && log.problem.empty()) continue;
    report_.Severe(Log::kParser,
                   log.problem.empty()
                       ? "was cut or written anew while it was read; it is left out of this run"
                       : "cannot be read: " + log.problem,
                   log.file.name);
    torn_.push_back(log.file.path);
  }
  return !torn_.empty();
}

std::optional<Collected> Collector::Collect() {
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
  ReadLogs(unread, wantMarks_, report_);
  if (FindTorn()) return {};
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
  if (FindTorn()) return {};  // some are read a second time
  if (database_ != nullptr) KeepPaths();
  if (database_ != nullptr) DropUnfinished();
  if (database_ != nullptr) ForgetRead();
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
    const bool whole = static_cast<std::int64_t>(log.Size()) == stored_[log.stored.id].size;
    paths[log.file.path] = {log.stored.id, static_cast<std::int64_t>(log.text.FileSize()),
                            log.text.LastChange(), whole};
  }
  for (const auto& [path, state] : paths) {
    const auto before = paths_.find(path);
    if (before == paths_.end() || before->second != state) database_->SetPath(path, state);
  }
}

/// Lets go of the games that were read: they stand in the database, and are taken from there in
/// their order with all others. Threads read them, each with memory of its own.
void Collector::ForgetRead() {
  for (OpenLog& log : logs_) log.parsed.games = {};
  platform::GiveMemoryBack();
}

/// Drops the lines of unfinished games with which no log can go on any more, so far as one can
/// know: those of logs long gone from the list. A log of this run may still be read anew.
void Collector::DropUnfinished() {
  constexpr std::ptrdiff_t kNewest = 32;  // what was just rotated away, by each of many servers
  std::set<std::int64_t> kept;
  for (const OpenLog& log : logs_) {
    kept.insert(log.stored.id);
    kept.insert(stored_[log.stored.id].goesOnWith);
  }
  const auto newest = std::ranges::next(stored_.rbegin(), kNewest, stored_.rend());
  for (const std::int64_t id : database_->UnfinishedLogs()) {
    const bool isNew = newest == stored_.rend() || id > newest->first;
    if (!isNew && !kept.contains(id)) {
      database_->SetUnfinished(id, {database_->UnfinishedOf(id).carried, {}});
    }
  }
}

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
std::map<std::int64_t, CountedGames> Collector::Counting() {
  std::vector<MarkedLog> marked;
  std::vector<std::vector<std::int64_t>> ids;  // of the games; below of the logs
  std::vector<std::int64_t> logs;
  std::map<std::int64_t, std::size_t> positions;
  for (const auto& [id, log] : stored_) {
    positions[id] = marked.size();
    StoredGames games = database_ != nullptr ? database_->GamesOf(id) : StoredGames();
    ids.push_back(std::move(games.ids));
    logs.push_back(id);
    marked.push_back({std::move(games.marks), {}});
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
  const Once once = CountOnce(marked);
  const auto idOf = [&](const GamePlace& place) {
    return StoredGame{logs[place.log], ids[place.log][place.game]};
  };
  for (const SameGames& same : database_ != nullptr ? once.same : std::vector<SameGames>()) {
    same_.push_back({idOf(same.earlier), idOf(same.later)});
    ShareFacts(same_.back().earlier, same_.back().later);
  }
  std::map<std::int64_t, CountedGames> result;
  for (const auto& [id, position] : positions) {
    result[id] = {std::move(ids[position]), once.counts[position]};
  }
  return result;
}

bool Collector::IsNew(const StoredGame& game) const {
  const auto first = firstNew_.find(game.log);
  return first != firstNew_.end() && game.id >= first->second;
}

/// Gives one of two games that are one, if it is new in this run, what is known of the other one:
/// which of them counts may change.
void Collector::ShareFacts(const StoredGame& earlier, const StoredGame& later) {
  if (IsNew(later)) {
    GiveFacts(earlier.id, later.id);
  } else if (IsNew(earlier)) {
    GiveFacts(later.id, earlier.id);
  }
}

void Collector::GiveFacts(std::int64_t from, std::int64_t to) {
  Game game = database_->ReadGame(to);
  const KnownFacts own = KnownFactsOf(game);
  KeepKnown(game, KnownFactsOf(database_->ReadGame(from)));
  if (KnownFactsOf(game) != own) database_->ReplaceGame(to, game);
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

void Collector::TellTwice(const std::map<std::int64_t, CountedGames>& counts) {
  for (const OpenLog& log : logs_) {
    if (log.kind == Kind::kTwin) continue;
    const std::vector<bool>& games = counts.at(log.stored.id).counts;
    auto twice = static_cast<std::size_t>(std::ranges::count(games, false));
    const bool followed = std::ranges::any_of(
        stored_, [&](const auto& other) { return other.second.goesOnWith == log.stored.id; });
    if (twice > 0 && followed && log.stored.openAtEnd && !games.back()) --twice;
    if (twice > 0) {
      report_.Normal(Log::kParser,
                     Count(twice, "game") + " of it " + (twice == 1 ? "stands" : "stand") +
                         " in another log too, and " + (twice == 1 ? "counts" : "count") + " once",
                     log.file.name);
    }
  }
}

std::vector<Game> Collector::GamesIn(std::int64_t id, Vocabulary& words) {
  if (database_ != nullptr) return database_->ReadGames(id);
  OpenLog& log = *Holding(id);
  Renumber(log.parsed.games, log.parsed.vocabulary, words);
  return std::move(log.parsed.games);
}

/// Stores the numbers of games, and those of their copies: which of them counts may change.
void Collector::KeepNumbers(const std::map<std::int64_t, std::uint32_t>& given,
                            std::uint32_t last) {
  for (const auto& [game, number] : given) database_->SetNumber(game, number);
  for (const SameStored& same : same_) {
    for (const auto& [from, to] :
         {std::pair(same.earlier.id, same.later.id), std::pair(same.later.id, same.earlier.id)}) {
      const auto number = given.find(from);
      if (number != given.end() && !given.contains(to)) database_->SetNumber(to, number->second);
    }
  }
  database_->SetLastNumber(last);
}

Collected Collector::Result() {
  const std::map<std::int64_t, CountedGames> counting = Counting();
  PassOnFacts(counting);
  TellTwice(counting);
  Collected collected;
  std::map<std::int64_t, std::uint32_t> given;
  GameNumbers numbers(database_ != nullptr ? database_->LastNumber() : 0);
  std::size_t most = 0;
  for (const auto& [id, counted] : counting) most += counted.counts.size();
  collected.games.reserve(most);
  for (const std::int64_t id : ReadingOrder()) {
    std::vector<Game> games = GamesIn(id, collected.vocabulary);
    const CountedGames& counted = counting.at(id);
    for (std::size_t i = 0; i < games.size(); ++i) {
      const bool counts = i >= counted.counts.size() || counted.counts[i];
      if (!counts || games[i].entrants.empty()) continue;
      const bool isStored = i < counted.ids.size();
      if (numbers.Give(games[i]) && isStored) given[counted.ids[i]] = games[i].number;
      collected.games.push_back(std::move(games[i]));
    }
  }
  if (database_ != nullptr) {
    if (!given.empty()) KeepNumbers(given, numbers.Last());
    collected.vocabulary = database_->Words();
  }
  collected.usable = !logs_.empty() || !collected.games.empty();
  return collected;
}

}  // namespace morvane
