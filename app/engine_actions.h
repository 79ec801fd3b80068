#pragma once

#include "app/context.h"

namespace app {

/// Saves the settings and runs the statistics engine on them; returns when the engine has ended.
/// Starts nothing while a save or a run is in progress (in a run the status bar says again what
/// goes on), and stops at a save that failed.
void cmdMakeStats_Click(const Context& context);
void mnuFileGenerate_Click(const Context& context);

/// Saves the settings and prints the settings file; stops at a save that failed. While a save
/// handles window events, the file is printed when that save is done.
void mnuFilePrint_Click(const Context& context);

/// After a confirmation, deletes the engine's message logs and says so in the status bar.
void mnuViewLogsDelete_Click(const Context& context);

}  // namespace app
