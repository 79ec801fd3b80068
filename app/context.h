#pragma once

#include "editor/context.h"

namespace app {

class frmMain;

/// What the main window's own handlers are handed. It holds what any handler needs, so that all of
/// them stand in one table.
struct Context : editor::Context {
  frmMain& main;
};

}  // namespace app
