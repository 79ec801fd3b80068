#include "morvane/site/navigation.h"

#include <algorithm>

#include "morvane/site/format.h"

namespace morvane {

Navigation::Navigation(const SiteTemplates& templates, const PageNames& pages) {
  for (const Template& page : templates.main) Add(page, pages);
  if (templates.gameList) Add(*templates.gameList, pages);
  if (templates.lastGame) Add(*templates.lastGame, pages);
}

void Navigation::Add(const Template& page, const PageNames& pages) {
  const auto known = std::find_if(groups_.begin(), groups_.end(),
                                  [&](const Group& group) { return group.title == page.Group(); });
  Group& group = known == groups_.end() ? groups_.emplace_back(Group{page.Group(), {}}) : *known;
  group.entries.push_back({page.Name(), page.Title(), UrlText(pages.Page(page.Name()))});
}

Data Navigation::EntryData(const Entry& entry, bool current) {
  Data object;
  Set(object, "title", entry.title);
  Set(object, "page", entry.page);
  SetFlag(object, "current", current);
  return object;
}

Data Navigation::For(const Template& page) const {
  Data nav = List(groups_.size());
  Data subnav = List(0);
  Data links;
  for (const Group& group : groups_) {
    const bool inGroup = group.title == page.Group();
    Entry heading = group.entries.front();
    heading.title = group.title;
    Append(nav, EntryData(heading, inGroup));
    for (const Entry& entry : group.entries) {
      links[entry.name] = Data(entry.page);
      const bool listed = inGroup && group.entries.size() > 1;
      if (listed) Append(subnav, EntryData(entry, entry.name == page.Name()));
    }
  }
  Data object;
  Set(object, "template", page.Name());
  Set(object, "page_title", page.Title());
  SetFlag(object, "has_subnav", subnav.is_non_empty_list());
  SetData(object, "nav", std::move(nav));
  SetData(object, "subnav", std::move(subnav));
  SetData(object, "links", std::move(links));
  return object;
}

}  // namespace morvane
