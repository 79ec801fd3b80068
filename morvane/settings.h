#pragma once

#include <array>
#include <string>

#include "morvane/site/site_settings.h"
#include "morvane/statistics/limits.h"
#include "morvane/statistics/ranking.h"
#include "morvane/store/collect.h"

namespace config {
class SettingsFile;
}

namespace morvane {

/// Everything that morvane.cfg says, converted: each part of the engine has its own. Paths are
/// absolute, with the system's separators.
struct Settings {
  Sources sources;
  Limits limits;
  RankingSettings ranking;
  SiteSettings site;
  std::array<int, 4> messageOptions{};  ///< by Log; 0 to 15, see Messages::Options
};

/// The settings of `ini`, relative paths taken from the directory of the file. Missing keys and
/// texts that are no number are empty texts, no entries and zeros.
Settings ReadSettings(const config::SettingsFile& ini);

}  // namespace morvane
