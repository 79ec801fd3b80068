#include "app/file_actions.h"

#include <string>
#include <vector>

#include "app/frmMain.h"
#include "editor/fields.h"
#include "editor/restore_defaults.h"
#include "editor/save_settings.h"
#include "engine/print.h"
#include "ui/events.h"
#include "ui/failure.h"

namespace app {
namespace {

void TellLeftOut(frmMain& window, const std::vector<std::string>& names) {
  QString text =
      "The settings have been saved without these user variables. A name that begins with \"[\", "
      "\";\" or \"//\" cannot stand in the file:\n";
  for (const std::string& name : names) text += "\n" + editor::ToQt(name);
  window.Desktop().ShowMessage(&window, text, ui::MessageStyle::kCritical,
                               editor::ToQt(config::kConfigFileName));
}

}  // namespace

void TellLoadFailure(frmMain& window) {
  ui::TellFailure(window.Desktop(), &window,
                  {.what = "The settings could not be read from:",
                   .path = window.Ini().ConfigFilePath(),
                   .reason = window.LoadFailure(),
                   .consequence = "The window shows none of them, so it does not save, print or "
                                  "create statistics. Put the file right and start the program "
                                  "again."});
}

bool Save(frmMain& window) {
  if (window.CurrentActivity() == Activity::kSaving) return false;
  if (!window.LoadFailure().empty()) {
    TellLoadFailure(window);
    return false;
  }
  editor::SaveResult result;
  {
    const ActivityScope saving(window, Activity::kSaving);
    result = editor::SaveSettings(window, window.Ini(), ui::PumpEvents);
  }
  const bool prints = window.TakePrintRequest();
  if (!result.failure.empty()) {
    ui::TellFailure(window.Desktop(), &window,
                    {.what = "The settings could not be saved to:",
                     .path = window.Ini().ConfigFilePath(),
                     .reason = result.failure,
                     .consequence = "The window keeps them; the file is as it was."});
    return false;
  }
  window.SetStatus("Configuration Saved.");
  if (!result.leftOut.empty()) TellLeftOut(window, result.leftOut);
  if (prints) engine::PrintConfiguration(window.Desktop(), window.Ini().ProgramDirectory());
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
