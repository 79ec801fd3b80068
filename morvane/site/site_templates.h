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

  /// Visits all but gameListLoop, each with a key of its own: what it is for, and its name.
  template <class Visitor>
  void ForEach(const Visitor& visit) const {
    const auto visitAll = [&](const char* kind, const auto& pages) {
      for (const Template& page : pages) visit(kind + page.Name(), page);
    };
    const auto visitOne = [&](const char* kind, const auto& page) {
      if (page) visit(kind + page->Name(), *page);
    };
    visitAll(kMain, main);
    visitAll(kMap, maps);
    visitAll(kGame, games);
    visitOne(kGameList, gameList);
    visitOne(kLastGame, lastGame);
    visitOne(kPlayer, player);
    visitAll(kStyle, styles);
  }
  // What the keys begin with.
  static constexpr const char* kMain = "main:";
  static constexpr const char* kMap = "map:";
  static constexpr const char* kGame = "game:";
  static constexpr const char* kGameList = "gamelist:";
  static constexpr const char* kLastGame = "lastgame:";
  static constexpr const char* kPlayer = "player:";
  static constexpr const char* kStyle = "style:";

  /// Whether a file of the site may belong to a template that could not be read.
  bool MayLack(const std::string& page) const;
};

/// Patterns of the names of all files that templates and what goes with them have.
std::vector<std::string> TemplatePatterns();

/// Reads every template that the settings name, each once, and the style sheets beside them. One
/// that is missing or broken is a severe message and left out.
SiteTemplates LoadTemplates(const SiteSettings& settings, Report& report);

}  // namespace morvane
