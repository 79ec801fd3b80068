#include "morvane/store/continuation.h"

#include <optional>
#include <string>

#include "morvane/log/line_reader.h"
#include "morvane/log/log_line.h"

namespace morvane {
namespace {

/// The stamp of the first whole line of a text that has one, dashes left out. What is torn may
/// become the line that opens a game.
std::optional<std::int64_t> FirstStamp(std::string_view text) {
  LineReader reader(text);
  for (std::string_view line; reader.Next(line) && reader.HadLineEnd();) {
    const LogLine cut = CutLine(line);
    if (cut.stamped && !cut.text.empty() && !cut.text.starts_with('-')) return cut.tenths;
  }
  return std::nullopt;
}

std::optional<std::int64_t> LastStamp(std::string_view text) {
  std::optional<std::int64_t> last;
  LineReader reader(text);
  for (std::string_view line; reader.Next(line);) {
    const LogLine cut = CutLine(line);
    if (cut.stamped && reader.HadLineEnd()) last = cut.tenths;
  }
  return last;
}

bool HasGameLine(std::string_view text) {
  LineReader reader(text);
  for (std::string_view line; reader.Next(line) && reader.HadLineEnd();) {
    const std::string_view event = CutLine(line).text;
    if (IsKnownText(event) && !event.starts_with('-')) return true;
  }
  return false;
}

std::string_view FirstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

/// What follows the last line end.
std::string_view BrokenLine(std::string_view rest) { return rest.substr(rest.rfind('\n') + 1); }

}  // namespace

bool IsLineBroken(std::string_view rest, std::string_view log) {
  const std::string_view broken = BrokenLine(rest);
  if (broken.empty() || log.find('\n') == log.npos) return false;
  const LogLine own = CutLine(FirstLine(log));
  const std::string line = std::string(broken) + std::string(FirstLine(log));
  const LogLine joined = CutLine(line);
  if (EndsInSeparator(joined.text)) {
    return !EndsInSeparator(own.text) &&
           !EndsInSeparator(joined.text.substr(0, joined.text.size() - 1));
  }
  if (!IsKnownText(joined.text) || joined.text.starts_with('-') || own.text.starts_with('-')) {
    return false;
  }
  if (joined.stamped && !own.stamped && IsKnownText(own.text)) {
    // A line that is whole by itself begins a log without stamps, if the next one has none either.
    const std::string_view second = FirstLine(log.substr(log.find('\n') + 1));
    if (!second.empty() && !CutLine(second).stamped) return false;
  }
  // No more than a piece of a stamp: what it makes of the line decides.
  if (broken.find_first_not_of(" 0123456789:.") == broken.npos) return true;
  return joined.stamped ? !own.stamped : !IsKnownText(own.text);
}

bool GoesOn(std::string_view rest, std::string_view log, std::size_t firstGame) {
  if (rest.empty() || log.empty()) return false;
  if (IsLineBroken(rest, log)) return true;
  const std::string_view head = log.substr(0, firstGame);
  if (!CutLine(FirstLine(rest)).text.starts_with("InitGame:")) return false;
  const std::optional<std::int64_t> last = LastStamp(rest);
  if (!last) return HasGameLine(head);
  const std::optional<std::int64_t> first = FirstStamp(head);
  return first && *first >= *last;
}

}  // namespace morvane
