#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

#include "ui/desktop.h"

namespace editor {

/// The folder browser: a modal window with a folder list and a drop-down of the machine's drives.
class frmBrowseFolders : public QDialog {
 public:
  /// Opens on `start`, a path in either notation; a relative one is taken from the program's
  /// current folder. Where there is no such folder the browser opens on the current folder.
  /// `drives`: see ui::Drives.
  frmBrowseFolders(QWidget& owner, ui::Desktop& desktop, const QStringList& drives,
                   const QString& start);

  /// The starting text until the user presses "OK", then the folder that was open.
  const QString& SelectedFolder() const { return selectedFolder_; }

 private:
  void cmdOK_Click();
  void cmdCancel_Click() { reject(); }
  void Drives_Change();

  void OpenStart();
  void OpenFolder(const QString& folder);
  void ShowDrive();

  ui::Desktop& desktop_;
  QStringList drives_;
  QString selectedFolder_;
};

}  // namespace editor
