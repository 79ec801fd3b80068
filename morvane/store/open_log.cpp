#include "morvane/store/open_log.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "morvane/log/game_times.h"
#include "morvane/log/stretches.h"
#include "morvane/statistics/figures.h"
#include "morvane/store/continuation.h"
#include "platform/threads.h"

namespace morvane {
namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;
// What is kept of an unfinished game; a real one has not a tenth of it.
constexpr std::size_t kMostUnfinished = std::size_t{4} << 20;

/// `done(end)`: the text before this is not needed any more.
template <class Done>
std::vector<GameMark> MarkGames(const ParsedLog& parsed, std::string_view text, const Done& done) {
  std::vector<GameMark> marks;
  for (std::size_t i = 0; i < parsed.games.size(); ++i) {
    const GameText& at = parsed.texts[i];
    const bool open = parsed.openAtEnd && i + 1 == parsed.games.size();
    marks.push_back(MarkGame(text.substr(at.begin, at.end - at.begin), parsed.games[i], open,
                             parsed.vocabulary));
    done(at.end);
  }
  return marks;
}

/// Of the games that were read of a log, with no more of its text in memory than has to be.
std::vector<GameMark> MarkGames(const OpenLog& log) {
  constexpr std::size_t kTogether = std::size_t{4} << 20;
  const std::string_view text = log.Bytes().substr(log.begin);
  std::size_t released = 0;
  const auto release = [&](std::size_t end) {
    log.text.Release(log.begin + released, log.begin + end);
    released = end;
  };
  std::vector<GameMark> marks = MarkGames(log.parsed, text, [&](std::size_t end) {
    if (end >= released + kTogether) release(end);
  });
  release(text.size());
  return marks;
}

/// Unpacks the packed ones among logs that are not known, on all cores.
void UnpackAll(std::vector<OpenLog>& logs, const std::function<bool(const OpenLog&)>& isKnown) {
  platform::ForEachOnThreads(logs.size(), 0, [&](std::size_t i) {
    if (logs[i].problem.empty() && !isKnown(logs[i])) logs[i].text.Unpack(logs[i].problem);
  });
}

template <class Entry>
void Prepend(std::vector<Entry>& list, std::vector<Entry> front, std::size_t replaced) {
  std::move(list.begin() + static_cast<std::ptrdiff_t>(std::min(replaced, list.size())), list.end(),
            std::back_inserter(front));
  list = std::move(front);
}

}  // namespace

std::size_t OpenLog::FirstGame() const {
  return parsed.texts.empty() ? Bytes().size() : begin + parsed.texts.front().begin;
}

std::string_view OpenLog::Bytes() const {
  if (!text.IsReady()) text.Unpack(problem);
  return text.Bytes();
}

std::size_t OpenLog::Size() const {
  return text.IsReady() ? text.Bytes().size() : static_cast<std::size_t>(stored.size);
}

std::vector<OpenLog> OpenLogs(const std::vector<LogFile>& files,
                              const std::function<bool(const OpenLog&)>& isKnown, Report& report) {
  std::vector<OpenLog> logs;
  std::unordered_set<std::string> named;
  for (const LogFile& file : files) {
    if (file.type != kServerLog) {
      report.Severe(Log::kParser,
                    "log type " + std::to_string(file.type) + " is not known; log skipped",
                    file.name);
    } else if (!named.insert(file.path).second) {
      report.Normal(Log::kParser, "named twice; read once", file.name);
    } else {
      OpenLog& log = logs.emplace_back();
      log.file = file;
      std::error_code ignored;
      log.isLink = std::filesystem::is_symlink(file.path, ignored);
      log.text = LogText(file.path, log.problem);
    }
  }
  UnpackAll(logs, isKnown);
  std::erase_if(logs, [&](const OpenLog& log) {
    if (log.problem.empty()) return false;
    report.Severe(Log::kParser, "cannot be read: " + log.problem, log.file.name);
    return true;
  });
  return logs;
}

void ReadLogs(const std::vector<OpenLog*>& logs, bool wantMarks, Report& report) {
  std::vector<std::string_view> texts;
  std::size_t all = 0;
  for (const OpenLog* log : logs) {
    texts.push_back(log->Bytes().substr(log->begin));
    all += texts.back().size();
  }
  std::atomic<std::size_t> done = 0;
  std::vector<ParsedLog> parsed = ParseLogs(texts, true, [&](const Stretch& stretch) {
    const OpenLog& log = *logs[stretch.log];
    log.text.Release(log.begin + stretch.begin, log.begin + stretch.end);
    done += stretch.end - stretch.begin;
    report.Progress("Reading logs:", done, all);
  });
  for (std::size_t i = 0; i < logs.size(); ++i) {
    logs[i]->parsed = std::move(parsed[i]);
    SetStarts(logs[i]->parsed, logs[i]->text.LastChange() / kNanoseconds);
    if (wantMarks) logs[i]->marks = MarkGames(*logs[i]);
  }
}

