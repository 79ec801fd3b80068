#include "config/user_vars.h"

#include <string>
#include <utility>

namespace config {

std::vector<Entry> LoadUserVars(const SettingsFile& file) {
  std::vector<Entry> variables;
  for (std::string& name : file.KeyNames(kUserVars)) {
    std::string value = file.ReadIni(kUserVars, name);
    variables.push_back({std::move(name), std::move(value)});
  }
  return variables;
}

}  // namespace config
