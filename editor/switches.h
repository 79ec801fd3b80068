#pragma once

#include <QWidget>

namespace editor {

/// Sets all sixteen message-option check boxes.
void cmdCheckAll_Click(QWidget& window);

/// Clears all sixteen message-option check boxes.
void cmdClearAll_Click(QWidget& window);

/// Enables the custom-ranking fields while `ckUseCustomRank` is set, disables them otherwise. Their
/// texts stay.
void UpdateCustomRank(QWidget& window);

}  // namespace editor
