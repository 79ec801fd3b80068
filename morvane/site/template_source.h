#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/site/template.h"

namespace morvane {

/// The text of a template with its includes in place and its comments taken out, and the way back
/// from a position in it to the line of a file. Cost: linear in the bytes of the files, a file that
/// is included twice counted twice.
class TemplateSource {
 public:
  /// What the files that a template includes, and they in turn, may have in bytes: files that
  /// include each other twice double with each step.
  static constexpr std::size_t kMostIncluded = std::size_t{1} << 20;
  /// How many sections may stand one inside the other.
  static constexpr int kMostNested = 64;

  /// Reads a template file of a folder and what it includes. The result is what is wrong with it.
  std::optional<TemplateFault> Read(const std::filesystem::path& folder, std::string_view name);

  const std::filesystem::path& Path() const { return path_; }
  const std::string& Text() const { return text_; }
  /// What the comments `{{! NAME: TEXT }}` of the file itself say, by lower-case name.
  const std::map<std::string, std::string>& Notes() const { return notes_; }
  /// The fault at a position of Text().
  TemplateFault FaultAt(std::size_t position, std::string text) const;

 private:
  /// Text from `position` on stands in a file from `line` on.
  struct Piece {
    std::size_t position;
    std::size_t file;  // index into files_
    int line;
  };
  struct File;

  std::optional<TemplateFault> Append(const std::filesystem::path& path, int depth);
  std::optional<TemplateFault> AppendTag(File& file);
  std::optional<TemplateFault> Include(const File& file, std::string_view name);
  void AppendUpTo(File& file, std::size_t end);
  std::optional<TemplateFault> FindDeepSection() const;
  void Note(std::string_view comment);

  std::filesystem::path folder_;
  std::filesystem::path path_;
  std::string text_;
  std::vector<std::string> files_;
  std::vector<Piece> pieces_;
  std::map<std::string, std::string> notes_;
  std::size_t included_ = 0;  // bytes of all files but the first
};

/// The file that a template name stands for: the name with ".htmlt" where it has no extension.
std::filesystem::path TemplatePath(const std::filesystem::path& folder, std::string_view name);

}  // namespace morvane
