#include "text/characters.h"

#include <algorithm>
#include <array>

namespace text {
namespace {

// The code points of the bytes 0x80 to 0x9F.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t kReplacement = 0xFFFD;

/// Written so that the compiler looks at many bytes at a time.
bool IsAscii(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text) all |= static_cast<unsigned char>(c);
  return all < 0x80;
}

bool IsUtf8(std::string_view text) {
  if (IsAscii(text)) return true;
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

void AppendUtf8(std::string& target, char32_t code) {
  const auto tail = [&](unsigned shift) {
    target += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
  };
  if (code < 0x80) {
    target += static_cast<char>(code);
  } else if (code < 0x800) {
    target += static_cast<char>(0xC0U | (code >> 6U));
    tail(0);
  } else if (code < 0x10000) {
    target += static_cast<char>(0xE0U | (code >> 12U));
    tail(6);
    tail(0);
  } else {
    target += static_cast<char>(0xF0U | (code >> 18U));
    tail(12);
    tail(6);
    tail(0);
  }
}

std::size_t Utf8Length(std::string_view text) {
  const auto byte = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
  const unsigned first = byte(0);
  if (text.empty()) return 0;
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return follows(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool overlong = first == 0xE0 && byte(1) < 0xA0;
    const bool surrogate = first == 0xED && byte(1) >= 0xA0;
    return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool overlong = first == 0xF0 && byte(1) < 0x90;
    const bool tooLarge = first == 0xF4 && byte(1) >= 0x90;
    return follows(1) && follows(2) && follows(3) && !overlong && !tooLarge ? 4 : 0;
  }
  return 0;
}

std::string DecodeText(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string decoded;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const bool mapped = byte >= 0x80 && byte <= 0x9F;
    AppendUtf8(decoded, mapped ? kWindows1252[byte - 0x80U] : byte);
  }
  return decoded;
}

std::string DecodeUtf16(std::string_view bytes) {
  const auto unit = [&](std::size_t at) -> char32_t {
    if (at + 1 >= bytes.size()) return 0;
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<char32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8U;
  };
  const auto isIn = [](char32_t code, char32_t first) {
    return code >= first && code < first + 0x400;
  };
  std::string decoded;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t code = unit(at);
    if (isIn(code, 0xD800) && isIn(unit(at + 2), 0xDC00)) {
      code = 0x10000 + ((code - 0xD800) << 10U) + (unit(at + 2) - 0xDC00);
      at += 2;
    } else if (isIn(code, 0xD800) || isIn(code, 0xDC00)) {
      code = kReplacement;
    }
    AppendUtf8(decoded, code);
  }
  return decoded;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  std::size_t end = 0;
  for (; count > 0 && end < text.size(); --count) {
    end += std::max<std::size_t>(1, Utf8Length(text.substr(end)));
  }
  return text.substr(0, end);
}

}  // namespace text
