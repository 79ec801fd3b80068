#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "morvane/site/page_data.h"

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
  void SetLinks(Data& object, std::size_t page,
                const std::function<std::string(std::size_t number)>& file) const;

 private:
  ListPages(std::size_t rows, bool fromLast) : rows_(rows), fromLast_(fromLast) {}
  std::string Title(std::size_t page) const;

  std::size_t rows_;
  bool fromLast_;
};

/// The rows of a split list, page by page; a page's are made when they are first asked for, once
/// for all templates. Safe to read from several threads.
class ListParts {
 public:
  /// `make`: an object that holds the rows of a range.
  ListParts(ListPages pages, std::function<Data(ListPages::Range)> make)
      : pages_(pages), make_(std::move(make)), parts_(pages.Count()) {}

  const ListPages& Pages() const { return pages_; }
  const Data& Get(std::size_t page);

 private:
  struct Part {
    std::once_flag made;
    Data rows;
  };
  ListPages pages_;
  std::function<Data(ListPages::Range)> make_;
  std::vector<Part> parts_;
};

}  // namespace morvane
