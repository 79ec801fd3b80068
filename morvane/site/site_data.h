#pragma once

#include "morvane/site/site_facts.h"

namespace morvane {

/// What every template can use: the user's variables, the colors and all statistics. The facts
/// must outlive the data.
void DefineSharedData(SharedData& shared, const SiteFacts& facts);

}  // namespace morvane
