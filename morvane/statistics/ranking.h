#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/report/report.h"
#include "morvane/statistics/game.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {

/// What the user says about a ranking by own rules.
struct RankingSettings {
  bool use = false;
  double start = 0;                  ///< what a player's rank begins with
  std::string file;                  ///< of the rules, as given: a name or a path
  std::vector<std::string> folders;  ///< where it may lie, the likeliest first; absolute
};

/// A ranking by the user's own rules, a text with one of them a line:
///
///     kill.killer = rank + 16 * (1 - 1 / (1 + 10 ^ ((other - rank) / 400)))
///
/// The events are kill.killer, kill.victim, suicide, world, teamkill (of the one who did it),
/// game.win, game.placed (of those placed who did not win). "//" and ";" begin comments. What a
/// rule gives is the player's new rank. Its variables are those of RuleVariables.
class Ranking {
 public:
  /// What a rule may name.
  struct RuleVariables {
    double rank = 0;    ///< the player's own, before the event
    double other = 0;   ///< the opponent's; at the end of a game the mean of all the others'; where
                        ///< there is no opponent the player's own
    double mod = 0;     ///< means of death, by the base game's numbers
    double kills = 0;   ///< the player's frags in this game so far, with this event
    double deaths = 0;  ///< likewise
    double place = 0;   ///< the player's place at the end of this game
    double players = 0;  ///< in this game
    double minutes = 0;  ///< length of this game
  };

  /// Takes the rules from a text. One that does not parse is a severe message with its line in
  /// `file`, and is skipped. `start`: what a player's rank begins with.
  Ranking(std::string_view rules, std::string file, double start, Report& report);
  Ranking(const Ranking&) = delete;
  Ranking& operator=(const Ranking&) = delete;
  ~Ranking();

  double Start() const { return start_; }
  /// Changes the ranks of those who played a game, by Entrant::player. A rule that gives no number
  /// is a severe message and is skipped from then on. Game::events must be there.
  void Play(const Game& game, const Names& weapons, int lastPlaced, std::vector<double>& ranks);

 private:
  struct Rule;
  enum Event { kKiller, kVictim, kSuicide, kWorldDeath, kTeamKill, kWin, kPlaced, kEvents };

  void AddRule(std::string_view line, std::size_t number);
  double Apply(Event event, double rank);
  void PlayEvent(const Game& game, const KillEvent& event, std::vector<double>& ranks);
  void EndGame(const Game& game, int lastPlaced, std::vector<double>& ranks);

  std::string file_;
  double start_;
  Report& report_;
  RuleVariables variables_;
  std::array<std::unique_ptr<Rule>, kEvents> rules_;
  std::vector<RuleVariables> inGame_;  // kills and deaths so far, by entrant
};

/// The rules that the settings name: a file in one of the folders, or in the first of them with the
/// extension of templates. nullptr and a severe message when they cannot be read.
std::unique_ptr<Ranking> ReadRanking(const RankingSettings& settings, Report& report);

}  // namespace morvane
