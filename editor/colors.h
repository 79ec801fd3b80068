#pragma once

#include <QWidget>

#include "editor/context.h"

namespace editor {

/// Lets the user choose the color of a color button; the dialog opens on the color that it has,
/// titled by the button's accessible name.
/// A cancelled dialog leaves the button as it was.
void PickColor(QWidget& button, Dialogs& dialogs);

void cmdTextColor_Click(const Context& context);
void cmdLinkColor_Click(const Context& context);
void cmdVLinkColor_Click(const Context& context);
void cmdALinkColor_Click(const Context& context);
void cmdBGColor_Click(const Context& context);
void cmdColumnColor_Click(const Context& context);
void cmdNameColor_Click(const Context& context);

// Both show the page and kill-table colors as they stand on the color buttons, until the user
// closes the preview.
void cmdColorPreview_Click(const Context& context);
void cmdKillPreview_Click(const Context& context);

}  // namespace editor
