#include "engine/message_logs.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <QAction>
#include <QLineEdit>
#include <QMenu>

#include "tests/engine/engine_test.h"
#include "ui/controls.h"

namespace engine {
namespace {

using app::frmMain;
using support::Choose;
using support::StatusText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using ui::Answer;
using ui::Control;

constexpr const char* kLogs[] = {"custrank.log.txt", "logparser.log.txt", "morvane.log.txt",
                                 "templateparser.log.txt"};

class MessageLogsTest : public EngineTest {
 protected:
  void WriteLogs() const {
    for (const char* log : kLogs) WriteFile(log, "text");
  }
  int CountLogs() const {
    int count = 0;
    for (const char* log : kLogs) count += std::filesystem::exists(PathOf(log)) ? 1 : 0;
    return count;
  }
};

/// One letter for each item that is enabled: submenu, custom rank, main, log parser, template
/// parser, delete.
std::string Enabled(frmMain& window) {
  std::string letters;
  if (Control<QMenu>(window, "mnuViewLog").menuAction()->isEnabled()) letters += 'S';
  const struct {
    const char* item;
    char letter;
  } items[] = {{"mnuViewLogCustRank", 'c'},
               {"mnuViewLogMain", 'm'},
               {"mnuViewLogLogParser", 'l'},
               {"mnuViewLogTemplateParser", 't'},
               {"mnuViewLogsDelete", 'D'}};
  for (const auto& [item, letter] : items) {
    if (Control<QAction>(window, item).isEnabled()) letters += letter;
  }
  return letters;
}

TEST_F(MessageLogsTest, TheViewMenuOffersTheLogsThatExist) {
  frmMain& window = OpenWindow();
  EXPECT_EQ(Enabled(window), "ScmltD") << "before the menu was opened";
  const struct {
    std::vector<const char*> logs;
    const char* enabled;
  } cases[] = {{{}, ""},
               {{"logparser.log.txt"}, "SlD"},
               {{"custrank.log.txt", "morvane.log.txt", "templateparser.log.txt"}, "cmt"},
               {{"logparser.log.txt", "morvane.log.txt"}, "SmlD"}};
  for (const auto& [logs, enabled] : cases) {
    for (const char* log : kLogs) std::filesystem::remove(PathOf(log));
    for (const char* log : logs) WriteFile(log, "");
    emit Control<QMenu>(window, "mnuView").aboutToShow();
    EXPECT_EQ(Enabled(window), enabled);
  }
  std::filesystem::remove(PathOf("logparser.log.txt"));
  std::filesystem::create_directory(PathOf("logparser.log.txt"));
  emit Control<QMenu>(window, "mnuView").aboutToShow();
  EXPECT_EQ(Enabled(window), "m") << "a folder is no log";
}

TEST_F(MessageLogsTest, ALogThatCannotBeShownIsTold) {
  frmMain& window = OpenWindow();
  Choose(window, "mnuViewLogMain");
  EXPECT_THAT(desktop.detached,
              ElementsAre("notepad.exe \"" + Directory() + "\\morvane.log.txt\""));
  EXPECT_THAT(desktop.messages, IsEmpty());
  EXPECT_EQ(StatusText(window), "Ready.");

  desktop.detachedFailure = "No viewer";
  Choose(window, "mnuViewLogMain");
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].title, "morvane.log.txt");
  EXPECT_EQ(desktop.messages[0].text.toStdString(),
            "No text viewer could be started for this file:\n" + PathOf("morvane.log.txt") +
                "\n\nNo viewer");
}

TEST_F(MessageLogsTest, DeletesTheLogsAfterAQuestion) {
  WriteLogs();
  frmMain& window = OpenWindow();
  desktop.answers = {Answer::kNo};
  Choose(window, "mnuViewLogsDelete");
  EXPECT_EQ(CountLogs(), 4);
  EXPECT_EQ(StatusText(window), "Ready.");
  ASSERT_EQ(desktop.messages.size(), 1U);
  EXPECT_EQ(desktop.messages[0].text, "Are you sure you want to remove all message logs?");
  EXPECT_EQ(desktop.messages[0].title, "Message Logs");
  EXPECT_EQ(desktop.messages[0].style, ui::MessageStyle::kYesNoQuestion);

  std::filesystem::remove(PathOf("morvane.log.txt"));
  desktop.answers = {Answer::kYes};
  Choose(window, "mnuViewLogsDelete");
  EXPECT_EQ(CountLogs(), 0);
  EXPECT_EQ(StatusText(window), "Message Logs Deleted.");
  EXPECT_EQ(desktop.messages.size(), 2U) << "a log that is not there was complained about";
}

