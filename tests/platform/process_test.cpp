#include "platform/process.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "tests/support/files.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using support::ReadFile;
using testing::IsEmpty;
using testing::Not;

/// Waits, at most ten seconds, until something has become true.
template <class Condition>
bool Becomes(const Condition& condition) {
  for (int tries = 0; tries < 1000; ++tries) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

unsigned WaitForCode(ProcessHandle& process) {
  unsigned code = 0;
  EXPECT_TRUE(Becomes([&] { return !GetExitCodeProcess(process, code) && code != kStillActive; }));
  return code;
}

/// Whether this process has a child, ended or not, that was not cleared away.
bool HasChildren() {
  const std::string id = std::to_string(getpid());
  return !ReadFile("/proc/" + id + "/task/" + id + "/children").empty();
}

class ProcessTest : public testing::Test {
 protected:
  /// Writes a program into the test's folder.
  std::string Script(const std::string& name, const std::string& commands) const {
    std::string path = folder_ / name;
    std::ofstream(path) << "#!/bin/sh\n" << commands;
    chmod(path.c_str(), 0755);
    return path;
  }

  const support::TempFolder temporary_;
  const fs::path folder_ = temporary_.Path();
};

TEST_F(ProcessTest, TellsHowAProcessEnded) {
  const struct {
    const char* commands;
    unsigned code;
  } cases[] = {{"exit 0", 0}, {"exit 3", 3}, {"kill -KILL $$", 128 + SIGKILL}};
  for (const auto& [commands, code] : cases) {
    const StartResult started = StartProcess({Script("program", commands)});
    ASSERT_GT(started.processId, 0) << started.reason;
    ProcessHandle process = OpenProcess(started.processId);
    EXPECT_EQ(WaitForCode(process), code) << commands;
    EXPECT_FALSE(HasChildren());
    unsigned again = 0;
    EXPECT_FALSE(GetExitCodeProcess(process, again));
    EXPECT_EQ(again, code);
  }
}

TEST_F(ProcessTest, IsStillActiveUntilItEnds) {
  const fs::path gate = folder_ / "gate";
  ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
  const StartResult started = StartProcess({Script("program", "read line < \"$1\"; exit 7"), gate});
  ASSERT_GT(started.processId, 0) << started.reason;
  ProcessHandle process = OpenProcess(started.processId);
  unsigned code = 0;
  EXPECT_FALSE(GetExitCodeProcess(process, code));
  EXPECT_EQ(code, kStillActive);
  std::ofstream(gate) << "go\n";
  EXPECT_EQ(WaitForCode(process), 7U);
}

TEST_F(ProcessTest, ArgumentsArriveAsTheyAre) {
  const std::string program = Script("a \"b\" $c; d's", "printf '%s\\n' \"$@\" > \"${0%/*}/out\"");
  const StartResult started =
      StartProcess({program, "x y", "\"$HOME\"", "; rm *", "", "a\nb", "é"});
  ASSERT_GT(started.processId, 0) << started.reason;
  ProcessHandle process = OpenProcess(started.processId);
  EXPECT_EQ(WaitForCode(process), 0U);
  EXPECT_EQ(ReadFile(folder_ / "out"), "x y\n\"$HOME\"\n; rm *\n\na\nb\né\n");
}

TEST_F(ProcessTest, AProgramThatCannotBeExecutedIsKnownAtOnce) {
  const std::string locked = folder_ / "locked";
  std::ofstream(locked) << "#!/bin/sh\n";
  const std::string noFormat = Script("noformat", "");
  std::ofstream(noFormat, std::ios::trunc) << "echo no interpreter line\n";
  const struct {
    std::string program;
    const char* reason;
  } cases[] = {{folder_ / "missing", "No such file or directory"},
               {"no-program-of-this-name", "No such file or directory"},
               {"", "No such file or directory"},
               {locked, "Permission denied"},
               {folder_, "Permission denied"},
               {noFormat, "Exec format error"}};
  for (const auto& [program, reason] : cases) {
    const StartResult started = StartProcess({program});
    EXPECT_EQ(started.processId, 0) << program;
    EXPECT_EQ(started.reason, reason) << program;
    EXPECT_EQ(StartDetachedProcess({program}), reason) << program;
    EXPECT_FALSE(HasChildren()) << program;
  }
}

TEST_F(ProcessTest, ADetachedProcessLeavesNothingBehind) {
  const int secret = open("/dev/null", O_RDONLY);  // without the flag that closes it on exec
  ASSERT_GT(secret, 2);
  const std::string program = Script("program",
                                     "cut -d ' ' -f 6 /proc/$$/stat > \"$1/session\"\n"
                                     "readlink /proc/$$/fd/0 /proc/$$/fd/2 > \"$1/streams\"\n"
                                     "[ -e /proc/$$/fd/" +
                                         std::to_string(secret) +
                                         " ] && echo open > \"$1/open\"\n"
                                         "mv \"$1/session\" \"$1/done\"\n");
  EXPECT_THAT(StartDetachedProcess({program, folder_}), IsEmpty());
  EXPECT_FALSE(HasChildren());
  ASSERT_TRUE(Becomes([&] { return fs::exists(folder_ / "done"); }));
  close(secret);
  EXPECT_THAT(ReadFile(folder_ / "done"), Not(IsEmpty()));
  EXPECT_NE(ReadFile(folder_ / "done"), std::to_string(getsid(0)) + "\n");
  EXPECT_EQ(ReadFile(folder_ / "streams"), "/dev/null\n/dev/null\n");
  EXPECT_FALSE(fs::exists(folder_ / "open"));
}

TEST_F(ProcessTest, AHandleWithoutAProcessHasNoExitCode) {
  for (const int id : {0, -1, 1, static_cast<int>(getpid())}) {
    ProcessHandle process = OpenProcess(id);
    unsigned code = 42;
    EXPECT_EQ(GetExitCodeProcess(process, code), std::errc::no_such_process) << id;
    EXPECT_EQ(code, 42U) << id;
  }
}

TEST_F(ProcessTest, FindsProgramsInTheFoldersOfPath) {
  const std::string before = std::getenv("PATH");
  const std::string program = Script("tool", "");
  fs::create_directories(folder_ / "first" / "tool");  // a folder is no program
  setenv("PATH", ((folder_ / "first").string() + ":/nowhere:" + folder_.string()).c_str(), 1);
  EXPECT_EQ(FindProgram("tool"), program);
  EXPECT_EQ(FindProgram("other"), std::nullopt);
  EXPECT_EQ(FindProgram("/nowhere/tool"), "/nowhere/tool");
  setenv("PATH", before.c_str(), 1);
}

}  // namespace
}  // namespace platform
