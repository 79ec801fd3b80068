#include "morvane/site/list_pages.h"

#include <algorithm>

#include "morvane/site/format.h"

namespace morvane {
namespace {

constexpr std::size_t kNeighbours = 1;  // links on either side of the current page
constexpr std::size_t kAllLinked = 2 * kNeighbours + 5;

Data Gap() {
  Data row;
  SetFlag(row, "gap", true);
  SetFlag(row, "title", false);
  SetFlag(row, "page", false);
  SetFlag(row, "current", false);
  return row;
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

void ListPages::SetLinks(Data& object, std::size_t page,
                         const std::function<std::string(std::size_t)>& file) const {
  const std::vector<Link> links = LinksOf(page);
  Data list = List(links.size());
  for (const auto& [isGap, other] : links) {
    if (isGap) {
      Append(list, Gap());
      continue;
    }
    Data link;
    SetFlag(link, "gap", false);
    Set(link, "title", LinkTitle(other));
    Set(link, "page", UrlText(file(Number(other))));
    SetFlag(link, "current", other == page);
    Append(list, std::move(link));
  }
  SetFlag(object, "first_page", page == 0);
  SetFlag(object, "has_pages", Count() > 1);
  SetOptional(object, "page_range", Count() > 1 ? Title(page) : std::string());
  SetData(object, "pages", std::move(list));
}

void ListPages::AddLinks(Fingerprint& print, std::size_t page) const {
  print.Add(page == 0).Add(Count() > 1).Add(Title(page));
  for (const auto& [isGap, other] : LinksOf(page)) {
    print.Add(isGap).Add(Number(other)).Add(LinkTitle(other)).Add(other == page);
  }
}

}  // namespace morvane
