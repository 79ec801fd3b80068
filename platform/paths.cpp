#include "platform/paths.h"

#include <algorithm>
#include <system_error>

namespace platform {
namespace {

constexpr std::string_view kSeparators = "\\/";

}  // namespace

std::string ProgramDirectory() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (!error) return executable.parent_path().string();
  return std::filesystem::current_path(error).string();
}

std::filesystem::path SystemPath(std::string_view text) {
  std::string path(text);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

bool HasSeparator(std::string_view text) {
  return text.find_first_of(kSeparators) != std::string_view::npos;
}

std::string_view FileNamePart(std::string_view text) {
  const std::size_t separator = text.find_last_of(kSeparators);
  return separator == std::string_view::npos ? text : text.substr(separator + 1);
}

}  // namespace platform
