#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/statistics/statistics.h"

namespace morvane {

/// The file name part for a name: only a-z, 0-9, "_" and "-", never empty, at most 57 characters,
/// the same in every run. Names that differ in more than case get different parts: where
/// characters had to be replaced, a number made from the whole name follows. `name`: NameText.
std::string FileNamePart(std::string_view name);

/// The file names of the pages. Those of players and maps are made from their names and stay the
/// same from run to run; a game's holds its own number, which it keeps.
class PageNames {
 public:
  PageNames() = default;
  /// `extension` begins with ".".
  PageNames(const Statistics& statistics, std::string extension);

  /// The page of a template that has one page: NAME and the extension.
  std::string Page(std::string_view templateName) const;
  /// The page of that name with a number in it: NAME-2.html for NAME.html; 0 is the name itself.
  std::string Numbered(const std::string& page, std::size_t number) const;
  std::string PlayerPage(std::string_view templateName, std::uint32_t player) const;
  std::string MapPage(std::string_view templateName, std::uint32_t map) const;
  std::string GamePage(std::string_view templateName, std::uint32_t game) const;

 private:
  std::string Join(std::string_view templateName, std::string_view part) const;

  std::string extension_;
  std::vector<std::string> players_;
  std::vector<std::string> maps_;
  std::vector<std::uint32_t> games_;  // their numbers
};

}  // namespace morvane
