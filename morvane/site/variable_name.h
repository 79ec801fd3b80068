#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace morvane {

/// The name of a variable with its hash, which is made by the compiler where the name is a literal.
class VariableName {
 public:
  template <std::size_t kSize>
  consteval VariableName(const char (&text)[kSize])  // NOLINT(google-explicit-constructor)
      : VariableName(std::string_view(text, kSize - 1)) {}
  /// The text must outlive the name.
  constexpr explicit VariableName(std::string_view text) : text_(text), hash_(HashOf(text)) {}

  std::string Text() const { return std::string(text_); }
  constexpr std::uint64_t Hash() const { return hash_; }

 private:
  /// FNV-1a, with the high bits folded into those that tell the slot.
  static constexpr std::uint64_t HashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return hash ^ (hash >> 32U);
  }

  std::string_view text_;
  std::uint64_t hash_;
};

}  // namespace morvane
