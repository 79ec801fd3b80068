#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "morvane/statistics/game.h"
#include "morvane/statistics/limits.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {

class PlayerNames;
class Ranking;

/// What was counted in games of known length, so that rates by time are of what was timed. Of games
/// without stamps nobody knows how long they were.
struct TimedFigures : Counts {
  std::uint32_t games = 0;
};

/// The time between the first and the last game of some.
struct Seen {
  std::int64_t first = 0;  ///< start of the first game, as Game::start
  std::int64_t last = 0;   ///< end of the last one; 0: not known
  Dated firstDated = Dated::kUnknown;
  Dated lastDated = Dated::kUnknown;
};

/// A player over all counted games, or over those on one map.
struct Player {
  std::string name;   ///< bytes of the log, color codes included, as last used; see names.h
  std::string plain;  ///< NameText of it
  bool bot = false;   ///< in every game
  Figures figures;    ///< rivals are indices into the same list of players as this one
  TimedFigures timed;
  std::uint32_t games = 0;              ///< games taken part in
  std::uint32_t wins = 0;               ///< games won: place 1, or a member of the winning team
  std::uint32_t placed = 0;             ///< games ended at `game_last_placed` or better
  std::vector<std::uint32_t> placings;  ///< [0]: times first, [1]: times second, ...
  Seen seen;
  bool ranked = false;       ///< within the players' limits, over all games
  std::uint32_t rank = 0;    ///< 1 is best, equal ones share it; 0: not ranked
  double rating = 0;         ///< what orders the ranking: custom rank value, or the score
  std::uint32_t player = 0;  ///< index into Statistics::players (on a map's list: whose this is)
};

/// Several games taken together: all counted ones, or those on one map.
struct Summary {
  std::uint32_t games = 0;
  std::uint32_t timedGames = 0;  ///< those of known length
  std::int64_t seconds = 0;      ///< length of these
  Figures figures;               ///< of all players, without rivals
  Seen seen;
};

/// A map: `players` and `pairs` count on this map alone.
struct Map {
  std::string name;   ///< lower case
  std::string title;  ///< as a log last wrote it
  Summary summary;
  std::vector<Player> players;       ///< ranked ones first, by the score on this map
  std::vector<Pair> pairs;           ///< indices into `players`
  std::vector<std::uint32_t> games;  ///< indices into Statistics::games
};

/// All that pages are made of.
struct Statistics {
  Summary summary;
  std::vector<Player> players;  ///< the ranked ones by rank, then the others by rating
  std::uint32_t ranked = 0;     ///< how many of them are ranked
  std::vector<Pair> pairs;      ///< over all games
  std::vector<Map> maps;        ///< by name
  std::vector<Game> games;      ///< the counted ones, in the order of the logs
  Vocabulary vocabulary;
  Limits limits;                 ///< that these were made under
  std::uint32_t gamesFound = 0;  ///< counted or not
  bool customRanking = false;    ///< rating is the custom rank value
  double startRating = 0;        ///< what a player's rating begins with
};

/// What the players of some games did there: of those from `first` on to the last one. Ranked are
/// who is ranked over all games, by the rating gained.
std::vector<Player> PlayersSince(const Statistics& statistics, std::uint32_t first);

/// Whether a game counts: no warm-up, and none of the game limits misses it. A log without stamps
/// tells no length, so `min_time` does not apply to its games.
bool IsCounted(const Game& game, const Limits& limits);

/// Whether a player is ranked: none of the players' limits misses him.
bool IsRanked(const Player& player, const Limits& limits);

/// Everything from the games found, in the order of play. `vocabulary` names the numbers in them.
/// With a `ranking` that orders the players, else their scores do. Who is left out by `names`
/// stands nowhere in the result; what others did to him, and he to them, stays with them, as do
/// their places.
Statistics MakeStatistics(const Limits& limits, std::vector<Game> games, Vocabulary vocabulary,
                          const PlayerNames& names, Ranking* ranking);

}  // namespace morvane
