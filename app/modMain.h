#pragma once

#include <memory>

#include <QSettings>

#include "app/frmMain.h"
#include "config/modIni.h"
#include "ui/desktop.h"

namespace app {

/// Opens the main window when the settings file stands in the program directory. Otherwise tells
/// the user where the file belongs, and the result is empty: the program has nothing to do.
std::unique_ptr<frmMain> Main(config::modIni& ini, ui::Desktop& desktop, QSettings& settings);

}  // namespace app
