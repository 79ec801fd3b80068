#include "morvane/statistics/names.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "text/characters.h"
#include "text/text.h"

namespace morvane {
namespace {

/// Reads the code points of valid UTF-8 one after the other.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  bool AtEnd() const { return position_ >= text_.size(); }
  /// The next character as its bytes; moves on.
  std::string_view Next() {
    const auto lead = static_cast<unsigned char>(text_[position_]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const std::string_view character = text_.substr(position_, length);
    position_ += length;
    return character;
  }
  std::string_view Rest() const { return text_.substr(position_); }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
};

std::uint32_t CodePoint(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character.front());
  if (character.size() == 1) return lead;
  std::uint32_t code = lead & (0x7FU >> character.size());
  for (const char c : character.substr(1)) {
    code = (code << 6) | (static_cast<unsigned char>(c) & 0x3FU);
  }
  return code;
}

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

bool IsIn(std::uint32_t code, const auto& ranges) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [&](const Range& range) { return code >= range.first && code <= range.last; });
}

// Controls, characters without a picture, marks that turn the direction of text, and the last two
// code points of each plane, which no document may hold.
constexpr Range kInvisible[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x115F, 0x1160},
    {0x180E, 0x180E}, {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F}, {0x3164, 0x3164},
    {0xFDD0, 0xFDEF}, {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB}, {0xE0000, 0xE0FFF}};
constexpr Range kBlanks[] = {{0x20, 0x20},     {0xA0, 0xA0},     {0x1680, 0x1680},
                             {0x2000, 0x200A}, {0x202F, 0x202F}, {0x205F, 0x205F},
                             {0x2800, 0x2800}, {0x3000, 0x3000}};

bool IsInvisible(std::uint32_t code) {
  return (code & 0xFFFEU) == 0xFFFEU || IsIn(code, kInvisible);
}

bool IsBlankText(std::string_view text) {
  Reader reader(text);
  while (!reader.AtEnd()) {
    if (!IsIn(CodePoint(reader.Next()), kBlanks)) return false;
  }
  return true;
}

/// The color of the code that follows a "^", which is any character but "^".
int ColorOf(std::string_view character) {
  const std::uint32_t code = CodePoint(character);
  return static_cast<int>(code >= '0' && code <= '9' ? code - '0' : code % 8);
}

bool StartsCode(const Reader& reader) { return !reader.AtEnd() && reader.Rest().front() != '^'; }

/// Takes a name apart at its color codes. No run is empty; characters stay as they are.
std::vector<NameRun> SplitColors(std::string_view name) {
  const std::string decoded = text::DecodeText(name);
  std::vector<NameRun> runs;
  int color = -1;
  Reader reader(decoded);
  while (!reader.AtEnd()) {
    const std::string_view character = reader.Next();
    if (character == "^" && StartsCode(reader)) {
      color = ColorOf(reader.Next());
      continue;
    }
    if (runs.empty() || runs.back().color != color) runs.push_back({color, {}});
    runs.back().text += character;
  }
  return runs;
}

std::string Join(const std::vector<NameRun>& runs) {
  std::string text;
  for (const NameRun& run : runs) text += run.text;
  return text;
}

}  // namespace

std::string VisibleText(std::string_view text) {
  std::string visible;
  Reader reader(text);
  while (!reader.AtEnd()) {
    const std::string_view character = reader.Next();
    const std::uint32_t code = CodePoint(character);
    if (code == '\t' || code == '\n' || code == '\r') {
      visible += ' ';
    } else if (!IsInvisible(code)) {
      visible += character;
    }
  }
  return visible;
}

std::vector<NameRun> VisibleRuns(std::string_view name) {
  std::vector<NameRun> runs;
  for (const NameRun& run : SplitColors(name)) {
    NameRun visible{run.color, VisibleText(run.text)};
    if (runs.empty()) visible.text.erase(0, visible.text.find_first_not_of(' '));
    if (!visible.text.empty()) runs.push_back(std::move(visible));
  }
  while (!runs.empty()) {
    std::string& last = runs.back().text;
    last.erase(last.find_last_not_of(' ') + 1);
    if (!last.empty()) break;
    runs.pop_back();
  }
  if (IsBlankText(Join(runs))) runs = {{-1, std::string(kNoName)}};
  return runs;
}

std::string NameText(std::string_view name) { return Join(VisibleRuns(name)); }

std::string PlayerKey(std::string_view name) { return LowerCase(NameText(name)); }

std::string LowerCase(std::string_view text) {
  std::string lower = text::FoldCase(text);
  // In UTF-8 the capitals U+00C0 to U+00DE are C3 80 to C3 9E, their small letters 20 higher;
  // U+00D7 is the multiplication sign.
  for (std::size_t i = 1; i < lower.size(); ++i) {
    const auto byte = static_cast<unsigned char>(lower[i]);
    const bool isCapital = lower[i - 1] == '\xC3' && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
    if (isCapital) lower[i] = static_cast<char>(byte + 0x20);
  }
  return lower;
}

}  // namespace morvane
