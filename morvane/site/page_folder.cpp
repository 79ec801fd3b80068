#include "morvane/site/page_folder.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTemporary = ".morvane-";  // and the number of the process

std::error_code LastError() { return {errno, std::generic_category()}; }

/// Whether a file is the temporary one of a process that is no more.
bool IsLeftOver(const std::string& name) {
  const std::size_t mark = name.rfind(kTemporary);
  if (mark == name.npos || name.front() != '.') return false;
  int process = 0;
  const char* const end = name.data() + name.size();
  const auto [last, error] = std::from_chars(name.data() + mark + kTemporary.size(), end, process);
  if (error != std::errc() || last != end || process <= 0) return false;
  return kill(process, 0) != 0 && errno == ESRCH;
}

void RemoveLeftOvers(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (IsLeftOver(entry->path().filename().string())) fs::remove(entry->path(), ignored);
  }
}

/// Whether the file holds exactly this.
bool Holds(const fs::path& path, std::string_view content) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (static_cast<std::size_t>(status.st_size) != content.size()) return false;
  std::error_code error;
  return platform::ReadWholeFile(path, error) == content && !error;
}

std::error_code WriteNew(const fs::path& path, std::string_view content) {
  const int descriptor =
      open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
  if (descriptor < 0) return LastError();
  std::error_code error = platform::WriteAll(descriptor, content);
  if (close(descriptor) != 0 && !error) error = LastError();
  return error;
}

}  // namespace

PageFolder::PageFolder(fs::path folder, const Inputs& inputs, std::error_code& error)
    : folder_(std::move(folder)), inputs_(inputs) {
  fs::create_directories(folder_, error);
  if (!error) canonical_ = fs::canonical(folder_, error);
  if (error) return;
  // The file system may refuse what the permissions allow, so the question is put to it.
  const fs::path probe = folder_ / (".probe" + std::string(kTemporary) + std::to_string(getpid()));
  error = WriteNew(probe, {});
  unlink(probe.c_str());
  if (!error) RemoveLeftOvers(folder_);
}

// The pages are made anew by the next run, so they are not flushed to the disk one by one: a
// rename keeps them whole for every reader and through a killed run, and a site of thousands of
// pages stays a matter of seconds.
std::error_code PageFolder::Write(const std::string& name, std::string_view content) {
  const fs::path page = folder_ / name;
  if (Holds(page, content)) {
    ++unchanged_;
    return {};
  }
  if (inputs_.Cover(canonical_, name)) return IsAnInput();
  const fs::path temporary =
      folder_ / ("." + name + std::string(kTemporary) + std::to_string(getpid()));
  std::error_code error = WriteNew(temporary, content);
  if (!error && rename(temporary.c_str(), page.c_str()) != 0) error = LastError();
  if (error) {
    unlink(temporary.c_str());
  } else {
    ++written_;
  }
  return error;
}

}  // namespace morvane
