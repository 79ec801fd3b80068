#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// Names given numbers as they come; those after `kMost` share the number of "OTHER".
class Names {
 public:
  static constexpr std::size_t kMost = 512;
  static constexpr std::uint16_t kUnknown = 0xFFFF;

  std::uint16_t Number(std::string_view name);
  /// The number of a name, or kUnknown.
  std::uint16_t Find(std::string_view name) const { return slots_[SlotOf(name)]; }
  std::size_t size() const { return names_.size(); }
  const std::vector<std::string>& All() const { return names_; }
  const std::string& operator[](std::uint16_t number) const { return names_[number]; }

 private:
  // Found for every second line of a log: an open table of twice the size, hashed by few bytes.
  static constexpr std::size_t kSlots = 2 * kMost;
  std::size_t SlotOf(std::string_view name) const;
  std::vector<std::string> names_;
  std::vector<std::uint16_t> slots_ = std::vector<std::uint16_t>(kSlots, kUnknown);
};

/// What the numbers of weapons and items in games stand for.
struct Vocabulary {
  Names weapons;  ///< by WeaponUse::weapon
  Names items;    ///< by ItemCount::item
};

}  // namespace morvane
