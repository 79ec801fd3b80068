#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace config {

/// A color, each part 0 to 255.
struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  bool operator==(const Rgb&) const = default;
};

/// Reads "#RRGGBB", "RRGGBB" or the short "#RGB"; nothing for any other text.
std::optional<Rgb> ParseColor(std::string_view text);

/// The color of a color value, 0x00BBGGRR.
Rgb RgbOf(int value);

/// "#RRGGBB".
std::string ColorText(Rgb color);

/// The color that lies `share` (0 to 1) of the way from one to the other.
Rgb Mix(Rgb from, Rgb to, double share);

/// How well one is told from the other, 1 to 21, as the web's accessibility guidelines reckon it:
/// text is readable from 4.5 on.
double Contrast(Rgb one, Rgb other);

/// The contrast from which on text can be read.
inline constexpr double kReadableContrast = 4.5;

/// What stands behind text, besides the background itself: panels, and in them stripes.
struct Shades {
  Rgb panel;
  Rgb stripe;
};
Shades ShadesOf(Rgb background, Rgb text);

/// Black or white, whichever reads better on the color.
Rgb InkOn(Rgb background);

/// The color itself where it can be read on the background, else the nearest lighter or darker
/// shade of it that can.
Rgb Readable(Rgb color, Rgb background);

}  // namespace config
