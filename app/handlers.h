#pragma once

namespace app {

class frmMain;

/// Connects every button, every check box that acts, and the tab control to its handler, by the
/// table in handlers.cpp. Those of the menus stand with them, in menus.cpp.
void ConnectHandlers(frmMain& window);

}  // namespace app
