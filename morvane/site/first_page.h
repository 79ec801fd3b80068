#pragma once

#include <string>

#include "morvane/site/site_facts.h"
#include "morvane/site/site_templates.h"

namespace morvane {

/// The name, without extension, of the page that a web server shows for the folder.
inline constexpr const char* kFirstPage = "index";

/// The file of the page that a person looks at first: the page of that name where a main template
/// makes it, else that of the first main template, of the list of games or of the last game. Empty
/// where no page is made.
std::string FirstPageFile(const SiteFacts& facts, const SiteTemplates& templates);

/// A page that leads on at once to FirstPageFile. Empty where no page is made.
std::string FirstPage(const SiteFacts& facts, const SiteTemplates& templates);

}  // namespace morvane
