#include "help/system_info.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/process.h"

namespace help {
namespace {

/// The bytes before the first NUL, last one first, as hexadecimal digits; at most four of them make
/// a number, so eight digits are enough.
std::string NumberText(std::string_view bytes) {
  std::string digits;
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
    std::array<char, 3> code = {};
    std::snprintf(code.data(), code.size(), "%X",
                  static_cast<unsigned>(static_cast<unsigned char>(*byte)));
    digits += code.data();
  }
  return std::to_string(std::strtoul(digits.c_str(), nullptr, 16));
}

std::optional<std::string> ToolOfRegistry(const platform::Registry& registry, bool& hasEntry) {
  constexpr std::uint32_t kRoot = platform::kHkeyLocalMachine;
  std::string tool;
  hasEntry =
      GetKeyValue(registry, kRoot, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", tool);
  if (hasEntry) return tool;
  hasEntry =
      GetKeyValue(registry, kRoot, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", tool);
  tool += "\\MSINFO32.EXE";
  if (!hasEntry || !platform::FileExists(platform::SystemPath(tool))) return std::nullopt;
  return tool;
}

std::optional<std::string> InstalledTool() {
  for (const char* name : {"hardinfo2", "hardinfo", "kinfocenter"}) {
    if (std::optional<std::string> tool = platform::FindProgram(name)) return tool;
  }
  return std::nullopt;
}

}  // namespace

bool GetKeyValue(const platform::Registry& registry, std::uint32_t root, const std::string& path,
                 const std::string& name, std::string& result) {
  platform::Registry::Key key = nullptr;
  std::array<char, 1024> buffer = {};
  std::uint32_t type = 0;
  std::size_t size = 0;
  const bool found =
      registry.RegOpenKeyEx(root, path, key) == platform::kErrorSuccess &&
      platform::Registry::RegQueryValueEx(key, name, type, buffer, size) == platform::kErrorSuccess;
  platform::Registry::RegCloseKey(key);
  std::string_view bytes(buffer.data(), buffer.size());
  bytes = bytes.substr(0, bytes.find('\0'));
  if (!found) {
    result.clear();
  } else if (type == platform::kRegSz) {
    result = bytes;
  } else if (type == platform::kRegDword) {
    result = NumberText(bytes);
  }
  return found;
}

void StartSysInfo(ui::Desktop& desktop, QWidget* owner, const platform::Registry& registry) {
  bool hasEntry = false;
  std::optional<std::string> tool = ToolOfRegistry(registry, hasEntry);
  if (!hasEntry) tool = InstalledTool();
  if (tool && desktop.StartDetached({*tool, {}, {}}).empty()) return;
  desktop.ShowMessage(owner, "System Information Is Unavailable At This Time",
                      ui::MessageStyle::kOk, "vantrel3");
}

}  // namespace help
