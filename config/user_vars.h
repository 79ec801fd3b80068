#pragma once

#include <string>
#include <vector>

#include "config/settings.h"

namespace config {

/// The user variables, name and value, in the order of the file. A name that stands twice yields
/// two entries with the value of the first.
std::vector<Entry> LoadUserVars(const SettingsFile& file);

/// Writes the user variables into their section, which the caller has emptied. Variables of one
/// name (without regard to the case of A to Z) are one line, where the first of them stands,
/// spelled as it is, with the value of the last. The result are the names, as given, that cannot
/// stand in the file (see ProfileText::IsKeyName); they are not written.
std::vector<std::string> WriteUserVars(SettingsFile& file, const std::vector<Entry>& variables);

}  // namespace config
