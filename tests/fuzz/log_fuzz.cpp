// The lines of a log: through the parser, as a whole and in stretches, into records and statistics.

#include <algorithm>
#include <string>

#include "morvane/log/game_times.h"
#include "morvane/log/log_parser.h"
#include "morvane/log/stretches.h"
#include "morvane/store/game_record.h"
#include "tests/fuzz/game_checks.h"
#include "tests/fuzz/target.h"

namespace {

using fuzz::Require;
using morvane::ParsedLog;

/// The log as its stretches of about half its size are read, joined.
ParsedLog ParseInStretches(std::string_view text) {
  ParsedLog log;
  for (const morvane::Stretch& stretch : morvane::CutLogs({text}, text.size() / 2)) {
    ParsedLog next =
        morvane::ParseLog(text.substr(stretch.begin, stretch.end - stretch.begin), true);
    morvane::MoveTo(next, stretch.begin);
    morvane::Append(log, std::move(next));
  }
  morvane::DropEmptyGames(log);
  return log;
}

void AreTheSame(const ParsedLog& whole, const ParsedLog& joined) {
  Require(whole.games.size() == joined.games.size() && whole.emptyGames == joined.emptyGames,
          "stretches hold the same games");
  for (std::size_t i = 0; i < whole.games.size(); ++i) {
    Require(PackGame(whole.games[i]) == PackGame(joined.games[i]), "a game is the same");
    Require(
        whole.texts[i].begin == joined.texts[i].begin && whole.texts[i].end == joined.texts[i].end,
        "a game stands in the same place");
    Require(whole.times[i].clock == joined.times[i].clock &&
                whole.times[i].date == joined.times[i].date &&
                whole.times[i].run == joined.times[i].run,
            "a game has the same time");
  }
  Require(whole.lines == joined.lines && whole.skipped == joined.skipped &&
              whole.damaged == joined.damaged && whole.strayLines == joined.strayLines &&
              whole.notes.size() == joined.notes.size(),
          "stretches hold the same lines");
  Require(whole.resumeAt == joined.resumeAt && whole.resumeLine == joined.resumeLine &&
              whole.openAtEnd == joined.openAtEnd,
          "both are read on from the same place");
}

/// What is read on from where a log's reading says, is what reading all of it at once gives.
void ReadsOn(const ParsedLog& whole, std::string_view text) {
  Require(whole.resumeAt <= text.size() && whole.resumeLine <= whole.lines, "the place is in it");
  const auto rest = text.substr(whole.resumeAt);
  const ParsedLog next = morvane::ParseLog(rest, true);
  Require(next.games.size() == (whole.openAtEnd ? 1U : 0U), "the open game alone is read again");
  if (whole.openAtEnd) {
    Require(!PackGame(next.games[0]).empty() && next.openAtEnd, "it is open then, too");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text = fuzz::Text(bytes, size);
  ParsedLog log = morvane::ParseLog(text, true);
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  Require(log.lines == lines + (text.empty() || text.back() == '\n' ? 0 : 1), "no line is lost");
  Require(log.skipped <= log.lines + lines && log.damaged <= log.skipped + log.lines, "counts");
  ReadsOn(log, text);
  morvane::DropEmptyGames(log);
  AreTheSame(log, ParseInStretches(text));
  morvane::SetStarts(log, 1'700'000'000);
  fuzz::CheckStatistics(fuzz::MakeStatistics(std::move(log.games), log.vocabulary));
  return 0;
}
