#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

#include "ui/style.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  ui::UseDesignedLook();
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
