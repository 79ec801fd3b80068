#include "app/modMain.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QPointer>

#include "app/file_actions.h"
#include "app/pictures/icon16.xpm"
#include "app/pictures/icon32.xpm"
#include "platform/files.h"

namespace app {
namespace {

QPointer<frmMain> mainWindow;

// As XPM: any other format would have the start read all plugins of formats.
QIcon ProgramIcon() {
  QIcon icon{QPixmap(icon32)};
  icon.addPixmap(QPixmap(icon16));
  return icon;
}

}  // namespace

frmMain* MainWindow() { return mainWindow.data(); }

void ReleaseMainWindow(const frmMain& window) {
  if (mainWindow == &window) mainWindow = nullptr;
}

std::unique_ptr<frmMain> Main(const config::modIni& ini, ui::Desktop& desktop,
                              QSettings& settings) {
  QGuiApplication::setWindowIcon(ProgramIcon());
  if (platform::FileExists(ini.ConfigFilePath())) {
    auto window = std::make_unique<frmMain>(ini, desktop, settings);
    mainWindow = window.get();
    window->show();
    if (!window->LoadFailure().empty()) TellLoadFailure(*window);
    return window;
  }
  const QString file = QString::fromUtf8(config::kConfigFileName.data(),
                                         static_cast<qsizetype>(config::kConfigFileName.size()));
  desktop.ShowMessage(nullptr,
                      "The Morvane Configuration file was not found!\r\n"
                      "Please reinstall this software or restore a copy of " +
                          file + " to " + QString::fromStdString(ini.ProgramDirectory()) +
                          "\r\n\r\nIf you need additional help, please see SETUP.TXT.",
                      ui::MessageStyle::kCritical, file + " Not Found");
  return nullptr;
}

}  // namespace app
