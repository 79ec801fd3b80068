#include "config/rgb.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace config {
namespace {

constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kWhite{255, 255, 255};

double Linear(std::uint8_t part) {
  const double value = part / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Rgb color) {
  return 0.2126 * Linear(color.red) + 0.7152 * Linear(color.green) + 0.0722 * Linear(color.blue);
}

}  // namespace

std::optional<Rgb> ParseColor(std::string_view text) {
  if (text.starts_with('#')) text.remove_prefix(1);
  std::string digits(text);
  if (text.size() == 3) digits = {text[0], text[0], text[1], text[1], text[2], text[2]};
  std::uint32_t value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (digits.size() != 6 || error != std::errc() || end != digits.data() + digits.size()) return {};
  return Rgb{static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
             static_cast<std::uint8_t>(value)};
}

Rgb RgbOf(int value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return {static_cast<std::uint8_t>(bits), static_cast<std::uint8_t>(bits >> 8),
          static_cast<std::uint8_t>(bits >> 16)};
}

std::string ColorText(Rgb color) {
  std::string text = "#";
  for (const unsigned part : {color.red, color.green, color.blue}) {
    text += "0123456789ABCDEF"[part >> 4];
    text += "0123456789ABCDEF"[part & 0xF];
  }
  return text;
}

Rgb Mix(Rgb from, Rgb to, double share) {
  const auto part = [share](std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>(std::lround(a + (b - a) * share));
  };
  return {part(from.red, to.red), part(from.green, to.green), part(from.blue, to.blue)};
}

double Contrast(Rgb one, Rgb other) {
  const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
  return (high + 0.05) / (low + 0.05);
}

Shades ShadesOf(Rgb background, Rgb text) {
  return {Mix(background, text, 0.07), Mix(background, text, 0.11)};
}

Rgb InkOn(Rgb background) {
  return Contrast(kWhite, background) >= Contrast(kBlack, background) ? kWhite : kBlack;
}

Rgb Readable(Rgb color, Rgb background) {
  constexpr int kSteps = 20;
  const Rgb ink = InkOn(background);
  for (int step = 0; step <= kSteps; ++step) {
    const Rgb shade = Mix(color, ink, static_cast<double>(step) / kSteps);
    if (Contrast(shade, background) >= kReadableContrast) return shade;
  }
  return ink;
}

}  // namespace config
