#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "morvane/site/page_data.h"
#include "morvane/statistics/fingerprint.h"

namespace morvane {

/// Most rows of a list that is split into pages.
inline constexpr std::size_t kRowsPerPage = 200;

/// How a long list is split: which page shows which rows, and the number in its file name.
class ListPages {
 public:
  /// A list that is read from its first row on: the pages after the first are numbered 2, 3, ...
  static ListPages FromFirst(std::size_t rows) { return {rows, false}; }
  /// A list that grows and is read from its last row on. The first page shows the last rows; the
  /// others are numbered from the oldest on, so that all but two stay as they are when it grows.
  static ListPages FromLast(std::size_t rows) { return {rows, true}; }

  std::size_t Rows() const { return rows_; }
  /// At least one, in the order of reading.
  std::size_t Count() const;
  /// The rows of a page: from `first` to before `end`.
  struct Range {
    std::size_t first;
    std::size_t end;
  };
  Range Of(std::size_t page) const;
  /// The number in the page's file name; 0: none.
  std::size_t Number(std::size_t page) const;

  /// Sets `first_page`, `has_pages`, `pages` and `page_range` for a page. `file`: the file of a
  /// number.
  void SetLinks(Object& object, std::size_t page,
                const std::function<std::string(std::size_t number)>& file) const;
  /// Adds all that SetLinks sets, but for the files.
  void AddLinks(Fingerprint& print, std::size_t page) const;

 private:
  /// Of a page to another one, or a gap.
  struct Link {
    bool isGap = false;
    std::size_t page = 0;
  };
  std::vector<Link> LinksOf(std::size_t page) const;
  std::string LinkTitle(std::size_t page) const;
  ListPages(std::size_t rows, bool fromLast) : rows_(rows), fromLast_(fromLast) {}
  std::string Title(std::size_t page) const;

  std::size_t rows_;
  bool fromLast_;
};

}  // namespace morvane