TEST_F(MessageLogsTest, ALogThatCannotBeDeletedIsToldAndTheNextFollows) {
  WriteLogs();
  frmMain& window = OpenWindow();
  desktop.answers = {Answer::kYes};
  // Root may delete anything, so the test gives its rights up for the time.
  const uid_t user = geteuid();
  const auto permissions = std::filesystem::status(Directory()).permissions();
  std::filesystem::permissions(Directory(), static_cast<std::filesystem::perms>(0555));
  std::filesystem::permissions(std::filesystem::path(Directory()).parent_path(),
                               static_cast<std::filesystem::perms>(0755));
  if (user == 0) {
    ASSERT_EQ(seteuid(65534), 0);
  }
  Choose(window, "mnuViewLogsDelete");
  ASSERT_EQ(seteuid(user), 0);
  std::filesystem::permissions(Directory(), permissions);
  EXPECT_EQ(CountLogs(), 4);
  ASSERT_EQ(desktop.messages.size(), 5U);
  for (std::size_t log = 0; log < 4; ++log) {
    const std::string text = desktop.messages[log + 1].text.toStdString();
    EXPECT_THAT(text, HasSubstr(PathOf(kLogs[log])));
    EXPECT_THAT(text, HasSubstr(std::generic_category().message(EACCES)));
  }
  EXPECT_EQ(StatusText(window), "Message Logs Deleted.");
}

TEST_F(MessageLogsTest, PrintingSavesFirstAndFailsSilently) {
  frmMain& window = OpenWindow();
  Control<QLineEdit>(window, "txtMinKills").setText("4711");
  desktop.detachedFailure = "No printer";
  Choose(window, "mnuFilePrint");
  EXPECT_THAT(ReadFile("morvane.cfg"), HasSubstr("4711"));
  EXPECT_EQ(StatusText(window), "Configuration Saved.");
  EXPECT_THAT(desktop.detached, ElementsAre("notepad.exe /p \"" + Directory() + "\\morvane.cfg\""));
  EXPECT_THAT(desktop.messages, IsEmpty());

  chmod(PathOf("morvane.cfg").c_str(), 0444);
  Control<QLineEdit>(window, "txtMinKills").setText("4712");
  Choose(window, "mnuFilePrint");
  EXPECT_THAT(desktop.detached, testing::SizeIs(1)) << "printed although the save failed";
}

TEST_F(MessageLogsTest, PrintingDuringASaveFollowsIt) {
  frmMain& window = OpenWindow();
  auto& field = Control<QLineEdit>(window, "txtMinKills");
  const auto printDuringSave = [&] {
    QMetaObject::invokeMethod(
        &window,
        [&] {
          Choose(window, "mnuFilePrint");
          EXPECT_THAT(desktop.detached, IsEmpty()) << "printed before the save was done";
        },
        Qt::QueuedConnection);
    Choose(window, "mnuFileSave");
  };
  field.setText("4711");
  printDuringSave();
  EXPECT_THAT(desktop.detached, ElementsAre("notepad.exe /p \"" + Directory() + "\\morvane.cfg\""));
  EXPECT_THAT(ReadFile("morvane.cfg"), HasSubstr("4711"));
  EXPECT_EQ(StatusText(window), "Configuration Saved.");

  desktop.Forget();
  field.setText("4712");
  chmod(PathOf("morvane.cfg").c_str(), 0444);
  printDuringSave();
  EXPECT_THAT(desktop.messages, testing::SizeIs(1));
  chmod(PathOf("morvane.cfg").c_str(), 0644);
  Choose(window, "mnuFileSave");
  EXPECT_THAT(desktop.detached, IsEmpty()) << "a save that failed is not printed, then or later";
}

}  // namespace
}  // namespace engine
