#pragma once

#include "morvane/site/site_facts.h"

namespace morvane {

/// What has happened since the last evening began: games, players, who climbed and who came; a
/// false flag where there is no game.
Data EveningData(const SiteFacts& facts, Demand demand);

/// The last games, each with the best of its players.
Data GameCards(const SiteFacts& facts, Demand demand);

/// Games by weekday and hour, one row for each day; no rows where no game's hour is known.
Data ActivityRows(const SiteFacts& facts, Demand demand);

}  // namespace morvane
