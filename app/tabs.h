#pragma once

#include <QAction>

namespace app {

class frmMain;

/// Runs whenever another tab has come to the front, by the user or by code: names its content in
/// the status bar and moves the check mark of the View menu to its item.
void SSTab1_Click(frmMain& window);

/// Moves the check mark among the eight View items of the tabs to the given one.
void ClearViewChecks(frmMain& window, QAction& item);

// The View items of the tabs: each brings its tab to the front.
void mnuVuewMain_Click(frmMain& window);
void mnuViewLogs_Click(frmMain& window);
void mnuViewGame_Click(frmMain& window);
void mnuViewHTML_Click(frmMain& window);
void mnuViewKillTables_Click(frmMain& window);
void mnuViewTemplates_Click(frmMain& window);
void mnuViewUserVars_Click(frmMain& window);
void mnuViewAbout_Click(frmMain& window);

}  // namespace app
