#pragma once

#include <span>

#include "ui/layout.h"

namespace app {

using LayoutRows = std::span<const ui::ControlRow>;

/// The main window's controls outside the tabs (those on them: app/tabs.h): one table for the
/// window itself and one for the strip of command buttons, which the Tab key reaches last.
LayoutRows WindowLayout();
LayoutRows StripLayout();

/// The explanation beside the color buttons of two tabs.
inline constexpr const char* kColorHint =
    "To modify a color, click the desired button and choose a color.  Once the desired color is "
    "selected, press the OK button.  The button will now reflect your color choice.";

}  // namespace app
