#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "config/rgb.h"

namespace morvane {

/// A highlight of kill tables.
struct HiliteLevel {
  double percentile = 0;  ///< 0 to 100
  config::Rgb color;
};

/// What the user says about the pages. Paths are absolute, with the system's separators.
struct SiteSettings {
  std::string sourcePath;  ///< the folder of the templates
  std::string outputPath;
  std::string fileExtension = ".html";  ///< begins with "."
  std::string timeFormat;               ///< as strftime takes it

  config::Rgb textColor;
  config::Rgb linkColor;
  config::Rgb visitedLinkColor;
  config::Rgb activeLinkColor;
  config::Rgb backgroundColor;
  std::string backgroundImage;  ///< absolute; empty: none
  std::array<config::Rgb, 10> nameColors;
  std::array<config::Rgb, 3> columnColors;

  double hiliteMinimum = 0;
  std::vector<HiliteLevel> hiliteLevels;  ///< in the order of the settings

  std::vector<std::string> mainTemplates;
  std::vector<std::string> mapTemplates;
  std::vector<std::string> gameTemplates;
  std::string gameListTemplate;
  std::string gameListLoopTemplate;
  std::string lastGameTemplate;
  std::string playerTemplate;

  std::vector<std::pair<std::string, std::string>> userVariables;  ///< each name once

  std::vector<std::string> keptFiles;  ///< paths and patterns of files that no page may replace
};

}  // namespace morvane
