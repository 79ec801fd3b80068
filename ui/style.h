#pragma once

namespace ui {

/// Gives the program its own style, colors and window font, so that it looks the same on every
/// desktop. Call once, when the QApplication is made and before the first window.
void UseDesignedLook();

}  // namespace ui
