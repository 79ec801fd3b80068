#include "editor/list_editors.h"

#include <optional>
#include <string>

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QTreeWidget>

#include "config/colors.h"
#include "editor/fields.h"
#include "ui/controls.h"

namespace editor {
namespace {

using ui::Control;

void AddTo(QWidget& window, const char* list, const char* entry) {
  AddListEntry(Control<QListWidget>(window, list), Control<QLineEdit>(window, entry));
}

void RemoveFrom(QWidget& window, const char* list) {
  auto& view = Control<QAbstractItemView>(window, list);
  const QModelIndexList selected = view.selectionModel()->selectedRows();
  if (selected.isEmpty()) return;
  view.model()->removeRow(selected.first().row());
  // The view would select the neighbour of the entry that went.
  view.selectionModel()->clear();
}

}  // namespace

void AddListEntry(QListWidget& list, QLineEdit& entry) {
  if (entry.text().isEmpty()) return;
  list.insertItem(0, TrimSpaces(entry.text()));
  entry.clear();
}

void cmdAddLog_Click(const Context& context) {
  AddTo(context.window, "lstLogFiles", "txtLogFilePath");
}

void cmdRemovelog_Click(const Context& context) { RemoveFrom(context.window, "lstLogFiles"); }

void cmdAddMainTemplate_Click(const Context& context) {
  AddTo(context.window, "lstTemplates", "txtTemplate");
}

void cmdRemoveMainTemplate_Click(const Context& context) {
  RemoveFrom(context.window, "lstTemplates");
}

void cmdAddMapTemplate_Click(const Context& context) {
  AddTo(context.window, "lstMapTemplates", "txtMapTemplate");
}

void cmdRemoveMapTemplate_Click(const Context& context) {
  RemoveFrom(context.window, "lstMapTemplates");
}

void cmdAddGameTemplate_Click(const Context& context) {
  AddTo(context.window, "lstGameTemplates", "txtGameTemplate");
}

void cmdRemoveGameTemplate_Click(const Context& context) {
  RemoveFrom(context.window, "lstGameTemplates");
}

void cmdAddUserVar_Click(const Context& context) {
  auto& name = Control<QLineEdit>(context.window, "txtVariable");
  auto& value = Control<QLineEdit>(context.window, "txtValue");
  if (value.text().isEmpty()) return;
  Control<QTreeWidget>(context.window, "lvwUserVars")
      .addTopLevelItem(new QTreeWidgetItem({name.text(), value.text()}));
  name.clear();
  value.clear();
}

void cmdRemoveUserVar_Click(const Context& context) { RemoveFrom(context.window, "lvwUserVars"); }

void Command4_Click(const Context& context) {
  const std::optional<int> color = context.dialogs.CColorDialog.Show();
  auto& level = Control<QLineEdit>(context.window, "txtMinHiliteLevel");
  if (!color || level.text().isEmpty()) return;
  const std::string code = config::ColorToHtml(std::to_string(*color));
  Control<QTreeWidget>(context.window, "lvwHiliteLevels")
      .insertTopLevelItem(0, new QTreeWidgetItem({level.text(), QString::fromStdString(code)}));
  level.clear();
}

void cmdRemoveHiLiteLevel_Click(const Context& context) {
  RemoveFrom(context.window, "lvwHiliteLevels");
}

}  // namespace editor
