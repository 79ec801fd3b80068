#pragma once

#include <QWidget>

#include "editor/dialogs.h"

namespace editor {

/// Lets the user choose the colour of a colour button; the dialog opens on the colour that it has.
/// A cancelled dialog leaves the button as it was.
void PickColor(QWidget& button, Dialogs& dialogs);

void cmdTextColor_Click(QWidget& window, Dialogs& dialogs);
void cmdLinkColor_Click(QWidget& window, Dialogs& dialogs);
void cmdVLinkColor_Click(QWidget& window, Dialogs& dialogs);
void cmdALinkColor_Click(QWidget& window, Dialogs& dialogs);
void cmdBGColor_Click(QWidget& window, Dialogs& dialogs);
void cmdColumnColor_Click(QWidget& window, Dialogs& dialogs, int index);
void cmdNameColor_Click(QWidget& window, Dialogs& dialogs, int index);

// Both show the page and kill-table colours as they stand on the colour buttons, until the user
// closes the preview.
void cmdColorPreview_Click(QWidget& window);
void cmdKillPreview_Click(QWidget& window);

}  // namespace editor
