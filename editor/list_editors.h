#pragma once

#include <QLineEdit>
#include <QListWidget>

#include "editor/context.h"

namespace editor {

// The add and remove buttons of the six lists. Nothing is checked and nothing is reported; the
// file changes with the next save only. A new entry is scrolled into view. Removing takes the
// selected entry away and leaves none selected, but the keyboard's place in the list stays; without
// a selection nothing happens.

/// Makes the lists of a window show an entry that holds line breaks on one line.
void ShowEntriesOnOneLine(QWidget& window);

/// Puts the text of an entry field, without the spaces around it, at the top of a list box and
/// empties the field; nothing when the field is empty.
void AddListEntry(QListWidget& list, QLineEdit& entry);

void cmdAddLog_Click(const Context& context);
void cmdRemovelog_Click(const Context& context);
void cmdAddMainTemplate_Click(const Context& context);
void cmdRemoveMainTemplate_Click(const Context& context);
void cmdAddMapTemplate_Click(const Context& context);
void cmdRemoveMapTemplate_Click(const Context& context);
void cmdAddGameTemplate_Click(const Context& context);
void cmdRemoveGameTemplate_Click(const Context& context);

/// Appends the variable as typed and empties both fields; nothing when the value is empty.
void cmdAddUserVar_Click(const Context& context);
void cmdRemoveUserVar_Click(const Context& context);

/// Asks for a color, then puts the level as typed and the color's HTML text at the top of the
/// highlight levels and empties the field; nothing on cancel or when the level is empty.
void Command4_Click(const Context& context);
void cmdRemoveHiLiteLevel_Click(const Context& context);

}  // namespace editor
