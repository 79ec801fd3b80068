#pragma once

#include <QWidget>

#include "config/modIni.h"

namespace editor {

/// Fills every field of the main window from the settings file, of which it reads one snapshot.
/// A missing key gives an empty field, 0 or black; nothing is reported and nothing is written.
void LoadSettings(QWidget& window, config::modIni& ini);

}  // namespace editor
