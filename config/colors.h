#pragma once

#include <string>
#include <string_view>

namespace config {

// A color value is a 32-bit number laid out 0x00BBGGRR. In the settings file a color is HTML
// text, "#RRGGBB". Between the two stands an intermediate text: "&H" and six hexadecimal digits
// BBGGRR, or plain decimal digits.

/// HTML text of the color value whose decimal text is given: "#" and six upper-case digits. Reads
/// the leading number of the text, 0 when there is none. Of a value that takes more than six
/// hexadecimal digits only the first six count.
std::string ColorToHtml(std::string_view decimal);

/// Intermediate text of an HTML color; the "#" may be missing. A text shorter than six digits is
/// filled with "0" at its end, digits past the sixth do not count, and nothing is checked: what is
/// no color gives a text that reads as no number.
std::string HtmlToColor(std::string_view html);

/// The decimal text of one of eight color names in lower case ("cyan", "red", "white", "black",
/// "green", "magenta", "blue", "yellow"), else HtmlToColor of the text.
std::string NamedColor(std::string_view text);

/// The color value of an intermediate text; 0, black, when it reads as no number.
int ColorValue(std::string_view intermediate);

}  // namespace config
