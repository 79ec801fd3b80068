#pragma once

#include <array>
#include <bitset>
#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// What a name stands on, and how its pieces behind the colour codes ^0 to ^9 are drawn there: CSS
/// declarations, such as "color:#FF0000".
struct NameGround {
  std::string style;                    ///< of the whole name; empty: it stands on the page itself
  std::array<std::string, 10> colours;  ///< by code, each of them fit to be read
  std::bitset<10> own;                  ///< codes whose colour is the one that was asked for
};

/// How names are drawn: on the page where it suits every colour of the name, else the whole name on
/// that chip which suits most of them, the first of equals.
struct NameStyles {
  NameGround page;
  std::vector<NameGround> chips;
};

/// A piece of a name in one colour.
struct NameRun {
  int colour;        ///< 0 to 9, or -1 before the first colour code
  std::string text;  ///< UTF-8
};

/// Takes a name of a log apart at its colour codes: "^" and any character but "^". The code is the
/// digit 0 to 9, or another character modulo 8. The bytes may be anything: valid UTF-8 is kept,
/// everything else is read as Windows-1252. No run is empty; characters stay as they are.
std::vector<NameRun> SplitColours(std::string_view name);

/// The name as text to show: UTF-8 without colour codes, control characters and the invisible
/// characters that turn or glue the text around them, blanks at the ends taken off. A name of
/// which nothing is left becomes kNoName. Not escaped.
std::string NameText(std::string_view name);

/// What stands for a name of blanks.
inline constexpr std::string_view kNoName = "(no name)";

/// What tells players apart: NameText without regard to case.
std::string PlayerKey(std::string_view name);

/// The letters A to Z and those of Latin-1 in lower case. `text`: UTF-8.
std::string LowerCase(std::string_view text);

/// The name as HTML: a <bdi> element with the escaped text of NameText, each coloured piece in a
/// span of its style. Safe wherever phrasing content may stand.
std::string NameHtml(std::string_view name, const NameStyles& styles);

/// The text with & < > " and ' as character references, fit for element content and for quoted
/// attribute values.
std::string EscapeHtml(std::string_view text);

/// Makes arbitrary bytes fit for a page: UTF-8 without control characters (a tab and line breaks
/// become blanks) and without characters that change the direction of the text around them. Not
/// escaped, not trimmed.
std::string PageText(std::string_view bytes);

/// The file name part for a name: only a-z, 0-9, "_" and "-", never empty, at most 57 characters,
/// the same in every run. Names that differ in more than case get different parts: where
/// characters had to be replaced, a number made from the whole name follows. `name`: NameText.
std::string FileNamePart(std::string_view name);

}  // namespace morvane
