#pragma once

#include <cstdint>
#include <string_view>

namespace morvane {

/// 64 bits of any bytes; for telling apart what nobody forges.
std::uint64_t Digest(std::string_view bytes);

}  // namespace morvane
