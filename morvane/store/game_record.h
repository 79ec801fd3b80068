#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "morvane/statistics/figures.h"
#include "morvane/statistics/game.h"

namespace morvane {

/// The form of records, and with them of the database that keeps them. A counter raises it by its
/// row; whoever changes anything else raises the number here, and goes on reading the older forms.
/// 5 has the records of 4.
inline constexpr int kRecordVersion =
    std::max(5, std::ranges::max_element(kCounters, {}, &Counter::since)->since);

/// A game as a short run of bytes, to be kept: numbers of seven bits a byte, texts with their
/// length. What statistics add to a game (Entrant::player) is left out.
std::string PackGame(const Game& game);

/// The game of such bytes; throws DatabaseError when they are damaged. `version` is the one they
/// were made by, from 1; `weapons` and `items` are how many numbers of each there are.
Game UnpackGame(std::string_view bytes, int version, std::size_t weapons, std::size_t items);

}  // namespace morvane
