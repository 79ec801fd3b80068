#include "engine/message_logs.h"

#include <filesystem>
#include <system_error>

#include <QAction>
#include <QMenu>
#include <QString>
#include <QWidget>

#include "platform/files.h"
#include "platform/paths.h"
#include "ui/controls.h"

namespace engine {
namespace {

using ui::Control;

/// A message log of the engine and the View item that shows it.
struct MessageLog {
  const char* file;
  const char* menuItem;
};
constexpr MessageLog kCustRankLog = {"custrank.log.txt", "mnuViewLogCustRank"};
constexpr MessageLog kLogParserLog = {"logparser.log.txt", "mnuViewLogLogParser"};
constexpr MessageLog kMainLog = {"morvane.log.txt", "mnuViewLogMain"};
constexpr MessageLog kTemplateParserLog = {"templateparser.log.txt", "mnuViewLogTemplateParser"};

/// In the order of deleting.
constexpr MessageLog kMessageLogs[] = {kCustRankLog, kLogParserLog, kMainLog, kTemplateParserLog};

/// The log as the settings' notation names it.
std::string NameOf(const MessageLog& log, const std::string& programDirectory) {
  return programDirectory + "\\" + log.file;
}

std::filesystem::path PathOf(const MessageLog& log, const std::string& programDirectory) {
  return platform::SystemPath(NameOf(log, programDirectory));
}

void View(const MessageLog& log, ui::Desktop& desktop, QWidget* owner,
          const std::string& programDirectory) {
  ui::ViewTextFile(desktop, owner, NameOf(log, programDirectory));
}

void TellWhyNotDeleted(ui::Desktop& desktop, QWidget* owner, const std::filesystem::path& path,
                       const std::error_code& error) {
  desktop.ShowMessage(
      owner,
      QStringLiteral("This message log could not be deleted:\n%1\n\n%2")
          .arg(QString::fromStdString(path.string()), QString::fromStdString(error.message())),
      ui::MessageStyle::kCritical, QStringLiteral("Message Logs"));
}

}  // namespace

void mnuView_Click(QWidget& window, const std::string& programDirectory) {
  for (const MessageLog& log : kMessageLogs) {
    Control<QAction>(window, log.menuItem)
        .setEnabled(platform::FileExists(PathOf(log, programDirectory)));
  }
  const bool hasLogs = Control<QAction>(window, kLogParserLog.menuItem).isEnabled();
  Control<QMenu>(window, "mnuViewLog").menuAction()->setEnabled(hasLogs);
  Control<QAction>(window, "mnuViewLogsDelete").setEnabled(hasLogs);
}

void mnuViewLogCustRank_Click(ui::Desktop& desktop, QWidget* owner,
                              const std::string& programDirectory) {
  View(kCustRankLog, desktop, owner, programDirectory);
}

void mnuViewLogMain_Click(ui::Desktop& desktop, QWidget* owner,
                          const std::string& programDirectory) {
  View(kMainLog, desktop, owner, programDirectory);
}

void mnuViewLogLogParser_Click(ui::Desktop& desktop, QWidget* owner,
                               const std::string& programDirectory) {
  View(kLogParserLog, desktop, owner, programDirectory);
}

void mnuViewLogTemplateParser_Click(ui::Desktop& desktop, QWidget* owner,
                                    const std::string& programDirectory) {
  View(kTemplateParserLog, desktop, owner, programDirectory);
}

bool DeleteMessageLogs(ui::Desktop& desktop, QWidget* owner, const std::string& programDirectory) {
  const ui::Answer answer = desktop.ShowMessage(
      owner, QStringLiteral("Are you sure you want to remove all message logs?"),
      ui::MessageStyle::kYesNoQuestion, QStringLiteral("Message Logs"));
  if (answer != ui::Answer::kYes) return false;
  for (const MessageLog& log : kMessageLogs) {
    const std::filesystem::path path = PathOf(log, programDirectory);
    if (!platform::FileExists(path)) continue;
    if (const std::error_code error = platform::DeleteOneFile(path)) {
      TellWhyNotDeleted(desktop, owner, path, error);
    }
  }
  return true;
}

}  // namespace engine
