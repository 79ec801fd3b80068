#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "morvane/store/game_mark.h"

namespace morvane {

/// Two games that are one, by their positions in two lists.
struct SamePair {
  std::size_t left = 0;
  std::size_t right = 0;
};

/// The games of a stored log that recur, in the same order, in what its file holds now: pairs of
/// stored and read games. Empty where nothing proves that it is the same log; it is another one
/// then, in the old one's place, and all stored games stay. Else the stored games before the first
/// pair stay, for the log may have been shortened from the front, and the file tells what comes
/// from there on.
std::vector<SamePair> FindRecurring(const std::vector<GameMark>& stored,
                                    const std::vector<GameMark>& read);

/// Where the first of `games`, and as many after it as are evidence, recur inside one of `others`:
/// the game that stands before it there. Nothing where they do not, or begin that one too.
std::optional<GameMark> FindGameBefore(const std::vector<GameMark>& games,
                                       const std::vector<std::vector<GameMark>>& others);

/// The games of a log, for counting.
struct MarkedLog {
  std::vector<GameMark> games;
  /// The position, in the list of logs, of the one whose open last game this log goes on with: the
  /// first of `games` holds that one too.
  std::optional<std::size_t> goesOnWith;
};

/// A game by the position of its log in a list, and its own in that log.
struct GamePlace {
  std::size_t log = 0;
  std::size_t game = 0;
};

/// Games that are one, of a log and of one before it.
struct SameGames {
  GamePlace later;
  GamePlace earlier;
};

/// Which games count, when each that stands in several logs counts once.
struct Once {
  std::vector<std::vector<bool>> counts;  ///< by log and game
  std::vector<SameGames> same;
};

/// Of games that are the same the one that is over counts, else the longest, else that of the first
/// log. Within one log every game counts.
Once CountOnce(const std::vector<MarkedLog>& logs);

}  // namespace morvane
