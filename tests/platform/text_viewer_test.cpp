#include "platform/text_viewer.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TextViewerTest, FillsInTheExecLine) {
  const std::string file = "/a b/\"c\"$;%f.txt";
  DesktopApplication application{"", "Text \"Editor\"", "edit-icon", "/usr/share/e.desktop", false};
  const auto arguments = [&](const char* command) {
    application.command = command;
    return ArgumentsToOpen(application, file);
  };
  EXPECT_THAT(arguments("edit %f"), ElementsAre("edit", file));
  EXPECT_THAT(arguments("edit"), ElementsAre("edit", file));
  EXPECT_THAT(arguments("edit --new %U --"),
              ElementsAre("edit", "--new", "file:///a%20b/%22c%22$%3B%25f.txt", "--"));
  EXPECT_THAT(arguments("\"/opt/my \\$editor\" --file=%F 100%% %i -t %c %k %m"),
              ElementsAre("/opt/my $editor", "--file=" + file, "100%", "--icon", "edit-icon", "-t",
                          "Text \"Editor\"", "/usr/share/e.desktop"));
  EXPECT_THAT(arguments("edit \"no end"), IsEmpty());
  EXPECT_THAT(arguments(""), IsEmpty());
  application.runsInTerminal = true;
  EXPECT_THAT(arguments("vi %f"), ElementsAre("x-terminal-emulator", "-e", "vi", file));
}

}  // namespace
}  // namespace platform
