#include "morvane/statistics/vocabulary.h"

#include <cstring>

namespace morvane {
namespace {

constexpr std::string_view kOther = "OTHER";

/// A number of the last bytes of a name, where names of one family differ.
std::size_t HashOf(std::string_view name) {
  std::uint64_t bytes = 0;
  if (name.size() >= sizeof bytes) {
    std::memcpy(&bytes, name.data() + name.size() - sizeof bytes, sizeof bytes);
  } else {
    for (const char c : name) bytes = (bytes << 8) | static_cast<unsigned char>(c);
  }
  return static_cast<std::size_t>(((bytes + name.size()) * 0x9E3779B97F4A7C15U) >> 48);
}

}  // namespace

std::size_t Names::SlotOf(std::string_view name) const {
  std::size_t at = HashOf(name) % kSlots;
  while (slots_[at] != kUnknown && names_[slots_[at]] != name) at = (at + 1) % kSlots;
  return at;
}

std::uint16_t Names::Number(std::string_view name) {
  std::uint16_t& slot = slots_[SlotOf(name)];
  if (slot != kUnknown) return slot;
  if (names_.size() + 1 >= kMost && name != kOther) return Number(kOther);
  slot = static_cast<std::uint16_t>(names_.size());
  names_.emplace_back(name);
  return slot;
}

}  // namespace morvane
