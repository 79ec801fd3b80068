#pragma once

#include <QWidget>

#include "editor/dialogs.h"

namespace editor {

/// Lets the user choose the colour of a colour button; the dialog opens on the colour that it has.
/// A cancelled dialog leaves the button as it was.
void PickColor(QWidget& button, Dialogs& dialogs);

/// Shows the page and kill-table colours as they stand on the colour buttons, until the user closes
/// the preview.
void PreviewColors(QWidget& window);

}  // namespace editor
