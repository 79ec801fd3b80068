#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fnmatch.h>
#include <sys/stat.h>
#include <system_error>
#include <tuple>
#include <utility>

#include "morvane/log/log_file.h"
#include "platform/paths.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

/// A file that a pattern found.
struct Match {
  std::int64_t seconds = 0;  // of its last change
  std::int64_t nanoseconds = 0;
  std::string name;

  auto Order() const { return std::tie(seconds, nanoseconds, name); }
};

std::vector<Match> MatchesIn(const fs::path& folder, const std::string& pattern,
                             std::error_code& error) {
  std::vector<Match> matches;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    struct stat state {};
    if (fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD | FNM_NOESCAPE) == 0 &&
        stat(entry->path().c_str(), &state) == 0 && S_ISREG(state.st_mode)) {
      matches.push_back({state.st_mtim.tv_sec, state.st_mtim.tv_nsec, name});
    }
  }
  std::sort(matches.begin(), matches.end(),
            [](const Match& left, const Match& right) { return left.Order() < right.Order(); });
  return matches;
}

/// A name of a file instead of the last part of what the settings say.
std::string WithLastPart(const std::string& named, const std::string& name) {
  return named.substr(0, named.size() - platform::FileNamePart(named).size()) + name;
}

void AppendMatches(const LogFile& log, std::vector<LogFile>& found, Report& report) {
  const fs::path path = log.path;
  std::error_code error;
  const std::vector<Match> matches = MatchesIn(path.parent_path(), path.filename().string(), error);
  if (error) {
    report.Severe(Log::kParser, "its folder cannot be looked through: " + error.message(),
                  log.name);
  } else if (matches.empty()) {
    report.Severe(Log::kParser, "no file matches this pattern", log.name);
  }
  for (const Match& match : matches) {
    found.push_back(
        {WithLastPart(log.name, match.name), (path.parent_path() / match.name).string(), log.type});
  }
}

}  // namespace

bool IsPattern(std::string_view path) {
  return platform::FileNamePart(path).find_first_of("*?[") != std::string_view::npos;
}

std::vector<LogFile> FindLogs(const std::vector<LogFile>& named, Report& report) {
  std::vector<LogFile> found;
  for (const LogFile& log : named) {
    std::error_code ignored;
    const bool isPattern = log.type == kServerLog && IsPattern(log.path) &&
                           fs::symlink_status(log.path, ignored).type() == fs::file_type::not_found;
    if (isPattern) {
      AppendMatches(log, found, report);
    } else {
      found.push_back(log);
    }
  }
  return found;
}

}  // namespace morvane
