#include "platform/process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <linux/close_range.h>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "platform/files.h"

namespace platform {
namespace {

enum class Bond { kChild, kDetached };

/// What a child process needs between fork and exec. It is prepared before the fork, because the
/// child of a program with several threads may not allocate memory.
struct Launch {
  const char* program;
  char* const* arguments;
  int errorPipe;  // takes the error number when the program cannot be executed
};

[[noreturn]] void Fail(int errorPipe) {
  const int error = errno;
  [[maybe_unused]] const ssize_t written = write(errorPipe, &error, sizeof error);
  _exit(127);
}

[[noreturn]] void Execute(const Launch& launch) {
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  // On a kernel without this call the few descriptors that are not closed on exec stay open.
  close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
  execv(launch.program, launch.arguments);
  Fail(launch.errorPipe);
}

void CutStandardStreams() {
  const int null = open("/dev/null", O_RDWR);
  if (null < 0) return;
  dup2(null, STDIN_FILENO);
  dup2(null, STDOUT_FILENO);
  dup2(null, STDERR_FILENO);
}

/// Runs the program in a grandchild and ends: the grandchild becomes a child of the system, which
/// clears away what is left of it.
[[noreturn]] void ExecuteDetached(const Launch& launch) {
  setsid();
  const pid_t grandchild = fork();
  if (grandchild < 0) Fail(launch.errorPipe);
  if (grandchild > 0) _exit(0);
  CutStandardStreams();
  Execute(launch);
}

void WaitForEnd(pid_t child) {
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

/// The error number that came through the pipe, 0 when the program was executed: then the pipe
/// was closed without a word.
int ReadError(int pipe) {
  int error = 0;
  while (true) {
    const ssize_t count = read(pipe, &error, sizeof error);
    if (count == static_cast<ssize_t>(sizeof error)) return error;
    if (count >= 0 || errno != EINTR) return 0;
  }
}

std::string Describe(int error) { return std::generic_category().message(error); }

StartResult Start(const std::vector<std::string>& arguments, Bond bond) {
  const std::optional<std::string> program =
      arguments.empty() ? std::nullopt : FindProgram(arguments.front());
  if (!program) return {0, Describe(ENOENT)};
  std::vector<char*> list;
  list.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) list.push_back(const_cast<char*>(argument.c_str()));
  list.push_back(nullptr);

  std::array<int, 2> pipe = {};
  if (pipe2(pipe.data(), O_CLOEXEC) != 0) return {0, Describe(errno)};
  const Launch launch{program->c_str(), list.data(), pipe[1]};
  const pid_t child = fork();
  if (child == 0) {
    if (bond == Bond::kDetached) ExecuteDetached(launch);
    Execute(launch);
  }
  const int forkError = child < 0 ? errno : 0;
  close(pipe[1]);
  const int error = child < 0 ? forkError : ReadError(pipe[0]);
  close(pipe[0]);
  if (child > 0 && (error != 0 || bond == Bond::kDetached)) WaitForEnd(child);
  if (error != 0) return {0, Describe(error)};
  return {child, {}};
}

unsigned ExitCodeOf(int status) {
  return static_cast<unsigned>(WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
}

bool IsExecutable(const std::string& path) {
  return FileExists(path) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::string> FindProgram(const std::string& name) {
  if (name.empty()) return std::nullopt;
  if (name.find('/') != std::string::npos) return name;
  const char* folders = std::getenv("PATH");
  std::string_view rest = folders != nullptr ? folders : "/usr/local/bin:/usr/bin:/bin";
  while (true) {
    const std::string_view folder = rest.substr(0, rest.find(':'));
    const std::string path = (folder.empty() ? "." : std::string(folder)) + "/" + name;
    if (IsExecutable(path)) return path;
    if (folder.size() == rest.size()) return std::nullopt;
    rest.remove_prefix(folder.size() + 1);
  }
}

StartResult StartProcess(const std::vector<std::string>& arguments) {
  return Start(arguments, Bond::kChild);
}

std::string StartDetachedProcess(const std::vector<std::string>& arguments) {
  return Start(arguments, Bond::kDetached).reason;
}

ProcessHandle OpenProcess(int processId) {
  ProcessHandle process;
  siginfo_t state = {};
  const bool isChild = processId > 0 && waitid(P_PID, static_cast<id_t>(processId), &state,
                                               WEXITED | WNOHANG | WNOWAIT) == 0;
  if (isChild) process.processId_ = processId;
  return process;
}

bool GetExitCodeProcess(ProcessHandle& process, unsigned& exitCode) {
  if (process.processId_ == 0) return false;
  if (!process.exitCode_) {
    int status = 0;
    const pid_t ended = waitpid(process.processId_, &status, WNOHANG);
    if (ended == 0) {
      exitCode = kStillActive;
      return true;
    }
    // Where SIGCHLD is ignored the system keeps no exit code; then all that is known is the end.
    process.exitCode_ = ended < 0 ? 0 : ExitCodeOf(status);
  }
  exitCode = *process.exitCode_;
  return true;
}

}  // namespace platform
