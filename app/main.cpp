#include <QApplication>
#include <QSettings>

#include "app/modMain.h"
#include "platform/paths.h"
#include "ui/desktop.h"
#include "ui/style.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  ui::UseDesignedLook();
  ui::RealDesktop desktop;
  const config::modIni ini(platform::ProgramDirectory());
  QSettings settings("Quillon", "vantrel3");
  const auto window = app::Main(ini, desktop, settings);
  return window ? QApplication::exec() : 0;
}
