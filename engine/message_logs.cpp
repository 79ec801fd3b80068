#include "engine/message_logs.h"

#include <filesystem>
#include <system_error>

#include <QAction>
#include <QMenu>
#include <QString>
#include <QWidget>

#include "config/file_names.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "ui/controls.h"
#include "ui/desktop.h"
#include "ui/failure.h"

namespace engine {
namespace {

using ui::Control;

/// A message log of the engine and the View item that shows it.
struct MessageLog {
  const char* file;
  const char* menuItem;
};
constexpr MessageLog kCustRankLog = {config::kCustomRankLog, "mnuViewLogCustRank"};
constexpr MessageLog kLogParserLog = {config::kLogParserLog, "mnuViewLogLogParser"};
constexpr MessageLog kMainLog = {config::kMainLog, "mnuViewLogMain"};
constexpr MessageLog kTemplateParserLog = {config::kTemplateParserLog, "mnuViewLogTemplateParser"};

/// In the order of deleting.
constexpr MessageLog kMessageLogs[] = {kCustRankLog, kLogParserLog, kMainLog, kTemplateParserLog};

/// The log as the settings' notation names it.
std::string NameOf(const MessageLog& log, const std::string& programDirectory) {
  return programDirectory + "\\" + log.file;
}

std::filesystem::path PathOf(const MessageLog& log, const std::string& programDirectory) {
  return platform::SystemPath(NameOf(log, programDirectory));
}

void View(const MessageLog& log, const ui::Context& context) {
  ui::ViewTextFile(context.desktop, &context.window, NameOf(log, context.programDirectory));
}

}  // namespace

void mnuView_Click(const ui::Context& context) {
  for (const MessageLog& log : kMessageLogs) {
    Control<QAction>(context.window, log.menuItem)
        .setEnabled(platform::FileExists(PathOf(log, context.programDirectory)));
  }
  const bool hasLogs = Control<QAction>(context.window, kLogParserLog.menuItem).isEnabled();
  Control<QMenu>(context.window, "mnuViewLog").menuAction()->setEnabled(hasLogs);
  Control<QAction>(context.window, "mnuViewLogsDelete").setEnabled(hasLogs);
}

void mnuViewLogCustRank_Click(const ui::Context& context) { View(kCustRankLog, context); }

void mnuViewLogMain_Click(const ui::Context& context) { View(kMainLog, context); }

void mnuViewLogLogParser_Click(const ui::Context& context) { View(kLogParserLog, context); }

void mnuViewLogTemplateParser_Click(const ui::Context& context) {
  View(kTemplateParserLog, context);
}

bool DeleteMessageLogs(const ui::Context& context) {
  const ui::Answer answer = context.desktop.ShowMessage(
      &context.window, QStringLiteral("Are you sure you want to remove all message logs?"),
      ui::MessageStyle::kYesNoQuestion, QStringLiteral("Message Logs"));
  if (answer != ui::Answer::kYes) return false;
  for (const MessageLog& log : kMessageLogs) {
    const std::filesystem::path path = PathOf(log, context.programDirectory);
    if (!platform::FileExists(path)) continue;
    if (const std::error_code error = platform::DeleteOneFile(path)) {
      ui::TellFailure(context.desktop, &context.window,
                      {.what = "This message log could not be deleted:",
                       .path = path.string(),
                       .reason = error.message(),
                       .title = "Message Logs"});
    }
  }
  return true;
}

}  // namespace engine
