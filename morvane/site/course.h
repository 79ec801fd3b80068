#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "morvane/site/chart.h"
#include "morvane/statistics/game.h"

namespace morvane {

/// What the kills of a game tell one after the other.
struct Course {
  /// One whose score is followed: an entrant, or a team.
  struct Side {
    std::vector<ChartLine::Point> points;  ///< score by the frags, over seconds
    std::int64_t score = 0;
    std::int64_t mostBehind = 0;  ///< the best other one
    std::uint32_t behindAt = 0;   ///< seconds
  };
  struct Run {
    std::uint32_t entrant = kNobody;
    std::uint32_t kills = 0;
    std::uint32_t from = 0;  ///< seconds
    std::uint32_t to = 0;
  };

  bool byTeams = false;   ///< the sides are red and blue, else the entrants
  bool hasTimes = false;  ///< the log tells when a kill was
  std::vector<Side> sides;
  std::optional<KillEvent> firstFrag;
  std::optional<Run> longestRun;  ///< of frags without a death; not there for less than three
  std::optional<std::uint32_t> comeback;  ///< the side that won though it was far behind
};

Course CourseOf(const Game& game);

/// When one came who came late, in seconds; 0: did not, or not known.
std::uint32_t CameLate(const Game& game, const Entrant& entrant);
/// When one left before the end; 0: did not, or not known.
std::uint32_t LeftEarly(const Game& game, const Entrant& entrant);

}  // namespace morvane
