#include "editor/list_editors.h"

#include <algorithm>
#include <optional>
#include <string>

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include "config/colors.h"
#include "config/settings.h"
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
  const int row = selected.first().row();
  view.model()->removeRow(row);
  // The view would select the neighbour of the entry that went.
  view.selectionModel()->clearSelection();
  const int place = std::min(row, view.model()->rowCount() - 1);
  view.selectionModel()->setCurrentIndex(view.model()->index(place, 0),
                                         QItemSelectionModel::NoUpdate);
}

void ScrollTo(QAbstractItemView& view, int row) { view.scrollTo(view.model()->index(row, 0)); }

/// Draws an entry on one line; the entry keeps its line breaks.
class OneLineDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QString displayText(const QVariant& value, const QLocale& /*locale*/) const override {
    QString text = value.toString().replace("\r\n", " ");
    for (const QChar lineBreak : QStringView(u"\r\n\u2028\u2029")) text.replace(lineBreak, ' ');
    return text;
  }
};

}  // namespace

void ShowEntriesOnOneLine(QWidget& window) {
  for (const config::Setting& setting : config::Settings()) {
    if (setting.encoding != config::Encoding::kEntries &&
        setting.encoding != config::Encoding::kUserVariables) {
      continue;
    }
    auto& view = Control<QAbstractItemView>(window, ToQt(setting.field));
    view.setItemDelegate(new OneLineDelegate(&view));
  }
}

void AddListEntry(QListWidget& list, QLineEdit& entry) {
  if (entry.text().isEmpty()) return;
  list.insertItem(0, TrimSpaces(entry.text()));
  ScrollTo(list, 0);
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
  auto& list = Control<QTreeWidget>(context.window, "lvwUserVars");
  list.addTopLevelItem(new QTreeWidgetItem({name.text(), value.text()}));
  ScrollTo(list, list.topLevelItemCount() - 1);
  name.clear();
  value.clear();
}

void cmdRemoveUserVar_Click(const Context& context) { RemoveFrom(context.window, "lvwUserVars"); }

void Command4_Click(const Context& context) {
  const std::optional<int> color = context.dialogs.CColorDialog.Show("Highlight Color");
  auto& level = Control<QLineEdit>(context.window, "txtMinHiliteLevel");
  if (!color || level.text().isEmpty()) return;
  const std::string code = config::ColorToHtml(std::to_string(*color));
  auto& list = Control<QTreeWidget>(context.window, "lvwHiliteLevels");
  list.insertTopLevelItem(0, new QTreeWidgetItem({level.text(), QString::fromStdString(code)}));
  ScrollTo(list, 0);
  level.clear();
}

void cmdRemoveHiLiteLevel_Click(const Context& context) {
  RemoveFrom(context.window, "lvwHiliteLevels");
}

}  // namespace editor
