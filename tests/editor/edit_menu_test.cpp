#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>

#include "tests/editor/fields_test.h"

namespace editor {
namespace {

constexpr char kBox[] = "txtTimeFormat";

class Edit : public FieldsTest {
 protected:
  Edit() {
    QApplication::clipboard()->clear();
    Open("");
  }

  static QString Clipboard() { return QApplication::clipboard()->text(); }
  static void SetClipboard(const QString& text) { QApplication::clipboard()->setText(text); }

  bool Enabled(const char* item) { return ui::Control<QAction>(Window(), item).isEnabled(); }

  /// A text with a selection, or the caret where the selection is empty, in the focused text box.
  void Put(const QString& text, int start, int length) {
    Focus(kBox);
    Box(kBox).setText(text);
    Box(kBox).setCursorPosition(start);
    if (length > 0) Box(kBox).setSelection(start, length);
  }

  void OpenMenu() {
    auto& menu = ui::Control<QMenu>(Window(), "mnuEdit");
    menu.popup({});
    menu.close();
  }
};

TEST_F(Edit, OpeningTheMenuTellsWhatCanBeDone) {
  for (const char* item : {"mnuEditCut", "mnuEditCopy", "mnuEditPaste", "mnuEditSelectAll"}) {
    EXPECT_TRUE(Enabled(item)) << item;
  }
  const struct {
    const char* focus;
    int selected;
    const char* clipboard;
    bool cutAndCopy;
    bool paste;
  } cases[] = {
      {kBox, 2, "x", true, true},
      {kBox, 0, "", false, false},
      {"ckUseDatabase", 0, "x", false, true},
      {"lstLogFiles", 0, "", false, false},
  };
  for (const auto& [focus, selected, clipboard, cutAndCopy, paste] : cases) {
    Put("abcdef", 1, selected);
    Focus(focus);
    if (focus == QString(kBox) && selected > 0) Box(kBox).setSelection(1, selected);
    SetClipboard(clipboard);
    OpenMenu();
    EXPECT_EQ(Enabled("mnuEditCut"), cutAndCopy) << focus;
    EXPECT_EQ(Enabled("mnuEditCopy"), cutAndCopy) << focus;
    EXPECT_EQ(Enabled("mnuEditPaste"), paste) << focus;
    EXPECT_TRUE(Enabled("mnuEditSelectAll"));
  }
  auto* const picture = new QMimeData;
  picture->setData("image/png", "x");
  picture->setHtml("<b>x</b>");
  QApplication::clipboard()->setMimeData(picture);
  OpenMenu();
  EXPECT_FALSE(Enabled("mnuEditPaste")) << "only plain text counts";
}

TEST_F(Edit, HandlersWorkOnTheFocusedTextBox) {
  const struct {
    const char* item;
    int start;
    int length;
    const char* clipboard;
    const char* text;  // afterwards; "abcdef" before
    int caret;
    const char* selected;
    const char* clipboardAfter;
  } cases[] = {
      {"mnuEditCut", 2, 2, "old", "abef", 2, "", "cd"},
      {"mnuEditCut", 3, 0, "old", "abcdef", 3, "", ""},
      {"mnuEditCut", 0, 6, "", "", 0, "", "abcdef"},
      {"mnuEditCopy", 2, 2, "old", "abcdef", 4, "cd", "cd"},
      {"mnuEditPaste", 2, 2, "XY", "abXYef", 4, "", "XY"},
      {"mnuEditPaste", 3, 0, "XY", "abcXYdef", 5, "", "XY"},
      {"mnuEditPaste", 6, 0, "\xF0\x9F\x98\x80", "abcdef\xF0\x9F\x98\x80", 8, "",
       "\xF0\x9F\x98\x80"},
      {"mnuEditPaste", 0, 6, "a\r\nb", "a\r\nb", 4, "", "a\r\nb"},
      {"mnuEditSelectAll", 3, 0, "old", "abcdef", 6, "abcdef", "old"},
  };
  for (const auto& [item, start, length, clipboard, text, caret, selected, after] : cases) {
    Put("abcdef", start, length);
    SetClipboard(clipboard);
    support::Choose(Window(), item);
    EXPECT_EQ(Text(kBox), text) << item;
    EXPECT_EQ(Box(kBox).cursorPosition(), caret) << item;
    EXPECT_EQ(Box(kBox).selectedText(), selected) << item;
    EXPECT_EQ(Clipboard(), after) << item;
  }
}

TEST_F(Edit, AnEmptyClipboardPastesNothing) {
  Put("abcdef", 2, 2);
  support::Choose(Window(), "mnuEditPaste");
  EXPECT_EQ(Text(kBox), "abcdef");
  EXPECT_EQ(Box(kBox).cursorPosition(), 2);
}

TEST_F(Edit, OtherControlsOnlyLoseTheClipboard) {
  for (const char* const focus : {"ckUseDatabase", "cmdSave", "lstLogFiles", "lvwUserVars"}) {
    for (const char* const item : {"mnuEditCut", "mnuEditCopy"}) {
      SetClipboard("old");
      Focus(focus);
      support::Choose(Window(), item);
      EXPECT_EQ(Clipboard(), "") << focus;
    }
    SetClipboard("old");
    support::Choose(Window(), "mnuEditPaste");
    support::Choose(Window(), "mnuEditSelectAll");
    EXPECT_EQ(Clipboard(), "old");
  }
  EXPECT_EQ(Text(kBox), "");

  QLineEdit ofAnotherWindow("text");
  ofAnotherWindow.selectAll();
  QFocusEvent out(QEvent::FocusOut, Qt::MenuBarFocusReason);
  QApplication::sendEvent(&ofAnotherWindow, &out);
  EXPECT_FALSE(ofAnotherWindow.hasSelectedText());
}

TEST_F(Edit, TextsBeyond16BitsAreLeftAlone) {
  const QString longest(32767, 'x');
  Put(longest, 32767, 0);
  SetClipboard("y");
  support::Choose(Window(), "mnuEditPaste");
  EXPECT_EQ(Text(kBox), longest);
  EXPECT_EQ(Box(kBox).cursorPosition(), 32767);
  Put(longest, 5, 0);
  support::Choose(Window(), "mnuEditPaste");
  EXPECT_EQ(Text(kBox), longest) << "nothing falls off the end";
  Put(longest, 32760, 6);
  support::Choose(Window(), "mnuEditCut");
  EXPECT_EQ(Text(kBox).size(), 32761);
  Put("ab", 1, 0);
  SetClipboard(QString(40000, 'z'));
  support::Choose(Window(), "mnuEditPaste");
  EXPECT_EQ(Text(kBox), "ab");
}

TEST_F(Edit, KeysOfEnabledItemsRunTheMenu) {
  // Only the menu's Copy clears the clipboard of a text box without a selection.
  Put("abcdef", 3, 0);
  SetClipboard("old");
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Clipboard(), "");

