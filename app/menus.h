#pragma once

#include <QMainWindow>

namespace app {

/// Builds the menu tree into the window's menu bar. Every menu (QMenu) and item (QAction, a child
/// of the window) has its name as object name.
void BuildMenus(QMainWindow& window);

}  // namespace app
