#include "config/colors.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "text/text.h"

namespace config {
namespace {

constexpr std::size_t kDigits = 6;

constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kNames = {{
    {"cyan", "16776960"},
    {"red", "255"},
    {"white", "16777215"},
    {"black", "0"},
    {"green", "65280"},
    {"magenta", "16711935"},
    {"blue", "16711680"},
    {"yellow", "65535"},
}};

/// Digits 5 and 6, then 3 and 4, then 1 and 2: turns RRGGBB into BBGGRR and back.
std::string SwapEnds(std::string_view digits) {
  return std::string(digits.substr(4, 2)).append(digits.substr(2, 2)).append(digits.substr(0, 2));
}

}  // namespace

std::string ColorToHtml(std::string_view decimal) {
  decimal = text::TrimBlanks(decimal);
  std::int64_t value = 0;
  std::from_chars(decimal.data(), decimal.data() + decimal.size(), value);
  std::array<char, 8> buffer = {};
  const auto end =
      std::to_chars(buffer.begin(), buffer.end(), static_cast<std::uint32_t>(value), 16).ptr;
  std::string digits(buffer.begin(), end);
  std::transform(digits.begin(), digits.end(), digits.begin(),
                 [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  digits.insert(0, kDigits - std::min(kDigits, digits.size()), '0');
  return "#" + SwapEnds(digits);
}

std::string HtmlToColor(std::string_view html) {
  if (html.starts_with('#')) html.remove_prefix(1);
  std::string digits(html);
  if (digits.size() < kDigits) digits.resize(kDigits, '0');
  return "&H" + SwapEnds(digits);
}

std::string NamedColor(std::string_view text) {
  const auto* const name = std::find_if(kNames.begin(), kNames.end(),
                                        [&](const auto& entry) { return entry.first == text; });
  return name != kNames.end() ? std::string(name->second) : HtmlToColor(text);
}

int ColorValue(std::string_view intermediate) {
  const bool hexadecimal = intermediate.starts_with("&H");
  if (hexadecimal) intermediate.remove_prefix(2);
  int value = 0;
  const char* const last = intermediate.data() + intermediate.size();
  const auto [end, error] =
      std::from_chars(intermediate.data(), last, value, hexadecimal ? 16 : 10);
  return error == std::errc() && end == last && value >= 0 ? value : 0;
}

}  // namespace config
