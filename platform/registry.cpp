#include "platform/registry.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <vector>

#include "platform/files.h"
#include "text/characters.h"
#include "text/text.h"

namespace platform {
namespace {

using text::DecodeUtf16;
using text::FoldCase;
using text::TrimBlanks;

std::string ReadText(const std::filesystem::path& file) {
  std::error_code error;
  const std::string bytes = ReadWholeFile(file, error);
  if (bytes.starts_with("\xFF\xFE")) return DecodeUtf16(std::string_view(bytes).substr(2));
  return std::string(text::WithoutMark(bytes));
}

/// Whether a line of hexadecimal bytes goes on in the next line. Only such lines do: a broken line
/// of another kind must not swallow the one below it.
bool GoesOn(const std::string& line) {
  return line.ends_with('\\') && FoldCase(line).find("=hex") != std::string::npos;
}

/// Takes everything up to the separator off the front of a text, and the separator too.
std::string_view TakePart(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

/// The lines of the file without blanks around them, with those that go on joined.
std::vector<std::string> LogicalLines(std::string_view text) {
  std::vector<std::string> lines;
  bool goesOn = false;
  while (!text.empty()) {
    std::string_view line = TakePart(text, '\n');
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = TrimBlanks(line);
    if (goesOn) {
      lines.back().pop_back();
      lines.back() += line;
    } else {
      lines.emplace_back(line);
    }
    goesOn = GoesOn(lines.back());
  }
  return lines;
}

/// Takes a text in double quotes off the front of a line.
std::optional<std::string> TakeQuoted(std::string_view& line) {
  if (!line.starts_with('"')) return std::nullopt;
  std::string text;
  for (std::size_t at = 1; at < line.size(); ++at) {
    if (line[at] == '"') {
      line = TrimBlanks(line.substr(at + 1));
      return text;
    }
    if (line[at] == '\\' && at + 1 < line.size()) ++at;
    text += line[at];
  }
  return std::nullopt;
}

/// A hexadecimal number that fills the whole text.
std::optional<std::uint32_t> HexNumber(std::string_view text) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// Bytes as two hexadecimal digits each, separated by commas.
std::optional<std::string> HexBytes(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    const std::optional<std::uint32_t> byte = HexNumber(TrimBlanks(TakePart(text, ',')));
    if (!byte || *byte > 0xFF) return std::nullopt;
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

std::optional<Registry::Value> DwordValue(std::string_view digits) {
  const std::optional<std::uint32_t> number = HexNumber(digits);
  if (!number) return std::nullopt;
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>((*number >> shift) & 0xFFU);
  }
  return Registry::Value{kRegDword, bytes};
}

/// "hex:..." (binary, type 3) or "hex(n):...".
std::optional<Registry::Value> HexValue(std::string_view text) {
  constexpr std::uint32_t kRegBinary = 3;
  std::uint32_t type = kRegBinary;
  if (text.starts_with('(')) {
    const std::size_t end = text.find(')');
    if (end == std::string_view::npos) return std::nullopt;
    const std::optional<std::uint32_t> given = HexNumber(text.substr(1, end - 1));
    if (!given) return std::nullopt;
    type = *given;
    text.remove_prefix(end + 1);
  }
  if (!text.starts_with(':')) return std::nullopt;
  std::optional<std::string> bytes = HexBytes(text.substr(1));
  if (!bytes) return std::nullopt;
  return Registry::Value{type, type == kRegSz ? DecodeUtf16(*bytes) : *bytes};
}

std::optional<Registry::Value> ParseValue(std::string_view text) {
  constexpr std::string_view kDword = "dword:";
  constexpr std::string_view kHex = "hex";
  if (std::optional<std::string> quoted = TakeQuoted(text)) {
    return Registry::Value{kRegSz, *quoted + '\0'};
  }
  const std::string lower = FoldCase(text);
  if (lower.starts_with(kDword)) return DwordValue(std::string_view(lower).substr(kDword.size()));
  if (lower.starts_with(kHex)) return HexValue(std::string_view(lower).substr(kHex.size()));
  return std::nullopt;
}

/// One line below a key: a name, "=" and a value; "-" as the value takes the name away.
void ReadValueLine(std::string_view line, Registry::Values& values) {
  std::optional<std::string> name = TakeQuoted(line);
  if (!name && line.starts_with('@')) {
    name.emplace();
    line = TrimBlanks(line.substr(1));
  }
  if (!name || !line.starts_with('=')) return;
  line = TrimBlanks(line.substr(1));
  if (line == "-") {
    values.erase(FoldCase(*name));
  } else if (std::optional<Registry::Value> value = ParseValue(line)) {
    values.insert_or_assign(FoldCase(*name), *std::move(value));
  }
}

std::string RootName(std::uint32_t root) {
  switch (root) {
    case kHkeyLocalMachine:
      return "hkey_local_machine";
    case kHkeyCurrentUser:
      return "hkey_current_user";
    default:
      return {};
  }
}

}  // namespace

Registry::Registry(const std::filesystem::path& file) {
  Values* values = nullptr;
  for (const std::string& line : LogicalLines(ReadText(file))) {
    if (line.starts_with("[-") && line.ends_with(']')) {
      keys_.erase(FoldCase(std::string_view(line).substr(2, line.size() - 3)));
      values = nullptr;
    } else if (line.starts_with('[') && line.ends_with(']')) {
      values = &keys_[FoldCase(std::string_view(line).substr(1, line.size() - 2))];
    } else if (values != nullptr) {
      ReadValueLine(line, *values);
    }
  }
}

long Registry::RegOpenKeyEx(std::uint32_t root, std::string_view path, Key& key) const {
  const auto found = keys_.find(RootName(root) + "\\" + FoldCase(path));
  if (found == keys_.end()) return kErrorFileNotFound;
  key = &found->second;
  return kErrorSuccess;
}

long Registry::RegQueryValueEx(Key key, std::string_view name, std::uint32_t& type,
                               std::span<char> buffer, std::size_t& size) {
  if (key == nullptr) return kErrorInvalidHandle;
  const auto found = key->find(FoldCase(name));
  if (found == key->end()) return kErrorFileNotFound;
  const Value& value = found->second;
  size = value.data.size();
  if (size > buffer.size()) return kErrorMoreData;
  std::copy(value.data.begin(), value.data.end(), buffer.begin());
  type = value.type;
  return kErrorSuccess;
}

long Registry::RegCloseKey(Key& key) {
  if (key == nullptr) return kErrorInvalidHandle;
  key = nullptr;
  return kErrorSuccess;
}

}  // namespace platform
