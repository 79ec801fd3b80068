#include "app/modMain.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPointer>

#include "app/file_actions.h"
#include "platform/files.h"

namespace app {
namespace {

QPointer<frmMain> mainWindow;

QIcon ProgramIcon() {
  QIcon icon(":/pictures/icon32.png");
  icon.addFile(":/pictures/icon16.png");
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
