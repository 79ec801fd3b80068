#pragma once

#include <QString>
#include <QWidget>

#include "editor/context.h"

namespace editor {

// The "..." buttons. A choice goes into the text box beside the button as a full path in the
// system's notation.

/// Lets the user choose a template file with the given extension. The file's full path, or
/// `current` when the user cancels.
QString BrowseTemplate(Dialogs& dialogs, const QString& extension, const QString& current);

/// Lets the user choose a folder in frmBrowseFolders, which opens on `start` (a relative text is
/// taken from the current folder). The folder's full path, or `start` when the user cancels.
QString BrowseFolder(const Context& context, const QString& start);

/// A cancel leaves the field as it was.
void cmdBkgndImageBrowse_Click(const Context& context);
void cmdLogFileBrowse_Click(const Context& context);

// Templates: a cancel takes the spaces around the field's text away and no more.
void cmdBrsTemplate_Click(const Context& context);
void cmdBrowseMaps_Click(const Context& context);
void cmdBrsGame_Click(const Context& context);
void cmdBrsGameList_Click(const Context& context);
void cmdBrowseGameListLoop_Click(const Context& context);
void cmdBrowseLastGame_Click(const Context& context);
void cmdBrwsPlayers_Click(const Context& context);
void cmdBrowse5_Click(const Context& context);

// Folders.
void cmdBrowse2_Click(const Context& context);
void cmdBrowse3_Click(const Context& context);
void cmdBrowse4_Click(const Context& context);

}  // namespace editor
