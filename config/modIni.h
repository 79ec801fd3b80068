#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "config/profile_text.h"

namespace config {

/// Name of the engine's settings file, which lies in the program directory.
inline constexpr std::string_view kConfigFileName = "morvane.cfg";

/// Longest value that a read returns, in characters.
inline constexpr std::size_t kMostCharacters = 255;

/// The one way to the settings file: single keys, the names of a section, the emptying of
/// sections. Each call reads or replaces the file on its own, so that it sees what the calls
/// before it wrote; `Stage` gathers many calls into one.
class modIni {
 public:
  /// `programDirectory`: the folder of the file, without a trailing separator.
  explicit modIni(std::string programDirectory);
  modIni(const modIni&) = delete;
  modIni& operator=(const modIni&) = delete;

  const std::string& ProgramDirectory() const { return programDirectory_; }

  /// Program directory, separator, "morvane.cfg".
  std::string ConfigFilePath() const;

  /// The value of a key (see ProfileText::Get), at most 255 characters of it; empty for anything
  /// missing: file, section, key, or a file that cannot be read.
  std::string ReadIni(std::string_view section, std::string_view key) const;

  /// Whether a key stands in the file, with or without a value.
  bool HasKey(std::string_view section, std::string_view key) const;

  /// Writes a key (see ProfileText::Set). The file is replaced at once and only when the write
  /// changes it; a missing file is created. A failure is silent.
  void WriteIni(std::string_view section, std::string_view key, std::string_view value);

  /// The names of a section's keys, in the order of the file (see ProfileText::KeyNames).
  std::vector<std::string> KeyNames(std::string_view section) const;

  /// Removes the key lines of a section (see ProfileText::EmptySection); silent on failure.
  void ClearSection(std::string_view section);

  /// Leaves exactly two empty lines in front of every header and no blank line elsewhere (see
  /// ProfileText::SpaceHeaders); silent on failure. A save ends with it, so that sections it had
  /// to create look like the others and a second save finds nothing to change.
  void SpaceHeaders();

  /// Gathers the calls made while it lives: all of them work on one copy of the file, read when
  /// the stage is made. `Commit` puts the copy on disk in one step; without it nothing is written.
  /// One stage at a time.
  class Stage {
   public:
    explicit Stage(modIni& ini);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    /// Replaces the file by the copy, all or nothing (see platform::ReplaceFile). The result is
    /// empty, or says for a message to the user why the file could not be written; then the old
    /// file stands.
    std::string Commit();

   private:
    modIni& ini_;
  };

 private:
  /// What is on disk, and why it may not be replaced (empty when it may).
  struct Copy {
    ProfileText text;
    std::string obstacle;
  };

  Copy Load() const;
  std::string Store(const Copy& copy) const;
  template <class Edit>
  void Change(const Edit& edit);
  template <class Look>
  auto Read(const Look& look) const;

  std::string programDirectory_;
  std::unique_ptr<Copy> staged_;
};

}  // namespace config
