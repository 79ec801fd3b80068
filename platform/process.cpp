#include "platform/process.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <glib.h>
#include <memory>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/glib_pointers.h"

namespace platform {
namespace {

/// GLib hands a file of no format that the system knows to a shell. Such a file is no program: the
/// system's own answer to it is a failure, and stays one.
bool HasProgramFormat(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return true;  // the system says why not
  std::ifstream file(path, std::ios::binary);
  if (!file) return true;
  std::array<char, 4> start = {};
  file.read(start.data(), start.size());
  const std::string_view bytes(start.data(), static_cast<std::size_t>(file.gcount()));
  return bytes.starts_with("#!") || bytes.starts_with("\177ELF") || bytes.starts_with("MZ");
}

/// The reason alone, where the system gave one: GLib's text repeats the name of the program.
std::string ReasonOf(const GError& error) {
  constexpr std::pair<int, std::errc> kReasons[] = {
      {G_SPAWN_ERROR_NOENT, std::errc::no_such_file_or_directory},
      {G_SPAWN_ERROR_ACCES, std::errc::permission_denied},
      {G_SPAWN_ERROR_PERM, std::errc::operation_not_permitted},
      {G_SPAWN_ERROR_NOTDIR, std::errc::not_a_directory},
      {G_SPAWN_ERROR_ISDIR, std::errc::is_a_directory},
      {G_SPAWN_ERROR_NOEXEC, std::errc::executable_format_error},
      {G_SPAWN_ERROR_TXTBUSY, std::errc::text_file_busy},
      {G_SPAWN_ERROR_NOMEM, std::errc::not_enough_memory}};
  for (const auto& [code, reason] : kReasons) {
    if (g_error_matches(&error, G_SPAWN_ERROR, code) != FALSE)
      return std::make_error_code(reason).message();
  }
  return error.message;
}

StartResult Start(std::vector<std::string> arguments, unsigned flags, GSpawnChildSetupFunc setup,
                  const Streams& streams) {
  const std::optional<std::string> program =
      arguments.empty() ? std::nullopt : FindProgram(arguments.front());
  if (!program) return {0, std::make_error_code(std::errc::no_such_file_or_directory).message()};
  if (!HasProgramFormat(*program))
    return {0, std::make_error_code(std::errc::executable_format_error).message()};
  arguments.insert(arguments.begin(), *program);  // the file; the list with its name follows
  std::vector<char*> list;
  list.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) list.push_back(argument.data());
  list.push_back(nullptr);

  int processId = 0;
  GError* error = nullptr;
  g_spawn_async_with_pipes_and_fds(nullptr, list.data(), nullptr,
                                   static_cast<GSpawnFlags>(flags | G_SPAWN_FILE_AND_ARGV_ZERO),
                                   setup, nullptr, -1, streams.output, streams.errors, nullptr,
                                   nullptr, 0, &processId, nullptr, nullptr, nullptr, &error);
  const OwnedError owned(error);
  if (owned) return {0, ReasonOf(*owned)};
  return {processId, {}};
}

unsigned ExitCodeOf(int status) {
  return static_cast<unsigned>(WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
}

}  // namespace

void BeginSession(void* /*unused*/) { setsid(); }

std::optional<std::string> FindProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return name;
  const OwnedText path(g_find_program_in_path(name.c_str()));
  if (!path) return std::nullopt;
  return path.get();
}

StartResult StartProcess(const std::vector<std::string>& arguments, const Streams& streams) {
  const unsigned input = streams.output < 0 ? G_SPAWN_CHILD_INHERITS_STDIN : G_SPAWN_DEFAULT;
  return Start(arguments, G_SPAWN_DO_NOT_REAP_CHILD | input, nullptr, streams);
}

std::string StartDetachedProcess(const std::vector<std::string>& arguments) {
  return Start(arguments, G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL, BeginSession, {})
      .reason;
}

ProcessHandle OpenProcess(int processId) {
  ProcessHandle process;
  siginfo_t state = {};
  const bool isChild = processId > 0 && waitid(P_PID, static_cast<id_t>(processId), &state,
                                               WEXITED | WNOHANG | WNOWAIT) == 0;
  if (isChild) process.processId_ = processId;
  return process;
}

std::error_code GetExitCodeProcess(ProcessHandle& process, unsigned& exitCode) {
  if (process.processId_ == 0) return std::make_error_code(std::errc::no_such_process);
  if (!process.exitCode_) {
    int status = 0;
    const pid_t ended = waitpid(process.processId_, &status, WNOHANG);
    if (ended == 0) {
      exitCode = kStillActive;
      return {};
    }
    // Where SIGCHLD is ignored the system keeps no exit code; then all that is known is the end.
    process.exitCode_ = ended < 0 ? 0 : ExitCodeOf(status);
  }
  exitCode = *process.exitCode_;
  return {};
}

}  // namespace platform
