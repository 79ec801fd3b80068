#pragma once

#include <QWidget>

#include "editor/context.h"

namespace editor {

/// Sets all sixteen message-option check boxes.
void cmdCheckAll_Click(const Context& context);

/// Clears all sixteen message-option check boxes.
void cmdClearAll_Click(const Context& context);

/// Enables the custom-ranking fields while `ckUseCustomRank` is set, disables them otherwise. Their
/// texts stay.
void UpdateCustomRank(QWidget& window);

/// Runs whenever the value of the check box changes.
void ckUseCustomRank_Click(const Context& context);

}  // namespace editor
