#pragma once

#include <QString>
#include <QWidget>

#include "editor/dialogs.h"

namespace editor {

// The "..." buttons. A choice goes into the text box beside the button as a full path in the
// system's notation.

/// Lets the user choose a template file with the given extension. The file's full path, or
/// `current` when the user cancels.
QString BrowseTemplate(Dialogs& dialogs, const QString& extension, const QString& current);

/// Lets the user choose a folder in frmBrowseFolders, which opens on `start` (a relative text is
/// taken from the current folder). The folder's full path, or `start` when the user cancels.
QString BrowseFolder(QWidget& window, Dialogs& dialogs, const QString& start);

/// A cancel leaves the field as it was.
void cmdBkgndImageBrowse_Click(QWidget& window, Dialogs& dialogs);
void cmdLogFileBrowse_Click(QWidget& window, Dialogs& dialogs);

// Templates: a cancel takes the spaces around the field's text away and no more.
void cmdBrsTemplate_Click(QWidget& window, Dialogs& dialogs);
void cmdBrowseMaps_Click(QWidget& window, Dialogs& dialogs);
void cmdBrsGame_Click(QWidget& window, Dialogs& dialogs);
void cmdBrsGameList_Click(QWidget& window, Dialogs& dialogs);
void cmdBrowseGameListLoop_Click(QWidget& window, Dialogs& dialogs);
void cmdBrowseLastGame_Click(QWidget& window, Dialogs& dialogs);
void cmdBrwsPlayers_Click(QWidget& window, Dialogs& dialogs);
void cmdBrowse5_Click(QWidget& window, Dialogs& dialogs);

// Folders.
void cmdBrowse2_Click(QWidget& window, Dialogs& dialogs);
void cmdBrowse3_Click(QWidget& window, Dialogs& dialogs);
void cmdBrowse4_Click(QWidget& window, Dialogs& dialogs);

}  // namespace editor
