#include "editor/colors.h"

#include "editor/fields.h"
#include "editor/frmColorPreview.h"
#include "ui/controls.h"

namespace editor {

using ui::Control;

void PickColor(QWidget& button, Dialogs& dialogs) {
  dialogs.CColorDialog.SetColor(button.property(kBackColor).toInt());
  if (const auto chosen = dialogs.CColorDialog.Show(button.accessibleName()))
    button.setProperty(kBackColor, *chosen);
}

void cmdTextColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, "cmdTextColor"), context.dialogs);
}

void cmdLinkColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, "cmdLinkColor"), context.dialogs);
}

void cmdVLinkColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, "cmdVLinkColor"), context.dialogs);
}

void cmdALinkColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, "cmdALinkColor"), context.dialogs);
}

void cmdBGColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, "cmdBGColor"), context.dialogs);
}

void cmdColumnColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, QString("cmdColumnColor(%1)").arg(context.index)),
            context.dialogs);
}

void cmdNameColor_Click(const Context& context) {
  PickColor(Control<QWidget>(context.window, QString("cmdNameColor(%1)").arg(context.index)),
            context.dialogs);
}

void cmdColorPreview_Click(const Context& context) { frmColorPreview(context.window).exec(); }

void cmdKillPreview_Click(const Context& context) { frmColorPreview(context.window).exec(); }

}  // namespace editor
