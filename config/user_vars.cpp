#include "config/user_vars.h"

#include <string_view>
#include <unordered_map>
#include <utility>

#include "text/text.h"

namespace config {
namespace {

/// A variable as it reads back: its name ends at the first "=" and has no blanks around it.
Entry AsReadBack(const Entry& variable) {
  const std::string line =
      ProfileText::OneLine(variable.first) + "=" + ProfileText::OneLine(variable.second);
  const std::size_t equals = line.find('=');
  return {std::string(text::TrimBlanks(std::string_view(line).substr(0, equals))),
          line.substr(equals + 1)};
}

}  // namespace

std::vector<Entry> LoadUserVars(const SettingsFile& file) {
  std::vector<Entry> variables;
  for (std::string& name : file.KeyNames(kUserVars)) {
    std::string value = file.ReadIni(kUserVars, name);
    variables.push_back({std::move(name), std::move(value)});
  }
  return variables;
}

std::vector<std::string> WriteUserVars(SettingsFile& file, const std::vector<Entry>& variables) {
  std::vector<std::string> refused;
  std::vector<Entry> lines;
  std::unordered_map<std::string, std::size_t> places;
  for (const Entry& variable : variables) {
    if (!ProfileText::IsKeyName(variable.first)) {
      refused.push_back(variable.first);
      continue;
    }
    Entry line = AsReadBack(variable);
    const auto [place, isNew] = places.try_emplace(text::FoldCase(line.first), lines.size());
    if (isNew) {
      lines.push_back(std::move(line));
    } else {
      lines[place->second].second = std::move(line.second);
    }
  }
  for (const Entry& line : lines) file.WriteIni(kUserVars, line.first, line.second);
  return refused;
}

}  // namespace config
