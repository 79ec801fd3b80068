#include "morvane/log/line_reader.h"

#include <algorithm>

#include "morvane/log/log_line.h"

namespace morvane {
namespace {

constexpr std::size_t kClippedTo = 1060;
constexpr std::size_t kLongestBeginning = 64;

/// Where in a clipped line, from `from` on, the next line begins; the line's length when nothing is
/// glued to it.
std::size_t GluedLine(std::string_view line, std::size_t from) {
  for (std::size_t at = from; at < std::min(line.size(), kClippedTo); ++at) {
    const LogLine glued = CutLine(line.substr(at, kLongestBeginning));
    if (glued.stamped && IsKnownText(glued.text)) return at;
  }
  return line.size();
}

}  // namespace

void LineReader::CutUnusual(std::string_view& line) {
  hadEnd_ = feed_ < log_.size();
  const std::size_t glued = GluedLine(line, kClippedFrom);
  if (glued == line.size()) return;
  line = line.substr(0, glued);
  next_ = start_ + glued;
  hadEnd_ = false;
}

}  // namespace morvane
