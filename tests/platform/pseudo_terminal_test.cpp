#include "platform/pseudo_terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace platform {
namespace {

TEST(PseudoTerminalTest, GivesWhatIsWrittenAndTellsTheLastWritersEnd) {
  auto terminal = PseudoTerminal::Open();
  ASSERT_TRUE(terminal);
  EXPECT_TRUE(isatty(terminal->ProgramEnd()));
  for (const int end : {terminal->ProgramEnd(), terminal->ReadingEnd()}) {
    EXPECT_TRUE(fcntl(end, F_GETFD) & FD_CLOEXEC);
  }
  std::string bytes;
  EXPECT_TRUE(terminal->Read(bytes, 100)) << "nothing yet, and no wait";
  EXPECT_EQ(bytes, "");
  ASSERT_EQ(write(terminal->ProgramEnd(), "a\nbcd", 5), 5);
  EXPECT_TRUE(terminal->Read(bytes, 4));
  EXPECT_EQ(bytes, "a\r\nb");
  terminal->CloseProgramEnd();
  terminal->Read(bytes, 100);
  EXPECT_EQ(bytes, "a\r\nbcd") << "what was written before the end is not lost";
  EXPECT_FALSE(terminal->Read(bytes, 100));
}

TEST(PseudoTerminalTest, ATerminalIsKnownByEitherStream) {
  auto terminal = PseudoTerminal::Open();
  ASSERT_TRUE(terminal);
  const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
  fflush(nullptr);
  const Descriptor output(dup(STDOUT_FILENO));
  const Descriptor errors(dup(STDERR_FILENO));
  const auto hasTerminal = [](int outputEnd, int errorsEnd) {
    dup2(outputEnd, STDOUT_FILENO);
    dup2(errorsEnd, STDERR_FILENO);
    return HasTerminal();
  };
  const bool neither = hasTerminal(nowhere.Get(), nowhere.Get());
  const bool first = hasTerminal(terminal->ProgramEnd(), nowhere.Get());
  const bool second = hasTerminal(nowhere.Get(), terminal->ProgramEnd());
  hasTerminal(output.Get(), errors.Get());
  EXPECT_FALSE(neither);
  EXPECT_TRUE(first);
  EXPECT_TRUE(second);
}

}  // namespace
}  // namespace platform
