#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace morvane {

/// A file's bytes in memory, read by the system as they are touched.
class MappedFile {
 public:
  MappedFile() = default;
  /// Maps a file. On failure (missing, a folder, not readable) `error` says why and it is empty.
  MappedFile(const std::filesystem::path& path, std::error_code& error);
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;
  ~MappedFile();

  std::string_view Bytes() const { return {data_, size_}; }
  /// When the file was last changed, in nanoseconds since 1970.
  std::int64_t LastChange() const { return lastChange_; }

  /// Gives the memory of a stretch back; it is read again when it is touched again.
  void Release(std::size_t begin, std::size_t end) const;

 private:
  const char* data_ = nullptr;
  std::size_t size_ = 0;
  std::int64_t lastChange_ = 0;
};

}  // namespace morvane
