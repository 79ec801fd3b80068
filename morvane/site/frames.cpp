#include "morvane/site/frames.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iterator>
#include <sys/stat.h>
#include <system_error>

#include "morvane/statistics/model_fingerprint.h"
#include "platform/files.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFrame = "frame ";  // and the key

/// The bytes of a file, and why there are none.
void AddFile(Fingerprint& print, const fs::path& path) {
  std::error_code error;
  print.Add(platform::ReadWholeFile(path, error)).Add(error.value());
}

/// The engine itself: another build of it is another file.
void AddEngine(Fingerprint& print) {
  struct stat status = {};
  if (stat("/proc/self/exe", &status) != 0) clock_gettime(CLOCK_REALTIME, &status.st_ctim);
  print.Add(status.st_dev).Add(status.st_ino).Add(status.st_size);
  for (const timespec& time : {status.st_mtim, status.st_ctim}) {
    print.Add(time.tv_sec).Add(time.tv_nsec);
  }
}

/// Where local time comes from: the variable TZ, and the file that it or the system names.
void AddTimeZone(Fingerprint& print) {
  const auto variable = [](const char* name) {
    const char* const value = std::getenv(name);
    return std::string(value == nullptr ? "" : value);
  };
  std::string zone = variable("TZ");
  const std::string folder = variable("TZDIR");
  print.Add(std::getenv("TZ") != nullptr).Add(zone).Add(folder);
  if (zone.starts_with(':')) zone.erase(0, 1);
  AddFile(print, "/etc/localtime");
  if (!zone.empty())
    AddFile(print, fs::path(folder.empty() ? "/usr/share/zoneinfo" : folder) / zone);
}

void AddColor(Fingerprint& print, config::Rgb color) {
  const auto& [red, green, blue] = color;
  print.Add(red).Add(green).Add(blue);
}

void AddTexts(Fingerprint& print, const std::vector<std::string>& texts) {
  print.Add(texts.size());
  for (const std::string& text : texts) print.Add(text);
}

// Taken apart into all members: a new setting does not compile until it is added here, too. What
// lies where does not show on pages.
void AddSettings(Fingerprint& print, const SiteSettings& settings) {
  const auto& [sourcePath, outputPath, fileExtension, timeFormat, textColor, linkColor,
               visitedLinkColor, activeLinkColor, backgroundColor, backgroundImage, nameColors,
               columnColors, hiliteMinimum, hiliteLevels, mainTemplates, mapTemplates,
               gameTemplates, gameListTemplate, gameListLoopTemplate, lastGameTemplate,
               playerTemplate, userVariables, keptFiles] = settings;
  static_cast<void>(sourcePath);
  static_cast<void>(outputPath);
  static_cast<void>(keptFiles);
  print.Add(fileExtension).Add(timeFormat).Add(backgroundImage).Add(hiliteMinimum);
  for (const config::Rgb color :
       {textColor, linkColor, visitedLinkColor, activeLinkColor, backgroundColor}) {
    AddColor(print, color);
  }
  for (const config::Rgb color : nameColors) AddColor(print, color);
  for (const config::Rgb color : columnColors) AddColor(print, color);
  print.Add(hiliteLevels.size());
  for (const auto& [percentile, color] : hiliteLevels) {
    print.Add(percentile);
    AddColor(print, color);
  }
  for (const auto* names : {&mainTemplates, &mapTemplates, &gameTemplates}) AddTexts(print, *names);
  AddTexts(print, {gameListTemplate, gameListLoopTemplate, lastGameTemplate, playerTemplate});
  print.Add(userVariables.size());
  for (const auto& [name, value] : userVariables) print.Add(name).Add(value);
}

void AddLimits(Fingerprint& print, const Limits& limits) {
  const auto& [minPlayers, minTime, minKills, gameComplete, gameLastPlaced, playersMinTime,
               playersMinGames, playersMinKills, limitOverallKillTables] = limits;
  print.Add(minPlayers).Add(minTime).Add(minKills).Add(gameComplete).Add(gameLastPlaced);
  print.Add(playersMinTime).Add(playersMinGames).Add(playersMinKills).Add(limitOverallKillTables);
}

/// What every page may depend on besides its template and the games: the engine itself, the
/// settings, the time zone, what the numbers of weapons and items stand for, and which other pages
/// there are.
Digest128 BaseOf(const SiteFacts& facts, const SiteTemplates& templates) {
  Fingerprint print;
  AddEngine(print);
  AddTimeZone(print);
  AddSettings(print, facts.settings);
  AddLimits(print, facts.statistics.limits);
  AddTo(print, facts.statistics.vocabulary);
  print.Add(facts.statistics.customRanking).Add(facts.statistics.startRating);
  templates.ForEach([&](const std::string& key, const Template& page) {
    print.Add(key).Add(page.Title()).Add(page.Group());
  });
  return print.Value();
}

}  // namespace

Frames::Frames(const SiteFacts& facts, const SharedData& shared, const SiteTemplates& templates,
               const Digest128& games, const PageList::Remarks& earlier)
    : shared_(shared), games_(games), base_(BaseOf(facts, templates)) {
  const Digest128 loop =
      templates.gameListLoop ? templates.gameListLoop->Fingerprint() : Digest128();
  templates.ForEach([&](const std::string& key, const Template& page) {
    Frame& frame = frames_[key];
    frame.own = Fingerprint().Add(base_).Add(page.Fingerprint()).Add(loop).Value();
    const auto remark = earlier.find(std::string(kFrame) + key);
    if (remark != earlier.end()) ReadEarlier(remark->second, frame);
  });
}

/// Its value, and the names that were asked for, parted by blanks.
void Frames::ReadEarlier(std::string_view remark, Frame& frame) const {
  const std::string_view value = remark.substr(0, remark.find(' '));
  remark.remove_prefix(value.size());
  while (!remark.empty()) {
    remark.remove_prefix(1);
    const std::string_view name = remark.substr(0, remark.find(' '));
    remark.remove_prefix(name.size());
    frame.asked.emplace_back(name);
  }
  const Digest128 now = Value(frame);
  frame.isSame = !now.IsNone() && TextOf(now) == value;
  if (!frame.isSame) frame.asked.clear();
}

Digest128 Frames::Value(const Frame& frame) const {
  const Digest128 values = shared_.FingerprintOf(frame.asked, games_);
  return values.IsNone() ? values : Fingerprint().Add(frame.own).Add(values).Value();
}

bool Frames::IsSame(const std::string& key) const {
  const auto frame = frames_.find(key);
  return frame != frames_.end() && frame->second.isSame;
}

void Frames::Take(const SiteTemplates& rendered) {
  const auto take = [&](const std::string& key, const Template& page) {
    std::vector<std::string>& asked = frames_[key].asked;
    const std::vector<std::string> more = shared_.NamesOf(page.WasAsked());
    std::vector<std::string> all;
    std::set_union(asked.begin(), asked.end(), more.begin(), more.end(), std::back_inserter(all));
    asked = std::move(all);
  };
  rendered.ForEach(take);
  if (rendered.gameList && rendered.gameListLoop) {
    take(SiteTemplates::kGameList + rendered.gameList->Name(), *rendered.gameListLoop);
  }
}

PageList::Remarks Frames::Remarks() const {
  PageList::Remarks remarks;
  for (const auto& [key, frame] : frames_) {
    std::string& remark = remarks[std::string(kFrame) + key];
    remark = TextOf(Value(frame));
    for (const std::string& name : frame.asked) remark += " " + name;
  }
  return remarks;
}

}  // namespace morvane
