#pragma once

#include "editor/dialogs.h"
#include "editor/edit_menu.h"
#include "ui/context.h"

namespace editor {

/// What the handlers of the editing aids are handed.
struct Context : ui::Context {
  Dialogs& dialogs;
  EditMenu& editMenu;
};

}  // namespace editor
