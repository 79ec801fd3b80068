#pragma once

namespace app {

class frmMain;

/// Saves the settings and says so in the status bar; when the file cannot be written a message box
/// says why instead. The result is true when the file holds the fields now. Pressed while a save
/// handles window events, it leaves the work to that save: the result is false.
bool cmdSave_Click(frmMain& window);
void mnuFileSave_Click(frmMain& window);

/// After a confirmation, puts every setting back to its default and says so in the status bar.
void cmdDefaults_Click(frmMain& window);
void mnuFileDefaults_Click(frmMain& window);

}  // namespace app
