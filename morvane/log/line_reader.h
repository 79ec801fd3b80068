#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace morvane {

/// Where the first line feed of a text from `from` on stands; the text's size without one. It looks
/// at 64 bytes at once, in which nearly every line of a log ends: so short a search is twice as
/// fast as one by a function of the C library.
inline std::size_t FindLineFeed(std::string_view text, std::size_t from) {
#ifdef __SSE2__
  constexpr std::size_t kVector = sizeof(__m128i);
  constexpr std::size_t kBlock = 64;
  const __m128i feed = _mm_set1_epi8('\n');
  for (; text.size() - from >= kBlock; from += kBlock) {
    std::uint64_t feeds = 0;  // a bit for each byte
    for (std::size_t i = 0; i < kBlock; i += kVector) {
      const char* const at = text.data() + from + i;
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
      const int bits = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed));
      feeds |= std::uint64_t{static_cast<unsigned>(bits)} << i;
    }
    if (feeds != 0) return from + static_cast<std::size_t>(std::countr_zero(feeds));
  }
#endif
  return std::min(text.find('\n', from), text.size());
}

/// Reads the lines of a log one after the other. Line ends are LF or CR LF. A line that the server
/// clipped, and that therefore has the next one's stamp glued to it, gives two lines.
class LineReader {
 public:
  explicit LineReader(std::string_view log) : log_(log) {}

  /// The next line without its end; false at the end of the log.
  bool Next(std::string_view& line) {
    if (next_ >= log_.size()) return false;
    if (hadEnd_) {
      ++number_;
      feed_ = FindLineFeed(log_, next_);
    }
    start_ = next_;
    next_ = feed_ + 1;
    hadEnd_ = true;
    line = std::string_view(log_.data() + start_, feed_ - start_);
    if (line.size() > kClippedFrom || feed_ == log_.size()) CutUnusual(line);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    end_ = start_ + line.size();
    return true;
  }

  /// Where the line last read begins, in bytes.
  std::size_t LineStart() const { return start_; }
  /// Where it ends, without its line end.
  std::size_t LineEnd() const { return end_; }
  /// The log up to there.
  std::string_view UpToLineEnd() const { return {log_.data(), end_}; }
  /// The number of the line last read, from 1. Both lines of a clipped one have the same.
  std::size_t LineNumber() const { return number_; }
  /// Whether the line last read had a line end.
  bool HadLineEnd() const { return hadEnd_; }

 private:
  // A server's line holds at most 1,016 bytes of text after seven of stamp; builds differ a little.
  static constexpr std::size_t kClippedFrom = 1000;

  /// Of a line without a line end, or one that may be clipped.
  void CutUnusual(std::string_view& line);

  std::string_view log_;
  std::size_t feed_ = 0;  // that ends the line last read, or the one that is glued to it
  std::size_t start_ = 0;
  std::size_t end_ = 0;
  std::size_t next_ = 0;
  std::size_t number_ = 0;
  bool hadEnd_ = true;
};

}  // namespace morvane