FrontGames ReadFront(const OpenLog& log, std::string carried, bool wantMarks) {
  FrontGames front;
  const std::vector<GameText>& texts = log.parsed.texts;
  // A game whose first line was torn looks as if it began with the log.
  front.replaced =
      !texts.empty() && texts[0].begin == 0 && IsLineBroken(carried, log.Bytes()) ? 1 : 0;
  const std::size_t end =
      texts.size() > front.replaced ? texts[front.replaced].begin : log.Bytes().size();
  const std::string text = carried + std::string(log.Bytes().substr(0, end));
  front.carried = std::move(carried);
  front.parsed = ParseLog(text, true);
  const bool isAll = end == log.Bytes().size();
  const std::int64_t after = isAll ? 0 : log.parsed.clock - log.parsed.times[front.replaced].clock;
  SetStarts(front.parsed, log.text.LastChange() / kNanoseconds - after / 10);
  if (!isAll && log.parsed.runs > 0) {
    for (Game& game : front.parsed.games) {
      if (game.dated == Dated::kReckoned) game.dated = Dated::kNotAfter;
    }
  }
  if (!isAll) front.parsed.openAtEnd = false;
  if (wantMarks) front.marks = MarkGames(front.parsed, text, [](std::size_t) {});
  return front;
}

void PutInFront(OpenLog& log, FrontGames front) {
  ParsedLog& parsed = log.parsed;
  parsed.hasGame |= front.parsed.hasGame;
  if (parsed.games.size() == front.replaced) {  // nothing of the log's own follows
    const std::size_t carried = front.carried.size();
    const bool inCarried = front.parsed.resumeAt < carried;
    log.unfinished.carried = inCarried ? front.carried.substr(front.parsed.resumeAt) : "";
    parsed.resumeAt = inCarried ? 0 : front.parsed.resumeAt - carried;
    parsed.resumeLine =
        static_cast<std::size_t>(std::ranges::count(log.Bytes().substr(0, parsed.resumeAt), '\n'));
    parsed.openAtEnd = front.parsed.openAtEnd;
  }
  Renumber(front.parsed.games, front.parsed.vocabulary, parsed.vocabulary);
  Prepend(parsed.games, std::move(front.parsed.games), front.replaced);
  Prepend(log.marks, std::move(front.marks), front.replaced);
  // Those of the front lie in another text.
  Prepend(parsed.texts,
          std::vector<GameText>(parsed.games.size() + front.replaced - parsed.texts.size()),
          front.replaced);
}

void Settle(OpenLog& log) {
  const std::string_view bytes = log.Bytes();
  const std::size_t resumeAt = log.begin + log.parsed.resumeAt;
  log.unfinished.rest = log.unfinished.carried;
  if (bytes.size() - resumeAt + log.unfinished.carried.size() <= kMostUnfinished) {
    log.unfinished.rest += bytes.substr(resumeAt);
  } else {
    log.unfinished.rest.clear();
  }
  log.stored.size = static_cast<std::int64_t>(bytes.size());
  log.stored.digest = log.digest;
  log.stored.beginning = StoredLog::Beginning(bytes, log.stored.size);
  log.stored.resumeAt = static_cast<std::int64_t>(resumeAt);
  log.stored.resumeLine = static_cast<std::int64_t>(log.linesBefore + log.parsed.resumeLine);
  log.stored.openAtEnd = log.parsed.openAtEnd;
  log.stored.marked = true;
}

std::string Count(std::size_t count, const std::string& one) {
  return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

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
  if (parsed.emptyGames > 0) {
    report.Normal(Log::kParser,
                  Count(parsed.emptyGames, "game") + " in which nobody played left out",
                  log.file.name);
  }
  if (log.Size() == 0) {  // as right after a rotation by copy and truncate
    report.Normal(Log::kParser, "is empty", log.file.name);
  } else if (!parsed.hasGame && log.begin == 0) {
    report.Severe(Log::kParser, "holds no game: no line \"InitGame:\" in it", log.file.name);
  }
}

}  // namespace morvane
