#include "morvane/store/collect.h"

#include <algorithm>
#include <optional>
#include <string>

#include "morvane/store/collector.h"
#include "morvane/store/database.h"

namespace morvane {
namespace {

/// A log that was cut while it was read is left out, and the others are looked at anew: what they
/// are taken for may have hung on it.
Collected CollectWhole(Sources sources, Report& report, bool useDatabase) {
  while (true) {
    std::optional<Database> database;
    if (useDatabase) database.emplace(sources.databasePath);
    Collector collector(sources, report, database ? &*database : nullptr);
    if (std::optional<Collected> collected = collector.Collect()) return *std::move(collected);
    std::erase_if(sources.logs, [&](const LogFile& log) {
      return std::ranges::find(collector.Torn(), log.path) != collector.Torn().end();
    });
  }
}

}  // namespace

Collected CollectGames(const Sources& named, Report& report) {
  Sources sources = named;
  sources.logs = FindLogs(named.logs, report);
  if (sources.useDatabase) {
    try {
      return CollectWhole(sources, report, true);
    } catch (const DatabaseError& error) {
      report.Severe(Log::kMain, std::string("the database cannot be used, the logs are read "
                                            "without it: ") +
                                    error.what());
    }
  }
  return CollectWhole(sources, report, false);
}

}  // namespace morvane
