#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The label of an opponent, by the index that a Rival holds.
using RivalLabel = std::function<const Label&(std::uint32_t)>;

/// Sets the variables of kills, deaths, time, streaks, favourites and so on. `isTimed`: the time
/// played is known.
void SetFigures(Object& object, const SiteFacts& facts, const Figures& figures, bool isTimed,
                const RivalLabel& rival);

/// Sets `time` and `seconds`; a time that is not known is not there.
void SetDuration(Object& object, std::int64_t seconds, bool isKnown);

/// The variables of a point of time.
struct TimeNames {
  VariableName text;
  VariableName seconds;
  VariableName reckoned;
  VariableName notAfter;
};
inline constexpr TimeNames kStartTime = {"start", "start_seconds", "start_reckoned",
                                         "start_not_after"};
inline constexpr TimeNames kFirstSeen = {"first_seen", "first_seen_seconds", "first_seen_reckoned",
                                         "first_seen_not_after"};
inline constexpr TimeNames kLastSeen = {"last_seen", "last_seen_seconds", "last_seen_reckoned",
                                        "last_seen_not_after"};

/// Sets a point of time: the text, which is not there when it is not known, the seconds, and the
/// flags that tell how well it is known.
void SetTime(Object& object, const SiteFacts& facts, const TimeNames& names, std::int64_t seconds,
             Dated dated);

/// A point of time with the mark that tells how well it is known; empty when it is not.
std::string TimeText(const SiteFacts& facts, std::int64_t seconds, Dated dated);

/// What pages call a weapon and its splash as one.
std::string WeaponText(const SiteFacts& facts, std::uint16_t weapon);

/// The weapon with most kills, splash included; empty without kills.
std::string FavouriteWeapon(const SiteFacts& facts, const std::vector<WeaponUse>& weapons);

Data WeaponList(const SiteFacts& facts, const std::vector<WeaponUse>& weapons, Demand demand);
/// With the splash of a weapon as its own.
Data JoinedWeaponList(const SiteFacts& facts, const std::vector<WeaponUse>& weapons, Demand demand);
bool HasSplash(const SiteFacts& facts, const std::vector<WeaponUse>& weapons);
Data ItemList(const SiteFacts& facts, const std::vector<ItemCount>& items, Demand demand);

/// Sets the lists `weapons`, `joined_weapons` and `items` of one who has figures, or of a summary,
/// and whether they hold anything.
void SetUses(Object& object, const SiteFacts& facts, const std::vector<WeaponUse>& weapons,
             const std::vector<ItemCount>& items);

/// Kills per death; a death that has not come yet counts as one.
double Ratio(const Figures& figures);

/// The figures that bars of a list of players are measured against.
struct Highest {
  std::int64_t kills = 0;
  std::int64_t deaths = 0;
  std::int64_t score = 0;
  std::int64_t seconds = 0;
  std::uint32_t games = 0;
  double killsPerGame = 0;
  double killsPerHour = 0;
};
Highest HighestOf(const std::vector<Player>& players);

/// The bars of a player.
std::array<Bar, 7> BarsOf(const Player& player, const Highest& highest);

/// A row about a player: the name and all its figures, measured against those of the list.
/// `rivals`: the list that the player's rivals are indices of.
Object PlayerRow(const SiteFacts& facts, const Player& player, const std::vector<Player>& rivals,
                 const Highest& highest, Demand demand);

/// Rows `first` to before `end` of the list, ranked players first.
Data PlayerList(const SiteFacts& facts, const std::vector<Player>& players, Demand demand,
                std::size_t first = 0, std::size_t end = SIZE_MAX);

/// The object `summary` over games, and its lists.
Data SummaryData(const SiteFacts& facts, const Summary& summary, Demand demand);

}  // namespace morvane
