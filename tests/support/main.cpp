#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/style.h"

int main(int argc, char** argv) {
  // A test may be run with screens of its own: "offscreen:configfile=FILE".
  if (!qgetenv("QT_QPA_PLATFORM").startsWith("offscreen")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  ui::UseDesignedLook();
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
