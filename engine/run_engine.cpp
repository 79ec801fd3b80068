#include "engine/run_engine.h"

#include "platform/process.h"
#include "ui/events.h"

namespace engine {
namespace {

constexpr int kPollMilliseconds = 100;

unsigned WaitForEnd(int processId) {
  platform::ProcessHandle process = platform::OpenProcess(processId);
  unsigned exitCode = 0;  // stays so where the process cannot be opened: it has ended
  do {
    platform::GetExitCodeProcess(process, exitCode);
    ui::PumpEvents();
    ui::WaitHandlingEvents(kPollMilliseconds);
  } while (exitCode == platform::kStillActive);
  return exitCode;
}

}  // namespace

std::string EnginePath(const std::string& programDirectory) {
  return programDirectory + "\\morvane.exe";
}

std::string RunEngine(ui::Desktop& desktop, const std::string& programDirectory) {
  const platform::StartResult started =
      desktop.StartProgram({EnginePath(programDirectory), {}, {}});
  if (started.processId == 0) return started.reason;
  desktop.ProgramEnded(started.processId, WaitForEnd(started.processId));
  return {};
}

}  // namespace engine
