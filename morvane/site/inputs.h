#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

namespace morvane {

/// The files that a run reads or keeps, wherever the settings put them: no page may take the place
/// of one.
class Inputs {
 public:
  /// Adds a file, which need not exist yet. Its last part may be a pattern ("*", "?", "[...]"); it
  /// then stands for all files of the folder that match.
  void Add(const std::filesystem::path& file);

  /// Whether a file of this name in a folder, given by its canonical path, is one of them. Names
  /// that differ in the case of A to Z alone are the same, as they are on some file systems.
  bool Cover(const std::filesystem::path& folder, std::string_view name) const;

 private:
  std::unordered_set<std::string> files_;                                // canonical, folded
  std::vector<std::pair<std::filesystem::path, std::string>> patterns_;  // of a folder, folded
};

/// Why a page that would take the place of one of them is not written.
std::error_code IsAnInput();

}  // namespace morvane
