#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace morvane {

/// What lines that came before ended in, with a number for each. Nearly every line of a kind ends
/// in one of a few dozen names, so that a few words of memory, compared at once, tell what a search
/// for the name, its hash and a comparison would.
class KnownTails {
 public:
  static constexpr std::size_t kLongest = 32;
  static constexpr std::uint16_t kUnknown = 0xFFFF;

  struct Tail {
    std::uint16_t number = kUnknown;
    std::uint16_t size = 0;  ///< in bytes
  };

  KnownTails() { places_.fill(kUnknown); }

  /// The tail of a text; kUnknown for one that was not added, and for a text below kLongest bytes.
  Tail Find(std::string_view text) const {
    if (text.size() < kLongest) return {};
    Words words;
    std::memcpy(words.data(), text.data() + text.size() - kLongest, kLongest);
    for (std::size_t at = PlaceOf(words);; at = (at + 1) % kPlaces) {
      const std::uint16_t index = places_[at];
      if (index >= kMost) return {};
      const Entry& entry = entries_[index];
      std::uint64_t difference = 0;
      for (std::size_t i = 0; i < words.size(); ++i) {
        difference |= (words[i] ^ entry.words[i]) & entry.mask[i];
      }
      if (difference == 0) return entry.tail;
    }
  }

  /// From now on Find tells `number` for texts that end in `tail`. One that is too short or too
  /// long, and one too many, is not taken in. No tail may be the end of another one.
  void Add(std::string_view tail, std::uint16_t number);

 private:
  using Words = std::array<std::uint64_t, kLongest / sizeof(std::uint64_t)>;
  struct Entry {
    Words words{};
    Words mask{};  // all bits of the bytes that count
    Tail tail;
  };
  static constexpr std::size_t kPlaces = 1024;
  static constexpr std::size_t kMost = kPlaces / 4;

  /// By the last bytes, in which names of one family differ.
  static std::size_t PlaceOf(const Words& words) {
    return static_cast<std::size_t>((words.back() * 0x9E3779B97F4A7C15U) >> 54);
  }

  // Arrays, for they are read with each line: of a vector the size would be read and checked, too.
  std::array<Entry, kMost> entries_;
  std::size_t size_ = 0;
  std::array<std::uint16_t, kPlaces> places_;
};

}  // namespace morvane
