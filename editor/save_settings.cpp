#include "editor/save_settings.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include <QLineEdit>

#include "config/file_names.h"
#include "config/settings.h"
#include "config/user_vars.h"
#include "editor/fields.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/replace_file.h"
#include "ui/controls.h"
#include "ui/events.h"

namespace editor {
namespace {

namespace fs = std::filesystem;

/// Copies a file into a folder under its own name. The copy is a file of its own: its permissions
/// are those of the file that it replaces, or those of any new file.
void CopyInto(const fs::path& folder, std::string_view file) {
  std::error_code error;
  const fs::path source = platform::SystemPath(file);
  const fs::path target = folder / platform::FileNamePart(file);
  if (!fs::is_regular_file(source, error) || fs::equivalent(source, target, error)) return;
  const std::string bytes = platform::ReadWholeFile(source, error);
  if (!error) platform::ReplaceFile(target, bytes);
}

/// Trims the field of the background image and, where it names more than a bare file name, copies
/// the file to where the pages look for it. The output directory, when it is a relative path, is
/// taken from the current folder.
void CopyBackgroundImage(QWidget& window) {
  const QString output = ui::Control<QLineEdit>(window, "txtDestPath").text();
  const fs::path images = platform::SystemPath(output.toStdString()) / config::kImageFolder;
  std::error_code ignored;
  fs::create_directories(images, ignored);

  QLineEdit& field = ui::Control<QLineEdit>(window, "txtBkgndImage");
  const std::string text = field.text().toStdString();
  const std::string image = BackgroundImageAsStored(text);
  if (image != text) field.setText(ToQt(image));
  if (platform::HasSeparator(image)) ui::DoBeside([&] { CopyInto(images, image); });
}

void WriteEntries(const QWidget& window, const config::Setting& setting,
                  config::SettingsFile& file) {
  int number = 0;
  for (const config::Entry& entry : EntriesOf(window, setting)) {
    const std::string index = std::to_string(number++);
    file.WriteIni(setting.section, std::string(setting.key) + index, entry.first);
    if (setting.secondKey.empty()) continue;
    const std::string_view second =
        setting.secondConstant.empty() ? entry.second : setting.secondConstant;
    file.WriteIni(setting.section, std::string(setting.secondKey) + index, second);
  }
}

/// Writes all settings. The result are the names of the user variables that cannot be written.
std::vector<std::string> WriteSettings(const QWidget& window, config::SettingsFile& file) {
  std::vector<std::string> leftOut;
  for (const config::Setting& setting : config::Settings()) {
    switch (setting.encoding) {
      case config::Encoding::kEntries:
        WriteEntries(window, setting, file);
        break;
      case config::Encoding::kUserVariables:
        leftOut = config::WriteUserVars(file, EntriesOf(window, setting));
        break;
      default:
        file.WriteIni(setting.section, setting.key, ValueOf(window, setting));
    }
  }
  return leftOut;
}

}  // namespace

SaveResult SaveSettings(QWidget& window, const config::modIni& ini,
                        const std::function<void()>& pumpEvents) {
  config::SettingsFile file = ini.Load();
  config::ClearSections(file, pumpEvents);
  CopyBackgroundImage(window);
  std::vector<std::string> leftOut = WriteSettings(window, file);
  file.SpaceHeaders();
  std::string failure;
  ui::DoBeside([&] { failure = file.Store(); });
  return {std::move(failure), std::move(leftOut)};
}

}  // namespace editor
