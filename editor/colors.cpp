#include "editor/colors.h"

#include "editor/fields.h"
#include "editor/frmColorPreview.h"

namespace editor {

void PickColor(QWidget& button, Dialogs& dialogs) {
  dialogs.CColorDialog.SetColor(button.property(kBackColor).toInt());
  if (const auto chosen = dialogs.CColorDialog.Show()) button.setProperty(kBackColor, *chosen);
}

void PreviewColors(QWidget& window) { frmColorPreview(window).exec(); }

}  // namespace editor
