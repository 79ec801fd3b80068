#include "platform/pseudo_terminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace platform {

bool HasTerminal() { return isatty(STDOUT_FILENO) == 1 || isatty(STDERR_FILENO) == 1; }

std::optional<PseudoTerminal> PseudoTerminal::Open() {
  Descriptor reader(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (reader.Get() < 0 || grantpt(reader.Get()) != 0 || unlockpt(reader.Get()) != 0)
    return std::nullopt;
  std::array<char, 64> name = {};
  if (ptsname_r(reader.Get(), name.data(), name.size()) != 0) return std::nullopt;
  Descriptor program(open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  const winsize size = {.ws_row = 25, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
  if (program.Get() < 0 || ioctl(program.Get(), TIOCSWINSZ, &size) != 0 ||
      fcntl(reader.Get(), F_SETFL, O_NONBLOCK) != 0)
    return std::nullopt;
  return PseudoTerminal(std::move(reader), std::move(program));
}

bool PseudoTerminal::Read(std::string& bytes, std::size_t limit) {
  std::array<char, 4096> block = {};  // the system hands out no more at once
  while (limit > 0) {
    const ssize_t count = read(reader_.Get(), block.data(), std::min(limit, block.size()));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN) return true;
    if (count <= 0) return false;  // EIO: the last writer is gone
    bytes.append(block.data(), static_cast<std::size_t>(count));
    limit -= static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace platform
