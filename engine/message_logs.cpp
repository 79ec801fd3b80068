#include "engine/message_logs.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

#include <QAction>
#include <QMenu>
#include <QString>
#include <QWidget>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/qt_controls.h"

namespace engine {
namespace {

using platform::Control;

/// A message log of the engine and the View item that shows it, in the order of deleting.
struct MessageLog {
  const char* file;
  const char* menuItem;
};
constexpr MessageLog kMessageLogs[] = {
    {"custrank.log.txt", "mnuViewLogCustRank"},
    {"logparser.log.txt", "mnuViewLogLogParser"},
    {"morvane.log.txt", "mnuViewLogMain"},
    {"templateparser.log.txt", "mnuViewLogTemplateParser"},
};

constexpr char kLeadingItem[] = "mnuViewLogLogParser";

std::filesystem::path PathOf(const MessageLog& log, const std::string& programDirectory) {
  return platform::SystemPath(programDirectory + "\\" + log.file);
}

void TellWhyNotDeleted(platform::Desktop& desktop, QWidget* owner,
                       const std::filesystem::path& path, const std::error_code& error) {
  desktop.ShowMessage(
      owner,
      QStringLiteral("This message log could not be deleted:\n%1\n\n%2")
          .arg(QString::fromStdString(path.string()), QString::fromStdString(error.message())),
      platform::MessageStyle::kCritical, QStringLiteral("Message Logs"));
}

}  // namespace

void mnuView_Click(QWidget& window, const std::string& programDirectory) {
  for (const MessageLog& log : kMessageLogs) {
    Control<QAction>(window, log.menuItem)
        .setEnabled(platform::FileExists(PathOf(log, programDirectory)));
  }
  const bool hasLogs = Control<QAction>(window, kLeadingItem).isEnabled();
  Control<QMenu>(window, "mnuViewLog").menuAction()->setEnabled(hasLogs);
  Control<QAction>(window, "mnuViewLogsDelete").setEnabled(hasLogs);
}

std::string MessageLogOf(const std::string& menuItem) {
  const auto* const log =
      std::find_if(std::begin(kMessageLogs), std::end(kMessageLogs),
                   [&](const MessageLog& candidate) { return candidate.menuItem == menuItem; });
  return log == std::end(kMessageLogs) ? std::string() : log->file;
}

bool DeleteMessageLogs(platform::Desktop& desktop, QWidget* owner,
                       const std::string& programDirectory) {
  const platform::Answer answer = desktop.ShowMessage(
      owner, QStringLiteral("Are you sure you want to remove all message logs?"),
      platform::MessageStyle::kYesNoQuestion, QStringLiteral("Message Logs"));
  if (answer != platform::Answer::kYes) return false;
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
