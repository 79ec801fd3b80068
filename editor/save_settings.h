#pragma once

#include <functional>
#include <string>

#include <QWidget>

#include "config/modIni.h"

namespace editor {

/// Writes every field of the main window to the settings file, all or nothing, and copies the
/// background image into the folder "images" of the output directory.
/// `pumpEvents` handles the pending window events; it is called while the sections are emptied,
/// before the fields are read.
/// The result is empty, or says for a message to the user why the file could not be written; the
/// old file stands then. What goes wrong with the image is silent.
std::string SaveSettings(QWidget& window, const config::modIni& ini,
                         const std::function<void()>& pumpEvents);

}  // namespace editor
