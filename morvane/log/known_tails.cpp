#include "morvane/log/known_tails.h"

namespace morvane {

void KnownTails::Add(std::string_view tail, std::uint16_t number) {
  const bool isUsable = tail.size() >= sizeof(std::uint64_t) && tail.size() <= kLongest;
  if (!isUsable || size_ >= kMost) return;
  std::array<char, kLongest> bytes{};
  std::array<char, kLongest> mask{};
  std::memcpy(bytes.data() + kLongest - tail.size(), tail.data(), tail.size());
  std::memset(mask.data() + kLongest - tail.size(), 0xFF, tail.size());
  Entry& entry = entries_[size_];
  std::memcpy(entry.words.data(), bytes.data(), kLongest);
  std::memcpy(entry.mask.data(), mask.data(), kLongest);
  entry.tail = {number, static_cast<std::uint16_t>(tail.size())};
  std::size_t at = PlaceOf(entry.words);
  while (places_[at] != kUnknown) at = (at + 1) % kPlaces;
  places_[at] = static_cast<std::uint16_t>(size_++);
}

}  // namespace morvane
