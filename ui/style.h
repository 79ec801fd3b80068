#pragma once

namespace ui {

/// Gives the program its own style and window font, so that it is laid out the same on every
/// desktop, and its own colors, unless the desktop has a color scheme: dark ones and those of high
/// contrast are what the user needs. Call when the QApplication is made and before the first
/// window.
void UseDesignedLook();

}  // namespace ui
