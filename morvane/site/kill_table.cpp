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
Data Cell(std::int64_t count, std::size_t column, std::string_view style, bool own) {
  Data cell;
  Set(cell, "tone", column % std::tuple_size_v<decltype(SiteSettings::columnColors)>);
  if (count > 0) Set(cell, "count", count);
  if (!style.empty()) Set(cell, "style", style);
  if (own) SetFlag(cell, "own", true);
  return cell;
}

Data Row(const CountTable& table, std::size_t row, const Hilites& hilites,
         const std::vector<std::int64_t>& own) {
  Data cells = List(table.columns.size());
  for (std::size_t column = 0; column < table.columns.size(); ++column) {
    if (table.square && row == column) {
      Append(cells, Cell(row < own.size() ? own[row] : 0, column, {}, true));
    } else {
      const std::uint32_t count = table.counts[row][column];
      Append(cells, Cell(count, column, hilites.Style(count), false));
    }
  }
  Data object;
  SetLabel(object, table.rows[row]);
  Set(object, "number", row + 1);
  SetData(object, "cells", std::move(cells));
  Set(object, "total", RowTotal(table, row));
  return object;
}

Data Column(const SiteSettings& settings, const CountTable& table, std::size_t column) {
  const Rgb color = settings.columnColors[column % settings.columnColors.size()];
  Data object;
  SetLabel(object, table.columns[column]);
  Set(object, "number", column + 1);
  Set(object, "color", ColorText(color));
  Set(object, "ink", ColorText(InkOn(color)));
  Set(object, "total", ColumnTotal(table, column));
  return object;
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

Data TableData(const SiteSettings& settings, const CountTable& table,
               const std::vector<std::int64_t>& own) {
  if (table.rows.empty() || table.columns.empty()) return Data(false);
  const Hilites hilites(settings, CellsOf(table));
  Data columns = List(table.columns.size());
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    Append(columns, Column(settings, table, i));
  }
  Data rows = List(table.rows.size());
  std::uint32_t total = 0;
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    Append(rows, Row(table, i, hilites, own));
    total += RowTotal(table, i);
  }
  Data object;
  SetData(object, "columns", std::move(columns));
  SetData(object, "rows", std::move(rows));
  Set(object, "total", total);
  SetOptional(object, "more", table.more == 0 ? std::string() : std::to_string(table.more));
  return object;
}

}  // namespace morvane
