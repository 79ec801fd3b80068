#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QWidget>

#include "config/modIni.h"

namespace editor {

/// What a save gave.
struct SaveResult {
  /// Why the file could not be written, for a message to the user; empty when it was written.
  std::string failure;
  /// The names of user variables that cannot stand in the file and were left out of it.
  std::vector<std::string> leftOut;
};

/// Writes every field of the main window to the settings file, all or nothing, and copies the
/// background image into the folder "images" of the output directory.
/// `pumpEvents` handles the pending window events; it is called while the sections are emptied,
/// before the fields are read.
/// When the file cannot be written the old one stands. What goes wrong with the image is silent.
SaveResult SaveSettings(QWidget& window, const config::modIni& ini,
                        const std::function<void()>& pumpEvents);

}  // namespace editor
