#pragma once

#include <string>
#include <string_view>

#include "ui/desktop.h"

class QWidget;

namespace engine {

/// Name of the statistics engine, which lies in the program directory.
inline constexpr std::string_view kEngineFileName = "morvane.exe";

/// Runs the engine and returns when it has ended, whatever its exit code. Window events are handled
/// meanwhile, so handlers run inside it, and `owner` may be closed (but not destroyed) in it.
/// The engine is started without arguments; working directory and environment are this program's.
/// An engine that cannot be started is told to the user, and the result is false.
bool RunEngine(ui::Desktop& desktop, QWidget* owner, const std::string& programDirectory);

}  // namespace engine
