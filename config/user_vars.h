#pragma once

#include <vector>

#include "config/settings.h"

namespace config {

/// The user variables, name and value, in the order of the file. A name that stands twice yields
/// two entries with the value of the first.
std::vector<Entry> LoadUserVars(const SettingsFile& file);

}  // namespace config
