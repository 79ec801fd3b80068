#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "morvane/statistics/figures.h"
#include "morvane/statistics/game.h"

namespace morvane {

/// Makes a Game of the events of one game of a log, in their order. Slots are 0 to 63; who sits in
/// a slot is known by the slot alone, never by a name in an event.
class GameBuilder {
 public:
  static constexpr std::size_t kSlots = 64;
  /// A killer that is no client.
  static constexpr std::size_t kWorld = kSlots;

  /// `keepEvents`: fill Game::events.
  explicit GameBuilder(bool keepEvents) : keepEvents_(keepEvents) {}

  bool IsOpen() const { return open_; }

  /// Begins a game. `tenths` is its first stamp where the log is `timed`.
  void Open(std::string_view map, int type, bool timed, std::int64_t tenths);
  /// The log's clock stands at `tenths`. It may jump back: a machine restarted.
  void SetClock(std::int64_t tenths) {
    clock_ += std::max<std::int64_t>(0, tenths - lastStamp_);
    lastStamp_ = tenths;
  }

  /// A client has this name and team now. The name must live until the game is closed.
  void Userinfo(std::size_t slot, std::string_view name, Team team, bool bot);
  void Connect(std::size_t slot);
  void Begin(std::size_t slot);
  void Disconnect(std::size_t slot);
  void Kill(std::size_t killer, std::size_t victim, std::uint16_t weapon);
  /// Only of who plays.
  void Achieve(std::size_t slot, Feat feat);
  void TakeItem(std::size_t slot, std::uint16_t item);
  /// From here on nothing counts; a game without a kill until then is a warm-up as a whole.
  void Warmup();
  /// Ends a warm-up. True: the game begins only now, and not at its opening.
  bool Round();
  void Exit(std::string_view reason);
  void TeamScores(std::int32_t red, std::int32_t blue);
  /// The game's own score of a client, given after Exit.
  void Score(std::size_t slot, std::int32_t score);

  bool IsTimed() const { return game_.timed; }
  Team TeamOf(std::size_t slot) const { return slots_[slot].team; }

  /// Ends the game and hands it out; places, rivals and orders are settled.
  Game Close();

 private:
  struct Slot {
    std::string_view name;
    Team team = Team::kFree;
    bool bot = false;
    bool begun = false;
    std::uint32_t entrant = kNobody;
    std::int64_t playingSince = -1;  // on clock_; -1: not playing
  };
  /// What is counted of an entrant while the game runs.
  struct Live {
    Counts counts;
    std::int64_t killRun = 0;
    std::int64_t deathRun = 0;
    bool scoreGiven = false;
    std::vector<WeaponUse> weapons;  // as EntryOf makes them
    std::vector<ItemCount> items;
  };

  std::uint32_t EntrantIn(std::size_t slot) {
    const std::uint32_t entrant = slots_[slot].entrant;
    return entrant != kNobody ? entrant : SeatEntrant(slots_[slot]);
  }
  std::uint32_t SeatEntrant(Slot& slot);
  std::uint32_t EntrantNamed(std::string_view name);
  void Leave(Slot& slot);
  void StartPlaying(std::size_t slot);
  void StopPlaying(Slot& slot);
  void MarkStayed();
  void PlayInTeams();
  void Frag(std::uint32_t killer, std::uint32_t victim, std::uint16_t weapon, Team team);
  void CountDeath(Live& victim, std::uint16_t weapon);
  void AddScore(std::uint32_t entrant, std::int32_t points, Team team);
  void UpdateTeamLead();
  void FindLead();
  void SetLead(std::uint32_t leader, std::int64_t score);
  Counts& CountsOf(std::uint32_t entrant) { return live_[entrant].counts; }
  std::uint32_t SecondsSinceStart() const;
  void SettleCounts();
  Team WinningTeam() const;
  void SettleWinners();

  bool keepEvents_;
  bool open_ = false;
  bool frozen_ = false;
  Game game_;
  std::array<Slot, kSlots> slots_;
  // Used for one game after the other: to make such lists anew took a tenth of the reading of a
  // log.
  std::vector<Live> live_;  // longer than the list of entrants after a game of more of them
  std::vector<KillEvent> events_;
  PairCounts pairs_;
  /// Entrants whose client went, by player key.
  std::unordered_map<std::string, std::vector<std::uint32_t>> left_;
  std::int64_t firstStamp_ = 0;
  std::int64_t lastStamp_ = 0;
  std::int64_t clock_ = 0;  // tenths of a second since the start, the clock's jumps back left out
  std::uint32_t leader_ = kNobody;
  std::int64_t leadScore_ = 0;
  std::array<std::int32_t, 4> teamScores_{};  // by Team
};

}  // namespace morvane
