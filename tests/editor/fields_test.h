#pragma once

#include <gtest/gtest.h>
#include <string>

#include <QLineEdit>
#include <QString>
#include <QStringList>
#include <QTest>

#include "tests/support/dialog_answers.h"
#include "tests/support/editor_test.h"
#include "ui/controls.h"

namespace editor {

/// The main window on a settings file of the test's, with its fields read and used as a person
/// does: a control's tab is brought to the front before it is touched.
class FieldsTest : public support::EditorTest {
 protected:
  static constexpr char kFile[] = "morvane.cfg";

  /// The program directory is the current folder too.
  FieldsTest();

  /// Opens a window on a settings file of the given bytes.
  void Open(const std::string& bytes);

  app::frmMain& Window() { return *window_; }
  std::string File() const { return ReadFile(kFile); }
  /// Whether the settings file has a line, whatever its ending.
  bool HasLine(const std::string& line) const;
  QString Status() { return support::StatusText(Window()); }

  QLineEdit& Box(const QString& name) { return ui::Control<QLineEdit>(Window(), name); }
  QString Text(const QString& name) { return Box(name).text(); }
  bool Checked(const QString& name);
  /// One digit for each check box.
  std::string Checks(const QStringList& names);
  int Color(const QString& name);
  /// The entries of a list; the columns of a list view's row are separated by "|".
  QStringList Entries(const QString& list);

  void Focus(const QString& name);
  void Click(const QString& name);
  /// Replaces a field's text by what is typed.
  void Type(const QString& name, const QString& text);
  void Select(const QString& list, int row);
  /// A key pressed in whatever has the focus.
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

 private:
  app::frmMain* window_ = nullptr;
};

}  // namespace editor
