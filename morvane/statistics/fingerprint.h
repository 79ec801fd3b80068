#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace morvane {

/// 128 bits that stand for some bytes. All zero: for none.
struct Digest128 {
  std::uint64_t high = 0;
  std::uint64_t low = 0;

  auto operator<=>(const Digest128&) const = default;
  bool IsNone() const { return high == 0 && low == 0; }
};

/// Of any bytes; never the one that stands for none. XXH3: for telling apart what nobody forges.
Digest128 DigestOf(std::string_view bytes);

/// 32 hexadecimal digits.
std::string TextOf(const Digest128& digest);
/// The digest of such a text; the one of none where it is no such text.
Digest128 DigestFromText(std::string_view text);

/// A digest of values one after the other. Texts are added with their lengths, so that no two rows
/// of values make the same bytes.
class Fingerprint {
 public:
  Fingerprint& Add(std::string_view text) {
    Add(text.size());
    bytes_.append(text);
    return *this;
  }
  Fingerprint& Add(const std::string& text) { return Add(std::string_view(text)); }
  Fingerprint& Add(const char* text) { return Add(std::string_view(text)); }
  Fingerprint& Add(const Digest128& digest) { return Add(digest.high).Add(digest.low); }
  template <class Value>
  requires(std::is_arithmetic_v<Value> || std::is_enum_v<Value>) Fingerprint& Add(Value value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    bytes_.append(bytes, sizeof bytes);
    return *this;
  }

  /// All of a list of values that are nothing but the bytes of their members.
  template <class Value>
  requires std::has_unique_object_representations_v<Value> Fingerprint& AddAll(
      std::span<const Value> values) {
    bytes_.append(reinterpret_cast<const char*>(values.data()), values.size_bytes());
    return *this;
  }

  Digest128 Value() const { return DigestOf(bytes_); }
  /// Begins anew, with the room that it has.
  void Clear() { bytes_.clear(); }

 private:
  std::string bytes_;
};

}  // namespace morvane
