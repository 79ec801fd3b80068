#pragma once

#include <memory>

#include <QSettings>

#include "app/frmMain.h"
#include "config/modIni.h"
#include "ui/desktop.h"

namespace app {

/// The program's reference to its main window: set by Main, released when the window is unloaded;
/// null before and after.
frmMain* MainWindow();

/// Releases that reference when it is to this window.
void ReleaseMainWindow(const frmMain& window);

/// Opens the main window when the settings file stands in the program directory, and tells the user
/// when that file cannot be read. Without the file it tells the user where the file belongs, and
/// the result is empty: the program has nothing to do.
std::unique_ptr<frmMain> Main(const config::modIni& ini, ui::Desktop& desktop, QSettings& settings);

}  // namespace app
