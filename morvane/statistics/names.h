#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// A piece of a name in one color.
struct NameRun {
  int color;         ///< 0 to 9, or -1 before the first color code
  std::string text;  ///< UTF-8
};

/// A name of a log as it is shown, in the pieces that its color codes make: "^" and any character
/// but "^". The code is the digit 0 to 9, or another character modulo 8. The bytes may be anything:
/// valid UTF-8 is kept, everything else is read as Windows-1252. Control characters and the
/// invisible characters that turn or glue the text around them are left out, and blanks at the
/// ends. A name of which nothing is left is one piece, kNoName. No piece is empty.
std::vector<NameRun> VisibleRuns(std::string_view name);

/// What stands for a name of blanks.
inline constexpr std::string_view kNoName = "(no name)";

/// The text of VisibleRuns, UTF-8 without color codes. Not escaped.
std::string NameText(std::string_view name);

/// What tells players apart: NameText without regard to case.
std::string PlayerKey(std::string_view name);

/// A UTF-8 text without control characters (a tab and line breaks become blanks) and without
/// characters that change the direction of the text around them. Not trimmed.
std::string VisibleText(std::string_view text);

/// The letters A to Z and those of Latin-1 in lower case. `text`: UTF-8.
std::string LowerCase(std::string_view text);

}  // namespace morvane
