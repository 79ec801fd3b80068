#include "engine/run_engine.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <system_error>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "config/modIni.h"
#include "tests/engine/engine_test.h"
#include "ui/controls.h"

namespace engine {
namespace {

using app::frmMain;
using support::Choose;
using support::Click;
using support::StatusText;
using testing::HasSubstr;
using testing::IsEmpty;
using ui::Control;

TEST_F(EngineTest, EveryEndOfTheEngineIsAnEnd) {
  frmMain& window = OpenWindow();
  for (const char* commands : {"exit 0", "exit 3", "sleep 0.3", "kill -KILL $$"}) {
    WriteEngine(commands);
    Click(window, "cmdMakeStats");
    EXPECT_EQ(StatusText(window), "Statistics Generated.") << commands;
    EXPECT_FALSE(HasChildren()) << commands;
  }
  WriteEngine("exit 0");
  Choose(window, "mnuFileGenerate");
  EXPECT_EQ(StatusText(window), "Statistics Generated.");
  EXPECT_EQ(desktop.started, std::vector<std::string>(5, Directory() + "\\morvane.exe"));
  EXPECT_THAT(desktop.messages, IsEmpty());
}

TEST_F(EngineTest, TheEngineFindsTheSavedSettingsAndInheritsTheRest) {
  WriteEngine(
      "cp \"$here/morvane.cfg\" \"$here/seen\"; (echo $#; pwd -P; echo $SOME_SETTING)"
      " > \"$here/surroundings\"");
  frmMain& window = OpenWindow();
  Control<QLineEdit>(window, "txtMinKills").setText("4711");
  qputenv("SOME_SETTING", "inherited");
  std::filesystem::current_path("/usr");
  Click(window, "cmdMakeStats");
  EXPECT_EQ(ReadFile("surroundings"), "0\n/usr\ninherited\n");
  EXPECT_EQ(ReadFile("seen"), ReadFile("morvane.cfg"));
  EXPECT_THAT(ReadFile("seen"), HasSubstr("4711"));
}

TEST_F(EngineTest, AnEngineThatCannotBeStartedIsTold) {
  frmMain& window = OpenWindow();
  const auto expectTold = [&](const std::string& reason) {
    Click(window, "cmdMakeStats");
    EXPECT_EQ(StatusText(window), "Ready.");
    ASSERT_EQ(desktop.messages.size(), 1U);
    EXPECT_EQ(desktop.messages[0].title, "morvane.exe");
    EXPECT_EQ(desktop.messages[0].style, ui::MessageStyle::kCritical);
    EXPECT_THAT(desktop.messages[0].text.toStdString(), HasSubstr(PathOf("morvane.exe")));
    EXPECT_THAT(desktop.messages[0].text.toStdString(), HasSubstr(reason));
    desktop.messages.clear();
  };
  expectTold(std::generic_category().message(ENOENT));
  WriteFile("morvane.exe", "#!/bin/sh\n");
  expectTold(std::generic_category().message(EACCES));
  WriteEngine("exit 0");
  Click(window, "cmdMakeStats");
  EXPECT_EQ(StatusText(window), "Statistics Generated.");
}

TEST_F(EngineTest, NoRunFollowsASaveThatFailed) {
  WriteEngine("exit 0");
  frmMain& window = OpenWindow();
  Click(window, "cmdSave");
  chmod(PathOf("morvane.cfg").c_str(), 0444);
  Click(window, "cmdMakeStats");
  EXPECT_EQ(StatusText(window), "Statistics Generated.") << "nothing was changed";
  EXPECT_THAT(desktop.messages, IsEmpty());

  desktop.Forget();
  window.SetStatus("Ready.");
  Control<QLineEdit>(window, "txtMinKills").setText("4711");
  Click(window, "cmdMakeStats");
  EXPECT_THAT(desktop.started, IsEmpty());
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].title, "morvane.cfg");
  EXPECT_EQ(StatusText(window), "Ready.");
}

// The window answers between two looks at the engine, not only once in each.
TEST_F(EngineTest, ManyEventsAreHandledBetweenTwoLooksAtTheEngine) {
  WriteEngine(WaitForTest());
  frmMain& window = OpenWindow();
  int events = 0;
  QTimer ticks;
  QObject::connect(&ticks, &QTimer::timeout, &window, [&] { ++events; });
  QTimer::singleShot(1000, &window, [&] { LetEngineEnd(); });
  ticks.start(1);
  Click(window, "cmdMakeStats");
  EXPECT_GT(events, 50) << "11 looks or so should have left room for hundreds of events";
}

TEST_F(EngineTest, TheProgramEndsWithTheEngineWhenTheWindowWasClosed) {
  WriteEngine(WaitForTest() + "echo ended > \"$here/ended\"");
  frmMain& window = OpenWindow();
  During(window, app::Activity::kRunning, [&] {
    window.close();
    EXPECT_FALSE(window.isVisible());
    QTimer::singleShot(250, qApp, [&] {
      EXPECT_FALSE(std::filesystem::exists(PathOf("ended")));
      LetEngineEnd();
    });
  });
  QTimer::singleShot(0, &window, [&] { Click(window, "cmdMakeStats"); });
  QApplication::exec();
  EXPECT_TRUE(std::filesystem::exists(PathOf("ended")));
  EXPECT_FALSE(HasChildren());
}

TEST_F(EngineTest, AProgramDirectoryOfAnyNameWorks) {
  const std::string odd = "a \"b\" $HOME; 'c' %f";
  WriteFile(odd + "/morvane.exe", "#!/bin/sh\necho \"$0\" > \"${0%/*}/seen\"\n");
  chmod(PathOf(odd + "/morvane.exe").c_str(), 0755);
  EXPECT_EQ(RunEngine(desktop, PathOf(odd)), "");
  EXPECT_EQ(ReadFile(odd + "/seen"), PathOf(odd) + "/morvane.exe\n");
}

}  // namespace
}  // namespace engine
