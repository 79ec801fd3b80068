#pragma once

#include <span>

#include <QColor>
#include <QDialog>
#include <QRect>
#include <QWidget>

#include "platform/qt_fonts.h"

namespace platform {

/// A position and a size as designed, in twips (15 to a device-independent pixel), relative to the
/// container.
struct Place {
  int left;
  int top;
  int width;
  int height;
};

/// Twips as device-independent pixels, rounded to the nearest.
int Pixels(int twips);

/// A place in device-independent pixels. The edges are rounded, not the size, so that what touches
/// in twips touches on the screen.
QRect PixelRect(const Place& place);

/// The kinds of controls, with the Qt class of each.
enum class ControlKind {
  kLabel,        // QLabel
  kTextBox,      // QLineEdit; the caption is the text it starts with
  kCheckBox,     // QCheckBox
  kButton,       // QPushButton
  kColorButton,  // ColorButton (a QPushButton)
  kListBox,      // QListWidget
  kListView,     // QTreeWidget; the caption holds the column titles, separated by "|"
  kFrame,        // Frame (a QGroupBox)
  kPanel,        // QFrame
  kTabs,         // TabControl (a QTabWidget)
  kTabPage,      // TabPage; its controls are placed relative to the tab control
  kPicture,      // Picture; the caption is the path of the picture
  kStatusBar,    // QStatusBar; its panels are labels
  kDropDown,     // QComboBox
  kFolderList,   // FolderList
  kLine,         // QFrame; a horizontal line
};

/// One control of a window. Windows are tables of these rows; a row stands after its container,
/// and the order of the rows is the tab order.
struct ControlRow {
  ControlKind kind;
  const char* name;       // becomes the object name
  const char* container;  // the control it lies in; "" for the window's own area
  Place place;
  const char* caption = "";
  const char* tooltip = "";
  const FontSpec* font = nullptr;  // none: the usual font of the kind
  const char* accessibleName = "";
  Qt::Alignment align = {};  // none: left, and centred vertically where one line fits
  bool wraps = false;
  QRgb ink = 0;            // colour of the text; 0 for the usual one
  QRgb paper = 0;          // colour of the background; 0 for a transparent one
  int columnWidth = 1440;  // of a list view, in twips
  bool border = false;     // a single line around a label or a panel

  /// The row with a font of its own.
  constexpr ControlRow In(const FontSpec& spec) const {
    ControlRow row = *this;
    row.font = &spec;
    return row;
  }
  /// The row with a name for assistive tools. A field without one is named by the label in the row
  /// before it.
  constexpr ControlRow Named(const char* text) const {
    ControlRow row = *this;
    row.accessibleName = text;
    return row;
  }
  constexpr ControlRow Centered() const {
    ControlRow row = *this;
    row.align = Qt::AlignHCenter | Qt::AlignVCenter;
    return row;
  }
  constexpr ControlRow AtTop() const {
    ControlRow row = *this;
    row.align = Qt::AlignLeft | Qt::AlignTop;
    return row;
  }
  constexpr ControlRow Wrapped() const {
    ControlRow row = AtTop();
    row.wraps = true;
    return row;
  }
  constexpr ControlRow Bordered() const {
    ControlRow row = *this;
    row.border = true;
    return row;
  }
  constexpr ControlRow Ink(QRgb color) const {
    ControlRow row = *this;
    row.ink = color;
    return row;
  }
  constexpr ControlRow Paper(QRgb color) const {
    ControlRow row = *this;
    row.paper = color;
    return row;
  }
};

/// Builds the rows of a table, in order, into `area`. Rows may lie in containers that an earlier
/// table built.
void BuildControls(QWidget& area, std::span<const ControlRow> rows);

/// Gives a dialog its rows and the size of its client area in twips, which nobody can change; its
/// frame has a close box only.
void BuildFixedDialog(QDialog& dialog, int width, int height, std::span<const ControlRow> rows);

}  // namespace platform
