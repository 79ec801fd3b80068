#pragma once

#include <functional>

#include "editor/context.h"

namespace app {

class frmMain;

/// What the main window's own handlers are handed. It holds what any handler needs, so that all of
/// them stand in one table.
struct Context : editor::Context {
  frmMain& main;
};

/// Runs when a control or a menu item is used.
using Handler = std::function<void(const Context&)>;

}  // namespace app
