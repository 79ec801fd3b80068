#pragma once

#include <vector>

#include "morvane/site/site_facts.h"

namespace morvane {

/// Sets what a game's log tells of its course: the curve of the scores, the first frag, the longest
/// run, a comeback, who came late and who left, and the feats that a mod tells. `labels`: of the
/// game's entrants.
void SetCourse(Object& object, const SiteFacts& facts, const Game& game,
               const std::vector<Label>& labels);

}  // namespace morvane
