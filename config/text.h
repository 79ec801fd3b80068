#pragma once

#include <string>
#include <string_view>

namespace config {

/// The text without the blanks of a settings file (space, tab, VT, FF) at both ends.
std::string_view TrimBlanks(std::string_view text);

/// A to Z in lower case, every other byte as it is: how section and key names are compared.
std::string FoldCase(std::string_view text);

/// Whether two names are the same but for the case of A to Z.
bool SameName(std::string_view left, std::string_view right);

/// The text as UTF-8: unchanged when it is valid UTF-8, else every byte read as Windows-1252 (the
/// five bytes that Windows-1252 leaves open become the control characters of the same number).
std::string DecodeText(std::string_view bytes);

/// The first `count` characters (code points) of a UTF-8 text.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

/// The number that a text holds, blanks around it, a sign and decimals included; a number followed
/// by anything else, or no number at all, counts as 0.
double NumberOf(std::string_view text);

/// The number of a text as a whole number; halves round to the even neighbour. Beyond the range of
/// int the nearest end of it.
int WholeNumberOf(std::string_view text);

}  // namespace config
