#include "morvane/statistics/figures.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace morvane {
namespace {

void RenumberFigures(Figures& figures, const std::vector<std::uint16_t>& weapons,
                     const std::vector<std::uint16_t>& items) {
  for (WeaponUse& use : figures.weapons) use.weapon = weapons[use.weapon];
  for (ItemCount& count : figures.itemCounts) count.item = items[count.item];
  SettleFigures(figures);  // the numbers decide between equals
}

std::vector<std::uint16_t> NewNumbers(const Names& from, Names& to) {
  std::vector<std::uint16_t> numbers;
  for (const std::string& name : from.All()) numbers.push_back(to.Number(name));
  return numbers;
}

bool IsUnchanged(const std::vector<std::uint16_t>& numbers) {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] != i) return false;
  }
  return true;
}

/// What a list is sorted by before the numbers, the most first.
std::uint64_t WeightOf(const WeaponUse& use) {
  return (std::uint64_t{use.kills} << 32) | use.deaths;
}
std::uint64_t WeightOf(const ItemCount& item) { return item.count; }

std::uint16_t NumberOf(const WeaponUse& use) { return use.weapon; }
std::uint16_t NumberOf(const ItemCount& item) { return item.item; }

template <class Entry>
bool IsNone(const Entry& entry) {
  return WeightOf(entry) == 0;
}

template <class Entry>
bool IsMore(const Entry& left, const Entry& right) {
  const std::uint64_t weight = WeightOf(left);
  const std::uint64_t other = WeightOf(right);
  return weight != other ? weight > other : NumberOf(left) < NumberOf(right);
}

template <class Entry, class Number>
std::vector<Entry> TakeCounted(std::vector<Entry>& counted, Number Entry::*key) {
  std::vector<Entry> taken;
  taken.reserve(counted.size() -
                static_cast<std::size_t>(std::ranges::count_if(counted, IsNone<Entry>)));
  for (Entry& entry : counted) {
    if (!IsNone(entry)) taken.push_back(entry);
    const Number number = entry.*key;
    entry = {};
    entry.*key = number;
  }
  counted.resize(std::min(counted.size(), kPlaces));
  std::sort(taken.begin(), taken.end(), IsMore<Entry>);
  return taken;
}

/// Makes room in a new sum, of which there is one for each player, for no more than what comes.
template <class Entry, class Number>
void MakeRoom(std::vector<Entry>& sum, const std::vector<Entry>& added, Number Entry::*key) {
  if (sum.capacity() > 0 || added.empty()) return;
  const Entry& highest = *std::ranges::max_element(added, {}, key);
  sum.reserve(std::min<std::size_t>(highest.*key, 63) + 1);
}

}  // namespace

void AddCounts(Counts& sum, const Counts& counts) {
  for (const Counter& counter : kCounters) {
    std::int64_t& total = sum.*counter.member;
    const std::int64_t count = counts.*counter.member;
    total = counter.longest ? std::max(total, count) : total + count;
  }
}

void AddFigures(Figures& sum, const Figures& figures) {
  AddCounts(sum, figures);
  AddWeapons(sum.weapons, figures.weapons);
  AddItems(sum.itemCounts, figures.itemCounts);
}

void AddWeapons(std::vector<WeaponUse>& sum, const std::vector<WeaponUse>& weapons) {
  MakeRoom(sum, weapons, &WeaponUse::weapon);
  for (const WeaponUse& use : weapons) {
    WeaponUse& total = EntryOf(sum, &WeaponUse::weapon, use.weapon);
    total.kills += use.kills;
    total.deaths += use.deaths;
  }
}

void AddItems(std::vector<ItemCount>& sum, const std::vector<ItemCount>& items) {
  MakeRoom(sum, items, &ItemCount::item);
  for (const ItemCount& item : items) {
    EntryOf(sum, &ItemCount::item, item.item).count += item.count;
  }
}

std::vector<std::uint16_t> SplashOf(const Names& weapons) {
  std::vector<std::uint16_t> numbers;
  for (const std::string& name : weapons.All()) {
    const std::uint16_t weapon = weapons.Find(WithoutSplash(name));
    numbers.push_back(weapon == Names::kUnknown ? static_cast<std::uint16_t>(numbers.size())
                                                : weapon);
  }
  return numbers;
}

