#include "tests/editor/fields_test.h"

#include <filesystem>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QTabWidget>

namespace editor {

using ui::Control;

FieldsTest::FieldsTest() { std::filesystem::current_path(Directory()); }

void FieldsTest::Open(const std::string& bytes) {
  WriteFile(kFile, bytes);
  window_ = &OpenWindow();
}

bool FieldsTest::HasLine(const std::string& line) const {
  QString file = QString::fromStdString(File());
  file.replace("\r\n", "\n").replace('\r', '\n');
  return file.split('\n').contains(QString::fromStdString(line));
}

bool FieldsTest::Checked(const QString& name) {
  return Control<QCheckBox>(Window(), name).isChecked();
}

std::string FieldsTest::Checks(const QStringList& names) {
  std::string digits;
  for (const QString& name : names) digits += Checked(name) ? '1' : '0';
  return digits;
}

int FieldsTest::Color(const QString& name) {
  return Control<QWidget>(Window(), name).property("BackColor").toInt();
}

QStringList FieldsTest::Entries(const QString& list) {
  const QAbstractItemModel& model = *Control<QAbstractItemView>(Window(), list).model();
  QStringList entries;
  for (int row = 0; row < model.rowCount(); ++row) {
    QStringList columns;
    for (int column = 0; column < model.columnCount(); ++column) {
      columns.append(model.index(row, column).data().toString());
    }
    entries.append(columns.join('|'));
  }
  return entries;
}

void FieldsTest::Focus(const QString& name) {
  auto& control = Control<QWidget>(Window(), name);
  auto& tabs = Control<QTabWidget>(Window(), "SSTab1");
  for (int tab = 0; tab < tabs.count(); ++tab) {
    if (tabs.widget(tab)->isAncestorOf(&control)) tabs.setCurrentIndex(tab);
  }
  control.setFocus();
}

void FieldsTest::Click(const QString& name) {
  Focus(name);
  support::Click(Window(), name);
}

void FieldsTest::Type(const QString& name, const QString& text) {
  Focus(name);
  Box(name).selectAll();
  QTest::keyClick(&Box(name), Qt::Key_Delete);
  QTest::keyClicks(&Box(name), text);
}

void FieldsTest::Select(const QString& list, int row) {
  Focus(list);
  auto& view = Control<QAbstractItemView>(Window(), list);
  const QRect place = view.visualRect(view.model()->index(row, 0));
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
}

void FieldsTest::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

}  // namespace editor
