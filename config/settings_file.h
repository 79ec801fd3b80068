#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/profile_text.h"

namespace config {

/// Name of the engine's settings file, which lies in the program directory.
inline constexpr std::string_view kConfigFileName = "morvane.cfg";

/// Longest value that a read returns, in characters.
inline constexpr std::size_t kMostCharacters = 255;

/// The settings file as a value: what stood on disk when it was loaded, with the changes made
/// since. Nothing reaches the disk before Store, and what happens on disk meanwhile does not reach
/// it.
class SettingsFile {
 public:
  /// Reads "morvane.cfg" of the program directory (no trailing separator). A file that is missing
  /// or cannot be read gives empty settings, see LoadFailure.
  explicit SettingsFile(std::string programDirectory);

  const std::string& ProgramDirectory() const { return programDirectory_; }

  /// Program directory, separator, "morvane.cfg".
  std::string Path() const;

  /// Why the file could not be read, for a message to the user; empty when it was read.
  const std::string& LoadFailure() const { return loadFailure_; }

  /// Whether nothing but blanks and line breaks was read.
  bool IsEmpty() const { return loaded_.find_first_not_of(" \t\r\n") == std::string::npos; }

  /// The value of a key (see ProfileText::Get), at most 255 characters of it; empty for anything
  /// missing.
  std::string ReadIni(std::string_view section, std::string_view key) const;

  /// Whether a key stands in the file, with or without a value.
  bool HasKey(std::string_view section, std::string_view key) const;

  /// The names of a section's keys, in the order of the file (see ProfileText::KeyNames).
  std::vector<std::string> KeyNames(std::string_view section) const;

  /// Writes a key (see ProfileText::Set); the next ReadIni finds it.
  void WriteIni(std::string_view section, std::string_view key, std::string_view value);

  /// Removes the key lines of a section (see ProfileText::EmptySection).
  void ClearSection(std::string_view section);

  /// Leaves exactly two empty lines in front of every header and no blank line elsewhere (see
  /// ProfileText::SpaceHeaders). A save ends with it, so that sections it had to create look like
  /// the others and a second save finds nothing to change.
  void SpaceHeaders();

  /// Replaces the file on disk, all or nothing (see platform::ReplaceFile); creates a missing one.
  /// The result is empty, or says for a message to the user why the file could not be written; then
  /// the old file stands. A file that could not be read is not written either, and one that holds
  /// these bytes already is left alone.
  std::string Store() const;

 private:
  std::string programDirectory_;
  std::string loadFailure_;
  bool missing_ = false;
  std::string loaded_;  // the bytes on disk
  ProfileText text_;
};

}  // namespace config
