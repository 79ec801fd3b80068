#include "morvane/run.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "config/settings.h"
#include "config/settings_file.h"
#include "morvane/messages.h"
#include "morvane/settings.h"
#include "morvane/site/site.h"
#include "morvane/site/template_source.h"
#include "morvane/statistics/dropped.h"
#include "morvane/statistics/player_names.h"
#include "morvane/statistics/ranking.h"
#include "morvane/statistics/statistics.h"
#include "morvane/store/collect.h"
#include "morvane/store/database.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/replace_file.h"

namespace morvane {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;

/// Why no run can be made from the settings file; empty when one can.
std::string FaultOfSettings(const config::SettingsFile& file) {
  if (!file.LoadFailure().empty()) return file.LoadFailure();
  std::error_code error;
  if (!std::filesystem::exists(file.Path(), error)) {
    return std::make_error_code(std::errc::no_such_file_or_directory).message();
  }
  if (file.IsEmpty()) return "the file is empty";
  const std::string section(config::Settings().front().section);
  return file.KeyNames(section).empty() ? "the file has no section [" + section + "]"
                                        : std::string();
}

std::optional<Settings> LoadSettings(const std::string& directory) {
  const config::SettingsFile file(directory);
  const std::string fault = FaultOfSettings(file);
  if (fault.empty()) return ReadSettings(file);
  Messages messages(directory, {Messages::kSevereFile | Messages::kSevereScreen, 0, 0, 0});
  messages.Severe(Log::kMain, "the settings cannot be read: " + fault, file.Path());
  return {};
}

std::string Seconds(std::chrono::steady_clock::time_point since) {
  const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - since;
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", passed.count());
  return text;
}

Statistics CountGames(const Settings& settings, const PlayerNames& names, Collected collected,
                      Messages& messages) {
  std::unique_ptr<Ranking> ranking;
  if (settings.ranking.use) ranking = ReadRanking(settings.ranking, messages);
  TellDroppedGames(collected.games, settings.limits, messages);
  Statistics statistics = MakeStatistics(settings.limits, std::move(collected.games),
                                         std::move(collected.vocabulary), names, ranking.get());
  TellDroppedPlayers(statistics.players, settings.limits, messages);
  messages.Normal(Log::kMain, std::to_string(statistics.games.size()) + " of " +
                                  std::to_string(statistics.gamesFound) + " games counted, " +
                                  std::to_string(statistics.ranked) + " of " +
                                  std::to_string(statistics.players.size()) + " players ranked");
  return statistics;
}

/// All that the engine reads and keeps besides what pages are made from.
std::vector<std::string> KeptFiles(const Settings& settings, const std::string& directory) {
  std::vector<std::string> files = Messages::Files(directory);
  for (const char* name : {"morvane.cfg", "morvane.exe", "players.txt"}) {
    files.push_back(directory + "/" + name);
  }
  for (const LogFile& log : settings.sources.logs) files.push_back(log.path);
  // With what SQLite keeps beside it.
  files.push_back(settings.sources.databasePath + "/" + std::string(Database::kFileName) + "*");
  for (const std::string& folder : settings.ranking.folders) {
    files.push_back(folder + "/" + settings.ranking.file);
    files.push_back(TemplatePath(folder, settings.ranking.file).string());
  }
  return files;
}

/// A file extension that leads out of the folder of the pages is refused once, not with each page.
void CheckExtension(Settings& settings, Report& report) {
  if (!platform::HasSeparator(settings.site.fileExtension)) return;
  report.Severe(Log::kMain, "the file extension \"" + settings.site.fileExtension +
                                "\" cannot be used: it names a folder; the pages have .html");
  settings.site.fileExtension = ".html";
}

/// From the logs to the pages.
int CountAndWrite(const Settings& settings, const std::string& directory, Messages& messages) {
  const auto start = std::chrono::steady_clock::now();
  Collected collected = CollectGames(settings.sources, messages);
  const bool stored = collected.stored;
  if (!collected.usable) {
    messages.Severe(Log::kMain, "no log could be read; no pages are written");
    return kFailed;
  }
  const Statistics statistics =
      CountGames(settings, ReadPlayerNames(directory, messages), std::move(collected), messages);
  const SiteResult site = WritePages(settings.site, statistics, messages);
  if (!site.usable || site.written + site.unchanged == 0) {
    messages.Severe(Log::kMain, "no pages could be written", settings.site.outputPath);
    return kFailed;
  }
  std::string counts = std::to_string(site.written) + " files written, " +
                       std::to_string(site.unchanged) + " unchanged";
  if (site.takenAway > 0) counts += ", " + std::to_string(site.takenAway) + " taken away";
  messages.Normal(Log::kMain, counts + ", in " + Seconds(start) + " s");
  if (!site.firstPage.empty()) messages.Normal(Log::kMain, "the first page is " + site.firstPage);
  return site.failed == 0 && stored ? kSuccess : kFailed;
}

/// Of a folder where another run is at work. The message logs in it are that run's.
int Refuse(const std::string& directory, const std::error_code& error) {
  const std::string text = directory + ": " + error.message() + "; this run has ended\n";
  [[maybe_unused]] const std::error_code gone = platform::WriteAll(STDERR_FILENO, text);
  return kFailed;
}

}  // namespace

int Run(const std::string& directory) {
  std::error_code inUse;
  const platform::FolderLock lock(directory, inUse);
  if (inUse) return Refuse(directory, inUse);
  std::optional<Settings> settings = LoadSettings(directory);
  if (!settings) return kFailed;
  Messages messages(directory, settings->messageOptions);
  try {
    CheckExtension(*settings, messages);
    settings->site.keptFiles = KeptFiles(*settings, directory);
    return CountAndWrite(*settings, directory, messages);
  } catch (const std::bad_alloc&) {
    messages.Severe(Log::kMain, "the run has ended early: not enough memory");
  } catch (const std::exception& error) {
    messages.Severe(Log::kMain, std::string("the run has ended early: ") + error.what());
  }
  return kFailed;
}

}  // namespace morvane
