#pragma once

#include <span>

#include <QColor>
#include <QDialog>
#include <QFrame>
#include <QRect>
#include <QWidget>

#include "ui/fonts.h"

namespace ui {

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
  const char* caption;
  const char* tooltip = "";
  const char* accessibleName = "";
  const FontSpec* font = nullptr;  // none: the usual font of the kind
  Qt::Alignment align = {};        // none: the usual one of the kind
  bool wraps = false;
  int frame = QFrame::NoFrame;  // frame style of a label or a panel
  QRgb ink = 0;                 // color of the text; 0 for the usual one
  QRgb paper = 0;               // color of the background; 0 for a transparent one

  constexpr ControlRow(ControlKind rowKind, const char* rowName, const char* rowContainer,
                       Place rowPlace, const char* rowCaption = "")
      : kind(rowKind),
        name(rowName),
        container(rowContainer),
        place(rowPlace),
        caption(rowCaption) {}

  // The row with one thing changed.

  template <class Member, class Value>
  constexpr ControlRow With(Member ControlRow::*member, const Value& value) const {
    ControlRow row = *this;
    row.*member = value;
    return row;
  }
  constexpr ControlRow Tip(const char* text) const { return With(&ControlRow::tooltip, text); }
  /// A name for assistive tools. A field without one is named by the label in the row before it.
  constexpr ControlRow Named(const char* text) const {
    return With(&ControlRow::accessibleName, text);
  }
  constexpr ControlRow In(const FontSpec& spec) const { return With(&ControlRow::font, &spec); }
  constexpr ControlRow Centered() const { return With(&ControlRow::align, Qt::AlignCenter); }
  constexpr ControlRow AtTop() const {
    return With(&ControlRow::align, Qt::AlignLeft | Qt::AlignTop);
  }
  constexpr ControlRow AtBottom() const {
    return With(&ControlRow::align, Qt::AlignLeft | Qt::AlignBottom);
  }
  /// Wrapped over lines, from the top.
  constexpr ControlRow Wrapped() const { return AtTop().With(&ControlRow::wraps, true); }
  /// With a single line around it.
  constexpr ControlRow Bordered() const {
    return With(&ControlRow::frame, QFrame::Box | QFrame::Plain);
  }
  /// Framed like a panel of a status bar.
  constexpr ControlRow Sunken() const {
    return With(&ControlRow::frame, QFrame::Panel | QFrame::Sunken);
  }
  constexpr ControlRow Ink(QRgb color) const { return With(&ControlRow::ink, color); }
  constexpr ControlRow Paper(QRgb color) const { return With(&ControlRow::paper, color); }
};

/// Width of a list view's columns, in twips.
inline constexpr int kColumnWidth = 1440;

/// Builds the rows of a table, in order, into `area`. Rows may lie in containers that an earlier
/// table built.
void BuildControls(QWidget& area, std::span<const ControlRow> rows);

/// Makes a dialog modal to its owner, where it has one, so that a console window can be used while
/// it is open. Call before it is shown.
void BlockOwnerOnly(QDialog& dialog);

/// Gives a dialog a frame that has a close box only, and makes it modal to its owner only. Call
/// before it is shown.
void GiveDialogFrame(QDialog& dialog);

/// Lets a window of a fixed size keep it on screens of other scale factors, where the window system
/// leaves the pixels as they were: the contents would be cut, or lie in a corner. Call once.
void HoldSizeOnEveryScreen(QWidget& window);

/// Gives a dialog its rows and the size of its client area in twips, which nobody can change; its
/// frame has a close box only.
void BuildFixedDialog(QDialog& dialog, int width, int height, std::span<const ControlRow> rows);

}  // namespace ui
