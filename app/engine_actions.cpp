#include "app/engine_actions.h"

#include <string>

#include "app/file_actions.h"
#include "app/frmMain.h"
#include "engine/message_logs.h"
#include "engine/print.h"
#include "engine/run_engine.h"
#include "ui/failure.h"

namespace app {
namespace {

constexpr char kGenerating[] = "Generating Statistics...";

}  // namespace

void cmdMakeStats_Click(const Context& context) {
  frmMain& window = context.main;
  if (window.CurrentActivity() == Activity::kRunning) window.SetStatus(kGenerating);
  if (window.CurrentActivity() != Activity::kIdle) return;
  if (!Save(window)) return;
  const ActivityScope running(window, Activity::kRunning);
  window.SetStatus(kGenerating);
  const std::string failure = engine::RunEngine(context.desktop, context.programDirectory);
  if (!failure.empty()) {
    ui::TellFailure(context.desktop, &window,
                    {.what = "The statistics engine could not be started:",
                     .path = engine::EnginePath(context.programDirectory),
                     .reason = failure,
                     .consequence = "The settings have been saved; no statistics were created."});
  }
  window.SetStatus(failure.empty() ? "Statistics Generated." : "Ready.");
}

void mnuFileGenerate_Click(const Context& context) { cmdMakeStats_Click(context); }

void mnuFilePrint_Click(const Context& context) {
  if (context.main.CurrentActivity() == Activity::kSaving) {
    context.main.RequestPrint();
    return;
  }
  if (!Save(context.main)) return;
  engine::PrintConfiguration(context.desktop, context.programDirectory);
}

void mnuViewLogsDelete_Click(const Context& context) {
  if (engine::DeleteMessageLogs(context)) context.main.SetStatus("Message Logs Deleted.");
}

}  // namespace app
