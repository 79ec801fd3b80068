#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "morvane/site/page_data.h"
#include "morvane/site/site_facts.h"
#include "morvane/site/site_settings.h"

namespace morvane {

/// The colors of the cells of one kill table. A cell of at least SiteSettings::hiliteMinimum has
/// the color of the highest level whose percentile it reaches; its percentile is the share of the
/// table's cells that are not above it, so the greatest is at 100.
class Hilites {
 public:
  /// `cells`: all cells of the table, in any order.
  Hilites(const SiteSettings& settings, std::vector<std::uint32_t> cells);

  /// The CSS declarations of a cell, with an ink that can be read; empty for one that is not
  /// highlighted. Nothing in it needs escaping.
  std::string Style(std::uint32_t cell) const;

 private:
  struct Level {
    double percentile;
    std::string style;
  };
  double minimum_;
  std::vector<Level> levels_;         // highest first
  std::vector<std::uint32_t> cells_;  // sorted
};

/// A table of counts before it is turned into data. All rows are as long as `columns`.
struct CountTable {
  std::vector<Label> columns;
  std::vector<Label> rows;
  std::vector<std::vector<std::uint32_t>> counts;
  bool square = false;   ///< rows and columns are the same; the diagonal is no kill of another
  std::size_t more = 0;  ///< rows that did not fit
};

/// Most rows and columns of a table of killers and victims.
inline constexpr std::size_t kMostInTable = 40;

/// The first of a list, each against each; `pairs` hold indices into the list.
CountTable PairTable(const std::vector<Label>& labels, const std::vector<Pair>& pairs);

/// The variables of a table: `columns`, `rows` with their `cells`, totals. The diagonal of a square
/// table shows `own` (by row) and is not highlighted. A table without rows gives a false flag.
Data TableData(const SiteSettings& settings, const CountTable& table, Demand demand,
               const std::vector<std::int64_t>& own = {});

/// The variables of the table of kills among those of a list who have figures: each against each,
/// with the suicides on the diagonal. `labelOf(entry)` names one, `pairs` hold indices into the
/// list.
template <class List, class LabelOf>
Data KillTableData(const SiteSettings& settings, const List& list, const std::vector<Pair>& pairs,
                   Demand demand, const LabelOf& labelOf) {
  std::vector<Label> labels;
  std::vector<std::int64_t> suicides;
  for (const auto& entry : list) {
    labels.push_back(labelOf(entry));
    suicides.push_back(entry.figures.suicides);
  }
  return TableData(settings, PairTable(labels, pairs), demand, suicides);
}

}  // namespace morvane
