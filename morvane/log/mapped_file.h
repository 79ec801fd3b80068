#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace morvane {

/// A file's bytes in memory, read by the system as they are touched. A server may cut its log at
/// any time: bytes that are gone when they are touched read as zeros, see IsWhole.
class MappedFile {
 public:
  MappedFile() = default;
  /// Maps a regular file. On failure (missing, a folder, not readable) `error` says why and it is
  /// empty.
  MappedFile(const std::filesystem::path& path, std::error_code& error);
  /// Maps an open file, which stays open and the caller's.
  MappedFile(int descriptor, std::error_code& error);
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;
  ~MappedFile();

  std::string_view Bytes() const { return {data_, size_}; }
  /// When the file was last changed, in nanoseconds since 1970.
  std::int64_t LastChange() const { return lastChange_; }

  /// Whether what was read since the file was mapped are its bytes: false when it was cut or
  /// written anew meanwhile. One that has only grown is whole. To be asked after the reading.
  bool IsWhole() const;

  /// Gives the memory of a stretch back; it is read again when it is touched again.
  void Release(std::size_t begin, std::size_t end) const;

 private:
  void Map(int descriptor, std::error_code& error);

  const char* data_ = nullptr;
  std::size_t size_ = 0;
  std::int64_t lastChange_ = 0;
  struct Region* region_ = nullptr;
  std::string start_;  // the first and the last bytes as they were when the file was mapped
  std::string end_;
};

}  // namespace morvane
