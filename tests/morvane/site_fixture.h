#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/morvane/test_support.h"

namespace morvane::test {

/// A program directory with the shipped settings, its limits lifted, and the shipped templates.
class SiteRun {
 public:
  SiteRun();

  std::filesystem::path Folder() const { return folder_.Path(); }
  std::filesystem::path Output() const { return Folder() / "output"; }
  /// Changes a setting.
  void Set(std::string_view section, std::string_view key, std::string_view value);
  /// Takes this folder as the template directory; the shipped templates lie in it for changing.
  std::filesystem::path OwnTemplates();
  /// Makes the log of the next run.
  void Log(std::string_view text);
  /// Runs the engine; the result is its exit code.
  int Run();

  /// The text of a file of the output, empty when there is none.
  std::string Page(const std::string& name) const { return ReadFile(Output() / name); }
  /// All files of the output folder itself, by name.
  std::map<std::string, std::string> Pages() const;
  std::string Messages(const std::string& log) const { return ReadFile(Folder() / log); }

 private:
  TempFolder folder_;
};

/// Names as strangers choose them.
inline const std::vector<std::string> kHostileNames = {"<script>alert(1)</script>",
                                                       "../../x",
                                                       "'; DROP TABLE players; --",
                                                       "   ",
                                                       "\u202Eevil\a\x1B[31m",
                                                       "\"><img src=x onerror=alert(1)>",
                                                       "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D",
                                                       "^1<^2b^3>{{vars.secret}}",
                                                       "caf\xE9 &amp; co",
                                                       "a b",
                                                       "a_b",
                                                       "A.B"};

/// A log with everything in it: hostile names, teams, items, falls, long rows, more players and
/// games than fit into a table or a list.
std::string RichLog();

/// A game of sixty players, each of whom kills the next: Guest`first` and those after.
std::string FullHouse(int first);

/// A game in which Bob leads by eight and leaves it to Ann; Cid comes late, Dan leaves; a mod tells
/// awards and flags.
std::string Turnaround();

/// A log of one game: the first of `names` kills the others, one kill more than the one before.
std::string OneGame(const std::vector<std::string>& names);

inline constexpr std::int64_t kFriday = 1772820000;  // of March 2026, in the evening
inline constexpr std::int64_t kDay = std::int64_t{24} * 3600;

/// A game of a known date.
std::string DatedDuel(std::int64_t start, std::string_view winner, std::string_view loser,
                      int kills);

/// Long ago Ann leads Bob; then a Friday evening, and a Saturday on which Bob overtakes her and Cid
/// comes.
std::string Weekend();

/// A small log: a boss, whom one of three has beaten.
std::string CaseLog();

/// Fails for each link of the pages that leads to no file of the site.
void ExpectLinksResolve(const SiteRun& site);

/// How often a text stands in another.
std::size_t Count(std::string_view text, std::string_view part);

}  // namespace morvane::test
