#include "morvane/run.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>

#include "config/modIni.h"
#include "morvane/messages.h"
#include "morvane/settings.h"
#include "morvane/site/site.h"
#include "morvane/statistics/ranking.h"
#include "morvane/statistics/statistics.h"
#include "morvane/store/collect.h"
#include "platform/files.h"

namespace morvane {
namespace {

constexpr int kSuccess = 0;
constexpr int kNothingWritten = 1;

int RefuseSettings(const std::string& directory, const std::string& path, const std::string& why) {
  Messages messages(directory, {Messages::kSevereFile | Messages::kSevereScreen, 0, 0, 0});
  messages.Severe(Log::kMain, "the settings cannot be read: " + why, path);
  return kNothingWritten;
}

std::string Seconds(std::chrono::steady_clock::time_point since) {
  const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - since;
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", passed.count());
  return text;
}

Statistics CountGames(const Settings& settings, Collected collected, Messages& messages) {
  std::unique_ptr<Ranking> ranking;
  if (settings.ranking.use) ranking = ReadRanking(settings.ranking, messages);
  Statistics statistics = MakeStatistics(settings.limits, std::move(collected.games),
                                         std::move(collected.vocabulary), ranking.get());
  messages.Normal(Log::kMain, std::to_string(statistics.games.size()) + " of " +
                                  std::to_string(statistics.gamesFound) + " games counted, " +
                                  std::to_string(statistics.ranked) + " of " +
                                  std::to_string(statistics.players.size()) + " players ranked");
  return statistics;
}

}  // namespace

int Run(const std::string& directory) {
  const auto start = std::chrono::steady_clock::now();
  config::modIni ini(directory);
  std::error_code error;
  platform::ReadWholeFile(ini.ConfigFilePath(), error);
  if (error) return RefuseSettings(directory, ini.ConfigFilePath(), error.message());
  const Settings settings = ReadSettings(ini);
  Messages messages(directory, settings.messageOptions);
  Collected collected = CollectGames(settings.sources, settings.ranking.use, messages);
  if (!collected.usable) {
    messages.Severe(Log::kMain, "no log could be read; no pages are written");
    return kNothingWritten;
  }
  const Statistics statistics = CountGames(settings, std::move(collected), messages);
  const SiteResult site = WritePages(settings.site, statistics, messages);
  std::string counts = std::to_string(site.written) + " files written, " +
                       std::to_string(site.unchanged) + " unchanged";
  if (site.takenAway > 0) counts += ", " + std::to_string(site.takenAway) + " taken away";
  if (!site.usable || site.written + site.unchanged == 0) {
    messages.Severe(Log::kMain, "no pages could be written", settings.site.outputPath);
    return kNothingWritten;
  }
  messages.Normal(Log::kMain, counts + ", in " + Seconds(start) + " s", settings.site.outputPath);
  return kSuccess;
}

}  // namespace morvane
