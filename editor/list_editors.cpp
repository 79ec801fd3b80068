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

void cmdAddLog_Click(QWidget& window) { AddTo(window, "lstLogFiles", "txtLogFilePath"); }

void cmdRemovelog_Click(QWidget& window) { RemoveFrom(window, "lstLogFiles"); }

void cmdAddMainTemplate_Click(QWidget& window) { AddTo(window, "lstTemplates", "txtTemplate"); }

void cmdRemoveMainTemplate_Click(QWidget& window) { RemoveFrom(window, "lstTemplates"); }

void cmdAddMapTemplate_Click(QWidget& window) {
  AddTo(window, "lstMapTemplates", "txtMapTemplate");
}

void cmdRemoveMapTemplate_Click(QWidget& window) { RemoveFrom(window, "lstMapTemplates"); }

void cmdAddGameTemplate_Click(QWidget& window) {
  AddTo(window, "lstGameTemplates", "txtGameTemplate");
}

void cmdRemoveGameTemplate_Click(QWidget& window) { RemoveFrom(window, "lstGameTemplates"); }

void cmdAddUserVar_Click(QWidget& window) {
  auto& name = Control<QLineEdit>(window, "txtVariable");
  auto& value = Control<QLineEdit>(window, "txtValue");
  if (value.text().isEmpty()) return;
  Control<QTreeWidget>(window, "lvwUserVars")
      .addTopLevelItem(new QTreeWidgetItem({name.text(), value.text()}));
  name.clear();
  value.clear();
}

void cmdRemoveUserVar_Click(QWidget& window) { RemoveFrom(window, "lvwUserVars"); }

void Command4_Click(QWidget& window, Dialogs& dialogs) {
  const std::optional<int> color = dialogs.CColorDialog.Show();
  auto& level = Control<QLineEdit>(window, "txtMinHiliteLevel");
  if (!color || level.text().isEmpty()) return;
  const std::string code = config::ColorToHtml(std::to_string(*color));
  Control<QTreeWidget>(window, "lvwHiliteLevels")
      .insertTopLevelItem(0, new QTreeWidgetItem({level.text(), QString::fromStdString(code)}));
  level.clear();
}

void cmdRemoveHiLiteLevel_Click(QWidget& window) { RemoveFrom(window, "lvwHiliteLevels"); }

}  // namespace editor
