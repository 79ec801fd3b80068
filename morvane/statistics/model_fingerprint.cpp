#include "morvane/statistics/model_fingerprint.h"

#include "morvane/statistics/figures.h"

namespace morvane {
namespace {

// Each value is taken apart into all its members, so that a new member does not compile until it
// is added here, too.

void AddCounts(Fingerprint& print, const Counts& counts) { print.AddAll(std::span(&counts, 1)); }

/// `ofGame`: the rivals are entrants of a game, who keep their places.
void AddFigures(Fingerprint& print, const Figures& figures, bool ofGame) {
  AddCounts(print, figures);
  for (const Rival& rival : {figures.nemesis, figures.favouriteVictim}) {
    const auto& [index, count] = rival;
    print.Add(ofGame ? index : 0).Add(count);
  }
  print.Add(figures.weapons.size());
  for (const auto& [weapon, kills, deaths] : figures.weapons) {
    print.Add(weapon).Add(kills).Add(deaths);
  }
  print.Add(figures.itemCounts.size());
  for (const auto& [item, count] : figures.itemCounts) print.Add(item).Add(count);
}

void AddEntrant(Fingerprint& print, const Entrant& entrant) {
  const auto& [name, player, joined, standsForPlayer, playerWon, team, place, stayed, winner, bot,
               came, left, feats, rating, figures] = entrant;
  static_cast<void>(player);
  print.Add(name).Add(joined).Add(standsForPlayer).Add(playerWon).Add(team).Add(place);
  print.Add(stayed).Add(winner).Add(bot).Add(came).Add(left).Add(rating);
  for (const std::uint32_t count : feats) print.Add(count);
  AddFigures(print, figures, true);
}

void AddSeen(Fingerprint& print, const Seen& seen) {
  const auto& [first, last, firstDated, lastDated] = seen;
  print.Add(first).Add(last).Add(firstDated).Add(lastDated);
}

void AddNames(Fingerprint& print, const Names& names) {
  print.Add(names.size());
  for (const std::string& name : names.All()) print.Add(name);
}

}  // namespace

void AddTo(Fingerprint& print, const Game& game) {
  const auto& [number, map, type, start, dated, length, timed, warmup, complete, exitReason, teams,
               hasTeamScores, winningTeam, redScore, blueScore, kills, frags, entrants, pairs, lead,
               events] = game;
  print.Add(number).Add(map).Add(type).Add(start).Add(dated).Add(length).Add(timed).Add(warmup).Add(
      complete);
  print.Add(exitReason).Add(teams).Add(hasTeamScores).Add(winningTeam).Add(redScore).Add(blueScore);
  print.Add(kills).Add(frags).Add(entrants.size()).Add(pairs.size());
  for (const Entrant& entrant : entrants) AddEntrant(print, entrant);
  print.AddAll(std::span(pairs));
  print.Add(lead.size()).Add(events.size());
  print.AddAll(std::span(lead));
  for (const auto& [killer, victim, weapon, teamKill, second] : events) {
    print.Add(killer).Add(victim).Add(weapon).Add(teamKill).Add(second);
  }
}

void AddTo(Fingerprint& print, const Player& thePlayer) {
  const auto& [name, plain, bot, figures, timed, games, wins, placed, placings, seen, ranked, rank,
               rating, player] = thePlayer;
  static_cast<void>(player);
  print.Add(name).Add(plain).Add(bot).Add(games).Add(wins).Add(placed).Add(placings.size());
  for (const std::uint32_t times : placings) print.Add(times);
  print.Add(ranked).Add(rank).Add(rating).Add(timed.games);
  AddFigures(print, figures, false);
  AddCounts(print, timed);
  AddSeen(print, seen);
}

void AddTo(Fingerprint& print, const Vocabulary& vocabulary) {
  const auto& [weapons, items] = vocabulary;
  AddNames(print, weapons);
  AddNames(print, items);
}

}  // namespace morvane
