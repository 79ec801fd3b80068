#include "morvane/log/mapped_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace morvane {
namespace {

constexpr std::size_t kPage = 4096;
constexpr std::int64_t kNanoseconds = 1'000'000'000;

/// An open file, closed at the end of its life.
class Handle {
 public:
  // Without waiting: a named pipe in the place of a log must not hang the run.
  explicit Handle(const std::filesystem::path& path)
      : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (number_ >= 0) close(number_);
  }
  int Number() const { return number_; }

 private:
  int number_;
};

std::error_code LastError() { return {errno, std::generic_category()}; }

}  // namespace

MappedFile::MappedFile(const std::filesystem::path& path, std::error_code& error) {
  error = {};
  const Handle file(path);
  struct stat state {};
  if (file.Number() < 0 || fstat(file.Number(), &state) != 0) {
    error = LastError();
    return;
  }
  if (!S_ISREG(state.st_mode)) {
    error = std::make_error_code(S_ISDIR(state.st_mode) ? std::errc::is_a_directory
                                                        : std::errc::invalid_argument);
    return;
  }
  lastChange_ = state.st_mtim.tv_sec * kNanoseconds + state.st_mtim.tv_nsec;
  const auto size = static_cast<std::size_t>(state.st_size);
  if (size == 0) return;
  void* memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.Number(), 0);
  if (memory == MAP_FAILED) {
    error = LastError();
    return;
  }
  madvise(memory, size, MADV_SEQUENTIAL);
  data_ = static_cast<const char*>(memory);
  size_ = size;
}

MappedFile::MappedFile(MappedFile&& other) noexcept { *this = std::move(other); }

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(size_, other.size_);
  std::swap(lastChange_, other.lastChange_);
  return *this;
}

MappedFile::~MappedFile() {
  if (data_ != nullptr) munmap(const_cast<char*>(data_), size_);
}

void MappedFile::Release(std::size_t begin, std::size_t end) const {
  const std::size_t first = (begin + kPage - 1) / kPage * kPage;
  const std::size_t last = end / kPage * kPage;
  if (first < last) madvise(const_cast<char*>(data_) + first, last - first, MADV_DONTNEED);
}

}  // namespace morvane
