#include "morvane/store/collect.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <unordered_set>
#include <utility>

#include "morvane/log/log_parser.h"
#include "morvane/log/log_text.h"
#include "morvane/statistics/names.h"
#include "morvane/store/database.h"
#include "morvane/store/game_record.h"
#include "platform/threads.h"

namespace morvane {
namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;

/// A log of the settings that can be read.
struct OpenLog {
  explicit OpenLog(const LogFile& named) : file(named), text(named.path, problem) {}

  LogFile file;
  std::string problem;  // why it cannot be read
  LogText text;
  std::size_t begin = 0;  // what lies before is known
  std::size_t linesBefore = 0;
  StoredLog stored;    // where there is a database
  bool grown = false;  // the games before `begin` stay
  ParsedLog parsed;
};

std::string Count(std::size_t count, const std::string& one) {
  return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

/// Unpacks the packed ones among logs, on all cores.
void UnpackAll(std::vector<OpenLog>& logs) {
  std::atomic<std::size_t> next = 0;
  const std::size_t cores = std::thread::hardware_concurrency();
  platform::RunOnThreads(std::min(cores, logs.size()), [&] {
    for (std::size_t i = next++; i < logs.size(); i = next++) {
      if (logs[i].problem.empty()) logs[i].text.Unpack(logs[i].problem);
    }
  });
}

/// Opens the logs; those that cannot be read are left out with a message.
std::vector<OpenLog> OpenLogs(const Sources& sources, Report& report) {
  std::vector<OpenLog> logs;
  std::unordered_set<std::string> named;
  for (const LogFile& file : sources.logs) {
    if (file.type != kServerLog) {
      report.Severe(Log::kParser,
                    "log type " + std::to_string(file.type) + " is not known; log skipped",
                    file.name);
    } else if (!named.insert(file.path).second) {
      report.Normal(Log::kParser, "named twice; read once", file.name);
    } else {
      logs.emplace_back(file);
    }
  }
  UnpackAll(logs);
  std::erase_if(logs, [&](const OpenLog& log) {
    if (log.problem.empty()) return false;
    report.Severe(Log::kParser, "cannot be read: " + log.problem, log.file.name);
    return true;
  });
  return logs;
}

/// Leaves out the logs that were cut while they were read: what was read of them is no log.
void DropTorn(std::vector<OpenLog>& logs, Report& report) {
  std::erase_if(logs, [&](const OpenLog& log) {
    if (log.text.IsWhole()) return false;
    report.Severe(Log::kParser,
                  "was cut or written anew while it was read; it is left out of this run",
                  log.file.name);
    return true;
  });
}

/// Reads what is not known yet of the logs, on all cores. What cannot be read to its end is left
/// out.
void Parse(std::vector<OpenLog>& logs, bool keepEvents, Report& report) {
  std::vector<std::string_view> texts;
  std::size_t all = 0;
  for (const OpenLog& log : logs) {
    texts.push_back(log.text.Bytes().substr(log.begin));
    all += texts.back().size();
  }
  std::atomic<std::size_t> done = 0;
  std::vector<ParsedLog> parsed = ParseLogs(texts, keepEvents, [&](const Stretch& stretch) {
    const OpenLog& log = logs[stretch.log];
    log.text.Release(log.begin + stretch.begin, log.begin + stretch.end);
    done += stretch.end - stretch.begin;
    report.Progress("Reading logs:", done, all);
  });
  for (std::size_t i = 0; i < logs.size(); ++i) {
    logs[i].parsed = std::move(parsed[i]);
    SetStarts(logs[i].parsed, logs[i].text.LastChange() / kNanoseconds);
  }
  DropTorn(logs, report);
}

/// Says what was found in a log.
void Tell(const OpenLog& log, Report& report) {
  const ParsedLog& parsed = log.parsed;
  for (const Note& note : parsed.notes) {
    report.Normal(Log::kParser, note.text, log.file.name, log.linesBefore + note.line);
  }
  if (parsed.damaged > parsed.notes.size()) {
    report.Normal(Log::kParser,
                  Count(parsed.damaged - parsed.notes.size(), "damaged line") + " more",
                  log.file.name);
  }
  std::size_t kills = 0;
  for (const Game& game : parsed.games) kills += game.kills;
  report.Normal(Log::kParser,
                Count(parsed.lines, "line") + " read, " + Count(parsed.skipped, "line") +
                    " skipped: " + Count(parsed.games.size(), "game") + ", " + Count(kills, "kill"),
                log.file.name);
  if (parsed.games.empty() && log.begin == 0) {
    report.Severe(Log::kParser, "holds no game: no line \"InitGame:\" in it", log.file.name);
  }
}

void Append(Collected& to, ParsedLog& parsed) {
  Renumber(parsed.games, parsed.vocabulary, to.vocabulary);
  std::move(parsed.games.begin(), parsed.games.end(), std::back_inserter(to.games));
  parsed.games.clear();
}

Collected CollectFromLogs(const Sources& sources, bool keepEvents, Report& report) {
  std::vector<OpenLog> logs = OpenLogs(sources, report);
  Parse(logs, keepEvents, report);
  Collected collected;
  collected.usable = !logs.empty();
  for (OpenLog& log : logs) {
    Tell(log, report);
    Append(collected, log.parsed);
  }
  return collected;
}

bool IsSameKill(const Game& left, const KillEvent& a, const Game& right, const KillEvent& b) {
  const auto name = [](const Game& game, std::uint16_t entrant) {
    return entrant == KillEvent::kWorld ? std::string_view() : game.entrants[entrant].name;
  };
  return a.weapon == b.weapon && name(left, a.killer) == name(right, b.killer) &&
         name(left, a.victim) == name(right, b.victim);
}

/// How many kills two games share at their start and at their end.
std::size_t SharedKills(const Game& left, const Game& right) {
  const std::size_t most = std::min(left.events.size(), right.events.size());
  std::size_t start = 0;
  while (start < most && IsSameKill(left, left.events[start], right, right.events[start])) ++start;
  std::size_t end = 0;
  while (end < most - start && IsSameKill(left, left.events[left.events.size() - 1 - end], right,
                                          right.events[right.events.size() - 1 - end])) {
    ++end;
  }
  return start + end;
}

/// Whether one game is the other with a few lines changed or cut off.
bool IsSimilar(const Game& left, const Game& right) {
  constexpr std::size_t kFewest = 5;  // so many in a row are no accident
  const std::size_t shared = SharedKills(left, right);
  return left.map == right.map && shared >= kFewest &&
         3 * shared >= 2 * std::min(left.events.size(), right.events.size());
}

/// Whether `whole` goes on where `start`, read while it was played, ends.
bool IsContinued(const Game& start, const Game& whole) {
  const std::size_t kills = start.events.size();
  return start.map == whole.map && kills > 0 && whole.events.size() >= kills &&
         SharedKills(start, whole) == kills;
}

/// The run's work on the database.
class Store {
 public:
  Store(const Sources& sources, Report& report)
      : sources_(sources), report_(report), database_(sources.databasePath) {}

  Collected Collect(std::vector<OpenLog>& logs, bool keepEvents);

 private:
  /// Finds out what is new in a log; false when nothing is.
  bool FindNew(OpenLog& log);
  void MakeRoom(OpenLog& log);
  void ReplaceOrRetire(OpenLog& log);
  void Keep(const OpenLog& log);
  bool IsSameLog(std::int64_t log, const std::vector<Game>& games);
  void DropMoved(const std::vector<Game>& games);

  const Sources& sources_;
  Report& report_;
  Database database_;
  std::vector<std::string> paths_;
};

bool Store::FindNew(OpenLog& log) {
  const auto size = static_cast<std::int64_t>(log.text.Bytes().size());
  const std::optional<StoredLog> stored = database_.FindLog(log.file.path);
  if (stored) {
    log.stored = *stored;
    if (stored->size == size && stored->changed == log.text.LastChange()) return false;
    const auto known = static_cast<std::size_t>(stored->size);
    log.grown = size >= stored->size && stored->resumeAt <= stored->size &&
                Digest(log.text.Bytes().substr(0, known)) == stored->digest;
  }
  if (log.grown) {
    log.begin = static_cast<std::size_t>(stored->resumeAt);
    log.linesBefore = static_cast<std::size_t>(stored->resumeLine);
  }
  return true;
}

Collected Store::Collect(std::vector<OpenLog>& logs, bool keepEvents) {
  for (const LogFile& file : sources_.logs) {
    if (std::find(paths_.begin(), paths_.end(), file.path) == paths_.end()) {
      paths_.push_back(file.path);
    }
  }
  const bool anyLog = !logs.empty();
  const std::size_t named = logs.size();
  std::erase_if(logs, [this](OpenLog& log) { return !FindNew(log); });
  if (const std::size_t unchanged = named - logs.size(); unchanged > 0) {
    report_.Normal(Log::kParser, Count(unchanged, "log") +
                                     " unchanged since the last run, taken from the database");
  }
  Parse(logs, true, report_);
  for (OpenLog& log : logs) {
    Tell(log, report_);
    MakeRoom(log);
  }
  // A log may have moved from one name of the settings to another: only now is it known which
  // games have lost theirs.
  for (const OpenLog& log : logs) {
    if (!log.grown) DropMoved(log.parsed.games);
  }
  for (const OpenLog& log : logs) Keep(log);
  Collected collected;
  collected.games = database_.ReadAll(paths_, keepEvents);
  collected.vocabulary = database_.Words();
  collected.usable = anyLog || !collected.games.empty();
  database_.Commit();
  return collected;
}

/// Makes room for the games of a log: takes out what they replace.
void Store::MakeRoom(OpenLog& log) {
  Renumber(log.parsed.games, log.parsed.vocabulary, database_.Words());
  if (log.grown) {
    const std::vector<StoredGame> known = database_.GamesOf(log.stored.id);
    if (log.stored.openAtEnd && !known.empty()) database_.DeleteGame(known.back().id);
  } else if (log.stored.id != 0) {
    ReplaceOrRetire(log);
  }
}

void Store::Keep(const OpenLog& log) {
  const std::int64_t id = log.stored.id != 0 ? log.stored.id : database_.AddLog(log.file.path);
  database_.AddGames(id, log.parsed.games);
  const std::string_view bytes = log.text.Bytes();
  database_.UpdateLog({id, static_cast<std::int64_t>(bytes.size()), log.text.LastChange(),
                       Digest(bytes), static_cast<std::int64_t>(log.begin + log.parsed.resumeAt),
                       static_cast<std::int64_t>(log.linesBefore + log.parsed.resumeLine),
                       log.parsed.openAtEnd});
}

/// The log at a known path is another than it was: either changed, then its games are replaced, or
/// a new one after the old one was moved away, then the old games stay.
void Store::ReplaceOrRetire(OpenLog& log) {
  if (IsSameLog(log.stored.id, log.parsed.games)) {
    report_.Normal(Log::kParser, "has changed since the last run; its games are read anew",
                   log.file.name);
    database_.DeleteGamesOf(log.stored.id);
  } else {
    report_.Normal(Log::kParser, "is a new log; the games of the old one stay", log.file.name);
    database_.RetireLog(log.stored.id);
    log.stored.id = 0;
  }
}

bool Store::IsSameLog(std::int64_t log, const std::vector<Game>& games) {
  std::unordered_set<std::uint64_t> digests;
  for (const Game& game : games) {
    if (game.kills > 0) digests.insert(GameDigest(game));
  }
  const std::vector<StoredGame> stored = database_.GamesOf(log);
  if (std::any_of(stored.begin(), stored.end(), [&](const StoredGame& game) {
        return game.digest != 0 && digests.contains(game.digest);
      })) {
    return true;
  }
  // Not one game is the same. Few enough games are compared for what they have in common.
  constexpr std::size_t kMostCompared = 16;
  for (std::size_t i = 0; i < std::min(stored.size(), kMostCompared); ++i) {
    const Game old = database_.ReadGame(stored[i].id);
    const auto end =
        games.begin() + static_cast<std::ptrdiff_t>(std::min(games.size(), kMostCompared));
    if (std::any_of(games.begin(), end, [&](const Game& game) { return IsSimilar(old, game); })) {
      return true;
    }
  }
  return false;
}

/// Takes games out of logs that the settings do not name, when a log that they name now has them:
/// the log was moved or renamed.
void Store::DropMoved(const std::vector<Game>& games) {
  std::unordered_set<std::uint64_t> digests;
  for (const Game& game : games) {
    if (game.kills > 0) digests.insert(GameDigest(game));
  }
  for (const StoredGame& stored : database_.GamesBut(paths_)) {
    if (digests.contains(stored.digest)) database_.DeleteGame(stored.id);
  }
  for (const StoredGame& stored : database_.OpenGamesBut(paths_)) {
    const Game open = database_.ReadGame(stored.id);
    if (std::any_of(games.begin(), games.end(),
                    [&](const Game& game) { return IsContinued(open, game); })) {
      database_.DeleteGame(stored.id);
    }
  }
}

}  // namespace

Collected CollectGames(const Sources& named, bool keepEvents, Report& report) {
  Sources sources = named;
  sources.logs = FindLogs(named.logs, report);
  if (sources.useDatabase) {
    try {
      std::vector<OpenLog> logs = OpenLogs(sources, report);
      return Store(sources, report).Collect(logs, keepEvents);
    } catch (const DatabaseError& error) {
      report.Severe(Log::kMain, std::string("the database cannot be used, the logs are read "
                                            "without it: ") +
                                    error.what());
    }
  }
  return CollectFromLogs(sources, keepEvents, report);
}

}  // namespace morvane
