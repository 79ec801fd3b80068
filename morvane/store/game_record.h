#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "morvane/statistics/game.h"

namespace morvane {

/// A game as a short run of bytes, to be kept: numbers of seven bits a byte, texts with their
/// length. What statistics add to a game (Entrant::player) is left out.
std::string PackGame(const Game& game);

/// The game of such bytes; false when they are damaged. `weapons` and `items` are how many numbers
/// of each there are.
bool UnpackGame(std::string_view bytes, std::size_t weapons, std::size_t items, Game& game);

/// A number that tells games apart: equal for equal games, wherever they were read. When the game
/// took place does not count, for that is only reckoned.
std::uint64_t GameDigest(const Game& game);

/// 64 bits of any bytes; for telling apart what nobody forges.
std::uint64_t Digest(std::string_view bytes);

}  // namespace morvane
