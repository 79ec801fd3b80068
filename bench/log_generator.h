#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace bench {

/// Plays evenings on an imagined server until `hours` of play are over, and hands out its log piece
/// by piece, in the format of the game's own server log. The same seed and hours give the same log
/// on every machine. Players of different strength and bots, two rivals, one who comes late, one
/// who comes back; free for all, tournament, team deathmatch and capture the flag, with dates;
/// about 150 KB an hour.
void GenerateLog(std::uint64_t seed, double hours,
                 const std::function<void(std::string_view)>& write);

/// A log of many games between eight out of many players each, drawn at random; always the same.
void GenerateCrowdLog(std::size_t players, std::size_t games,
                      const std::function<void(std::string_view)>& write);

}  // namespace bench