std::vector<WeaponUse> JoinSplash(const std::vector<WeaponUse>& weapons,
                                  const std::vector<std::uint16_t>& splashOf) {
  std::vector<WeaponUse> joined;
  for (const WeaponUse& use : weapons) {
    WeaponUse& sum = EntryOf(joined, &WeaponUse::weapon, splashOf[use.weapon]);
    sum.kills += use.kills;
    sum.deaths += use.deaths;
  }
  SortWeapons(joined);
  return joined;
}

std::vector<WeaponUse> TakeWeapons(std::vector<WeaponUse>& counted) {
  return TakeCounted(counted, &WeaponUse::weapon);
}

std::vector<ItemCount> TakeItems(std::vector<ItemCount>& counted) {
  return TakeCounted(counted, &ItemCount::item);
}

void SortWeapons(std::vector<WeaponUse>& weapons) {
  std::erase_if(weapons, IsNone<WeaponUse>);
  weapons.shrink_to_fit();
  std::sort(weapons.begin(), weapons.end(), IsMore<WeaponUse>);
}

void SortItems(std::vector<ItemCount>& items) {
  std::erase_if(items, IsNone<ItemCount>);
  items.shrink_to_fit();
  std::sort(items.begin(), items.end(), IsMore<ItemCount>);
}

void SettleFigures(Figures& figures) {
  SortWeapons(figures.weapons);
  SortItems(figures.itemCounts);
}

void SortPairs(std::vector<Pair>& pairs) {
  const auto key = [](const Pair& pair) { return std::tie(pair.killer, pair.victim); };
  std::sort(pairs.begin(), pairs.end(),
            [&](const Pair& left, const Pair& right) { return key(left) < key(right); });
  std::size_t last = 0;
  for (std::size_t i = 1; i < pairs.size(); ++i) {
    if (key(pairs[i]) != key(pairs[last])) {
      pairs[++last] = pairs[i];
    } else {
      pairs[last].kills += pairs[i].kills;
      pairs[last].teamKills += pairs[i].teamKills;
    }
  }
  if (!pairs.empty()) pairs.resize(last + 1);
}

void RenumberPairs(std::vector<Pair>& pairs, const std::vector<std::uint32_t>& newIndex) {
  for (Pair& pair : pairs) {
    pair.killer = newIndex[pair.killer];
    pair.victim = newIndex[pair.victim];
  }
  SortPairs(pairs);
}

void PairCounts::AddOther(const Pair& pair) {
  others_.push_back(pair);
  // The same two meet again and again: what has doubled is worth being made one.
  if (others_.size() > 2 * sorted_ + kUnsorted) {
    SortPairs(others_);
    sorted_ = others_.size();
  }
}

std::vector<Pair> PairCounts::Take(const std::vector<std::uint32_t>& newIndex) {
  const auto index = [&](std::uint32_t old) { return newIndex.empty() ? old : newIndex[old]; };
  // The table is walked in the new order, so that nothing in it has to be sorted.
  std::vector<std::uint32_t> order(used_);
  std::iota(order.begin(), order.end(), 0U);
  std::ranges::sort(order, {}, index);
  std::vector<Pair> pairs;
  pairs.reserve(inTable_ + others_.size());
  for (const std::uint32_t killer : order) {
    for (const std::uint32_t victim : order) {
      Count& count = table_[killer * kTableSize + victim];
      if (count.IsNone()) continue;
      pairs.push_back({index(killer), index(victim), count.kills, count.teamKills});
      count = {};
    }
  }
  for (const Pair& pair : others_) {
    pairs.push_back({index(pair.killer), index(pair.victim), pair.kills, pair.teamKills});
  }
  if (!others_.empty()) SortPairs(pairs);
  others_.clear();
  used_ = 0;
  inTable_ = sorted_ = 0;
  return pairs;
}

void Renumber(std::vector<Game>& games, const Vocabulary& from, Vocabulary& to) {
  const auto weaponNumbers = NewNumbers(from.weapons, to.weapons);
  const auto itemNumbers = NewNumbers(from.items, to.items);
  if (IsUnchanged(weaponNumbers) && IsUnchanged(itemNumbers)) return;
  for (Game& game : games) {
    for (Entrant& entrant : game.entrants) {
      RenumberFigures(entrant.figures, weaponNumbers, itemNumbers);
    }
    for (KillEvent& event : game.events) event.weapon = weaponNumbers[event.weapon];
  }
}

}  // namespace morvane
