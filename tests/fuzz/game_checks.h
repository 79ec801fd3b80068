#pragma once

#include <vector>

#include "morvane/statistics/game.h"
#include "morvane/statistics/statistics.h"
#include "morvane/statistics/vocabulary.h"

namespace fuzz {

/// The statistics of games, in turn by the score and under own rules. The records of the games give
/// them back.
morvane::Statistics MakeStatistics(std::vector<morvane::Game> games,
                                   const morvane::Vocabulary& words);

/// What statistics of whole games say agrees: the kills of players, pairs, games, maps and all.
void CheckStatistics(const morvane::Statistics& statistics);

}  // namespace fuzz
