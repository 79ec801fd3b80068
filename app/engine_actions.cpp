#include "app/engine_actions.h"

#include "app/file_actions.h"
#include "app/frmMain.h"
#include "engine/message_logs.h"
#include "engine/print.h"
#include "engine/run_engine.h"

namespace app {

void cmdMakeStats_Click(frmMain& window) {
  if (window.CurrentActivity() != Activity::kIdle) return;
  if (!cmdSave_Click(window)) return;
  const ActivityScope running(window, Activity::kRunning);
  window.SetStatus("Generating Statistics...");
  const bool started =
      engine::RunEngine(window.Desktop(), &window, window.Ini().ProgramDirectory());
  window.SetStatus(started ? "Statistics Generated." : "Ready.");
}

void mnuFileGenerate_Click(frmMain& window) { cmdMakeStats_Click(window); }

void mnuFilePrint_Click(frmMain& window) {
  if (!cmdSave_Click(window)) return;
  engine::PrintConfiguration(window.Desktop(), window.Ini().ProgramDirectory());
}

void mnuViewLogsDelete_Click(frmMain& window) {
  if (engine::DeleteMessageLogs(window.Desktop(), &window, window.Ini().ProgramDirectory())) {
    window.SetStatus("Message Logs Deleted.");
  }
}

}  // namespace app
