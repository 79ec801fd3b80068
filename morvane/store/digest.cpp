#include "morvane/store/digest.h"

#include <algorithm>
#include <cstring>

namespace morvane {

std::uint64_t Digest(std::string_view bytes) {
  constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;
  std::uint64_t digest = bytes.size() * kMix;
  while (!bytes.empty()) {
    std::uint64_t word = 0;
    const std::size_t count = std::min(bytes.size(), sizeof word);
    std::memcpy(&word, bytes.data(), count);
    digest = (digest ^ word) * kMix;
    digest ^= digest >> 29;
    bytes.remove_prefix(count);
  }
  return digest;
}

}  // namespace morvane
