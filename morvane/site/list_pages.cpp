#include "morvane/site/list_pages.h"

#include <algorithm>

#include "morvane/site/format.h"

namespace morvane {
namespace {

constexpr std::size_t kNeighbours = 1;  // links on either side of the current page
constexpr std::size_t kAllLinked = 2 * kNeighbours + 5;

void SetGap(Object& row) {
  SetFlag(row, "gap", true);
  SetFlag(row, "title", false);
  SetFlag(row, "page", false);
  SetFlag(row, "current", false);
}

}  // namespace

std::size_t ListPages::Count() const {
  return std::max<std::size_t>(1, (rows_ + kRowsPerPage - 1) / kRowsPerPage);
}

ListPages::Range ListPages::Of(std::size_t page) const {
  if (!fromLast_) return {page * kRowsPerPage, std::min(rows_, (page + 1) * kRowsPerPage)};
  const std::size_t older = rows_ - std::min(rows_, kRowsPerPage);
  if (page == 0) return {older, rows_};
  const std::size_t end = std::min(older, Number(page) * kRowsPerPage);
  return {(Number(page) - 1) * kRowsPerPage, end};
}

std::size_t ListPages::Number(std::size_t page) const {
  if (page == 0) return 0;
  return fromLast_ ? Count() - page : page + 1;
}

std::string ListPages::Title(std::size_t page) const {
  const Range range = Of(page);
  return Grouped(static_cast<std::int64_t>(range.first + 1)) + "–" +
         Grouped(static_cast<std::int64_t>(range.end));
}

/// In links the end that grows stays open: pages that lead there need not change with it.
std::string ListPages::LinkTitle(std::size_t page) const {
  if (fromLast_) return page == 0 ? "Latest" : Title(page);
  if (page + 1 < Count()) return Title(page);
  return Grouped(static_cast<std::int64_t>(Of(page).first + 1)) + "–";
}

/// The first, the last and those near the page.
std::vector<ListPages::Link> ListPages::LinksOf(std::size_t page) const {
  const std::size_t count = Count();
  const bool all = count <= kAllLinked;
  std::vector<Link> links;
  std::size_t linked = 0;
  for (std::size_t other = 0; other < count && count > 1; ++other) {
    const bool isNear = other + kNeighbours >= page && other <= page + kNeighbours;
    if (!all && !isNear && other != 0 && other + 1 != count) continue;
    if (other > linked) links.push_back({true, 0});
    linked = other + 1;
    links.push_back({false, other});
  }
  return links;
}

void ListPages::SetLinks(Object& object, std::size_t page,
                         const std::function<std::string(std::size_t)>& file) const {
  SetFlag(object, "first_page", page == 0);
  SetFlag(object, "has_pages", Count() > 1);
  SetOptional(object, "page_range", Count() > 1 ? Title(page) : std::string());
  SetRows(object, "pages", LinksOf(page), [&](Object& row, const Link& link) {
    if (link.isGap) {
      SetGap(row);
      return;
    }
    SetFlag(row, "gap", false);
    Set(row, "title", LinkTitle(link.page));
    Set(row, "page", UrlText(file(Number(link.page))));
    SetFlag(row, "current", link.page == page);
  });
}

void ListPages::AddLinks(Fingerprint& print, std::size_t page) const {
  print.Add(page == 0).Add(Count() > 1).Add(Title(page));
  for (const auto& [isGap, other] : LinksOf(page)) {
    print.Add(isGap).Add(Number(other)).Add(LinkTitle(other)).Add(other == page);
  }
}

}  // namespace morvane
