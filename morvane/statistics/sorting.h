#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace morvane {

/// Sorts a list that others hold indices into; equal entries keep their order. The result is the
/// new index of each entry, by the old one.
template <class Entry, class IsBefore>
std::vector<std::uint32_t> SortAndNumber(std::vector<Entry>& entries, const IsBefore& isBefore) {
  std::vector<std::uint32_t> order(entries.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
    return isBefore(entries[left], entries[right]);
  });
  std::vector<std::uint32_t> newIndex(entries.size());
  std::vector<Entry> sorted;
  sorted.reserve(entries.size());
  for (const std::uint32_t old : order) {
    newIndex[old] = static_cast<std::uint32_t>(sorted.size());
    sorted.push_back(std::move(entries[old]));
  }
  entries = std::move(sorted);
  return newIndex;
}

}  // namespace morvane
