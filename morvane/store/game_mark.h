#pragma once

#include <cstdint>
#include <string_view>

#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {

/// What a game is known by again when it is met in another log, or at another place of the same.
/// All but `facts` is taken from its lines, from "InitGame:" on, whatever the parser makes of them;
/// line ends do not count. 0 is never the number of a text.
struct GameMark {
  std::uint64_t digest = 0;     ///< of its lines; 0 in games stored before marks were
  std::uint64_t beginning = 0;  ///< of its lines up to the kill with which it is evidence; 0: never
  std::uint64_t opening = 0;    ///< of its first line with the stamp; 0 where that is torn
  std::uint64_t facts = 0;      ///< of its map, type and kills, to find games without `digest`
  std::uint32_t weight = 0;     ///< how much it proves to meet it again, see kEvidence
  std::uint32_t kills = 0;
  std::uint32_t size = 0;  ///< of its lines, in bytes without carriage returns
  bool open = false;       ///< it was not over where its log ended
};

/// Games in a row that are the same prove that two logs share them when their weights sum up to
/// this. It takes three kills with stamps; without stamps thirty, each unlike the one before it,
/// for a duel may well go twice in the same way.
inline constexpr std::uint32_t kEvidence = 30;

/// The mark of a game from its lines. `words` are those of the numbers in `game`.
GameMark MarkGame(std::string_view lines, const Game& game, bool open, const Vocabulary& words);

/// The mark of a game of which the lines are not known.
GameMark MarkGame(const Game& game, bool open, const Vocabulary& words);

/// Whether two games are one: their lines are the same, or one was not over and is the start of the
/// other.
bool IsSameGame(const GameMark& left, const GameMark& right);

/// Whether two games, both of which follow the same game, are one: so much less has to be the same.
bool MayBeSameGame(const GameMark& left, const GameMark& right);

}  // namespace morvane
