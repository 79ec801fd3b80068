// Texts as colors, and the names of players, which hold colors: both come from anywhere.

#include <string>

#include "config/colors.h"
#include "config/rgb.h"
#include "morvane/site/page_text.h"
#include "morvane/statistics/names.h"
#include "tests/fuzz/target.h"
#include "text/characters.h"
#include "text/text.h"

namespace {

using config::Rgb;
using fuzz::Require;

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = text::Utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

/// Whether a text looks like "#" and six hexadecimal digits.
bool IsHtmlColor(std::string_view text) {
  return text.size() == 7 && text[0] == '#' &&
         text.substr(1).find_first_not_of("0123456789ABCDEF") == text.npos;
}

void TryColor(std::string_view text) {
  const int value = config::ColorValue(config::NamedColor(text));
  Require(value >= 0 && config::ColorValue(text) >= 0, "a color value is not negative");
  config::ColorValue(config::HtmlToColor(text));
  Require(IsHtmlColor(config::ColorToHtml(text)), "any text gives an HTML color");
  const int masked = value & 0xFFFFFF;
  const std::string html = config::ColorToHtml(std::to_string(masked));
  Require(config::ColorValue(config::HtmlToColor(html)) == masked, "a color reads back");
  Require(html == config::ColorText(config::RgbOf(masked)), "both ways write it the same");
  if (const auto color = config::ParseColor(text)) {
    Require(config::ParseColor(config::ColorText(*color)) == *color, "a parsed color reads back");
    const Rgb ground = config::RgbOf(masked);
    Require(config::Contrast(config::Readable(*color, ground), ground) >= config::kReadableContrast,
            "a color made readable can be read");
  }
}

void TryName(std::string_view name) {
  std::string runs;
  for (const morvane::NameRun& run : morvane::VisibleRuns(name)) {
    Require(!run.text.empty() && run.color >= -1 && run.color <= 9, "a piece has text and color");
    runs += run.text;
  }
  const std::string text = morvane::NameText(name);
  Require(text == runs && !text.empty(), "the text of a name is that of its pieces");
  Require(IsUtf8(text), "a name is UTF-8");
  for (const char c : text)
    Require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F, "no control characters");
  const std::string html = morvane::EscapeHtml(text);
  Require(html.find_first_of("<>\"'") == html.npos, "nothing in a name can be a tag");
  Require(morvane::PlayerKey(text::FoldCase(name)) == morvane::PlayerKey(name),
          "case is no difference");
  Require(IsUtf8(morvane::VisibleText(text::DecodeText(name))), "a visible text is UTF-8");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text = fuzz::Text(bytes, size);
  TryColor(text);
  TryName(text);
  return 0;
}
