#include "platform/files.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/descriptor.h"
#include "platform/file_errors.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

/// Keeps the signal of a write beyond the limit on file sizes from this thread while it lives; the
/// write fails with EFBIG all the same.
class NoFileSizeSignal {
 public:
  NoFileSizeSignal() {
    sigemptyset(&signal_);
    sigaddset(&signal_, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &signal_, &before_);
  }
  NoFileSizeSignal(const NoFileSizeSignal&) = delete;
  NoFileSizeSignal& operator=(const NoFileSizeSignal&) = delete;
  ~NoFileSizeSignal() {
    const timespec noTime = {};
    while (sigtimedwait(&signal_, nullptr, &noTime) > 0) {
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  sigset_t signal_ = {};
  sigset_t before_ = {};
};

/// The descriptor, where it was opened and is a regular file's; else -1 and `error`.
int OnlyRegular(int descriptor, std::error_code& error) {
  struct stat status = {};
  const bool isOpen = descriptor >= 0 && fstat(descriptor, &status) == 0;
  error = isOpen ? RefuseKind(status.st_mode) : LastError();
  if (!error) return descriptor;
  if (descriptor >= 0) close(descriptor);
  return -1;
}

}  // namespace

std::error_code RefuseKind(mode_t mode) {
  if (S_ISDIR(mode)) return std::make_error_code(std::errc::is_a_directory);
  return S_ISREG(mode) ? std::error_code() : FileErrors::NotRegular();
}

bool FileExists(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

int OpenRegularFile(const fs::path& path, std::error_code& error) {
  // Opening a pipe would wait for its other end.
  return OnlyRegular(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY), error);
}

int CreateRegularFile(const fs::path& path, std::error_code& error) {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  const int descriptor = OnlyRegular(open(path.c_str(), kFlags, 0666), error);
  if (error || ftruncate(descriptor, 0) == 0) return descriptor;
  error = LastError();
  close(descriptor);
  return -1;
}

std::string ReadWholeFile(const fs::path& path, std::error_code& error) {
  std::string bytes;
  const Descriptor descriptor(OpenRegularFile(path, error));
  if (error) return bytes;
  std::array<char, 1 << 16> buffer;
  while (true) {
    const ssize_t count = read(descriptor.Get(), buffer.data(), buffer.size());
    if (count == 0) return bytes;
    if (count > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      error = LastError();
      return {};
    }
  }
}

std::error_code WriteAll(int descriptor, std::string_view bytes) {
  const NoFileSizeSignal noSignal;
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return LastError();
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

std::error_code DeleteOneFile(const fs::path& path) {
  return unlink(path.c_str()) == 0 ? std::error_code() : LastError();
}

}  // namespace platform
