#pragma once

#include <string>

#include "morvane/site/site_facts.h"
#include "morvane/site/site_templates.h"

namespace morvane {

/// The name, without extension, of the page that a web server shows for the folder.
inline constexpr const char* kFirstPage = "index";

/// A page that leads on at once to the first main page, or else to the list of games or the last
/// game. Empty where no page is made.
std::string FirstPage(const SiteFacts& facts, const SiteTemplates& templates);

}  // namespace morvane
