#include <filesystem>
#include <sys/stat.h>

#include <QDialog>
#include <QImage>
#include <QPixmap>

#include "app/modMain.h"
#include "app/pictures/icon32.xpm"
#include "tests/support/editor_test.h"

namespace {

class MainTest : public support::EditorTest {
 protected:
  static bool HasProgramIcon(const QWidget& window) {
    const QImage drawn = window.windowIcon().pixmap(QSize(32, 32), 1.0).toImage();
    return drawn == QPixmap(icon32).toImage();
  }
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
  EXPECT_TRUE(HasProgramIcon(*window));
  EXPECT_TRUE(HasProgramIcon(QDialog())) << "every window carries it";
  EXPECT_TRUE(desktop.messages.empty());
  window->close();
  EXPECT_EQ(app::MainWindow(), nullptr);
}

TEST_F(MainTest, AFileThatCannotBeReadIsToldAndNeverWritten) {
  WriteFile("morvane.cfg", "\xFF\xFEx");
  const auto window = Start();
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(window->isVisible());
  ASSERT_EQ(desktop.messages.size(), 1U);
  const QString told = desktop.messages[0].text;
  EXPECT_TRUE(told.contains(QString::fromStdString(PathOf("morvane.cfg")))) << told.toStdString();
  EXPECT_TRUE(told.contains("UTF-16"));
  EXPECT_EQ(desktop.messages[0].title, "morvane.cfg");
  EXPECT_EQ(desktop.messages[0].style, ui::MessageStyle::kCritical);

  WriteFile("morvane.cfg", "[Main]\nuse_db=1\n");  // readable, but not what the window shows
  WriteFile("morvane.exe", "");
  for (const char* item : {"mnuFileSave", "mnuFileGenerate", "mnuFilePrint"}) {
    desktop.Forget();
    support::Choose(*window, item);
    ASSERT_EQ(desktop.messages.size(), 1U) << item;
    EXPECT_EQ(desktop.messages[0].text, told) << item;
    EXPECT_TRUE(desktop.started.empty() && desktop.detached.empty()) << item;
    EXPECT_EQ(support::StatusText(*window), "Ready.") << item;
    EXPECT_EQ(ReadFile("morvane.cfg"), "[Main]\nuse_db=1\n") << item;
  }
  desktop.Forget();
  const auto again = Start();
  support::Choose(*again, "mnuFileSave");
  EXPECT_TRUE(desktop.messages.empty());
  EXPECT_EQ(support::StatusText(*again), "Configuration Saved.");
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
  std::filesystem::remove(PathOf("morvane.cfg"));
  ASSERT_EQ(mkfifo(PathOf("morvane.cfg").c_str(), 0600), 0);  // nor is a pipe
  EXPECT_EQ(Start(), nullptr);

  ASSERT_EQ(desktop.messages.size(), 3U);
  for (const auto& message : desktop.messages) {
    EXPECT_EQ(message.text, expected);
    EXPECT_EQ(message.title, "morvane.cfg Not Found");
    EXPECT_EQ(message.style, ui::MessageStyle::kCritical);
  }
}

}  // namespace
