#include "morvane/statistics/fingerprint.h"

#include <charconv>
#include <xxhash.h>

namespace morvane {
namespace {

constexpr std::size_t kHalfDigits = 16;
constexpr char kHexDigits[] = "0123456789abcdef";

/// False for anything but lower-case hexadecimal digits.
bool ReadHalf(std::string_view text, std::uint64_t& half) {
  if (text.find_first_not_of(kHexDigits) != text.npos) return false;
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, half, 16);
  return error == std::errc() && last == end;
}

Digest128 DigestFrom(const XXH128_hash_t& hash) {
  Digest128 digest{hash.high64, hash.low64};
  if (digest.IsNone()) digest.low = 1;
  return digest;
}

}  // namespace

Digest128 DigestOf(std::string_view bytes) {
  return DigestFrom(XXH3_128bits(bytes.data(), bytes.size()));
}

std::string TextOf(const Digest128& digest) {
  std::string text;
  text.reserve(2 * kHalfDigits);
  for (const std::uint64_t half : {digest.high, digest.low}) {
    for (int shift = 60; shift >= 0; shift -= 4) text += kHexDigits[(half >> shift) & 0xF];
  }
  return text;
}

Digest128 DigestFromText(std::string_view text) {
  Digest128 digest;
  const bool isValid = text.size() == 2 * kHalfDigits &&
                       ReadHalf(text.substr(0, kHalfDigits), digest.high) &&
                       ReadHalf(text.substr(kHalfDigits), digest.low);
  return isValid ? digest : Digest128();
}

}  // namespace morvane
