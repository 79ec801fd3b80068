#include "morvane/log/stretches.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "morvane/log/log_line.h"
#include "morvane/statistics/figures.h"
#include "platform/threads.h"

namespace morvane {
namespace {

constexpr std::size_t kStretchBytes = std::size_t{2} << 20;

/// Where the next game begins from `from` on; the log's size when none does.
std::size_t FindGame(std::string_view log, std::size_t from) {
  constexpr std::string_view kInit = "InitGame:";
  constexpr std::size_t kLongestStamp = 32;
  for (std::size_t at = log.find(kInit, from); at != log.npos; at = log.find(kInit, at + 1)) {
    const std::size_t searched = std::max(from, at - std::min(at, kLongestStamp));
    const std::size_t end = log.substr(searched, at - searched).rfind('\n');
    if (end == log.npos) continue;
    const std::size_t start = searched + end + 1;
    const LogLine line = CutLine(log.substr(start, at + kInit.size() - start));
    if (line.stamped && line.text == kInit) return start;
  }
  return log.size();
}

/// The names at the beginning of a log. It holds nearly all that the log has: stretches that know
/// them give the same numbers, and need not be renumbered when they are joined.
Vocabulary FirstNames(std::string_view log) {
  constexpr std::size_t kBeginning = std::size_t{256} << 10;
  return ParseLog(log.substr(0, log.rfind('\n', kBeginning) + 1), false).vocabulary;
}

}  // namespace

void MoveTo(ParsedLog& stretch, std::size_t begin) {
  stretch.resumeAt += begin;
  for (GameText& text : stretch.texts) {
    text.begin += begin;
    text.end += begin;
  }
}

void Append(ParsedLog& log, ParsedLog&& next) {
  if (log.openAtEnd && next.hasGame) {
    log.openAtEnd = false;
    DropEmptyGames(log, log.games.size() - 1);
  }
  if (log.stamped && next.stamped) {
    log.clock += std::max<std::int64_t>(0, next.firstStamp - log.lastStamp);
    if (next.beginsAnew || IsLower(next.firstStamp, log.lastStamp)) ++log.runs;
  }
  for (GameTime time : next.times) {
    time.clock += log.clock;
    time.run += log.runs;
    log.times.push_back(time);
  }
  log.runs += next.runs;
  if (!log.hasGame) log.strayLines += next.strayLines;
  log.hasGame = log.hasGame || next.hasGame;
  log.emptyGames += next.emptyGames;
  log.texts.insert(log.texts.end(), next.texts.begin(), next.texts.end());
  Renumber(next.games, next.vocabulary, log.vocabulary);
  log.games.insert(log.games.end(), std::make_move_iterator(next.games.begin()),
                   std::make_move_iterator(next.games.end()));
  for (Note& note : next.notes) {
    if (log.notes.size() < ParsedLog::kMostNotes) {
      log.notes.push_back({note.line + log.lines, std::move(note.text)});
    }
  }
  log.resumeAt = next.resumeAt;
  log.resumeLine = log.lines + next.resumeLine;
  log.openAtEnd = next.openAtEnd;
  log.lines += next.lines;
  log.skipped += next.skipped;
  log.damaged += next.damaged;
  log.clock += next.clock;
  if (next.stamped) {
    if (!log.stamped) {
      log.firstStamp = next.firstStamp;
      log.beginsAnew = next.beginsAnew;
    }
    log.lastStamp = next.lastStamp;
    log.stamped = true;
  }
}

std::vector<Stretch> CutLogs(const std::vector<std::string_view>& logs, std::size_t bytes) {
  std::vector<Stretch> stretches;
  for (std::size_t log = 0; log < logs.size(); ++log) {
    const std::size_t size = logs[log].size();
    std::size_t begin = 0;
    while (size - begin > bytes) {
      const std::size_t end = FindGame(logs[log], begin + bytes);
      stretches.push_back({log, begin, end});
      begin = end;
    }
    if (begin < size) stretches.push_back({log, begin, size});
  }
  return stretches;
}

std::vector<ParsedLog> ParseLogs(const std::vector<std::string_view>& logs, bool keepEvents,
                                 const std::function<void(const Stretch&)>& done,
                                 unsigned threads) {
  const std::vector<Stretch> stretches = CutLogs(logs, kStretchBytes);
  const Vocabulary known = stretches.size() > 1 ? FirstNames(logs[stretches[0].log]) : Vocabulary();
  std::vector<ParsedLog> parts(stretches.size());
  platform::ForEachOnThreads(stretches.size(), threads, [&](std::size_t i) {
    const Stretch& stretch = stretches[i];
    const std::string_view text =
        logs[stretch.log].substr(stretch.begin, stretch.end - stretch.begin);
    parts[i] = ParseLog(text, keepEvents, known);
    MoveTo(parts[i], stretch.begin);
    DropEmptyGames(parts[i]);
    done(stretch);
  });
  std::vector<ParsedLog> result(logs.size());
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    Append(result[stretches[i].log], std::move(parts[i]));
  }
  return result;
}

}  // namespace morvane
