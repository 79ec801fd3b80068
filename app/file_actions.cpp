#include "app/file_actions.h"

#include <string>

#include "app/frmMain.h"
#include "editor/restore_defaults.h"
#include "editor/save_settings.h"
#include "ui/events.h"

namespace app {

bool Save(frmMain& window) {
  if (window.CurrentActivity() == Activity::kSaving) return false;
  std::string failure;
  {
    const ActivityScope saving(window, Activity::kSaving);
    failure = editor::SaveSettings(window, window.Ini(), ui::PumpEvents);
  }
  if (!failure.empty()) {
    window.Desktop().ShowMessage(&window, QString::fromStdString(failure),
                                 ui::MessageStyle::kCritical,
                                 QString::fromStdString(std::string(config::kConfigFileName)));
    return false;
  }
  window.SetStatus("Configuration Saved.");
  return true;
}

void cmdSave_Click(const Context& context) { Save(context.main); }

void mnuFileSave_Click(const Context& context) { cmdSave_Click(context); }

void cmdDefaults_Click(const Context& context) {
  if (editor::ConfirmAndRestoreDefaults(context.window, context.desktop)) {
    context.main.SetStatus("Defaults Restored.");
  }
}

void mnuFileDefaults_Click(const Context& context) { cmdDefaults_Click(context); }

void cmdClose_Click(const Context& context) {
  context.main.SaveWindowState();
  context.main.close();
}

void mnuFileExit_Click(const Context& context) { cmdClose_Click(context); }

}  // namespace app
