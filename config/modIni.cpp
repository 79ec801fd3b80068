#include "config/modIni.h"

#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/paths.h"
#include "text/characters.h"

namespace config {

modIni::modIni(std::string programDirectory) : programDirectory_(std::move(programDirectory)) {}

std::string modIni::ConfigFilePath() const {
  return programDirectory_ + "/" + std::string(kConfigFileName);
}

modIni::Copy modIni::Load() const {
  std::error_code error;
  Copy copy{ProfileText(platform::ReadWholeFile(ConfigFilePath(), error)), {}};
  if (error && error != std::errc::no_such_file_or_directory) {
    copy.obstacle = error.message();
  } else if (!copy.text.IsUsable()) {
    copy.obstacle = "The file is UTF-16 text. Store it as UTF-8 and try again.";
  }
  return copy;
}

std::string modIni::Store(const Copy& copy) const {
  if (!copy.obstacle.empty()) return copy.obstacle;
  const std::error_code error = platform::ReplaceFile(ConfigFilePath(), copy.text.Bytes());
  return error ? error.message() : std::string();
}

template <class Look>
auto modIni::Read(const Look& look) const {
  return staged_ ? look(staged_->text) : look(Load().text);
}

template <class Edit>
void modIni::Change(const Edit& edit) {
  if (staged_) {
    edit(staged_->text);
    return;
  }
  Copy copy = Load();
  const std::string before = copy.text.Bytes();
  edit(copy.text);
  if (copy.text.Bytes() != before) Store(copy);
}

std::string modIni::ReadIni(std::string_view section, std::string_view key) const {
  return Read([&](const ProfileText& text) {
    const std::string value = text.Get(section, key).value_or("");
    return std::string(text::FirstCharacters(value, kMostCharacters));
  });
}

bool modIni::HasKey(std::string_view section, std::string_view key) const {
  return Read([&](const ProfileText& text) { return text.Get(section, key).has_value(); });
}

void modIni::WriteIni(std::string_view section, std::string_view key, std::string_view value) {
  Change([&](ProfileText& text) { text.Set(section, key, value); });
}

std::vector<std::string> modIni::KeyNames(std::string_view section) const {
  return Read([&](const ProfileText& text) { return text.KeyNames(section); });
}

void modIni::ClearSection(std::string_view section) {
  Change([&](ProfileText& text) { text.EmptySection(section); });
}

void modIni::SpaceHeaders() {
  Change([](ProfileText& text) { text.SpaceHeaders(); });
}

modIni::Stage::Stage(modIni& ini) : ini_(ini) {
  ini_.staged_ = std::make_unique<Copy>(ini_.Load());
}

modIni::Stage::~Stage() { ini_.staged_.reset(); }

std::string modIni::Stage::Commit() { return ini_.Store(*ini_.staged_); }

}  // namespace config
