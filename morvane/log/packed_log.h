#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "morvane/log/mapped_file.h"

namespace morvane {

/// The most text that a packed log may hold, in bytes: a few bytes can be made to unpack to
/// millions, and those have to go somewhere.
inline constexpr std::uint64_t kMostUnpacked = std::uint64_t{2} << 30;

/// Whether these bytes of a file are packed by gzip (RFC 1952), whatever the file is called.
bool IsPacked(std::string_view bytes);

/// Unpacks what gzip packed, one member after the other, into a file of the system's folder for
/// temporary files that has no name and goes with the result. `problem` says for a message why it
/// cannot be unpacked (damaged, cut off, more than `most` bytes, no room), else it is empty.
MappedFile Unpack(const MappedFile& packed, std::string& problem,
                  std::uint64_t most = kMostUnpacked);

}  // namespace morvane
