#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

class QFocusEvent;
class QKeyEvent;
class QLineEdit;

namespace editor {

/// Cut, copy, paste and select-all on the text box that has the keyboard focus, with the system
/// clipboard's plain text. A step that cannot be done (the focus is on another kind of control, a
/// text or a position is beyond 32767) is skipped and the next one follows; nothing is reported.
///
/// The shortcuts act while their menu item is enabled, as it was computed when the menu was last
/// opened. While an item is disabled its key is the text box's own.
class EditMenu : public QObject {
 public:
  /// `window` is the one that holds, or will hold, the text boxes and the menu's actions; it
  /// outlives this object.
  explicit EditMenu(QWidget& window);

  /// Enables Paste when the clipboard has text, Cut and Copy when the focused control has selected
  /// text.
  void EnableItems();
  void Cut();
  void Copy();
  void Paste();
  void SelectAll();

 protected:
  /// Keeps the text boxes of the window from taking the keys of enabled items for itself.
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  class TextBox;

  QWidget* FocusedControl() const;
  /// A text box drops its selection when the menu bar takes the focus, but not when a popup does:
  /// turns the one into the other. Whether the event is dealt with.
  static bool KeepSelection(QLineEdit& box, const QFocusEvent& event);
  /// Whether a key belongs to an enabled item. Filtered out, and so not accepted, it goes on from
  /// the text box, which would take it for itself, to the menu.
  bool IsForMenu(const QKeyEvent& event) const;

  QWidget& window_;
  QPointer<QWidget> beforeMenuBar_;  // had the focus when the menu bar took it
};

struct Context;

/// Runs each time the menu is opened, before it shows.
void mnuEdit_Click(const Context& context);
void mnuEditCut_Click(const Context& context);
void mnuEditCopy_Click(const Context& context);
void mnuEditPaste_Click(const Context& context);
void mnuEditSelectAll_Click(const Context& context);

}  // namespace editor
