#pragma once

#include <cstdint>
#include <vector>

#include "morvane/game.h"

namespace morvane {

/// The entry of a number in a short list, which `key` holds; appended when it is new.
template <class Entry, class Number>
Entry& EntryOf(std::vector<Entry>& entries, Number Entry::*key, Number number) {
  for (Entry& entry : entries) {
    if (entry.*key == number) return entry;
  }
  Entry& entry = entries.emplace_back();
  entry.*key = number;
  return entry;
}

/// Adds what one did in a game to what one did in all; rivals and favourites are left alone.
void AddFigures(Figures& sum, const Figures& figures);

void AddWeapons(std::vector<WeaponUse>& sum, const std::vector<WeaponUse>& weapons);
void AddItems(std::vector<ItemCount>& sum, const std::vector<ItemCount>& items);

/// Most kills first, then most deaths; most items first.
void SortWeapons(std::vector<WeaponUse>& weapons);
void SortItems(std::vector<ItemCount>& items);

/// Puts weapons and items in their order and names the favourite weapon.
void SettleFigures(Figures& figures);

/// Sorts pairs by killer, then victim, and makes those of the same two one.
void SortPairs(std::vector<Pair>& pairs);

/// Sets nemesis and favourite victim of all whom `pairs` name; `figuresOf(index)` gives theirs.
template <class FiguresOf>
void SettleRivals(const std::vector<Pair>& pairs, const FiguresOf& figuresOf) {
  const auto take = [](Rival& rival, std::uint32_t index, std::uint32_t count) {
    if (count > rival.count) rival = {index, count};
  };
  for (const Pair& pair : pairs) {
    if (pair.killer == pair.victim) continue;  // two clients of one name
    take(figuresOf(pair.killer).favouriteVictim, pair.victim, pair.kills);
    take(figuresOf(pair.victim).nemesis, pair.killer, pair.kills);
  }
}

}  // namespace morvane
