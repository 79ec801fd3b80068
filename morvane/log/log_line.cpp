#include "morvane/log/log_line.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace morvane {
namespace {

constexpr std::size_t kSeparatorLength = 60;
// A server's line holds at most 1,016 bytes of text after seven of stamp; builds differ a little.
constexpr std::size_t kClippedFrom = 1000;
constexpr std::size_t kClippedTo = 1060;
// Seven digits of minutes are 19 years without a restart.
constexpr std::size_t kMostMinuteDigits = 7;
constexpr std::size_t kMostPadding = 8;
constexpr std::size_t kLongestBeginning = 64;

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

/// The stamp that nearly every line has, "MMM:SS ", read in one go.
bool CutUsualStamp(std::string_view line, LogLine& result) {
  constexpr std::size_t kLength = 7;
  if (line.size() < kLength || line[3] != ':' || line[6] != ' ') return false;
  const auto digit = [&](std::size_t at) {
    return std::int64_t{line[at] == ' ' ? 0 : line[at] - '0'};
  };
  const bool usual = IsDigit(line[2]) && IsDigit(line[4]) && IsDigit(line[5]) &&
                     (IsDigit(line[1]) || (line[1] == ' ' && line[0] == ' ')) &&
                     (IsDigit(line[0]) || line[0] == ' ');
  if (!usual) return false;
  const std::int64_t minutes = digit(0) * 100 + digit(1) * 10 + digit(2);
  result.tenths = (minutes * 60 + digit(4) * 10 + digit(5)) * 10;
  result.text = line.substr(kLength);
  return true;
}

/// Where in a clipped line the next line begins; the line's length when nothing is glued to it.
std::size_t GluedLine(std::string_view line) {
  for (std::size_t at = kClippedFrom; at < std::min(line.size(), kClippedTo); ++at) {
    const LogLine glued = CutLine(line.substr(at, kLongestBeginning));
    if (glued.stamped && IsKnownText(glued.text)) return at;
  }
  return line.size();
}

}  // namespace

LogLine CutLine(std::string_view line) {
  if (!line.empty() && line[0] == '\0') {
    line.remove_prefix(std::min(line.find_first_not_of('\0'), line.size()));
  }
  LogLine result;
  result.stamped = CutUsualStamp(line, result) || CutStamp(line, result);
  if (!result.stamped) result = {line};
  return result;
}

bool EndsInSeparator(std::string_view text) {
  return text.size() >= kSeparatorLength && text.back() == '-' &&
         text.substr(text.size() - kSeparatorLength).find_first_not_of('-') == text.npos;
}

bool IsKnownText(std::string_view text) {
  static constexpr auto kBeginnings = std::to_array<std::string_view>(
      {"Item: ", "Kill: ", "Client",
       "InitGame:", "ShutdownGame:", "Exit:", "Warmup:", "InitRound:", "ServerTime:", "score: ",
       "red:", "Award: ", "CTF: ", "say: ", "sayteam: ", "tell: ", "vtell: ", "-----"});
  return std::any_of(kBeginnings.begin(), kBeginnings.end(),
                     [&](std::string_view beginning) { return text.starts_with(beginning); });
}

bool LineReader::Next(std::string_view& line) {
  if (next_ >= log_.size()) return false;
  if (hadEnd_) ++number_;
  start_ = next_;
  const void* found = std::memchr(log_.data() + start_, '\n', log_.size() - start_);
  hadEnd_ = found != nullptr;
  const std::size_t end =
      hadEnd_ ? static_cast<std::size_t>(static_cast<const char*>(found) - log_.data())
              : log_.size();
  line = log_.substr(start_, end - start_);
  next_ = end + (hadEnd_ ? 1 : 0);
  if (line.size() > kClippedFrom) {
    if (const std::size_t glued = GluedLine(line); glued < line.size()) {
      line = line.substr(0, glued);
      next_ = start_ + glued;
      hadEnd_ = false;
    }
  }
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  end_ = start_ + line.size();
  return true;
}

}  // namespace morvane
