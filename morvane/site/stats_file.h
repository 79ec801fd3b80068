#pragma once

#include "morvane/site/page_list.h"
#include "morvane/site/site_output.h"
#include "morvane/site/stats_json.h"

namespace morvane {

/// Writes stats.json, on all cores. What has not changed since the last run is taken over from the
/// file as that wrote it. `base`: stands for the settings and the engine. Adds to `remarks` what
/// the next run needs to know for this.
void WriteStatsJson(const StatsJson& json, const Digest128& base, SiteOutput& output,
                    PageList::Remarks& remarks);

}  // namespace morvane
