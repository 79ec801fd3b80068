#pragma once

#include <cstddef>
#include <cstdint>
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

/// Whether the text of a line is a separator of dashes, or ends in one: what a crash cut off then
/// stands before it.
bool EndsInSeparator(std::string_view text);

/// Whether a text begins as a line of the game does.
bool IsKnownText(std::string_view text);

/// Reads the lines of a log one after the other. Line ends are LF or CR LF. A line that the server
/// clipped, and that therefore has the next one's stamp glued to it, gives two lines.
class LineReader {
 public:
  explicit LineReader(std::string_view log) : log_(log) {}

  /// The next line without its end; false at the end of the log.
  bool Next(std::string_view& line);

  /// Where the line last read begins, in bytes.
  std::size_t LineStart() const { return start_; }
  /// Where it ends, without its line end.
  std::size_t LineEnd() const { return end_; }
  /// The number of the line last read, from 1. Both lines of a clipped one have the same.
  std::size_t LineNumber() const { return number_; }
  /// Whether the line last read had a line end.
  bool HadLineEnd() const { return hadEnd_; }

 private:
  std::string_view log_;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
  std::size_t next_ = 0;
  std::size_t number_ = 0;
  bool hadEnd_ = true;
};

/// Whether a stamp lies before another, by more than the odd tenth that a mod is off.
inline bool IsLower(std::int64_t tenths, std::int64_t before) { return tenths + 10 < before; }

}  // namespace morvane
