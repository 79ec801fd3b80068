#include <filesystem>

#include "app/modMain.h"
#include "tests/support/editor_test.h"

namespace {

class MainTest : public support::EditorTest {
 protected:
  std::unique_ptr<app::frmMain> Start() { return app::Main(ini_, desktop, Settings()); }

 private:
  config::modIni ini_{Directory()};
};

TEST_F(MainTest, OpensTheWindowOnTheSettingsFile) {
  WriteFile("morvane.cfg", "");
  const auto window = Start();
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(app::MainWindow(), window.get());
  EXPECT_TRUE(desktop.messages.empty());
  window->close();
  EXPECT_EQ(app::MainWindow(), nullptr);
}

TEST_F(MainTest, TellsWhereAMissingFileBelongs) {
  const QString expected =
      "The Morvane Configuration file was not found!\r\n"
      "Please reinstall this software or restore a copy of morvane.cfg to " +
      QString::fromStdString(Directory()) +
      "\r\n\r\nIf you need additional help, please see SETUP.TXT.";
  EXPECT_EQ(Start(), nullptr);
  std::filesystem::create_directory(PathOf("morvane.cfg"));  // a folder is not the file
  EXPECT_EQ(Start(), nullptr);

  ASSERT_EQ(desktop.messages.size(), 2U);
  for (const auto& message : desktop.messages) {
    EXPECT_EQ(message.text, expected);
    EXPECT_EQ(message.title, "morvane.cfg Not Found");
    EXPECT_EQ(message.style, ui::MessageStyle::kCritical);
  }
}

}  // namespace
