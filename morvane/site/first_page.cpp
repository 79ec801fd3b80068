#include "morvane/site/first_page.h"

#include <algorithm>

#include "config/rgb.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

const Template* FirstOf(const SiteTemplates& templates) {
  const auto index = std::find_if(templates.main.begin(), templates.main.end(),
                                  [](const Template& page) { return page.Name() == kFirstPage; });
  if (index != templates.main.end()) return &*index;
  if (!templates.main.empty()) return &templates.main.front();
  if (templates.gameList) return &*templates.gameList;
  return templates.lastGame ? &*templates.lastGame : nullptr;
}

}  // namespace

std::string FirstPageFile(const SiteFacts& facts, const SiteTemplates& templates) {
  const Template* const first = FirstOf(templates);
  return first == nullptr ? std::string() : facts.pages.Page(first->Name());
}

std::string FirstPage(const SiteFacts& facts, const SiteTemplates& templates) {
  const Template* const first = FirstOf(templates);
  if (first == nullptr) return {};
  const std::string title = EscapeHtml(PageText(first->Title()));
  const std::string page = EscapeHtml(UrlText(facts.pages.Page(first->Name())));
  const config::Rgb background = facts.settings.backgroundColor;
  const std::string ink = ColorText(InkOn(background));
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<meta http-equiv=\"refresh\" content=\"0; url=" +
         page + "\">\n<title>" + title +
         "</title>\n<style>body { background: " + ColorText(background) + "; } a { color: " + ink +
         "; }</style>\n</head>\n<body>\n<main><h1><a href=\"" + page + "\">" + title +
         "</a></h1></main>\n</body>\n</html>\n";
}

}  // namespace morvane
