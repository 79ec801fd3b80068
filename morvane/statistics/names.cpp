#include "morvane/statistics/names.h"

#include <algorithm>
#include <cstdint>

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

/// Appends what a page may show of a text.
void AppendVisible(std::string& target, std::string_view text) {
  Reader reader(text);
  while (!reader.AtEnd()) {
    const std::string_view character = reader.Next();
    const std::uint32_t code = CodePoint(character);
    if (code == '\t' || code == '\n' || code == '\r') {
      target += ' ';
    } else if (!IsInvisible(code)) {
      target += character;
    }
  }
}

/// The colour of the code that follows a "^", which is any character but "^".
int ColourOf(std::string_view character) {
  const std::uint32_t code = CodePoint(character);
  return static_cast<int>(code >= '0' && code <= '9' ? code - '0' : code % 8);
}

bool StartsCode(const Reader& reader) { return !reader.AtEnd() && reader.Rest().front() != '^'; }

/// The runs as they are shown: visible characters only, no blanks at either end of the whole.
std::vector<NameRun> VisibleRuns(std::string_view name) {
  std::vector<NameRun> runs;
  for (const NameRun& run : SplitColours(name)) {
    NameRun visible{run.colour, {}};
    AppendVisible(visible.text, run.text);
    if (runs.empty()) visible.text.erase(0, visible.text.find_first_not_of(' '));
    if (!visible.text.empty()) runs.push_back(std::move(visible));
  }
  while (!runs.empty()) {
    std::string& last = runs.back().text;
    last.erase(last.find_last_not_of(' ') + 1);
    if (!last.empty()) break;
    runs.pop_back();
  }
  return runs;
}

const NameGround& GroundOf(const std::vector<NameRun>& runs, const NameStyles& styles) {
  std::bitset<10> used;
  for (const NameRun& run : runs) {
    if (run.colour >= 0) used.set(static_cast<std::size_t>(run.colour));
  }
  const bool suitsPage = (used & ~styles.page.own).none();
  if (suitsPage || styles.chips.empty()) return styles.page;
  return *std::max_element(styles.chips.begin(), styles.chips.end(),
                           [&](const NameGround& one, const NameGround& other) {
                             return (used & one.own).count() < (used & other.own).count();
                           });
}

std::string Join(const std::vector<NameRun>& runs) {
  std::string text;
  for (const NameRun& run : runs) text += run.text;
  return text;
}

/// FNV-1a, 64 bits: the same number for the same bytes on every machine.
std::uint64_t Digest(std::string_view bytes) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  return hash;
}

std::string HexText(std::uint64_t number) {
  std::string text(16, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4) {
    *digit = "0123456789abcdef"[number & 0xF];
  }
  return text;
}

bool IsFileCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

}  // namespace

std::vector<NameRun> SplitColours(std::string_view name) {
  const std::string decoded = text::DecodeText(name);
  std::vector<NameRun> runs;
  int colour = -1;
  Reader reader(decoded);
  while (!reader.AtEnd()) {
    const std::string_view character = reader.Next();
    if (character == "^" && StartsCode(reader)) {
      colour = ColourOf(reader.Next());
      continue;
    }
    if (runs.empty() || runs.back().colour != colour) runs.push_back({colour, {}});
    runs.back().text += character;
  }
  return runs;
}

std::string NameText(std::string_view name) {
  std::string text = Join(VisibleRuns(name));
  return IsBlankText(text) ? std::string(kNoName) : text;
}

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

std::string NameHtml(std::string_view name, const NameStyles& styles) {
  const std::vector<NameRun> runs = VisibleRuns(name);
  if (IsBlankText(Join(runs))) return "<bdi>" + EscapeHtml(kNoName) + "</bdi>";
  const NameGround& ground = GroundOf(runs, styles);
  std::string html = ground.style.empty() ? "<bdi>" : "<bdi style=\"" + ground.style + "\">";
  for (const NameRun& run : runs) {
    if (run.colour < 0) {
      html += EscapeHtml(run.text);
      continue;
    }
    const std::string& style = ground.colours[static_cast<std::size_t>(run.colour)];
    html += "<span style=\"" + EscapeHtml(style) + "\">" + EscapeHtml(run.text) + "</span>";
  }
  return html + "</bdi>";
}

std::string EscapeHtml(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string PageText(std::string_view bytes) {
  std::string text;
  AppendVisible(text, text::DecodeText(bytes));
  return text;
}

std::string FileNamePart(std::string_view name) {
  constexpr std::size_t kMostPlain = 40;
  const std::string folded = LowerCase(name);
  std::string part = folded.substr(0, kMostPlain);
  std::replace_if(
      part.begin(), part.end(), [](char c) { return !IsFileCharacter(c); }, '_');
  // A part without "-" is the name itself; every other one carries the number after its "-".
  return part == folded && !part.empty() ? part : part + "-" + HexText(Digest(folded));
}

}  // namespace morvane
