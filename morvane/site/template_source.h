#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/site/template.h"

namespace morvane {

/// The text of a template with its includes in place and its comments taken out, and the way back
/// from a position in it to the line of a file.
class TemplateSource {
 public:
  /// Reads a template file of a folder and what it includes. On failure returns false and fills
  /// `fault`.
  bool Read(const std::filesystem::path& folder, std::string_view name, TemplateFault& fault);

  const std::filesystem::path& Path() const { return path_; }
  const std::string& Text() const { return text_; }
  /// What the comments `{{! NAME: TEXT }}` of the file itself say, by lower-case name.
  const std::map<std::string, std::string>& Notes() const { return notes_; }
  /// The fault at a position of Text().
  TemplateFault FaultAt(std::size_t position, std::string text) const;

 private:
  /// Text from `position` on stands in `file` from `line` on.
  struct Piece {
    std::size_t position;
    std::string file;
    int line;
  };
  struct File;

  bool Append(const std::filesystem::path& path, int depth, TemplateFault& fault);
  bool AppendTag(File& file, std::size_t start, TemplateFault& fault);
  bool Include(const File& file, std::size_t start, std::string_view name, TemplateFault& fault);
  void AppendText(const File& file, std::size_t start, std::size_t end);
  void Note(std::string_view comment);

  std::filesystem::path folder_;
  std::filesystem::path path_;
  std::string text_;
  std::vector<Piece> pieces_;
  std::map<std::string, std::string> notes_;
};

/// The file that a template name stands for: the name with ".htmlt" where it has no extension.
std::filesystem::path TemplatePath(const std::filesystem::path& folder, std::string_view name);

}  // namespace morvane
