#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt_style.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  platform::UseDesignedLook();
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
