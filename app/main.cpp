#include <QApplication>
#include <QSettings>

#include "app/modMain.h"
#include "platform/paths.h"
#include "platform/qt_desktop.h"
#include "platform/qt_style.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  platform::UseDesignedLook();
  platform::RealDesktop desktop;
  config::modIni ini(platform::ProgramDirectory());
  QSettings settings("Quillon", "vantrel3");
  const auto window = app::Main(ini, desktop, settings);
  return window ? QApplication::exec() : 0;
}
