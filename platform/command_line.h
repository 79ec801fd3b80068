#pragma once

#include <string>
#include <vector>

#include "platform/paths.h"

namespace platform {

/// The name that stands for the desktop's viewer of text files, and its switch for printing.
inline constexpr const char* kNotepad = "notepad.exe";
inline constexpr const char* kPrintSwitch = "/p";

/// A program to start. It reaches the system as a list of arguments, never through a shell, so
/// that blanks, quotes, "$" and ";" in a file name are just characters.
struct CommandLine {
  std::string program;                // a path, or a bare name such as "notepad.exe"
  std::vector<std::string> switches;  // for instance "/p"
  std::string file;                   // the file to open; may be empty

  /// The argument list of a command that is started as it stands, its paths in the notation of the
  /// system.
  std::vector<std::string> Arguments() const {
    std::vector<std::string> arguments = {HasSeparator(program) ? SystemPath(program).string()
                                                                : program};
    arguments.insert(arguments.end(), switches.begin(), switches.end());
    if (!file.empty()) arguments.push_back(SystemPath(file).string());
    return arguments;
  }
};

}  // namespace platform
