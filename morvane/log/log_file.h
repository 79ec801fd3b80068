#pragma once

#include <string>
#include <vector>

#include "morvane/report/report.h"

namespace morvane {

/// The only type of log there is: the server log of the game.
inline constexpr int kServerLog = 1000;

/// A log that the user names.
struct LogFile {
  std::string name;  ///< as the settings name it, for messages
  std::string path;  ///< absolute
  int type = kServerLog;
};

/// Whether a path may stand for several logs: its last part holds "*", "?" or "[".
bool IsPattern(std::string_view path);

/// The logs that the settings mean. A path whose last part is a pattern as a shell knows them ("*",
/// "?", "[...]") stands for the regular files of its folder that match, by the time of their last
/// change, those of one time by name; hidden files match only a pattern that begins with ".". A
/// file of exactly that name comes before the pattern. A pattern that nothing matches is a severe
/// message and stands for no log; every other log stays as it is.
std::vector<LogFile> FindLogs(const std::vector<LogFile>& named, Report& report);

}  // namespace morvane
