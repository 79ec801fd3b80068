#pragma once

#include <string>

namespace morvane {

/// The only type of log there is: the server log of the game.
inline constexpr int kServerLog = 1000;

/// A log that the user names.
struct LogFile {
  std::string name;  ///< as the settings name it, for messages
  std::string path;  ///< absolute
  int type = kServerLog;
};

}  // namespace morvane
