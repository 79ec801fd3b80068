#include "config/settings_file.h"

#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/replace_file.h"
#include "text/characters.h"

namespace config {

SettingsFile::SettingsFile(std::string programDirectory)
    : programDirectory_(std::move(programDirectory)) {
  std::error_code error;
  loaded_ = platform::ReadWholeFile(Path(), error);
  text_ = ProfileText(loaded_);
  missing_ = error == std::errc::no_such_file_or_directory;
  if (error) {
    loadFailure_ = error.message();
  } else if (!text_.IsUsable()) {
    loadFailure_ = "The file is UTF-16 text. Store it as UTF-8.";
  }
}

std::string SettingsFile::Path() const {
  return programDirectory_ + "/" + std::string(kConfigFileName);
}

std::string SettingsFile::ReadIni(std::string_view section, std::string_view key) const {
  std::string value = text_.Get(section, key).value_or("");
  value.resize(text::FirstCharacters(value, kMostCharacters).size());
  return value;
}

bool SettingsFile::HasKey(std::string_view section, std::string_view key) const {
  return text_.Get(section, key).has_value();
}

std::vector<std::string> SettingsFile::KeyNames(std::string_view section) const {
  return text_.KeyNames(section);
}

void SettingsFile::WriteIni(std::string_view section, std::string_view key,
                            std::string_view value) {
  text_.Set(section, key, value);
}

void SettingsFile::ClearSection(std::string_view section) { text_.EmptySection(section); }

void SettingsFile::SpaceHeaders() { text_.SpaceHeaders(); }

std::string SettingsFile::Store() const {
  if (!loadFailure_.empty() && !missing_) return loadFailure_;
  const std::string bytes = text_.Bytes();
  if (bytes == loaded_) return {};
  const std::error_code error = platform::ReplaceFile(Path(), bytes);
  return error ? error.message() : std::string();
}

}  // namespace config
