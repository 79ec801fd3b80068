#include "config/modIni.h"

#include <utility>

namespace config {

modIni::modIni(std::string programDirectory) : programDirectory_(std::move(programDirectory)) {}

std::string modIni::ConfigFilePath() const {
  return programDirectory_ + "/" + std::string(kConfigFileName);
}

std::string modIni::ReadIni(std::string_view section, std::string_view key) const {
  return Load().ReadIni(section, key);
}

void modIni::WriteIni(std::string_view section, std::string_view key,
                      std::string_view value) const {
  SettingsFile file = Load();
  file.WriteIni(section, key, value);
  file.Store();
}

}  // namespace config
