#include "morvane/site/kill_table.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace morvane {
namespace {

using config::Rgb;

/// The cells of a table that take part in its percentiles.
std::vector<std::uint32_t> CellsOf(const CountTable& table) {
  std::vector<std::uint32_t> cells;
  cells.reserve(table.rows.size() * table.columns.size());
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
      if (!table.square || row != column) cells.push_back(table.counts[row][column]);
    }
  }
  return cells;
}

std::uint32_t RowTotal(const CountTable& table, std::size_t row) {
  std::uint32_t total = 0;
  for (std::size_t column = 0; column < table.columns.size(); ++column) {
    if (!table.square || row != column) total += table.counts[row][column];
  }
  return total;
}

std::uint32_t ColumnTotal(const CountTable& table, std::size_t column) {
  std::uint32_t total = 0;
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    if (!table.square || row != column) total += table.counts[row][column];
  }
  return total;
}

/// A game has hundreds of cells and a site thousands of games, so a cell holds no flags for what it
/// has not; nothing further out has variables of these names.
Object Cell(Demand demand, std::int64_t count, std::size_t column, std::string_view style,
            bool own) {
  Object cell(demand);
  Set(cell, "tone", column % std::tuple_size_v<decltype(SiteSettings::columnColors)>);
  if (count > 0) Set(cell, "count", count);
  if (!style.empty()) Set(cell, "style", style);
  if (own) SetFlag(cell, "own", true);
  return cell;
}

Data Cells(const CountTable& table, std::size_t row, const Hilites& hilites,
           const std::vector<std::int64_t>& own, Demand demand) {
  List cells(demand, table.columns.size());
  for (std::size_t column = 0; column < table.columns.size(); ++column) {
    if (table.square && row == column) {
      cells.Append(Cell(demand, row < own.size() ? own[row] : 0, column, {}, true));
    } else {
      const std::uint32_t count = table.counts[row][column];
      cells.Append(Cell(demand, count, column, hilites.Style(count), false));
    }
  }
  return cells.Done();
}

Data RowList(const SiteSettings& settings, const CountTable& table,
             const std::vector<std::int64_t>& own, Demand demand) {
  const Hilites hilites(settings, CellsOf(table));
  List rows(demand, table.rows.size());
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    Object row(demand);
    SetLabel(row, table.rows[i]);
    Set(row, "number", i + 1);
    SetData(row, "cells", [&](Demand cell) { return Cells(table, i, hilites, own, cell); });
    Set(row, "total", [&] { return RowTotal(table, i); });
    rows.Append(row);
  }
  return rows.Done();
}

Data ColumnList(const SiteSettings& settings, const CountTable& table, Demand demand) {
  List columns(demand, table.columns.size());
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const Rgb color = settings.columnColors[i % settings.columnColors.size()];
    Object column(demand);
    SetLabel(column, table.columns[i]);
    Set(column, "number", i + 1);
    Set(column, "color", ColorText(color));
    Set(column, "ink", ColorText(InkOn(color)));
    Set(column, "total", [&] { return ColumnTotal(table, i); });
    columns.Append(column);
  }
  return columns.Done();
}

}  // namespace

Hilites::Hilites(const SiteSettings& settings, std::vector<std::uint32_t> cells)
    : minimum_(settings.hiliteMinimum), cells_(std::move(cells)) {
  std::sort(cells_.begin(), cells_.end());
  for (const HiliteLevel& level : settings.hiliteLevels) {
    levels_.push_back({level.percentile, "background:" + ColorText(level.color) +
                                             ";color:" + ColorText(InkOn(level.color))});
  }
  std::stable_sort(levels_.begin(), levels_.end(), [](const Level& left, const Level& right) {
    return left.percentile > right.percentile;
  });
}

std::string Hilites::Style(std::uint32_t cell) const {
  if (cell == 0 || cell < minimum_) return {};
  const auto notAbove = std::upper_bound(cells_.begin(), cells_.end(), cell) - cells_.begin();
  const double percentile =
      Percent(static_cast<double>(notAbove), static_cast<double>(cells_.size()));
  const auto level = std::find_if(levels_.begin(), levels_.end(), [&](const Level& candidate) {
    return percentile >= candidate.percentile;
  });
  return level == levels_.end() ? std::string() : level->style;
}

CountTable PairTable(const std::vector<Label>& labels, const std::vector<Pair>& pairs) {
  const std::size_t size = std::min(labels.size(), kMostInTable);
  CountTable table;
  table.rows.assign(labels.begin(), labels.begin() + static_cast<std::ptrdiff_t>(size));
  table.columns = table.rows;
  table.counts.assign(size, std::vector<std::uint32_t>(size));
  table.square = true;
  table.more = labels.size() - size;
  for (const Pair& pair : pairs) {
    if (pair.killer < size && pair.victim < size) {
      table.counts[pair.killer][pair.victim] = pair.kills;
    }
  }
  return table;
}

Data TableData(const SiteSettings& settings, const CountTable& table, Demand demand,
               const std::vector<std::int64_t>& own) {
  if (table.rows.empty() || table.columns.empty()) return Data(false);
  Object object(demand);
  SetData(object, "columns", [&](Demand asked) { return ColumnList(settings, table, asked); });
  SetData(object, "rows", [&](Demand asked) { return RowList(settings, table, own, asked); });
  Set(object, "total", [&] {
    std::uint32_t total = 0;
    for (std::size_t i = 0; i < table.rows.size(); ++i) total += RowTotal(table, i);
    return total;
  });
  SetOptional(object, "more", table.more == 0 ? std::string() : std::to_string(table.more));
  return object.Done();
}

}  // namespace morvane
