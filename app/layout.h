#pragma once

#include <span>

#include "ui/layout.h"

namespace app {

using LayoutRows = std::span<const ui::ControlRow>;

/// The main window's controls, one table for the window itself, one for each tab, and one for the
/// strip of command buttons. The Tab key goes through them in this order.
LayoutRows WindowLayout();
LayoutRows MainLayout();
LayoutRows LogsLayout();
LayoutRows GameLayout();
LayoutRows HtmlLayout();
LayoutRows KillTablesLayout();
LayoutRows TemplatesLayout();
LayoutRows UserVarsLayout();
LayoutRows AboutLayout();
LayoutRows StripLayout();

/// The explanation beside the color buttons of two tabs.
inline constexpr const char* kColorHint =
    "To modify a color, click the desired button and choose a color.  Once the desired color is "
    "selected, press the OK button.  The button will now reflect your color choice.";

}  // namespace app
