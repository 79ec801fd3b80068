#include "ui/events.h"

#include <system_error>
#include <thread>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
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

void DoBeside(const std::function<void()>& work) {
  QObject here;
  bool done = false;
  std::thread thread;
  try {
    thread = std::thread([&] {
      work();
      QMetaObject::invokeMethod(
          &here, [&] { done = true; }, Qt::QueuedConnection);
    });
  } catch (const std::system_error&) {  // no thread can be had
    work();
    return;
  }
  while (!done) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::WaitForMoreEvents);
  }
  thread.join();
}

}  // namespace ui
