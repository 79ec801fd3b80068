#pragma once

#include <QAction>

#include "app/context.h"

namespace app {

/// Shows the status bar if it is hidden and hides it if it is shown.
void mnViewStatusBar_Click(const Context& context);

/// Runs whenever another tab has come to the front, by the user or by code: names its content in
/// the status bar and moves the check mark of the View menu to its item.
void SSTab1_Click(const Context& context);

/// Moves the check mark among the eight View items of the tabs to the given one.
void ClearViewChecks(frmMain& window, QAction& item);

// The View items of the tabs: each brings its tab to the front.
void mnuVuewMain_Click(const Context& context);
void mnuViewLogs_Click(const Context& context);
void mnuViewGame_Click(const Context& context);
void mnuViewHTML_Click(const Context& context);
void mnuViewKillTables_Click(const Context& context);
void mnuViewTemplates_Click(const Context& context);
void mnuViewUserVars_Click(const Context& context);
void mnuViewAbout_Click(const Context& context);

}  // namespace app
