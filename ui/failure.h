#pragma once

#include <string>

class QWidget;

namespace ui {

class Desktop;

/// Something that was tried on a file or folder and failed.
struct Failure {
  std::string what;              // what was tried, for instance "This log could not be deleted:"
  std::string path;              // on what, in either notation
  std::string reason;            // why it failed
  std::string consequence = {};  // what follows for the user; may be empty
  std::string title = {};        // of the message box; empty: the file's name
};

/// Tells a failure to the user in a critical message box: what was tried, the path in the system's
/// notation, the reason and the consequence.
void TellFailure(Desktop& desktop, QWidget* owner, const Failure& failure);

}  // namespace ui
