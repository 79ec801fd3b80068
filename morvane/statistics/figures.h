#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {

/// So many numbers have places of their own in the lists of EntryOf.
inline constexpr std::size_t kPlaces = 64;

/// The same for a number that has no entry, or no place of its own.
template <class Entry, class Number>
Entry& FarEntryOf(std::vector<Entry>& entries, Number Entry::*key, Number number) {
  // Room for what a game has saves growing step by step, for each of so many lists.
  if (entries.capacity() == 0) entries.reserve(kPlaces / 2);
  const std::size_t place = std::min<std::size_t>(number, kPlaces - 1);
  while (entries.size() <= place) {
    const auto next = static_cast<Number>(entries.size());
    entries.emplace_back().*key = next;
  }
  if (number < kPlaces) return entries[number];
  for (std::size_t i = kPlaces; i < entries.size(); ++i) {
    if (entries[i].*key == number) return entries[i];
  }
  Entry& entry = entries.emplace_back();
  entry.*key = number;
  return entry;
}

/// The entry of a number, which `key` holds, in a list that is still counted up. Small numbers, and
/// nearly all are small, stand at their own places, so that none is searched for. The empty entries
/// between them go when the list is sorted.
template <class Entry, class Number>
Entry& EntryOf(std::vector<Entry>& entries, Number Entry::*key, Number number) {
  const bool isNear = number < kPlaces && number < entries.size();
  return isNear ? entries[number] : FarEntryOf(entries, key, number);
}

/// A counter and the names that it has in templates.
struct Counter {
  std::int64_t Counts::*member;
  const char* name;               ///< of one who has figures
  const char* summary = nullptr;  ///< of all together; nullptr: not told
  const char* rate = nullptr;     ///< stem of RATE_per_game and the like; nullptr: not told
  bool longest = false;           ///< of several the highest counts, not the sum
  int since = 1;                  ///< the form of records that holds it first; a new one: the next
};

/// Every counter. The records of games hold them in this order; in older ones newer counters are 0.
inline constexpr Counter kCounters[] = {
    {&Counts::kills, "kills", "kills", "kills"},
    {&Counts::deaths, "deaths", "deaths", "deaths"},
    {&Counts::suicides, "suicides", "suicides", "suicides"},
    {&Counts::teamKills, "team_kills", "team_kills"},
    {&Counts::worldDeaths, "world_deaths", "world_deaths"},
    {&Counts::score, "score", nullptr, "score"},
    {&Counts::seconds, "seconds"},
    {.member = &Counts::killStreak, .name = "kill_streak", .longest = true},
    {.member = &Counts::deathStreak, .name = "death_streak", .longest = true},
    {&Counts::items, "items_taken", "items", "items"},
};

/// Adds counts to others, one counter to the same one.
void AddCounts(Counts& sum, const Counts& counts);

/// Adds what one did in a game to what one did in all; rivals and favourites are left alone.
void AddFigures(Figures& sum, const Figures& figures);

void AddWeapons(std::vector<WeaponUse>& sum, const std::vector<WeaponUse>& weapons);
void AddItems(std::vector<ItemCount>& sum, const std::vector<ItemCount>& items);

/// For each means of death, by number, the weapon whose splash it is, else itself. Where that
/// weapon has no number the splash has to stand for it.
std::vector<std::uint16_t> SplashOf(const Names& weapons);

/// A weapon and its splash as one, sorted; `splashOf`: see SplashOf.
std::vector<WeaponUse> JoinSplash(const std::vector<WeaponUse>& weapons,
                                  const std::vector<std::uint16_t>& splashOf);

/// Hands out what EntryOf counted, as SettleFigures leaves it, and sets the counts to 0. The list
/// keeps its room for the next count.
std::vector<WeaponUse> TakeWeapons(std::vector<WeaponUse>& counted);
std::vector<ItemCount> TakeItems(std::vector<ItemCount>& counted);

/// Most kills first, then most deaths; most items first. What was counted not once is left out.
void SortWeapons(std::vector<WeaponUse>& weapons);
void SortItems(std::vector<ItemCount>& items);

/// Puts weapons and items in their order.
void SettleFigures(Figures& figures);

/// Gives games, whose weapons and items have the numbers of `from`, the numbers of `to`. What that
/// has not yet is added.
void Renumber(std::vector<Game>& games, const Vocabulary& from, Vocabulary& to);

/// Sorts pairs by killer, then victim, and makes those of the same two one.
void SortPairs(std::vector<Pair>& pairs);

/// Gives pairs the new indices of a list, by the old ones, and sorts them.
void RenumberPairs(std::vector<Pair>& pairs, const std::vector<std::uint32_t>& newIndex);

/// Counts the kills between many of a list.
class PairCounts {
 public:
  /// Adds the kills of a pair, of which there is at least one.
  void Add(const Pair& pair) {
    const std::uint32_t highest = std::max(pair.killer, pair.victim);
    if (highest >= kTableSize) return AddOther(pair);
    if (table_.empty()) table_.resize(std::size_t{kTableSize} * kTableSize);
    used_ = std::max(used_, highest + 1);
    Count& count = table_[pair.killer * kTableSize + pair.victim];
    inTable_ += count.IsNone() ? 1 : 0;
    count.kills += pair.kills;
    count.teamKills += pair.teamKills;
  }
  /// Hands out all pairs, sorted by killer, then victim, and begins anew. With `newIndex` they get
  /// these indices, by the old ones.
  std::vector<Pair> Take(const std::vector<std::uint32_t>& newIndex = {});

 private:
  struct Count {
    std::uint32_t kills = 0;
    std::uint32_t teamKills = 0;
    bool IsNone() const { return kills == 0 && teamKills == 0; }
  };
  /// The first of a list, who meet most often, have a table; the others are sorted now and then.
  static constexpr std::uint32_t kTableSize = 128;
  static constexpr std::size_t kUnsorted = 10000;

  void AddOther(const Pair& pair);

  std::vector<Count> table_;  // kTableSize by killer, each by victim; empty before the first pair
  std::uint32_t used_ = 0;    // so many rows and columns of it
  std::size_t inTable_ = 0;   // pairs
  std::vector<Pair> others_;
  std::size_t sorted_ = 0;
};

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
