#pragma once

namespace app {

class frmMain;

/// Saves the settings and runs the statistics engine on them; returns when the engine has ended.
/// Does nothing while a save or a run is in progress, and stops at a save that failed.
void cmdMakeStats_Click(frmMain& window);
void mnuFileGenerate_Click(frmMain& window);

/// Saves the settings and prints the settings file; stops at a save that failed.
void mnuFilePrint_Click(frmMain& window);

/// After a confirmation, deletes the engine's message logs and says so in the status bar.
void mnuViewLogsDelete_Click(frmMain& window);

}  // namespace app
