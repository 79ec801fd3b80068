#pragma once

#include <string>

#include "ui/desktop.h"

namespace engine {

/// Sends the settings file in the program directory to the printer. A failure is silent.
void PrintConfiguration(ui::Desktop& desktop, const std::string& programDirectory);

}  // namespace engine
