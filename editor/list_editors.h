#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QWidget>

#include "editor/dialogs.h"

namespace editor {

// The add and remove buttons of the six lists. Nothing is checked and nothing is reported; the
// file changes with the next save only. Removing takes the selected entry away and leaves none
// selected; without a selection nothing happens.

/// Puts the text of an entry field, without the spaces around it, at the top of a list box and
/// empties the field; nothing when the field is empty.
void AddListEntry(QListWidget& list, QLineEdit& entry);

void cmdAddLog_Click(QWidget& window);
void cmdRemovelog_Click(QWidget& window);
void cmdAddMainTemplate_Click(QWidget& window);
void cmdRemoveMainTemplate_Click(QWidget& window);
void cmdAddMapTemplate_Click(QWidget& window);
void cmdRemoveMapTemplate_Click(QWidget& window);
void cmdAddGameTemplate_Click(QWidget& window);
void cmdRemoveGameTemplate_Click(QWidget& window);

/// Appends the variable as typed and empties both fields; nothing when the value is empty.
void cmdAddUserVar_Click(QWidget& window);
void cmdRemoveUserVar_Click(QWidget& window);

/// Asks for a colour, then puts the level as typed and the colour's HTML text at the top of the
/// highlight levels and empties the field; nothing on cancel or when the level is empty.
void Command4_Click(QWidget& window, Dialogs& dialogs);
void cmdRemoveHiLiteLevel_Click(QWidget& window);

}  // namespace editor
