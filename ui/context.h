#pragma once

#include <string>

class QWidget;

namespace ui {

class Desktop;

/// What the handler of a control or menu item is handed when the user uses it.
struct Context {
  QWidget& window;  // the main window; its controls are found by name
  Desktop& desktop;
  const std::string& programDirectory;  // without a trailing separator
  int index;                            // of a member of a control array; -1 for other controls
};

}  // namespace ui
