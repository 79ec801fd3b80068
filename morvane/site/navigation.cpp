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

void Navigation::Fill(Object& row, const Entry& entry, bool current) {
  Set(row, "title", entry.title);
  Set(row, "page", entry.page);
  SetFlag(row, "current", current);
}

Data Navigation::Headings(const Template& page, Demand demand) const {
  return Rows(groups_, demand, [&](Object& row, const Group& group) {
    Entry heading = group.entries.front();
    heading.title = group.title;
    Fill(row, heading, group.title == page.Group());
  });
}

/// Members with the names of the templates, whatever they are.
Data Navigation::Links(ValueStore& store) const {
  Data links = store.NewObject();
  for (const Group& group : groups_) {
    for (const Entry& entry : group.entries) {
      store.SetMember(links, VariableName(entry.name), store.Text(entry.page));
    }
  }
  return links;
}

Data Navigation::For(const Template& page, ValueStore& store) const {
  const auto own = std::ranges::find(groups_, page.Group(), &Group::title);
  const bool hasOthers = own != groups_.end() && own->entries.size() > 1;
  Object object(Demand(page.Names(), store));
  Set(object, "template", page.Name());
  Set(object, "page_title", page.Title());
  SetFlag(object, "has_subnav", hasOthers);
  SetData(object, "nav", [&](Demand demand) { return Headings(page, demand); });
  SetRows(object, "subnav", hasOthers ? own->entries : std::vector<Entry>(),
          [&](Object& row, const Entry& entry) { Fill(row, entry, entry.name == page.Name()); });
  SetData(object, "links", [&](Demand /*demand*/) { return Links(store); });
  return object.Done();
}

}  // namespace morvane
