#include "platform/replace_file.h"

#include <atomic>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>

#include "platform/file_errors.h"
#include "platform/files.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = ".unfinished-";
constexpr mode_t kPermissions = 0666;  // less what the umask takes away

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// How the names of unfinished forms of a file begin; of any file where `name` is empty. Names
/// have at most 255 bytes.
std::string UnfinishedName(const std::string& name) {
  constexpr std::size_t kMostOfName = 200;
  return "." + name.substr(0, kMostOfName) + std::string(kMark);
}

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

/// Whether a file may be an unfinished form: of the file `name`, or of any where that is empty.
bool IsUnfinished(std::string_view file, const std::string& name) {
  const std::size_t mark = file.rfind(kMark);
  if (mark == file.npos || mark < 2 || !file.starts_with('.')) return false;
  if (!name.empty() && file.substr(0, mark + kMark.size()) != UnfinishedName(name)) return false;
  const std::string_view numbers = file.substr(mark + kMark.size());
  const std::size_t dash = numbers.find('-');
  return dash != numbers.npos && IsNumber(numbers.substr(0, dash)) &&
         IsNumber(numbers.substr(dash + 1));
}

/// Takes a file away where it is a regular one of this user, under no other name and nobody's who
/// still writes it: a process holds the lock of what it writes to its end.
void RemoveAbandoned(const fs::path& path) {
  constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
  const Descriptor file(open(path.c_str(), kFlags));
  struct stat status = {};
  if (file.Get() < 0 || fstat(file.Get(), &status) != 0) return;
  const bool mayBeOurs =
      S_ISREG(status.st_mode) && status.st_nlink == 1 && status.st_uid == geteuid();
  if (mayBeOurs && flock(file.Get(), LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
}

/// `name`: of the file of which abandoned forms go; empty: of all.
void ClearAbandoned(const fs::path& folder, const std::string& name) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (IsUnfinished(entry->path().filename().string(), name)) RemoveAbandoned(entry->path());
  }
}

/// A file that is to take the place of another one; gone with this where it does not come to that.
class Unfinished {
 public:
  Unfinished(const fs::path& target, mode_t permissions, std::error_code& error) {
    constexpr int kMostTries = 1000;  // names may be taken by files that lock themselves
    const fs::path stem = FolderOf(target) / UnfinishedName(target.filename().string());
    for (int i = 0; i < kMostTries; ++i) {
      static std::atomic<unsigned> number = 0;
      path_ = stem.string() + std::to_string(getpid()) + "-" + std::to_string(++number);
      if (Make(permissions, error)) return;
    }
  }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    if (file_.Get() >= 0) unlink(path_.c_str());
  }

  int File() const { return file_.Get(); }

  std::error_code Write(std::string_view bytes, Flush flush) {
    if (const std::error_code error = WriteAll(file_.Get(), bytes)) return error;
    return flush == Flush::kNo || fsync(file_.Get()) == 0 ? std::error_code() : LastError();
  }

  std::error_code TakePlaceOf(const fs::path& target) {
    // Some file systems tell only at closing that they could not write. The lock has to last
    // longer, so it is another descriptor of the same opening that is closed.
    Descriptor copy(fcntl(file_.Get(), F_DUPFD_CLOEXEC, 0));
    if (copy.Get() < 0) return LastError();
    if (const std::error_code error = copy.Close()) return error;
    if (rename(path_.c_str(), target.c_str()) != 0) return LastError();
    file_ = Descriptor();
    return {};
  }

 private:
  /// False: that name is taken, or somebody is about to clear it away.
  bool Make(mode_t permissions, std::error_code& error) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
    Descriptor file(open(path_.c_str(), kFlags, permissions));
    error = file.Get() < 0 ? LastError() : std::error_code();
    if (error) return error != std::errc::file_exists;
    const bool isLost = flock(file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat status = {};
    if (isLost || fstat(file.Get(), &status) != 0 || status.st_nlink == 0) {
      unlink(path_.c_str());
      error = std::make_error_code(std::errc::file_exists);
      return false;
    }
    file_ = std::move(file);
    return true;
  }

  fs::path path_;
  Descriptor file_;
};

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

std::error_code SetAttributes(int file, const Attributes& attributes) {
  // A user may not give files away, but may hand them to a group of theirs; the permissions must
  // hold in any case. The owner goes first because a change of owner clears permission bits.
  if (fchown(file, attributes.user, attributes.group) != 0) {
    constexpr auto kSameUser = static_cast<uid_t>(-1);
    [[maybe_unused]] const int group = fchown(file, kSameUser, attributes.group);
  }
  return fchmod(file, attributes.mode) == 0 ? std::error_code() : LastError();
}

/// Makes the rename itself durable. A folder that cannot be flushed costs durability after a power
/// cut, not the file, so a failure here is none of the save.
void FlushFolder(const fs::path& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.Get() >= 0) fsync(descriptor.Get());
}

/// What tells a folder from all others, whatever it is called, and the process that asks.
using Holding = std::tuple<pid_t, dev_t, ino_t>;

Holding HoldingOf(int folder) {
  struct stat status = {};
  fstat(folder, &status);
  return {getpid(), status.st_dev, status.st_ino};
}

/// The folders that this process has locked.
struct Held {
  std::mutex mutex;
  std::set<Holding> folders;

  static Held& Get() {
    static Held held;
    return held;
  }
};

}  // namespace

std::error_code ReplaceFile(const fs::path& path, std::string_view bytes) {
  fs::path target = path;
  if (const std::error_code error = ResolveLinks(target)) return error;
  Attributes attributes;
  if (const std::error_code error = ReadAttributes(target, attributes)) return error;

  ClearAbandoned(FolderOf(target), target.filename().string());
  std::error_code error;
  Unfinished file(target, attributes.exists ? 0600 : kPermissions, error);
  if (!error && attributes.exists) error = SetAttributes(file.File(), attributes);
  if (!error) error = file.Write(bytes, Flush::kYes);
  if (!error) error = file.TakePlaceOf(target);
  if (!error) FlushFolder(FolderOf(target));
  return error;
}

std::error_code PutFile(const fs::path& path, std::string_view bytes, Flush flush) {
  std::error_code error;
  Unfinished file(path, kPermissions, error);
  if (!error) error = file.Write(bytes, flush);
  if (!error) error = file.TakePlaceOf(path);
  return error;
}

std::error_code PrepareFolder(const fs::path& folder) {
  ClearAbandoned(folder, {});
  std::error_code error;
  const Unfinished probe(folder / "probe", kPermissions, error);
  return error;
}

FolderLock::FolderLock(const fs::path& folder, std::error_code& error) {
  if (error) return;
  folder_ = Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder_.Get() < 0) return;
  const std::lock_guard guard(Held::Get().mutex);
  if (flock(folder_.Get(), LOCK_EX | LOCK_NB) == 0) {
    Held::Get().folders.insert(HoldingOf(folder_.Get()));
    return;
  }
  const bool isOwn = Held::Get().folders.contains(HoldingOf(folder_.Get()));
  if (errno == EWOULDBLOCK && !isOwn) error = FileErrors::InUse();
  folder_ = Descriptor();
}

FolderLock::~FolderLock() {
  if (folder_.Get() < 0) return;
  const std::lock_guard guard(Held::Get().mutex);
  Held::Get().folders.erase(HoldingOf(folder_.Get()));
  folder_ = Descriptor();
}

}  // namespace platform
