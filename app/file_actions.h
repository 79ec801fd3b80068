#pragma once

#include "app/context.h"

namespace app {

/// Saves the settings and says so in the status bar; when the file cannot be written, or could not
/// be read when the window was loaded, a message box says why instead. The result is true when the
/// file holds the fields now. Called while a save handles window events, it leaves the work to that
/// save: the result is false.
bool Save(frmMain& window);

/// Tells the user why the window could not be loaded and what it does not do therefore.
void TellLoadFailure(frmMain& window);

void cmdSave_Click(const Context& context);
void mnuFileSave_Click(const Context& context);

/// After a confirmation, puts every setting back to its default and says so in the status bar.
void cmdDefaults_Click(const Context& context);
void mnuFileDefaults_Click(const Context& context);

/// Stores the window's state and closes the window. Closing it in any other way stores nothing.
void cmdClose_Click(const Context& context);
void mnuFileExit_Click(const Context& context);

}  // namespace app
