// The registry's file.

#include <string>

#include "platform/registry.h"
#include "tests/fuzz/scratch_file.h"
#include "tests/fuzz/target.h"

namespace {

using platform::Registry;

/// A key that is found can be asked for any value, into a buffer too small and one large enough.
void Ask(const Registry& registry, std::string_view path, std::string_view name) {
  Registry::Key key = nullptr;
  if (registry.RegOpenKeyEx(platform::kHkeyLocalMachine, path, key) != platform::kErrorSuccess) {
    return;
  }
  std::uint32_t type = 0;
  std::size_t size = 0;
  const long small = Registry::RegQueryValueEx(key, name, type, {}, size);
  if (small == platform::kErrorFileNotFound) return;
  std::string buffer(size, '?');
  std::size_t again = 0;
  fuzz::Require(
      Registry::RegQueryValueEx(key, name, type, buffer, again) == platform::kErrorSuccess &&
          again == size,
      "the size is told");
  fuzz::Require(Registry::RegCloseKey(key) == platform::kErrorSuccess && key == nullptr, "closed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const fuzz::ScratchFile scratch("registry.reg");
  const std::string_view text = fuzz::Text(bytes, size);
  scratch.Write(text);
  const Registry registry(scratch.Path());
  for (const char* path : {"a", "SOFTWARE\\Quillon"}) {
    for (const char* name : {"", "PATH", "b"}) Ask(registry, path, name);
  }
  return 0;
}
