#pragma once

namespace app {

class frmMain;

/// Connects every button, menu item, menu and tab change of the window to its handler, by the
/// table in handlers.cpp.
void ConnectHandlers(frmMain& window);

}  // namespace app
