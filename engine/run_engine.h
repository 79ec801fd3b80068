#pragma once

#include <string>

#include "ui/desktop.h"

namespace engine {

/// The statistics engine, "morvane.exe" in the program directory, as the settings' notation names
/// it.
std::string EnginePath(const std::string& programDirectory);

/// Runs the engine and returns when it has ended, whatever its exit code. Window events are handled
/// meanwhile, so handlers run inside it, and the main window may be closed (but not destroyed) in
/// it.
/// The engine is started without arguments; working directory and environment are this program's.
/// The result is empty, or says why the engine could not be started.
std::string RunEngine(ui::Desktop& desktop, const std::string& programDirectory);

}  // namespace engine
