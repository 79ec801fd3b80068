#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {

/// A line of a log that could not be used though it looks like one of the game's.
struct Note {
  std::size_t line = 0;  ///< from 1
  std::string text;
};

/// When a game of a log was, as far as its stamps tell.
struct GameTime {
  std::int64_t clock = 0;  ///< of its start, in tenths of a second on ParsedLog::clock
  std::int64_t date = 0;   ///< of its start, in seconds since 1970, where the log tells it; else 0
  std::uint32_t run = 0;   ///< how often the stamps had begun anew by then
};

/// Where a game stands in a log, in bytes: from its "InitGame:" to its "ShutdownGame:" or, without
/// that, to the next game or the end.
struct GameText {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// What a log, or a stretch of one, holds.
struct ParsedLog {
  static constexpr std::size_t kMostNotes = 20;

  std::vector<Game> games;      ///< Game::start is not there until SetStarts
  std::vector<GameTime> times;  ///< of `games`
  std::vector<GameText> texts;  ///< of `games`
  Vocabulary vocabulary;
  std::size_t lines = 0;
  bool hasGame = false;        ///< a game begins in it, among `games` or not
  std::size_t emptyGames = 0;  ///< those that are not among `games`, see DropEmptyGames
  std::size_t strayLines = 0;  ///< lines of a game, "Kill:" and the like, before the first one
  std::size_t skipped = 0;     ///< lines of no known kind, or damaged
  std::size_t damaged = 0;     ///< of those, the ones that look like lines of the game
  std::vector<Note> notes;     ///< of the first damaged ones

  /// Where to read on when the log has grown: the start of the game that is still open at the end
  /// (it is the last of `games`), or the end of the last whole line.
  std::size_t resumeAt = 0;
  std::size_t resumeLine = 0;  ///< how many lines come before that
  bool openAtEnd = false;

  std::int64_t clock = 0;  ///< tenths of a second that the stamps tell, jumps back left out
  std::int64_t firstStamp = 0;
  std::int64_t lastStamp = 0;
  bool stamped = false;
  std::uint32_t runs = 0;   ///< how often the stamps began anew: lower, or at 0:00 for a game
  bool beginsAnew = false;  ///< the first stamp is such a 0:00; not among `runs`
};

/// Leaves out the games from the index `first` on in which nobody played, so that they take no
/// memory: all but one that is open at the end, and those with a date, by which others are dated.
void DropEmptyGames(ParsedLog& log, std::size_t first = 0);

/// Reads a stretch of a log that begins at a line's start. Never fails: what is no line of the
/// game is counted and skipped. The format is that of the game's own server log.
/// Where there are thousands of games, those in which nobody played may be left out already.
/// `keepEvents`: fill Game::events. `known`: names that have numbers already.
ParsedLog ParseLog(std::string_view log, bool keepEvents, const Vocabulary& known = {});

}  // namespace morvane
