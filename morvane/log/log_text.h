#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "morvane/log/mapped_file.h"

namespace morvane {

/// The text of a log, as its file holds it or unpacked where gzip packed it.
class LogText {
 public:
  LogText() = default;
  /// Opens a log. `problem` says for a message why it cannot be read, else it is empty.
  LogText(const std::filesystem::path& path, std::string& problem);

  /// Whether the file is packed. Its bytes, not its name, tell.
  bool IsPacked() const { return packed_; }
  /// Unpacks a packed log, once; does nothing with another one. `problem` as above.
  void Unpack(std::string& problem);
  /// Whether the text is there: false for a packed log before Unpack.
  bool IsReady() const { return !packed_ || tried_; }

  /// The log's text; that of a packed log is there after Unpack.
  std::string_view Bytes() const { return packed_ ? unpacked_.Bytes() : file_.Bytes(); }
  /// Size of the file, in bytes, and when it was last changed, in nanoseconds since 1970: together
  /// they tell whether a packed log has to be unpacked at all.
  std::size_t FileSize() const { return file_.Bytes().size(); }
  std::int64_t LastChange() const { return file_.LastChange(); }

  /// Whether the file still holds what was read of it, see MappedFile::IsWhole.
  bool IsWhole() const { return file_.IsWhole(); }
  /// Gives the memory of a stretch of the text back; it is read again when it is touched again.
  void Release(std::size_t begin, std::size_t end) const;

 private:
  MappedFile file_;
  MappedFile unpacked_;
  bool packed_ = false;
  bool tried_ = false;  // to unpack it
};

}  // namespace morvane
