#pragma once

#include <QWidget>

#include "ui/desktop.h"

namespace editor {

/// Puts the shipped default of every setting into its field. The user variables and the entry
/// boxes of the lists stay as they are; no file is touched.
void RestoreDefaults(QWidget& window);

/// Asks whether all settings shall be reset and does so on Yes. The result says whether it did.
bool ConfirmAndRestoreDefaults(QWidget& window, ui::Desktop& desktop);

}  // namespace editor
