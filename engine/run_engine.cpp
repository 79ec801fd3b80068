#include "engine/run_engine.h"

#include <QString>

#include "platform/paths.h"
#include "platform/process.h"
#include "ui/events.h"

namespace engine {
namespace {

constexpr int kPollMilliseconds = 100;

void WaitForEnd(int processId) {
  platform::ProcessHandle process = platform::OpenProcess(processId);
  unsigned exitCode = 0;
  do {
    platform::GetExitCodeProcess(process, exitCode);
    ui::PumpEvents();
    ui::WaitHandlingEvents(kPollMilliseconds);
  } while (exitCode == platform::kStillActive);
}

void TellWhyNotStarted(ui::Desktop& desktop, QWidget* owner, const std::string& program,
                       const std::string& reason) {
  const std::string path = platform::SystemPath(program).string();
  desktop.ShowMessage(
      owner,
      QStringLiteral("The statistics engine could not be started:\n%1\n\n%2\n\nThe settings have "
                     "been saved; no statistics were created.")
          .arg(QString::fromStdString(path), QString::fromStdString(reason)),
      ui::MessageStyle::kCritical, QString::fromUtf8(kEngineFileName));
}

}  // namespace

bool RunEngine(ui::Desktop& desktop, QWidget* owner, const std::string& programDirectory) {
  platform::CommandLine command;
  command.program = programDirectory + "\\" + std::string(kEngineFileName);
  const platform::StartResult started = desktop.StartProgram(command);
  if (started.processId == 0) {
    TellWhyNotStarted(desktop, owner, command.program, started.reason);
    return false;
  }
  WaitForEnd(started.processId);
  return true;
}

}  // namespace engine
