#include "editor/colors.h"

#include "editor/fields.h"
#include "editor/frmColorPreview.h"
#include "ui/controls.h"

namespace editor {

using ui::Control;

void PickColor(QWidget& button, Dialogs& dialogs) {
  dialogs.CColorDialog.SetColor(button.property(kBackColor).toInt());
  if (const auto chosen = dialogs.CColorDialog.Show()) button.setProperty(kBackColor, *chosen);
}

void cmdTextColor_Click(QWidget& window, Dialogs& dialogs) {
  PickColor(Control<QWidget>(window, "cmdTextColor"), dialogs);
}

void cmdLinkColor_Click(QWidget& window, Dialogs& dialogs) {
  PickColor(Control<QWidget>(window, "cmdLinkColor"), dialogs);
}

void cmdVLinkColor_Click(QWidget& window, Dialogs& dialogs) {
  PickColor(Control<QWidget>(window, "cmdVLinkColor"), dialogs);
}

void cmdALinkColor_Click(QWidget& window, Dialogs& dialogs) {
  PickColor(Control<QWidget>(window, "cmdALinkColor"), dialogs);
}

void cmdBGColor_Click(QWidget& window, Dialogs& dialogs) {
  PickColor(Control<QWidget>(window, "cmdBGColor"), dialogs);
}

void cmdColumnColor_Click(QWidget& window, Dialogs& dialogs, int index) {
  PickColor(Control<QWidget>(window, QString("cmdColumnColor(%1)").arg(index)), dialogs);
}

void cmdNameColor_Click(QWidget& window, Dialogs& dialogs, int index) {
  PickColor(Control<QWidget>(window, QString("cmdNameColor(%1)").arg(index)), dialogs);
}

void cmdColorPreview_Click(QWidget& window) { frmColorPreview(window).exec(); }

void cmdKillPreview_Click(QWidget& window) { frmColorPreview(window).exec(); }

}  // namespace editor
