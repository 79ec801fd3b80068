#pragma once

#include <QWidget>

#include "config/settings_file.h"

namespace editor {

/// Fills every field of the main window from the settings file.
/// A missing key gives an empty field, 0 or black; nothing is reported and nothing is written.
void LoadSettings(QWidget& window, const config::SettingsFile& file);

}  // namespace editor
