#include "engine/print.h"

#include "config/modIni.h"

namespace engine {

void PrintConfiguration(ui::Desktop& desktop, const std::string& programDirectory) {
  desktop.StartDetached({platform::kNotepad,
                         {platform::kPrintSwitch},
                         programDirectory + "\\" + std::string(config::kConfigFileName)});
}

}  // namespace engine
