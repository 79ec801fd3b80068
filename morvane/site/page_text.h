#pragma once

#include <array>
#include <string>
#include <string_view>

namespace morvane {

/// How the pieces of a name behind the color codes ^0 to ^9 are drawn: CSS declarations, such as
/// "color:#FF0000".
using NameStyles = std::array<std::string, 10>;

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
