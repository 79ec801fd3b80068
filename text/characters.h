#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/// Appends a code point (up to U+10FFFF) as UTF-8.
void AppendUtf8(std::string& target, char32_t code);

/// The length in bytes of the valid UTF-8 character at the start of the text, 0 when there is
/// none. Overlong forms, surrogates and numbers past U+10FFFF are not valid.
std::size_t Utf8Length(std::string_view text);

/// The byte-order mark that a file of UTF-8 may begin with. Anywhere else it is a character.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The bytes of a file without the mark at their start.
constexpr std::string_view WithoutMark(std::string_view bytes) {
  return bytes.substr(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
}

/// The text as UTF-8: unchanged when it is valid UTF-8, else every byte read as Windows-1252 (the
/// five bytes that Windows-1252 leaves open become the control characters of the same number).
std::string DecodeText(std::string_view bytes);

/// UTF-16, low byte first, without a mark, as UTF-8. Half a character becomes a replacement
/// character; an odd byte at the end is dropped.
std::string DecodeUtf16(std::string_view bytes);

/// The first `count` characters (code points) of a UTF-8 text.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

}  // namespace text
