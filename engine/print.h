#pragma once

#include <string>

#include "platform/qt_desktop.h"

namespace engine {

/// Sends the settings file in the program directory to the printer. A failure is silent.
void PrintConfiguration(platform::Desktop& desktop, const std::string& programDirectory);

}  // namespace engine
