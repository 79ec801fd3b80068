#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A program that the desktop has registered, as its entry tells.
struct DesktopApplication {
  std::string command;    // the entry's Exec line
  std::string name;       // what %c stands for
  std::string icon;       // what %i stands for; empty for none
  std::string entryFile;  // what %k stands for
  bool runsInTerminal = false;
};

/// The argument list that opens a file with an application: the Exec line taken apart by the
/// quoting rules of the desktop entries, its field codes filled in. A line without a code for files
/// gets the file as its last argument. Empty when the line cannot be taken apart.
std::vector<std::string> ArgumentsToOpen(const DesktopApplication& application,
                                         const std::string& file);

/// The desktop's application for plain text; nothing when it has none.
std::optional<DesktopApplication> TextViewer();

}  // namespace platform
