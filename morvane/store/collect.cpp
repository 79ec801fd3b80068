#include "morvane/store/collect.h"

#include <string>

#include "morvane/store/collector.h"
#include "morvane/store/database.h"

namespace morvane {

Collected CollectGames(const Sources& sources, bool keepEvents, Report& report) {
  if (sources.useDatabase) {
    try {
      Database database(sources.databasePath);
      return Collector(sources, keepEvents, report, &database).Collect();
    } catch (const DatabaseError& error) {
      report.Severe(Log::kMain, std::string("the database cannot be used, the logs are read "
                                            "without it: ") +
                                    error.what());
    }
  }
  return Collector(sources, keepEvents, report, nullptr).Collect();
}

}  // namespace morvane
