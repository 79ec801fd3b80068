#include "ui/desktop.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <utility>

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "tests/support/dialog_answers.h"
#include "tests/support/editor_test.h"
#include "ui/events.h"

namespace ui {
namespace {

using support::DialogAnswers;
using testing::IsEmpty;

class DesktopTest : public support::EditorTest {
 protected:
  /// Waits, at most ten seconds, for a file that another process writes.
  std::string Written(const std::string& name) const {
    for (int tries = 0; tries < 1000 && !std::filesystem::exists(PathOf(name)); ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return ReadFile(name);
  }
  /// Puts a program first in PATH that writes its arguments, a line each, into "NAME.out".
  void WriteTool(const std::string& name) const {
    WriteFile("tools/" + name,
              "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.part\"\nmv \"$0.part\" \"$0.out\"\n");
    chmod(PathOf("tools/" + name).c_str(), 0755);
    qputenv("PATH", QByteArray::fromStdString(PathOf("tools")) + ":/usr/bin:/bin");
  }

  RealDesktop real_;
};

TEST_F(DesktopTest, AMessageBoxAnswersWithItsButton) {
  const struct {
    MessageStyle style;
    Qt::Key key;
    Answer answer;
  } cases[] = {{MessageStyle::kYesNoQuestion, Qt::Key_Return, Answer::kYes},
               {MessageStyle::kYesNoQuestion, Qt::Key_Escape, Answer::kNo},
               {MessageStyle::kOk, Qt::Key_Return, Answer::kOk},
               {MessageStyle::kCritical, Qt::Key_Escape, Answer::kOk}};
  DialogAnswers answers;
  for (const auto& [style, key, answer] : cases) {
    answers.Then([key = key](QWidget& dialog) {
      auto& box = dynamic_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.windowTitle(), "Title & more");
      EXPECT_EQ(box.text(), "<b>a</b>\r\nb");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      QTest::keyClick(&box, key);
    });
    EXPECT_EQ(real_.ShowMessage(nullptr, "<b>a</b>\r\nb", style, "Title & more"), answer);
  }
  answers.Then([](QWidget& dialog) { dialog.close(); });
  EXPECT_EQ(real_.ShowMessage(nullptr, "?", MessageStyle::kYesNoQuestion, "?"), Answer::kNo);
}

TEST_F(DesktopTest, TheColorDialogOpensOnItsColor) {
  DialogAnswers answers;
  answers.Then([](QWidget& dialog) {
    auto& colors = dynamic_cast<QColorDialog&>(dialog);
    EXPECT_EQ(colors.currentColor(), QColor(0x11, 0x22, 0x33));
    EXPECT_EQ(colors.windowTitle(), "Link Color");
    colors.setCurrentColor(QColor(0xAA, 0xBB, 0xCC));
    colors.accept();
  });
  EXPECT_EQ(real_.ChooseColor(nullptr, 0x332211, "Link Color"), 0xCCBBAA);
  answers.Then([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(real_.ChooseColor(nullptr, 0x332211, "Link Color"), std::nullopt);
}

TEST_F(DesktopTest, TheFileDialogChoosesAnExistingFile) {
  WriteFile("logs/games.log", "");
  WriteFile("logs/README", "");
  std::filesystem::current_path(PathOf("logs"));
  const OpenFileRequest request{"Select", "Log Files (*.log) |*.log|All Files (*.*)|*.*", "*.log",
                                ""};
  DialogAnswers answers;
  answers.Then([&](QWidget& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    EXPECT_EQ(files.windowTitle(), "Select");
    EXPECT_EQ(files.directory().absolutePath().toStdString(), PathOf("logs"));
    EXPECT_EQ(files.nameFilters(),
              QStringList({"Log Files (*.log) (*.log)", "All Files (*.*) (*)"}));
    EXPECT_EQ(files.fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(files.filter().testFlag(QDir::Hidden));
    files.reject();
  });
  EXPECT_EQ(real_.ChooseFile(nullptr, request), std::nullopt);
  for (const auto& [typed, file] :
       {std::pair("README", "logs/README"), std::pair("games", "logs/games.log")}) {
    answers.Then([&, typed = typed](QWidget& dialog) {
      std::filesystem::current_path("/");
      dialog.findChild<QLineEdit*>()->setText(typed);
      QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(real_.ChooseFile(nullptr, request), QString::fromStdString(PathOf(file)));
    EXPECT_EQ(QDir::currentPath().toStdString(), PathOf("logs"));
  }

  std::filesystem::current_path("/");
  answers.Then([&](QWidget& dialog) {
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    EXPECT_EQ(files.directory().absolutePath().toStdString(), PathOf("logs"));
    files.reject();
  });
  const QString last = QString::fromStdString(PathOf("logs/README"));
  EXPECT_EQ(real_.ChooseFile(nullptr, {"", "A|*.a", "", last}), std::nullopt);
  EXPECT_EQ(QDir::currentPath(), "/") << "a cancelled dialog changed the current folder";
}

// A console window can be read, copied from and closed meanwhile.
TEST_F(DesktopTest, DialogsBlockTheirOwnerOnly) {
  QWidget& owner = OpenWindow();
  DialogAnswers answers;
  answers.Otherwise([](QWidget& dialog) {
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal) << qPrintable(dialog.windowTitle());
    dialog.close();
  });
  real_.ShowMessage(&owner, "?", MessageStyle::kYesNoQuestion, "Message");
  real_.ChooseColor(&owner, 0, "Color");
  real_.ChooseFile(&owner, {"File", "A|*.a", "", ""});
}

// One test, because GLib looks for the desktop's entries in the same folders for a process's life.
TEST_F(DesktopTest, StartsViewerPrinterAndBrowser) {
  const platform::CommandLine view{platform::kNotepad, {}, Directory() + "\\a \"b\" $c;.txt"};
  const platform::CommandLine print{platform::kNotepad, {platform::kPrintSwitch}, view.file};
  const std::string argument = Directory() + "/a \"b\" $c;.txt\n";
  WriteTool("lp");
  EXPECT_THAT(real_.StartDetached(print), IsEmpty());
  EXPECT_EQ(Written("tools/lp.out"), argument);
  WriteTool("xdg-open");
  real_.OpenUrl("http://a.example/?a=b&c=$d");
  EXPECT_EQ(Written("tools/xdg-open.out"), "http://a.example/?a=b&c=$d\n");

  const std::string home = qgetenv("XDG_DATA_HOME").toStdString();
  qputenv("XDG_DATA_DIRS", "/nowhere");
  qputenv("XDG_CONFIG_DIRS", "/nowhere");
  const auto relative = [&](const char* file) {
    return std::filesystem::relative(home, Directory()).string() + "/" + file;
  };
  WriteFile(relative("mimeapps.list"), "[Default Applications]\ntext/plain=viewer.desktop\n");
  WriteFile(relative("applications/viewer.desktop"),
            "[Desktop Entry]\nType=Application\nName=Viewer\nExec=viewer --read %f\n"
            "MimeType=text/plain;\n");
  WriteTool("viewer");
  EXPECT_THAT(real_.StartDetached(view), IsEmpty());
  EXPECT_EQ(Written("tools/viewer.out"), "--read\n" + argument);
}

TEST_F(DesktopTest, ViewingTellsWhyItFailed) {
  qputenv("XDG_DATA_DIRS", "/nowhere");
  qputenv("XDG_CONFIG_DIRS", "/nowhere");
  EXPECT_EQ(real_.StartDetached({platform::kNotepad, {}, "/a.txt"}),
            "No program for text files (text/plain) is installed.");
}

TEST(EventsTest, WaitsWhileEventsAreHandled) {
  int events = 0;
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, [&] { ++events; });
  ticks.start(10);
  const auto start = std::chrono::steady_clock::now();
  WaitHandlingEvents(200);
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_GE(waited, std::chrono::milliseconds(200));
  EXPECT_GE(events, 2);
}

// After quit, an event loop would return at once and the wait would burn the processor.
TEST(EventsTest, WaitsOnAfterTheProgramWasToldToQuit) {
  QTimer::singleShot(0, qApp, [] {
    QCoreApplication::quit();
    const std::clock_t before = std::clock();
    const auto start = std::chrono::steady_clock::now();
    int events = 0;
    QTimer::singleShot(100, qApp, [&] { ++events; });
    WaitHandlingEvents(400);
    EXPECT_EQ(events, 1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(400));
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
  });
  QCoreApplication::exec();
}

}  // namespace
}  // namespace ui
