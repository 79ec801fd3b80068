#pragma once

#include <array>
#include <bitset>
#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// What a name stands on, and how its pieces behind the color codes ^0 to ^9 are drawn there: CSS
/// declarations, such as "color:#FF0000".
struct NameGround {
  std::string style;                   ///< of the whole name; empty: it stands on the page itself
  std::array<std::string, 10> colors;  ///< by code, each of them fit to be read
  std::bitset<10> own;                 ///< codes whose color is the one that was asked for
};

/// How names are drawn: on the page where it suits every color of the name, else the whole name on
/// that chip which suits most of them, the first of equals.
struct NameStyles {
  NameGround page;
  std::vector<NameGround> chips;
};

/// The name as HTML: a <bdi> element with the escaped text of NameText, each colored piece in a
/// span of its style. Safe wherever phrasing content may stand.
std::string NameHtml(std::string_view name, const NameStyles& styles);

/// The text with & < > " and ' as character references, fit for element content and for quoted
/// attribute values.
std::string EscapeHtml(std::string_view text);

/// Makes arbitrary bytes fit for a page: UTF-8 without control characters (a tab and line breaks
/// become blanks) and without characters that change the direction of the text around them. Not
/// escaped, not trimmed.
std::string PageText(std::string_view bytes);

}  // namespace morvane
