#include "platform/registry.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <vector>

#include "platform/files.h"

namespace platform {
namespace {

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

void AppendUtf8(std::string& text, char32_t code) {
  const auto tail = [&](unsigned shift) {
    text += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
  };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0U | (code >> 6U));
    tail(0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0U | (code >> 12U));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0U | (code >> 18U));
    tail(12);
    tail(6);
    tail(0);
  }
}

/// UTF-16, low byte first, as UTF-8. Half a character becomes a replacement character; an odd byte
/// at the end is dropped.
std::string FromUtf16(std::string_view bytes) {
  const auto unit = [&](std::size_t at) -> char32_t {
    if (at + 1 >= bytes.size()) return 0;
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<char32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8U;
  };
  const auto isIn = [](char32_t code, char32_t first) {
    return code >= first && code < first + 0x400;
  };
  std::string text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t code = unit(at);
    if (isIn(code, 0xD800) && isIn(unit(at + 2), 0xDC00)) {
      code = 0x10000 + ((code - 0xD800) << 10U) + (unit(at + 2) - 0xDC00);
      at += 2;
    } else if (isIn(code, 0xD800) || isIn(code, 0xDC00)) {
      code = 0xFFFD;
    }
    AppendUtf8(text, code);
  }
  return text;
}

std::string ReadText(const std::filesystem::path& file) {
  std::error_code error;
  std::string bytes = ReadWholeFile(file, error);
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16(std::string_view(bytes).substr(2));
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  return bytes;
}

/// Whether a line of hexadecimal bytes goes on in the next line. Only such lines do: a broken line
/// of another kind must not swallow the one below it.
bool GoesOn(const std::string& line) {
  return line.ends_with('\\') && LowerCase(line).find("=hex") != std::string::npos;
}

/// The lines of the file without blanks around them, with those that go on joined.
std::vector<std::string> LogicalLines(std::string_view text) {
  std::vector<std::string> lines;
  bool goesOn = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
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
      line = Trim(line.substr(at + 1));
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
    const std::size_t end = std::min(text.find(','), text.size());
    const std::optional<std::uint32_t> byte = HexNumber(Trim(text.substr(0, end)));
    if (!byte || *byte > 0xFF) return std::nullopt;
    bytes += static_cast<char>(*byte);
    text.remove_prefix(std::min(end + 1, text.size()));
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
  return Registry::Value{type, type == kRegSz ? FromUtf16(*bytes) : *bytes};
}

std::optional<Registry::Value> ParseValue(std::string_view text) {
  constexpr std::string_view kDword = "dword:";
  constexpr std::string_view kHex = "hex";
  if (std::optional<std::string> quoted = TakeQuoted(text)) {
    return Registry::Value{kRegSz, *quoted + '\0'};
  }
  const std::string lower = LowerCase(text);
  if (lower.starts_with(kDword)) return DwordValue(std::string_view(lower).substr(kDword.size()));
  if (lower.starts_with(kHex)) return HexValue(std::string_view(lower).substr(kHex.size()));
  return std::nullopt;
}

/// One line below a key: a name, "=" and a value; "-" as the value takes the name away.
void ReadValueLine(std::string_view line, Registry::Values& values) {
  std::optional<std::string> name = TakeQuoted(line);
  if (!name && line.starts_with('@')) {
    name.emplace();
    line = Trim(line.substr(1));
  }
  if (!name || !line.starts_with('=')) return;
  line = Trim(line.substr(1));
  if (line == "-") {
    values.erase(LowerCase(*name));
  } else if (std::optional<Registry::Value> value = ParseValue(line)) {
    values.insert_or_assign(LowerCase(*name), *std::move(value));
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
      keys_.erase(LowerCase(std::string_view(line).substr(2, line.size() - 3)));
      values = nullptr;
    } else if (line.starts_with('[') && line.ends_with(']')) {
      values = &keys_[LowerCase(std::string_view(line).substr(1, line.size() - 2))];
    } else if (values != nullptr) {
      ReadValueLine(line, *values);
    }
  }
}

long Registry::RegOpenKeyEx(std::uint32_t root, std::string_view path, Key& key) const {
  const auto found = keys_.find(RootName(root) + "\\" + LowerCase(path));
  if (found == keys_.end()) return kErrorFileNotFound;
  key = &found->second;
  return kErrorSuccess;
}

long Registry::RegQueryValueEx(Key key, std::string_view name, std::uint32_t& type,
                               std::span<char> buffer, std::size_t& size) {
  if (key == nullptr) return kErrorInvalidHandle;
  const auto found = key->find(LowerCase(name));
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
