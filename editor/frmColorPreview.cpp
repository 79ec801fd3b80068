#include "editor/frmColorPreview.h"

#include <QPushButton>

#include "editor/fields.h"
#include "ui/controls.h"
#include "ui/layout.h"

namespace editor {
namespace {

using ui::Control;
using ui::ControlKind;
using ui::ControlRow;

constexpr int kWidth = 3855;
constexpr int kHeight = 3120;

constexpr ControlRow PlainLabel(const char* name, ui::Place place, const char* caption) {
  return ControlRow{ControlKind::kLabel, name, "picBack", place, caption}.In(ui::kPlainFont);
}

constexpr ControlRow Swatch(const char* name, int left) {
  return ControlRow{ControlKind::kLabel, name, "picBack", {left, 1440, 1095, 735}}.Bordered();
}

constexpr ControlRow Line(const char* name, int top) {
  return {ControlKind::kLine, name, "picBack", {120, top, 3240, 15}};
}

constexpr ControlRow kRows[] = {
    ControlRow{ControlKind::kPanel, "picBack", "", {120, 120, 3615, 2415}}.Bordered(),
    PlainLabel("lblText", {120, 120, 1335, 255}, "Text"),
    PlainLabel("lblLink", {120, 360, 1575, 255}, "Hyperlink"),
    PlainLabel("lblALink", {120, 600, 1335, 255}, "Active Hyperlink"),
    PlainLabel("lblVLink", {120, 840, 1575, 255}, "Visited Hyperlink"),
    ControlRow{
        ControlKind::kLabel, "lblTableHeader", "picBack", {120, 1200, 3255, 255}, "Kill Tables"}
        .In(ui::kBoldPlainFont)
        .Bordered(),
    Swatch("lblcolumn1", 120),
    Swatch("lblcolumn2", 1200),
    Swatch("lblcolumn3", 2280),
    Line("Line1", 1680),
    Line("Line2", 1920),
    {ControlKind::kButton, "cdClose", "", {1440, 2640, 975, 375}, "Close"},
};

/// Which color button a control of the preview takes which of its colors from.
struct Source {
  const char* control;
  QPalette::ColorRole role;
  const char* button;
};

constexpr Source kSources[] = {
    {"picBack", QPalette::Window, "cmdBGColor"},
    {"lblText", QPalette::WindowText, "cmdTextColor"},
    {"lblLink", QPalette::WindowText, "cmdLinkColor"},
    {"lblALink", QPalette::WindowText, "cmdALinkColor"},
    {"lblVLink", QPalette::WindowText, "cmdVLinkColor"},
    {"lblcolumn1", QPalette::Window, "cmdColumnColor(0)"},
    {"lblcolumn2", QPalette::Window, "cmdColumnColor(1)"},
    {"lblcolumn3", QPalette::Window, "cmdColumnColor(2)"},
    {"lblTableHeader", QPalette::Window, "cmdBGColor"},
    {"lblTableHeader", QPalette::WindowText, "cmdTextColor"},
};

void SetColor(QWidget& control, QPalette::ColorRole role, int color) {
  QPalette palette = control.palette();
  palette.setColor(role, ui::ToQColor(color));
  control.setPalette(palette);
  if (role == QPalette::Window) control.setAutoFillBackground(true);
}

}  // namespace

frmColorPreview::frmColorPreview(QWidget& window) : QDialog(&window) {
  setObjectName("frmColorPreview");
  setWindowTitle("Kill Tables");
  ui::BuildFixedDialog(*this, kWidth, kHeight, kRows);
  for (const Source& source : kSources) {
    const QVariant color = Control<QWidget>(window, source.button).property(kBackColor);
    SetColor(Control<QWidget>(*this, source.control), source.role, color.toInt());
  }
  auto& close = Control<QPushButton>(*this, "cdClose");
  close.setFocus();
  connect(&close, &QPushButton::clicked, this, &frmColorPreview::cdClose_Click);
}

}  // namespace editor
