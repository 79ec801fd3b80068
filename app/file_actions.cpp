#include "app/file_actions.h"

#include <string>

#include "app/frmMain.h"
#include "editor/restore_defaults.h"
#include "editor/save_settings.h"
#include "ui/events.h"

namespace app {

bool cmdSave_Click(frmMain& window) {
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

void mnuFileSave_Click(frmMain& window) { cmdSave_Click(window); }

void cmdDefaults_Click(frmMain& window) {
  if (editor::ConfirmAndRestoreDefaults(window, window.Desktop())) {
    window.SetStatus("Defaults Restored.");
  }
}

void mnuFileDefaults_Click(frmMain& window) { cmdDefaults_Click(window); }

}  // namespace app
