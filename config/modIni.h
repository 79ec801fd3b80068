#pragma once

#include <string>
#include <string_view>

#include "config/settings_file.h"

namespace config {

/// Single keys of the settings file on disk. Each call is complete in itself: it sees what the
/// calls before it wrote. What reads or writes many keys loads the file once instead, see Load.
class modIni {
 public:
  /// `programDirectory`: the folder of the file, without a trailing separator.
  explicit modIni(std::string programDirectory);

  const std::string& ProgramDirectory() const { return programDirectory_; }

  /// Program directory, separator, "morvane.cfg".
  std::string ConfigFilePath() const;

  /// The whole file as it stands now.
  SettingsFile Load() const { return SettingsFile(programDirectory_); }

  /// See SettingsFile::ReadIni; empty also for a file that is missing or cannot be read.
  std::string ReadIni(std::string_view section, std::string_view key) const;

  /// Writes a key (see SettingsFile::WriteIni). The file is replaced at once and only when the
  /// write changes it; a missing file is created. A failure is silent.
  void WriteIni(std::string_view section, std::string_view key, std::string_view value) const;

 private:
  std::string programDirectory_;
};

}  // namespace config
