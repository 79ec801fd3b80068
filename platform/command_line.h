#pragma once

#include <string>
#include <vector>

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
};

}  // namespace platform
