// What assistive tools are told of the window and its dialogs, held against docs/accessibility.md.
#include <map>
#include <vector>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>

#include "editor/frmBrowseFolders.h"
#include "editor/frmColorPreview.h"
#include "help/frmAbout.h"
#include "tests/support/dialog_answers.h"
#include "tests/support/editor_test.h"
#include "tests/support/files.h"
#include "ui/controls.h"
#include "ui/desktop.h"

namespace {

using support::ReadFile;
using ui::Control;

/// Every node of an accessible tree that can be seen, parents first.
void Collect(QAccessibleInterface* node, std::vector<QAccessibleInterface*>& nodes) {
  if (node == nullptr || node->state().invisible) return;
  nodes.push_back(node);
  for (int child = 0; child < node->childCount(); ++child) Collect(node->child(child), nodes);
}

std::vector<QAccessibleInterface*> NodesOf(QWidget& window) {
  std::vector<QAccessibleInterface*> nodes;
  Collect(QAccessible::queryAccessibleInterface(&window), nodes);
  return nodes;
}

QString NameOf(QAccessibleInterface* node) { return node->text(QAccessible::Name); }

/// The roles that a person can do something with, in the words of the document.
const std::map<QAccessible::Role, const char*> kControls = {
    {QAccessible::EditableText, "text"}, {QAccessible::CheckBox, "check box"},
    {QAccessible::Button, "button"},     {QAccessible::List, "list"},
    {QAccessible::Tree, "tree"},         {QAccessible::ComboBox, "drop-down list"},
    {QAccessible::MenuItem, "menu"},     {QAccessible::PageTab, "tab"}};

/// The label that a field is related to, without its colon; nothing for other controls.
QString LabelOf(QAccessibleInterface* node) {
  for (const auto& [other, relation] : node->relations(QAccessible::Label)) {
    if (other->role() != QAccessible::StaticText) continue;  // a frame is related to all in it
    if (relation.testFlag(QAccessible::Label)) return NameOf(other).remove(':').trimmed();
  }
  return {};
}

/// "Name (role)" of every control of a window, in the order of the tree. A control without a name
/// that says something and a field whose label says something else fail.
QString Spoken(QWidget& window) {
  QStringList controls;
  for (QAccessibleInterface* node : NodesOf(window)) {
    const QString name = NameOf(node);
    const std::string where =
        node->object() == nullptr ? name.toStdString() : node->object()->objectName().toStdString();
    EXPECT_TRUE(name.contains(LabelOf(node))) << where << ": " << name.toStdString();
    const auto control = kControls.find(node->role());
    if (control == kControls.end()) continue;
    EXPECT_FALSE(name.isEmpty() || name == "..." || name.contains('&')) << where;
    controls << name + " (" + control->second + ")";
  }
  return controls.join("; ");
}

/// The paragraph below a heading of docs/accessibility.md, on one line.
QString Documented(const QString& heading) {
  const QString all = QString::fromStdString(ReadFile(VANTREL3_DOCUMENTS "/accessibility.md"));
  const QString text = all.section("\n### " + heading + "\n", 1, 1);
  return text.section("\n#", 0, 0).simplified();
}

class Accessibility : public support::EditorTest {};

TEST_F(Accessibility, OfTheWindowIsAsDocumented) {
  WriteFile("morvane.cfg", "[Main]\nuse_cust_rank=1\n");
  app::frmMain& window = OpenWindow();
  auto& tabs = Control<QTabWidget>(window, "SSTab1");
  const QString around = Spoken(window);
  EXPECT_EQ(around, Documented("Around the tabs"));
  for (int tab = 0; tab < tabs.count(); ++tab) {
    tabs.setCurrentIndex(tab);
    const QString spoken = Spoken(*tabs.currentWidget());
    EXPECT_EQ(spoken, Documented(tabs.tabText(tab).remove('&')));
    // What happens is spoken as it changes.
    auto& status = Control<QLabel>(window, "StatBarPanel2");
    EXPECT_EQ(NameOf(QAccessible::queryAccessibleInterface(&status)), status.text());
  }
  auto& color = Control<QWidget>(window, "cmdTextColor");
  color.setProperty("BackColor", 0x563412);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&color)->text(QAccessible::Description),
            "#123456");
}

TEST_F(Accessibility, OfFieldsComesWithTheirLabels) {
  app::frmMain& window = OpenWindow();
  QStringList without;
  for (QWidget* field : Control<QTabWidget>(window, "SSTab1").findChildren<QWidget*>()) {
    const QString name = field->objectName();
    const bool isField = qobject_cast<QLineEdit*>(field) != nullptr ||
                         dynamic_cast<ui::ColorButton*>(field) != nullptr;
    if (!isField || name.isEmpty() || name.startsWith("cmdNameColor")) continue;
    if (LabelOf(QAccessible::queryAccessibleInterface(field)).isEmpty()) without << name;
  }
  EXPECT_EQ(without.join(' '), "");
}

TEST_F(Accessibility, OfDialogsIsAsDocumented) {
  app::frmMain& window = OpenWindow();
  const auto holds = [](QDialog& dialog, const char* heading) {
    dialog.show();
    EXPECT_EQ(Spoken(dialog), Documented(heading));
    EXPECT_FALSE(NameOf(QAccessible::queryAccessibleInterface(&dialog)).isEmpty()) << heading;
  };
  help::frmAbout about(&window, desktop);
  holds(about, "About Vantorel");
  editor::frmColorPreview preview(window);
  holds(preview, "HTML Preview");
  editor::frmBrowseFolders folders(window, desktop, {"/"}, "/");
  holds(folders, "Select A Directory");

  ui::RealDesktop real;
  support::DialogAnswers answers;
  answers.Then([](QWidget& box) {
    EXPECT_EQ(Spoken(box), "Yes (button); No (button)");
    const auto nodes = NodesOf(box);
    EXPECT_EQ(nodes.front()->role(), QAccessible::AlertMessage);
    const auto says = [](QAccessibleInterface* node) { return NameOf(node) == "Sure?"; };
    EXPECT_TRUE(std::any_of(nodes.begin(), nodes.end(), says));
  });
  real.ShowMessage(&window, "Sure?", ui::MessageStyle::kYesNoQuestion, "Question");
  answers.Then([](QWidget& dialog) {
    EXPECT_TRUE(Spoken(dialog).contains("HTML: (text)")) << Spoken(dialog).toStdString();
    EXPECT_EQ(NameOf(QAccessible::queryAccessibleInterface(&dialog)), "Link Color");
  });
  real.ChooseColor(&window, 0, "Link Color");
}

}  // namespace
