#include "editor/load_settings.h"

#include "config/settings.h"
#include "config/user_vars.h"
#include "editor/fields.h"

namespace editor {

void LoadSettings(QWidget& window, const config::SettingsFile& file) {
  for (const config::Setting& setting : config::Settings()) {
    if (setting.encoding == config::Encoding::kEntries) {
      // A second key of constant value is written for the engine alone.
      const std::string_view secondKey =
          setting.secondConstant.empty() ? setting.secondKey : std::string_view();
      ShowEntries(
          window, setting,
          config::ReadEntries(file, setting.section, setting.countKey, setting.key, secondKey));
    } else if (setting.encoding == config::Encoding::kUserVariables) {
      ShowEntries(window, setting, config::LoadUserVars(file));
    } else {
      ShowValue(window, setting, file.ReadIni(setting.section, setting.key));
    }
  }
}

}  // namespace editor
