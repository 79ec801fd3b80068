#include "morvane/log/log_line.h"

#include <algorithm>
#include <array>

namespace morvane {
namespace {

constexpr std::size_t kSeparatorLength = 60;
// Seven digits of minutes are 19 years without a restart.
constexpr std::size_t kMostMinuteDigits = 7;
constexpr std::size_t kMostPadding = 8;

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// What "MMM:SS " leaves behind the minutes; `rest` begins after the ":".
bool CutSeconds(std::string_view rest, std::size_t minuteDigits, LogLine& line) {
  std::size_t digits = 0;
  std::int64_t seconds = 0;
  while (digits < 2 && digits < rest.size() && IsDigit(rest[digits])) {
    seconds = seconds * 10 + (rest[digits++] - '0');
  }
  const bool blank = digits < rest.size() && rest[digits] == ' ';
  if (minuteDigits <= 3 && (digits != 2 || (!blank && digits < rest.size()))) return false;
  if (digits == 1) seconds *= 10;  // the units are overwritten
  line.tenths += seconds * 10;
  line.text = rest.substr(digits + (blank ? 1 : 0));
  return true;
}

/// What "seconds.tenth " leaves behind the seconds; `rest` begins after the ".".
bool CutTenth(std::string_view rest, LogLine& line) {
  if (rest.empty() || (rest.size() > 1 && rest[1] != ' ')) return false;
  // The mod writes the character '0' + tenth, and the tenth may be negative.
  if (rest[0] < '+' || rest[0] > '9') return false;
  line.tenths += rest[0] - '0';
  line.text = rest.substr(std::min<std::size_t>(2, rest.size()));
  return true;
}

bool CutStamp(std::string_view line, LogLine& result) {
  std::size_t at = 0;
  while (at < std::min(line.size(), kMostPadding) && line[at] == ' ') ++at;
  const std::size_t first = at;
  std::int64_t number = 0;
  while (at < line.size() && IsDigit(line[at]) && at - first < kMostMinuteDigits) {
    number = number * 10 + (line[at++] - '0');
  }
  if (at == first || at >= line.size()) return false;
  const std::string_view rest = line.substr(at + 1);
  if (line[at] == ':') {
    result.tenths = number * 600;
    return CutSeconds(rest, at - first, result);
  }
  if (line[at] == '.') {
    result.tenths = number * 10;
    return CutTenth(rest, result);
  }
  return false;
}

}  // namespace

LogLine CutLine(std::string_view line) {
  if (!line.empty() && line[0] == '\0') {
    line.remove_prefix(std::min(line.find_first_not_of('\0'), line.size()));
  }
  LogLine result;
  result.stamped = CutStamp(line, result);
  if (!result.stamped) result = {line};
  return result;
}

LogLine LineCutter::CutNewMinute(std::string_view line) {
  const LogLine cut = CutLine(line);
  const bool isUsual = cut.stamped && line.size() >= kStamp && line[3] == ':' &&
                       cut.text.data() == line.data() + kStamp;
  if (isUsual) {
    std::memcpy(minute_, line.data(), sizeof minute_);
    const int seconds = (line[4] - '0') * 10 + (line[5] - '0');
    minuteTenths_ = cut.tenths - std::int64_t{seconds} * 10;
  }
  return cut;
}

bool EndsInDashes(std::string_view text) {
  return text.size() >= kSeparatorLength &&
         text.substr(text.size() - kSeparatorLength).find_first_not_of('-') == text.npos;
}

bool IsKnownText(std::string_view text) {
  static constexpr auto kBeginnings = std::to_array<std::string_view>(
      {"Item: ", "Kill: ", "Client",
       "InitGame:", "ShutdownGame:", "Exit:", "Warmup:", "InitRound:", "ServerTime:", "score: ",
       "red:", "Award: ", "CTF: ", "say: ", "sayteam: ", "tell: ", "vtell: ", "-----"});
  if (text.empty()) return false;
  return std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](std::string_view beginning) {
    return text.front() == beginning.front() && text.starts_with(beginning);
  });
}

}  // namespace morvane
