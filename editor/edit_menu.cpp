#include "editor/edit_menu.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>

#include "editor/context.h"
#include "ui/controls.h"

namespace editor {
namespace {

using ui::Control;

constexpr std::array kItems = {"mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuEditSelectAll"};

/// Texts and positions are counted in 16 bits; nothing stands for a number beyond them.
std::optional<qsizetype> InRange(qsizetype number) {
  if (number > std::numeric_limits<qint16>::max()) return std::nullopt;
  return number;
}

/// The clipboard's plain text, which may be empty; nothing when it holds none.
std::optional<QString> ClipboardText() {
  const QMimeData* const data = QApplication::clipboard()->mimeData();
  if (data == nullptr || !data->hasFormat("text/plain")) return std::nullopt;
  QString kind = "plain";
  return QApplication::clipboard()->text(kind);
}

}  // namespace

/// The focused control as a text, a selection start and a length. Of a control that is no text box
/// nothing can be read or written.
class EditMenu::TextBox {
 public:
  explicit TextBox(QWidget* control) : box_(qobject_cast<QLineEdit*>(control)) {}

  explicit operator bool() const { return box_ != nullptr; }

  QString SelText() const { return box_ != nullptr ? box_->selectedText() : QString(); }

  /// Nothing when it cannot be read or is out of range.
  std::optional<qsizetype> SelStart() const {
    if (box_ == nullptr) return std::nullopt;
    return InRange(box_->hasSelectedText() ? box_->selectionStart() : box_->cursorPosition());
  }

  /// The caret goes to the position; nothing stays selected.
  void SetSelStart(std::optional<qsizetype> start) {
    if (start) box_->setCursorPosition(static_cast<int>(*start));
  }

  void SelectAll() {
    if (box_ == nullptr) return;
    SetSelStart(0);
    if (const auto length = InRange(box_->text().size())) {
      box_->setSelection(0, static_cast<int>(*length));
    }
  }

  /// Puts a text in the place of the selection, which begins at `start`. Whether it was done: not
  /// when a position or the new text is out of range.
  bool ReplaceSelection(std::optional<qsizetype> start, const QString& with) {
    if (!start) return false;
    const auto rest = InRange(*start + box_->selectionLength() + 1);  // counted from 1
    if (!rest) return false;
    const QString text = box_->text();
    const QString replaced = text.left(*start) + with + text.mid(*rest - 1);
    if (!InRange(replaced.size())) return false;
    box_->setText(replaced);
    return true;
  }

 private:
  QLineEdit* box_;
};

EditMenu::EditMenu(QWidget& window) : window_(window) {
  qApp->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, const QWidget* now) {
    const bool fromMenu = qobject_cast<const QMenu*>(old) != nullptr;
    if (qobject_cast<const QMenuBar*>(now) != nullptr && !fromMenu) beforeMenuBar_ = old;
  });
}

QWidget* EditMenu::FocusedControl() const {
  QWidget* const focused = window_.focusWidget();
  return qobject_cast<QMenuBar*>(focused) != nullptr ? beforeMenuBar_.data() : focused;
}

void EditMenu::EnableItems() {
  const bool canPaste = !ClipboardText().value_or(QString()).isEmpty();
  const bool hasSelection = !TextBox(FocusedControl()).SelText().isEmpty();
  Control<QAction>(window_, "mnuEditPaste").setEnabled(canPaste);
  Control<QAction>(window_, "mnuEditCut").setEnabled(hasSelection);
  Control<QAction>(window_, "mnuEditCopy").setEnabled(hasSelection);
}

void EditMenu::Copy() {
  QClipboard& clipboard = *QApplication::clipboard();
  clipboard.clear();
  if (const TextBox box(FocusedControl()); box) clipboard.setText(box.SelText());
}

void EditMenu::Cut() {
  Copy();
  TextBox box(FocusedControl());
  const std::optional<qsizetype> start = box.SelStart();
  box.ReplaceSelection(start, {});
  box.SetSelStart(start);
}

void EditMenu::Paste() {
  TextBox box(FocusedControl());
  const std::optional<qsizetype> start = box.SelStart();
  const std::optional<QString> text = ClipboardText();
  const bool pasted = text && box.ReplaceSelection(start, *text);
  if (start) box.SetSelStart(*start + (pasted ? text->size() : 0));
}

void EditMenu::SelectAll() { TextBox(FocusedControl()).SelectAll(); }

bool EditMenu::eventFilter(QObject* object, QEvent* event) {
  const bool isFocusOut = event->type() == QEvent::FocusOut;
  if (!isFocusOut && event->type() != QEvent::ShortcutOverride) return false;
  auto* const box = qobject_cast<QLineEdit*>(object);
  if (box == nullptr || box->window() != &window_) return false;
  return isFocusOut ? KeepSelection(*box, static_cast<QFocusEvent&>(*event))
                    : IsForMenu(static_cast<QKeyEvent&>(*event));
}

bool EditMenu::KeepSelection(QLineEdit& box, const QFocusEvent& event) {
  if (event.reason() != Qt::MenuBarFocusReason) return false;
  QFocusEvent toPopup(QEvent::FocusOut, Qt::PopupFocusReason);
  QCoreApplication::sendEvent(&box, &toPopup);
  return true;
}

bool EditMenu::IsForMenu(const QKeyEvent& event) const {
  const QKeySequence key(event.keyCombination());
  return std::any_of(kItems.begin(), kItems.end(), [&](const char* name) {
    const QAction& item = Control<QAction>(window_, name);
    return item.isEnabled() && item.shortcut() == key;
  });
}

void mnuEdit_Click(const Context& context) { context.editMenu.EnableItems(); }
void mnuEditCut_Click(const Context& context) { context.editMenu.Cut(); }
void mnuEditCopy_Click(const Context& context) { context.editMenu.Copy(); }
void mnuEditPaste_Click(const Context& context) { context.editMenu.Paste(); }
void mnuEditSelectAll_Click(const Context& context) { context.editMenu.SelectAll(); }

}  // namespace editor
