#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

#include "config/rgb.h"
#include "engine/run_engine.h"
#include "platform/pseudo_terminal.h"
#include "tests/engine/engine_test.h"
#include "ui/controls.h"
#include "ui/events.h"

namespace engine {
namespace {

using testing::HasSubstr;

/// The user's desktop for a program that was started from a menu, also where the tests are started
/// from a terminal.
class DesktopWithoutTerminal : public ui::RealDesktop {
 public:
  platform::StartResult StartProgram(const platform::CommandLine& command) override {
    fflush(nullptr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const platform::Descriptor output(dup(STDOUT_FILENO));
    const platform::Descriptor errors(dup(STDERR_FILENO));
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
    const platform::StartResult started = RealDesktop::StartProgram(command);
    dup2(output.Get(), STDOUT_FILENO);
    dup2(errors.Get(), STDERR_FILENO);
    return started;
  }
};

class ConsoleTest : public EngineTest {
 protected:
  /// The console window, while it is shown.
  static QWidget* Console() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == "Console" && window->isVisible()) return window;
    }
    return nullptr;
  }
  static QString Text() {
    return Console() != nullptr ? Screen().toPlainText() : QString("no console");
  }
  static QPlainTextEdit& Screen() { return ui::Control<QPlainTextEdit>(*Console(), "Screen"); }

  void Run(const std::string& commands) {
    WriteEngine(commands);
    EXPECT_EQ(RunEngine(console_, Directory()), "");
    EXPECT_FALSE(HasChildren());
  }

  /// Runs an engine that waits for the test, and does something `milliseconds` after its start.
  void RunAndMeanwhile(const std::string& commands, int milliseconds,
                       const std::function<void()>& action, const std::string& after = "") {
    QTimer::singleShot(milliseconds, qApp, [&] {
      action();
      LetEngineEnd();
    });
    Run(commands + "\n" + WaitForTest() + after);
  }

  DesktopWithoutTerminal console_;
};

TEST_F(ConsoleTest, AQuickRunShowsNothing) {
  Run("echo done");
  EXPECT_EQ(Console(), nullptr);
  Run("exit 3");
  ui::WaitHandlingEvents(700);
  EXPECT_EQ(Console(), nullptr) << "nor afterwards";
}

TEST_F(ConsoleTest, AppearsAfterHalfASecondAndGoesWithACleanEnd) {
  bool early = false;
  QTimer::singleShot(250, qApp, [&] { early = Console() != nullptr; });
  RunAndMeanwhile("printf 'one\\n 50 %%\\r100 %%'; [ -t 1 ] && [ -t 2 ] && stty size <&1", 900, [] {
    ASSERT_NE(Console(), nullptr);
    EXPECT_EQ(Text(), "one\n100 %25 80\n");
    EXPECT_EQ(Console()->windowTitle(), "morvane.exe");
    EXPECT_EQ(QApplication::activeWindow(), Console());
    EXPECT_TRUE(Screen().isReadOnly());
  });
  EXPECT_FALSE(early);
  EXPECT_EQ(Console(), nullptr);
}

TEST_F(ConsoleTest, AppearsAtOnceWithSomethingSevereAndStays) {
  RunAndMeanwhile("echo first; echo bad >&2", 300,
                  [] { EXPECT_THAT(Text().toStdString(), HasSubstr("bad\n")); });
  EXPECT_THAT(Text().toStdString(), HasSubstr("first\n")) << "it stays to be read";
  Screen().selectAll();
  QTest::keyClick(&Screen(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("bad"));
  Console()->close();

  Run("echo bad >&2");  // told at its end at the latest
  EXPECT_EQ(Text(), "bad\n");
  QWidget* const left = Console();
  Run("exit 0");
  EXPECT_EQ(Console(), left) << "another run closed it";
}

TEST_F(ConsoleTest, StaysAfterAFailure) {
  RunAndMeanwhile(
      "echo so far", 700, [] { EXPECT_NE(Console(), nullptr); }, "echo last; exit 1");
  EXPECT_EQ(Text(), "so far\nlast\n");
  RunAndMeanwhile(
      "", 700, [] {}, "kill -KILL $$");
  EXPECT_NE(Console(), nullptr);
}

TEST_F(ConsoleTest, ClosedInARunItStaysClosedAndTheRunGoesOn) {
  RunAndMeanwhile(
      "echo a >&2", 300,
      [] {
        ASSERT_NE(Console(), nullptr);
        Console()->close();
      },
      "head -c 5000000 /dev/zero; echo b >&2; sleep 0.6; echo ended > \"$here/ended\"; exit 1");
  EXPECT_EQ(ReadFile("ended"), "ended\n");
  EXPECT_EQ(Console(), nullptr);
}

TEST_F(ConsoleTest, AFloodStopsNothing) {
  int events = 0;
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, qApp, [&] { ++events; });
  ticks.start(20);
  QElapsedTimer clock;
  clock.start();
  const auto residentPages = [] {
    std::ifstream statistics("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statistics >> size >> resident;
    return resident;
  };
  [[maybe_unused]] const long before = residentPages();
  Run("yes 'a line of the flood' | head -c 15000000\nhead -c 10000000 /dev/zero | tr '\\0' x\n"
      "echo; echo the end; exit 1");
#ifndef __SANITIZE_ADDRESS__  // which keeps freed memory for itself and slows everything down
  EXPECT_GT(events, clock.elapsed() / 100) << "the window answers ten times a second";
  EXPECT_LT((residentPages() - before) * sysconf(_SC_PAGESIZE), 60'000'000);
#endif
  EXPECT_TRUE(Text().endsWith("\nthe end\n"));
  EXPECT_LE(Screen().blockCount(), 5000);
}

// What an engine's child writes for ever is not waited for.
TEST_F(ConsoleTest, AChildThatWritesOnHoldsNothingUp) {
  Run("yes & echo $! > \"$here/child\"; exit 0");
  EXPECT_EQ(Console(), nullptr);
  const int child = std::stoi(ReadFile("child"));
  kill(child, SIGKILL);
}

TEST_F(ConsoleTest, TheProgramEndsWhileAConsoleIsOpen) {
  app::frmMain& window = OpenWindow();
  QTimer::singleShot(0, &window, [&] {
    Run("echo bad >&2");
    EXPECT_NE(Console(), nullptr);
    window.close();
  });
  QElapsedTimer clock;
  clock.start();
  QTimer::singleShot(20000, qApp, &QApplication::quit);
  QApplication::exec();
  EXPECT_LT(clock.elapsed(), 15000);
}

TEST_F(ConsoleTest, AnEngineThatCannotBeStartedShowsNoConsole) {
  EXPECT_NE(RunEngine(console_, Directory()), "");
  QTest::qWait(600);
  EXPECT_EQ(Console(), nullptr);
}

TEST_F(ConsoleTest, ItsTextHasContrast) {
  Run("echo bad >&2");
  const auto rgb = [](const QColor& color) { return config::RgbOf(ui::ToColorValue(color)); };
  const QPalette palette = Screen().palette();
  EXPECT_GE(Contrast(rgb(palette.color(QPalette::Text)), rgb(palette.color(QPalette::Base))),
            config::kReadableContrast);
}

}  // namespace
}  // namespace engine
