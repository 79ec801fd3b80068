#include "editor/pickers.h"

#include <QLineEdit>

#include "config/file_names.h"
#include "editor/fields.h"
#include "editor/frmBrowseFolders.h"
#include "ui/controls.h"
#include "ui/drives.h"

namespace editor {
namespace {

using ui::Control;

void PickFile(QWidget& window, FileDialog& dialog, const char* field) {
  if (const auto file = dialog.Show()) Control<QLineEdit>(window, field).setText(*file);
}

void PickTemplate(const Context& context, const char* field) {
  auto& box = Control<QLineEdit>(context.window, field);
  box.setText(BrowseTemplate(context.dialogs, config::kTemplateExtension, TrimSpaces(box.text())));
}

void PickFolder(const Context& context, const char* field) {
  auto& box = Control<QLineEdit>(context.window, field);
  box.setText(BrowseFolder(context, box.text()));
}

}  // namespace

QString BrowseTemplate(Dialogs& dialogs, const QString& extension, const QString& current) {
  const QString pattern = "*." + extension;
  dialogs.CDialog.SetFilter("Template Files (" + pattern + ")|" + pattern);
  return dialogs.CDialog.Show().value_or(current);
}

QString BrowseFolder(const Context& context, const QString& start) {
  frmBrowseFolders browser(context.window, context.desktop, ui::Drives(), start);
  browser.exec();
  return browser.SelectedFolder();
}

void cmdBkgndImageBrowse_Click(const Context& context) {
  context.dialogs.CDialog.SetFilter(
      "JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif|All Files (*.*)|*.*");
  PickFile(context.window, context.dialogs.CDialog, "txtBkgndImage");
}

void cmdLogFileBrowse_Click(const Context& context) {
  PickFile(context.window, context.dialogs.CLogDialog, "txtLogFilePath");
}

void cmdBrsTemplate_Click(const Context& context) { PickTemplate(context, "txtTemplate"); }

void cmdBrowseMaps_Click(const Context& context) { PickTemplate(context, "txtMapTemplate"); }

void cmdBrsGame_Click(const Context& context) { PickTemplate(context, "txtGameTemplate"); }

void cmdBrsGameList_Click(const Context& context) { PickTemplate(context, "txtGameListTemplate"); }

void cmdBrowseGameListLoop_Click(const Context& context) {
  PickTemplate(context, "txtGameListLoopTemplate");
}

void cmdBrowseLastGame_Click(const Context& context) {
  PickTemplate(context, "txtLastGameTemplate");
}

void cmdBrwsPlayers_Click(const Context& context) { PickTemplate(context, "txtPLayerTemplate"); }

void cmdBrowse5_Click(const Context& context) { PickTemplate(context, "txtCustomRankTemplate"); }

void cmdBrowse2_Click(const Context& context) { PickFolder(context, "txtSrcPath"); }

void cmdBrowse3_Click(const Context& context) { PickFolder(context, "txtDestPath"); }

void cmdBrowse4_Click(const Context& context) { PickFolder(context, "txtDbPath"); }

}  // namespace editor
