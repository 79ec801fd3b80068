#include "ui/events.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace ui {

void PumpEvents() { QCoreApplication::processEvents(); }

void WaitHandlingEvents(int milliseconds) {
  // An event loop of its own would return at once after QCoreApplication::quit; processEvents does
  // not. The timer wakes it when nothing else happens.
  QTimer alarm;
  alarm.setTimerType(Qt::PreciseTimer);
  alarm.setSingleShot(true);
  alarm.start(milliseconds);
  QElapsedTimer clock;
  clock.start();
  while (alarm.isActive() && clock.elapsed() < milliseconds) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
}

}  // namespace ui
