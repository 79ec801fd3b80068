#pragma once

#include <string>
#include <vector>

#include "morvane/site/page_data.h"
#include "morvane/site/page_names.h"
#include "morvane/site/site_templates.h"

namespace morvane {

/// The pages that every page leads to: those of the main templates, the list of games and the last
/// game, gathered under the headings that the templates name. Only pages that exist take part.
class Navigation {
 public:
  Navigation(const SiteTemplates& templates, const PageNames& pages);

  /// The variables of all pages of a template: `page_title`, `nav`, `subnav` and `links`. `store`:
  /// where they stand.
  Data For(const Template& page, ValueStore& store) const;

 private:
  struct Entry {
    std::string name;
    std::string title;
    std::string page;
  };
  struct Group {
    std::string title;
    std::vector<Entry> entries;
  };

  void Add(const Template& page, const PageNames& pages);
  static void Fill(Object& row, const Entry& entry, bool current);
  Data Headings(const Template& page, Demand demand) const;
  Data Links(ValueStore& store) const;

  std::vector<Group> groups_;
};

}  // namespace morvane
