#pragma once

#include <cstddef>
#include <string>

#include "morvane/report/report.h"
#include "morvane/site/site_settings.h"
#include "morvane/statistics/statistics.h"

namespace morvane {

/// What became of a site.
struct SiteResult {
  bool usable = false;        ///< the output folder could be made and written to
  std::size_t written = 0;    ///< files that are new or have changed
  std::size_t unchanged = 0;  ///< files that already were as they should be
  std::size_t takenAway = 0;  ///< files of earlier runs that are not made any more
  std::size_t failed = 0;     ///< files that could not be; a severe message for each reason
  std::string firstPage;      ///< path of the page to look at first; empty when there is none
};

/// Writes the whole site: every page of every template that the settings name, their style sheets,
/// scripts and pictures, and the background image. Works on all cores. Each file is replaced as a
/// whole, and one whose content stays the same is left alone. Pages of earlier runs that this one
/// does not make are taken away, and nothing else. No file that the engine reads or keeps is
/// replaced or taken away.
SiteResult WritePages(const SiteSettings& settings, const Statistics& statistics, Report& report);

}  // namespace morvane
