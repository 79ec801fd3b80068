#include "morvane/program.h"

#include <exception>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

#include "morvane/run.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace morvane {
namespace {

constexpr int kAnswered = 0;
constexpr int kFailed = 1;
constexpr int kBadArgument = 2;

constexpr std::string_view kVersion = "morvane.exe " MORVANE_VERSION "\n";

constexpr std::string_view kHelp =
    R"(Usage: morvane.exe [--help | --version]

Reads the game server logs that morvane.cfg beside this program names, and writes the pages of
their statistics. All settings stand in that file; the relative paths in it are taken from this
program's folder.

  --help     says this
  --version  says the version

What happened is told in morvane.log.txt, logparser.log.txt, templateparser.log.txt and
custrank.log.txt beside the program, and on the screen as the settings say.

The program ends with
  0  when every page was written or already was as it should be,
  1  when a page could not be written or the database not changed, or nothing was done at all: no
     settings, no log that could be read, no place for the pages, not enough memory, another run
     at work in the same folder,
  2  for an argument that it does not know.
)";

int Say(std::string_view text) {
  return platform::WriteAll(STDOUT_FILENO, text) ? kFailed : kAnswered;
}

int Fail(const std::string& text, int code) {
  [[maybe_unused]] const auto ignored =
      platform::WriteAll(STDERR_FILENO, "morvane.exe: " + text + "\n");
  return code;
}

int Do(std::span<const char* const> arguments) {
  if (arguments.empty()) return Run(platform::ProgramDirectory());
  const std::string first = arguments.front();
  if (arguments.size() == 1 && first == "--help") return Say(kHelp);
  if (arguments.size() == 1 && first == "--version") return Say(kVersion);
  const bool isKnown = first == "--help" || first == "--version";
  return Fail("unknown argument \"" + std::string(arguments[isKnown ? 1 : 0]) +
                  "\"; all settings stand in morvane.cfg (try --help)",
              kBadArgument);
}

}  // namespace

int RunProgram(std::span<const char* const> arguments) noexcept {
  try {
    return Do(arguments);
  } catch (const std::exception& error) {
    return Fail(error.what(), kFailed);
  } catch (...) {
    return kFailed;
  }
}

}  // namespace morvane
