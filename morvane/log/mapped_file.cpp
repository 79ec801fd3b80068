#include "morvane/log/mapped_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/descriptor.h"
#include "platform/files.h"

namespace morvane {

/// A mapping as the handler of SIGBUS sees it. It may look at any moment, so regions are never
/// freed but used again.
struct Region {
  std::atomic<std::uintptr_t> begin = 0;
  std::atomic<std::uintptr_t> end = 0;
  std::atomic<bool> torn = false;
  Region* next = nullptr;
};

namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;
constexpr std::size_t kRemembered = 64;

std::size_t PageSize() {
  static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return size;
}

std::atomic<Region*> allRegions = nullptr;
struct sigaction formerHandler;

/// A page of a mapping is not there any more: its file was cut, or cannot be read. From this page
/// on the mapping is made of zeros, and the reading goes on.
void MendMapping(int /*signal*/, siginfo_t* info, void* /*context*/) {
  const int formerError = errno;
  const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
  for (Region* region = allRegions; region != nullptr; region = region->next) {
    const std::uintptr_t end = region->end;
    if (address < region->begin || address >= end) continue;
    const std::uintptr_t page = address / PageSize() * PageSize();
    void* const zeros = mmap(reinterpret_cast<void*>(page), end - page, PROT_READ,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
    if (zeros == MAP_FAILED) break;
    region->torn = true;
    errno = formerError;
    return;
  }
  // None of ours: as if this handler did not exist.
  sigaction(SIGBUS, &formerHandler, nullptr);
  raise(SIGBUS);
}

void InstallHandler() {
  PageSize();  // not to be asked for the first time in the handler
  struct sigaction handler {};
  handler.sa_sigaction = MendMapping;
  handler.sa_flags = SA_SIGINFO;
  sigaction(SIGBUS, &handler, &formerHandler);
}

Region* WatchRegion(const char* data, std::size_t size) {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static std::once_flag installed;
  std::call_once(installed, InstallHandler);
  Region* region = allRegions;
  while (region != nullptr && region->end != 0) region = region->next;
  if (region == nullptr) {
    region = new Region;
    region->next = allRegions;
    allRegions = region;
  }
  region->torn = false;
  region->begin = reinterpret_cast<std::uintptr_t>(data);
  region->end = reinterpret_cast<std::uintptr_t>(data) + size;
  return region;
}

}  // namespace

MappedFile::MappedFile(const std::filesystem::path& path, std::error_code& error) {
  const int descriptor = platform::OpenRegularFile(path, error);
  if (error) return;
  Map(descriptor, error);
  close(descriptor);
}

MappedFile::MappedFile(int descriptor, std::error_code& error) { Map(descriptor, error); }

void MappedFile::Map(int descriptor, std::error_code& error) {
  error = {};
  struct stat state {};
  if (fstat(descriptor, &state) != 0) {
    error = platform::LastError();
    return;
  }
  lastChange_ = state.st_mtim.tv_sec * kNanoseconds + state.st_mtim.tv_nsec;
  const auto size = static_cast<std::size_t>(state.st_size);
  if (size == 0) return;
  void* memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (memory == MAP_FAILED) {
    error = platform::LastError();
    return;
  }
  madvise(memory, size, MADV_SEQUENTIAL);
  data_ = static_cast<const char*>(memory);
  size_ = size;
  region_ = WatchRegion(data_, size_);
  start_ = Bytes().substr(0, kRemembered);
  end_ = Bytes().substr(size_ - std::min(size_, kRemembered));
}

MappedFile::MappedFile(MappedFile&& other) noexcept { *this = std::move(other); }

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(size_, other.size_);
  std::swap(lastChange_, other.lastChange_);
  std::swap(region_, other.region_);
  std::swap(start_, other.start_);
  std::swap(end_, other.end_);
  return *this;
}

MappedFile::~MappedFile() {
  if (data_ == nullptr) return;
  region_->end = 0;  // first: the next mapping may get this address
  munmap(const_cast<char*>(data_), size_);
}

// A log that was cut and has grown beyond its former length since is told by its bytes: at the very
// place of the former end stand others now.
bool MappedFile::IsWhole() const {
  if (data_ == nullptr) return true;
  const bool same = Bytes().starts_with(start_) && Bytes().ends_with(end_);
  return same && !region_->torn;
}

void MappedFile::Release(std::size_t begin, std::size_t end) const {
  const std::size_t page = PageSize();
  const std::size_t first = (begin + page - 1) / page * page;
  const std::size_t last = end / page * page;
  if (first < last) madvise(const_cast<char*>(data_) + first, last - first, MADV_DONTNEED);
}

}  // namespace morvane
