#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace morvane {

/// A line of a server log.
struct LogLine {
  std::string_view text;    ///< what follows the stamp
  std::int64_t tenths = 0;  ///< the stamp, in tenths of a second; may be a little below 0
  bool stamped = false;
};

/// Cuts a line, given without its line end, into stamp and text. Stamps are "%3i:%02i " (from
/// minute 1000 on the text overwrites the stamp from its eighth byte on) and the
/// "seconds.tenth " of some mods, whose tenth may be one of "+,-./" for -5 to -1.
/// NULs in front of a line, which a crashed machine leaves, do not count.
LogLine CutLine(std::string_view line);

/// Does the same for the lines of a log, of which most have the minute of the line before.
class LineCutter {
 public:
  LogLine Cut(std::string_view line) {
    if (line.size() < kStamp || std::memcmp(line.data(), minute_, sizeof minute_) != 0) {
      return CutNewMinute(line);
    }
    const unsigned tens = static_cast<unsigned char>(line[4]) - unsigned{'0'};
    const unsigned ones = static_cast<unsigned char>(line[5]) - unsigned{'0'};
    if (tens > 9 || ones > 9 || line[6] != ' ') return CutLine(line);
    line.remove_prefix(kStamp);
    return {line, minuteTenths_ + std::int64_t{tens * 100 + ones * 10}, true};
  }

 private:
  static constexpr std::size_t kStamp = 7;  // "MMM:SS "

  LogLine CutNewMinute(std::string_view line);

  char minute_[4] = {};  // with its colon
  std::int64_t minuteTenths_ = 0;
};

/// Whether the text of a line ends in a separator, knowing that it ends in a dash.
bool EndsInDashes(std::string_view text);

/// Whether the text of a line is a separator of dashes, or ends in one: what a crash cut off then
/// stands before it.
inline bool EndsInSeparator(std::string_view text) {
  return !text.empty() && text.back() == '-' && EndsInDashes(text);
}

/// Whether a text begins as a line of the game does.
bool IsKnownText(std::string_view text);

/// Whether a stamp lies before another, by more than the odd tenth that a mod is off.
inline bool IsLower(std::int64_t tenths, std::int64_t before) { return tenths + 10 < before; }

}  // namespace morvane
