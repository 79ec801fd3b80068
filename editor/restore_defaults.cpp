#include "editor/restore_defaults.h"

#include "config/settings.h"
#include "editor/fields.h"

namespace editor {

void RestoreDefaults(QWidget& window) {
  for (const config::Setting& setting : config::Settings()) {
    if (setting.encoding == config::Encoding::kUserVariables) continue;
    if (setting.encoding == config::Encoding::kEntries) {
      std::vector<config::Entry> entries;
      for (const config::DefaultEntry& entry : setting.defaultEntries) {
        entries.push_back({std::string(entry.first), std::string(entry.second)});
      }
      ShowEntries(window, setting, entries);
    } else {
      ShowValue(window, setting, setting.defaultValue);
    }
  }
}

bool ConfirmAndRestoreDefaults(QWidget& window, ui::Desktop& desktop) {
  const ui::Answer answer = desktop.ShowMessage(
      &window, "This will reset defaults for ALL settings.  Do you want to continue?",
      ui::MessageStyle::kYesNoQuestion, "Restore Defaults");
  if (answer != ui::Answer::kYes) return false;
  RestoreDefaults(window);
  return true;
}

}  // namespace editor
