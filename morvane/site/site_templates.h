#pragma once

#include <optional>
#include <string>
#include <vector>

#include "morvane/report/report.h"
#include "morvane/site/site_settings.h"
#include "morvane/site/template.h"

namespace morvane {

/// The templates of a site that could be read. A copy serves one thread.
struct SiteTemplates {
  std::vector<Template> main;
  std::vector<Template> maps;
  std::vector<Template> games;
  std::optional<Template> gameList;
  std::optional<Template> gameListLoop;
  std::optional<Template> lastGame;
  std::optional<Template> player;
  std::vector<Template> styles;     ///< *.css of the template folder, named with their extension
  std::vector<std::string> assets;  ///< scripts, pictures and fonts of the template folder
  std::vector<std::string> failed;  ///< names of those that the settings ask for and are not here
  bool folderRead = true;           ///< the template folder could be looked through

  /// Whether a file of the site may belong to a template that could not be read.
  bool MayLack(const std::string& page) const;
};

/// Patterns of the names of all files that templates and what goes with them have.
std::vector<std::string> TemplatePatterns();

/// Reads every template that the settings name, each once, and the style sheets beside them. One
/// that is missing or broken is a severe message and left out.
SiteTemplates LoadTemplates(const SiteSettings& settings, Report& report);

}  // namespace morvane
