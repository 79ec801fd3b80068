#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Root keys.
inline constexpr std::uint32_t kHkeyLocalMachine = 0x80000002;
inline constexpr std::uint32_t kHkeyCurrentUser = 0x80000001;

/// Types of values.
inline constexpr std::uint32_t kRegSz = 1;     // text
inline constexpr std::uint32_t kRegDword = 4;  // 32-bit number, lowest byte first

/// Results of the registry's calls.
inline constexpr long kErrorSuccess = 0;
inline constexpr long kErrorFileNotFound = 2;  // no such key, no such value
inline constexpr long kErrorInvalidHandle = 6;
inline constexpr long kErrorMoreData = 234;  // the value is longer than the buffer

/// The machine's registry: keys with values, kept in one text file in the format that registry
/// editors export: "[HKEY_LOCAL_MACHINE\...]" begins a key, and below it stand its values,
/// "name"="text" with \\ and \" for a backslash and a quote, "name"=dword:0000002a,
/// "name"=hex(7):01,02, with "\" at the end of a line that goes on, "@" for the nameless value. The
/// file is UTF-8 or UTF-16 (little end first, with its mark); lines that make no sense are passed
/// over. Names are compared without regard to the case of A to Z.
class Registry {
 public:
  /// A value: its type and its bytes. A text is UTF-8 and ends with a NUL.
  struct Value {
    std::uint32_t type = 0;
    std::string data;
  };
  /// The values of a key, by their names in lower case.
  using Values = std::map<std::string, Value>;
  /// An open key.
  using Key = const Values*;

  /// Where the registry of a machine lies.
  static constexpr const char* kFile = "/etc/quillon/registry.reg";

  /// Reads the file; one that is missing or cannot be read makes an empty registry.
  explicit Registry(const std::filesystem::path& file = kFile);

  /// Opens a key, for instance "SOFTWARE\Quillon" below kHkeyLocalMachine.
  long RegOpenKeyEx(std::uint32_t root, std::string_view path, Key& key) const;

  /// Copies a value into `buffer` and tells its type and its size in bytes. On failure the buffer
  /// and the type stay as they are; `size` is given when the value was too long.
  static long RegQueryValueEx(Key key, std::string_view name, std::uint32_t& type,
                              std::span<char> buffer, std::size_t& size);

  /// Closes a key, which becomes null. A null key is an invalid handle.
  static long RegCloseKey(Key& key);

 private:
  std::map<std::string, Values> keys_;  // by the full path in lower case
};

}  // namespace platform
