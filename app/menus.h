#pragma once

namespace app {

class frmMain;

/// Builds the menu tree into the window's menu bar and connects it to its handlers. Every menu
/// (QMenu) and item (QAction, a child of the window) has its name as object name.
void BuildMenus(frmMain& window);

}  // namespace app
