#include "editor/pickers.h"

#include <QLineEdit>

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

void PickTemplate(QWidget& window, Dialogs& dialogs, const char* field) {
  auto& box = Control<QLineEdit>(window, field);
  box.setText(BrowseTemplate(dialogs, "htmlt", TrimSpaces(box.text())));
}

void PickFolder(QWidget& window, Dialogs& dialogs, const char* field) {
  auto& box = Control<QLineEdit>(window, field);
  box.setText(BrowseFolder(window, dialogs, box.text()));
}

}  // namespace

QString BrowseTemplate(Dialogs& dialogs, const QString& extension, const QString& current) {
  const QString pattern = "*." + extension;
  dialogs.CDialog.SetFilter("Template Files (" + pattern + ")|" + pattern);
  return dialogs.CDialog.Show().value_or(current);
}

QString BrowseFolder(QWidget& window, Dialogs& dialogs, const QString& start) {
  frmBrowseFolders browser(window, dialogs.desktop, ui::Drives(), start);
  browser.exec();
  return browser.SelectedFolder();
}

void cmdBkgndImageBrowse_Click(QWidget& window, Dialogs& dialogs) {
  dialogs.CDialog.SetFilter("JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif|All Files (*.*)|*.*");
  PickFile(window, dialogs.CDialog, "txtBkgndImage");
}

void cmdLogFileBrowse_Click(QWidget& window, Dialogs& dialogs) {
  PickFile(window, dialogs.CLogDialog, "txtLogFilePath");
}

void cmdBrsTemplate_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtTemplate");
}

void cmdBrowseMaps_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtMapTemplate");
}

void cmdBrsGame_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtGameTemplate");
}

void cmdBrsGameList_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtGameListTemplate");
}

void cmdBrowseGameListLoop_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtGameListLoopTemplate");
}

void cmdBrowseLastGame_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtLastGameTemplate");
}

void cmdBrwsPlayers_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtPLayerTemplate");
}

void cmdBrowse5_Click(QWidget& window, Dialogs& dialogs) {
  PickTemplate(window, dialogs, "txtCustomRankTemplate");
}

void cmdBrowse2_Click(QWidget& window, Dialogs& dialogs) {
  PickFolder(window, dialogs, "txtSrcPath");
}

void cmdBrowse3_Click(QWidget& window, Dialogs& dialogs) {
  PickFolder(window, dialogs, "txtDestPath");
}

void cmdBrowse4_Click(QWidget& window, Dialogs& dialogs) {
  PickFolder(window, dialogs, "txtDbPath");
}

}  // namespace editor
