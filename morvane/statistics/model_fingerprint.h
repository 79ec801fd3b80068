#pragma once

#include "morvane/statistics/fingerprint.h"
#include "morvane/statistics/statistics.h"

namespace morvane {

// Everything that a value holds goes into a fingerprint, but for the indices of players in
// Statistics::players and on maps: these tell a rank that another player may have in the next run.
// Who knows what the indices stand for adds it.

void AddTo(Fingerprint& print, const Game& game);
void AddTo(Fingerprint& print, const Player& player);
void AddTo(Fingerprint& print, const Vocabulary& vocabulary);

}  // namespace morvane
