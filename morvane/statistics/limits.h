#pragma once

namespace morvane {

/// What a game needs to be counted, and a player to be ranked. A limit of 0 or less limits nothing.
struct Limits {
  int minPlayers = 0;
  int minTime = 0;  ///< seconds
  int minKills = 0;
  bool gameComplete = false;  ///< a game has to have an Exit
  int gameLastPlaced = 0;     ///< the lowest placing that counts as "placed"

  int playersMinTime = 0;  ///< minutes
  int playersMinGames = 0;
  int playersMinKills = 0;
  bool limitOverallKillTables = false;  ///< unranked players are left out of these
};

}  // namespace morvane
