#include "platform/files.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() { return {errno, std::generic_category()}; }

/// An open file descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int value) : value_(value) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (value_ >= 0) close(value_);
  }

  int Get() const { return value_; }
  /// Closes now, so that a failing close is heard of.
  std::error_code Close() {
    const int value = std::exchange(value_, -1);
    return close(value) == 0 ? std::error_code() : LastError();
  }

 private:
  int value_;
};

/// Errors that the system has no number for.
class FileErrors : public std::error_category {
 public:
  enum Number { kNotRegular = 1 };

  static std::error_code NotRegular() {
    static const FileErrors category;
    return {kNotRegular, category};
  }

  const char* name() const noexcept override { return "file"; }
  std::string message(int /*number*/) const override { return "Not a regular file"; }
};

/// Why something that exists cannot be used as a file; nothing when it can.
std::error_code RefuseKind(mode_t mode) {
  if (S_ISDIR(mode)) return std::make_error_code(std::errc::is_a_directory);
  return S_ISREG(mode) ? std::error_code() : FileErrors::NotRegular();
}

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

/// Where a save to `path` really goes: the end of its chain of symbolic links.
std::error_code ResolveLinks(fs::path& path) {
  constexpr int kMostLinks = 40;
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (!fs::is_symlink(status)) return {};
    const fs::path target = fs::read_symlink(path, error);
    if (error) return error;
    path = path.parent_path() / target;
  }
  return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

/// Permissions and owner of the file that is to be replaced.
struct Attributes {
  bool exists = false;
  mode_t mode = 0;
  uid_t user = 0;
  gid_t group = 0;
};

std::error_code ReadAttributes(const fs::path& path, Attributes& attributes) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return errno == ENOENT ? std::error_code() : LastError();
  if (const std::error_code error = RefuseKind(status.st_mode)) return error;
  attributes = {true, status.st_mode & 07777U, status.st_uid, status.st_gid};
  // Root may write to any file, but a file that its owner closed to writing is meant to stay.
  const bool anyoneMayWrite = (status.st_mode & 0222U) != 0;
  if (!anyoneMayWrite || faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) {
    return std::make_error_code(std::errc::permission_denied);
  }
  return {};
}

std::error_code WriteTemporary(int descriptor, const Attributes& attributes,
                               std::string_view bytes) {
  if (attributes.exists) {
    // A user may not give files away, but may hand them to a group of theirs; the permissions must
    // hold in any case. The owner goes first because a change of owner clears permission bits.
    if (fchown(descriptor, attributes.user, attributes.group) != 0) {
      constexpr auto kSameUser = static_cast<uid_t>(-1);
      [[maybe_unused]] const int group = fchown(descriptor, kSameUser, attributes.group);
    }
    if (fchmod(descriptor, attributes.mode) != 0) return LastError();
  } else {
    const mode_t mask = umask(0);
    umask(mask);
    if (fchmod(descriptor, 0666U & ~mask) != 0) return LastError();
  }
  if (const std::error_code error = WriteAll(descriptor, bytes)) return error;
  return fsync(descriptor) == 0 ? std::error_code() : LastError();
}

/// Makes the rename itself durable. A folder that cannot be flushed costs durability after a power
/// cut, not the file, so a failure here is none of the save.
void FlushFolder(const fs::path& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.Get() >= 0) fsync(descriptor.Get());
}

}  // namespace

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

std::error_code ReplaceFile(const fs::path& path, std::string_view bytes) {
  fs::path target = path;
  if (const std::error_code error = ResolveLinks(target)) return error;
  Attributes attributes;
  if (const std::error_code error = ReadAttributes(target, attributes)) return error;

  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::string temporary = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  Descriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
  if (descriptor.Get() < 0) return LastError();
  std::error_code error = WriteTemporary(descriptor.Get(), attributes, bytes);
  if (!error) error = descriptor.Close();
  if (!error && rename(temporary.c_str(), target.c_str()) != 0) error = LastError();
  if (error) {
    unlink(temporary.c_str());
    return error;
  }
  FlushFolder(folder);
  return {};
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
