#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace platform {

/// What starting a program gave.
struct StartResult {
  int processId = 0;   // 0 when the program could not be started
  std::string reason;  // why not, for a message to the user
};

/// The exit code of a process that is still running.
inline constexpr unsigned kStillActive = 259;

/// The file that a program's name stands for: a name with a "/" as it is, whether or not it
/// exists; a bare name as the first executable file of that name in the folders of PATH. Nothing
/// when there is none.
std::optional<std::string> FindProgram(const std::string& name);

/// Where a program's standard output and standard error go: open file descriptors, -1 for those of
/// this process.
struct Streams {
  int output = -1;
  int errors = -1;
};

/// Starts a program as a child process with the given arguments, the first of which names it (see
/// FindProgram). It inherits working directory and environment, and the standard streams that
/// `streams` leaves alone; one whose output goes elsewhere has nothing to read. No other open file
/// reaches it. A program that cannot be executed is known on return.
/// The child must be asked for its exit code until it has ended (see GetExitCodeProcess).
StartResult StartProcess(const std::vector<std::string>& arguments, const Streams& streams = {});

/// Starts a program that lives on its own, in a session of its own, with no open file of this
/// process and no standard streams. When it ends, nothing of it is left behind. The result is
/// empty, or says why the program could not be started.
std::string StartDetachedProcess(const std::vector<std::string>& arguments);

/// A child process that is being watched.
class ProcessHandle {
 public:
  ProcessHandle() = default;

 private:
  friend ProcessHandle OpenProcess(int processId);
  friend std::error_code GetExitCodeProcess(ProcessHandle& process, unsigned& exitCode);

  int processId_ = 0;  // 0: no process
  std::optional<unsigned> exitCode_;
};

/// Opens a child process, also one that has ended but was not asked for its exit code yet. For any
/// other number the handle holds no process.
ProcessHandle OpenProcess(int processId);

/// Gives the exit code of a process: kStillActive while it runs; what it returned (0 to 255) when
/// it has ended, or 128 and the number of the signal that ended it. The first answer other than
/// kStillActive releases the process; later calls repeat it. Without a process in the handle
/// `exitCode` stays as it is, and the result says so (no_such_process).
std::error_code GetExitCodeProcess(ProcessHandle& process, unsigned& exitCode);

}  // namespace platform
