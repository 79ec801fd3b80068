// The user variables of a save: a settings file (the first part) is emptied of its own and given
// others (name, value), stored and loaded again.

#include <map>
#include <string>

#include "config/settings_file.h"
#include "config/user_vars.h"
#include "tests/fuzz/scratch_file.h"
#include "tests/fuzz/target.h"
#include "text/characters.h"
#include "text/text.h"

namespace {

using config::Entry;
using config::ProfileText;

/// What a value that is written reads as.
std::string AsRead(const std::string& value) {
  ProfileText text;
  text.Set("x", "k", value);
  return std::string(
      text::FirstCharacters(text.Get("x", "k").value_or(""), config::kMostCharacters));
}

/// The variables as they have to be read: of one name the last value counts.
std::map<std::string, std::string> Expected(const std::vector<Entry>& variables) {
  std::map<std::string, std::string> expected;
  for (const Entry& variable : variables) {
    if (!ProfileText::IsKeyName(variable.first)) continue;
    const std::string line =
        ProfileText::OneLine(variable.first) + "=" + ProfileText::OneLine(variable.second);
    const std::size_t equals = line.find('=');
    const std::string name(text::TrimBlanks(std::string_view(line).substr(0, equals)));
    expected[text::FoldCase(text::DecodeText(name))] = AsRead(line.substr(equals + 1));
  }
  return expected;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const fuzz::ScratchFile scratch{std::string(config::kConfigFileName)};
  const std::vector<std::string_view> parts = fuzz::Split(fuzz::Text(bytes, size), fuzz::kPart);
  std::vector<Entry> variables;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    std::vector<std::string_view> fields = fuzz::Split(parts[i], fuzz::kField);
    fields.resize(2);
    variables.push_back({std::string(fields[0]), std::string(fields[1])});
  }
  scratch.Write(parts[0]);
  config::SettingsFile file(scratch.Folder());
  if (!file.LoadFailure().empty()) return 0;
  const std::vector<std::string> others = file.KeyNames("Main");
  file.ClearSection(config::kUserVars);
  fuzz::Require(config::LoadUserVars(file).empty(), "an emptied section has no keys");
  config::WriteUserVars(file, variables);
  file.SpaceHeaders();
  fuzz::Require(file.KeyNames("Main") == others, "other sections keep their keys");

  const std::map<std::string, std::string> expected = Expected(variables);
  const std::vector<Entry> loaded = config::LoadUserVars(file);
  fuzz::Require(loaded.size() == expected.size(), "every name stands once");
  for (const auto& [name, value] : loaded) {
    const auto wanted = expected.find(text::FoldCase(name));
    fuzz::Require(wanted != expected.end() && wanted->second == value, "the value reads back");
  }
  return 0;
}
