#pragma once

#include <string>
#include <string_view>

namespace text {

/// Space, tab, VT, FF: the blanks of a settings file.
inline constexpr std::string_view kBlanks = " \t\v\f";

/// The text without blanks at both ends.
std::string_view TrimBlanks(std::string_view text);

/// A to Z in lower case, every other byte as it is: how names of sections, keys and the registry
/// are compared.
std::string FoldCase(std::string_view text);

/// Whether two names are the same but for the case of A to Z.
bool SameName(std::string_view left, std::string_view right);

/// The number that a text holds, blanks around it, a sign and decimals included; a number followed
/// by anything else, or no number at all, counts as 0.
double NumberOf(std::string_view text);

/// The number of a text as a whole number; halves round to the even neighbour. Beyond the range of
/// int the nearest end of it.
int WholeNumberOf(std::string_view text);

}  // namespace text