  Put("abcdef", 2, 2);
  Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Text(kBox), "abef");
  EXPECT_FALSE(Box(kBox).isUndoAvailable()) << "the menu replaced the text as a whole";
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Text(kBox), "abcdef");
  EXPECT_FALSE(Box(kBox).isUndoAvailable());
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Box(kBox).selectedText(), "abcdef");
}

TEST_F(Edit, KeysOfDisabledItemsAreTheTextBoxsOwn) {
  Put("abcdef", 3, 0);
  OpenMenu();
  SetClipboard("old");
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(Clipboard(), "old") << "the menu's Copy did not run";
  Box(kBox).setSelection(2, 2);
  Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Clipboard(), "cd");
  EXPECT_TRUE(Box(kBox).isUndoAvailable()) << "the text box's own Cut did";
  QApplication::clipboard()->clear();
  OpenMenu();
  SetClipboard("XY");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Text(kBox), "abXYef");
  EXPECT_TRUE(Box(kBox).isUndoAvailable());
}

TEST_F(Edit, ByKeyboardTheMenuActsOnTheBoxThatHadTheFocus) {
  Put("abcdef", 2, 2);
  Press(Qt::Key_E, Qt::AltModifier);
  EXPECT_TRUE(Enabled("mnuEditCut"));
  QMenu& menu = ui::Control<QMenu>(Window(), "mnuEdit");
  ASSERT_TRUE(menu.isVisible());
  QTest::keyClick(&menu, Qt::Key_Down);
  menu.setActiveAction(&ui::Control<QAction>(Window(), "mnuEditCut"));
  QTest::keyClick(&menu, Qt::Key_Return);
  EXPECT_EQ(Text(kBox), "abef");
  EXPECT_EQ(Clipboard(), "cd");
}

}  // namespace
}  // namespace editor
