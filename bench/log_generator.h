#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace bench {

/// Plays evenings on an imagined server until `hours` of play are over, and hands out its log piece
/// by piece, in the format of the game's own server log. The same seed and hours give the same log
/// on every machine. Players of different strength, free for all, tournament, team deathmatch and
/// capture the flag; about 180 KB an hour.
void GenerateLog(std::uint64_t seed, double hours,
                 const std::function<void(std::string_view)>& write);

}  // namespace bench
