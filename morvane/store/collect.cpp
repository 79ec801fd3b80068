#include "morvane/store/collect.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <set>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <tuple>

#include "morvane/store/collector.h"
#include "morvane/store/database.h"

namespace morvane {
namespace {

/// Passes on what was not said before: what fails is begun anew.
class Once final : public Report {
 public:
  explicit Once(Report& report) : report_(report) {}

  void Write(const Message& message) override {
    const std::lock_guard lock(mutex_);
    const auto key = std::tuple(message.severe, message.file, message.line, message.text);
    if (said_.insert(key).second) report_.Write(message);
  }
  void Progress(std::string_view what, std::size_t done, std::size_t all) override {
    report_.Progress(what, done, all);
  }

 private:
  Report& report_;
  std::mutex mutex_;
  std::set<std::tuple<bool, std::string, std::size_t, std::string>> said_;
};

/// A log that was cut while it was read is left out, and the others are looked at anew: what they
/// are taken for may have hung on it.
Collected CollectWhole(Sources sources, Report& report, std::optional<Database::Use> use) {
  while (true) {
    std::optional<Database> database;
    if (use) database.emplace(sources.databasePath, *use);
    Collector collector(sources, report, database ? &*database : nullptr);
    if (std::optional<Collected> collected = collector.Collect()) return *std::move(collected);
    std::erase_if(sources.logs, [&](const LogFile& log) {
      return std::ranges::find(collector.Torn(), log.path) != collector.Torn().end();
    });
  }
}

/// With what the database holds, where it can be read but not written.
Collected CollectUnstored(const Sources& sources, const DatabaseError& failure, Report& report) {
  Collected collected;
  std::string what = "the database cannot be used, the logs are read without it: ";
  try {
    collected = CollectWhole(sources, report, Database::Use::kCopy);
    what = "nothing can be stored in the database; the pages show what it holds and what is new: ";
  } catch (const DatabaseError& unreadable) {
    // Without all old games their pages would go, only because another run is at work.
    if (unreadable.getErrorCode() != SQLITE_BUSY)
      collected = CollectWhole(sources, report, {});
    else
      what = "the database is in use by another run: ";
  }
  report.Severe(Log::kMain, what + failure.what());
  collected.stored = false;
  return collected;
}

}  // namespace

Collected CollectGames(const Sources& named, Report& theReport) {
  Once report(theReport);
  Sources sources = named;
  sources.logs = FindLogs(named.logs, report);
  if (!sources.useDatabase) return CollectWhole(sources, report, {});
  try {
    return CollectWhole(sources, report, Database::Use::kStore);
  } catch (const DatabaseError& failure) {
    return CollectUnstored(sources, failure, report);
  }
}

}  // namespace morvane
