#include "tests/fuzz/game_checks.h"

#include <cmath>
#include <string>

#include "morvane/statistics/figures.h"
#include "morvane/statistics/history.h"
#include "morvane/statistics/player_names.h"
#include "morvane/statistics/ranking.h"
#include "morvane/store/game_record.h"
#include "tests/fuzz/quiet_report.h"
#include "tests/fuzz/target.h"

namespace fuzz {
namespace {

using morvane::Game;
using morvane::Player;
using morvane::Statistics;

/// The game's own players, taken together, did what it says of the whole.
void CheckGame(const Game& game) {
  std::int64_t kills = 0;
  std::int64_t deaths = 0;
  for (const morvane::Entrant& entrant : game.entrants) {
    kills += entrant.figures.kills;
    deaths += entrant.figures.deaths;
    Require(entrant.place >= 1 && entrant.place <= game.entrants.size(), "a place is one of them");
  }
  Require(kills == game.frags && deaths == game.kills, "a game's kills are its players'");
  std::int64_t met = 0;
  for (const morvane::Pair& pair : game.pairs) met += pair.kills;
  Require(met == game.frags, "a game's frags are those of its pairs");
}

/// The players of a list, taken together, did what its summary says.
void CheckTotals(const morvane::Summary& summary, const std::vector<Player>& players,
                 const std::vector<morvane::Pair>& pairs) {
  morvane::Figures sum;
  for (const Player& player : players) {
    morvane::AddFigures(sum, player.figures);
    Require(player.games <= summary.games && player.wins <= player.games,
            "nobody plays more games");
    Require(std::isfinite(player.rating), "a rating is a number");
  }
  for (const morvane::Counter& counter : morvane::kCounters) {
    Require(sum.*counter.member == summary.figures.*counter.member, "all together are the sum");
  }
  std::int64_t met = 0;
  for (const morvane::Pair& pair : pairs) met += pair.kills;
  Require(met == sum.kills, "the frags of all are those of their pairs");
}

void CheckRanks(const Statistics& statistics) {
  for (std::size_t i = 0; i < statistics.players.size(); ++i) {
    const Player& player = statistics.players[i];
    const bool ranked = i < statistics.ranked;
    Require(player.ranked == ranked && (player.rank > 0) == ranked, "the ranked ones come first");
    if (i == 0 || !ranked) continue;
    const Player& before = statistics.players[i - 1];
    Require(before.rating >= player.rating && before.rank <= player.rank,
            "the better one is ahead");
  }
}

/// A record of a game gives the game back.
void CheckRecord(const Game& game, const morvane::Vocabulary& words) {
  const std::string record = morvane::PackGame(game);
  const Game read = morvane::UnpackGame(record, morvane::kRecordVersion, words.weapons.size(),
                                        words.items.size());
  Require(morvane::PackGame(read) == record, "a record gives the game back");
}

morvane::Ranking& OwnRules() {
  static QuietReport report;
  static morvane::Ranking rules(
      "kill.killer = rank + 16 * (1 - 1 / (1 + 10 ^ ((other - rank) / 400)))\n"
      "kill.victim = rank - 16 * (1 - 1 / (1 + 10 ^ ((rank - other) / 400)))\n"
      "suicide = rank - mod\nworld = rank - deaths\nteamkill = rank - kills\n"
      "game.win = rank + players / place + minutes\ngame.placed = rank * 1.01\n",
      "rules", 1000, report);
  return rules;
}

}  // namespace

Statistics MakeStatistics(std::vector<Game> games, const morvane::Vocabulary& words) {
  const bool ownRules = games.size() % 2 == 1;
  for (Game& game : games) CheckRecord(game, words);
  Statistics statistics = MakeStatistics({}, std::move(games), words, morvane::PlayerNames(),
                                         ownRules ? &OwnRules() : nullptr);
  const auto count = static_cast<std::uint32_t>(statistics.games.size());
  Require(morvane::RanksAfter(statistics, count).size() == statistics.players.size(), "all ranks");
  PlayersSince(statistics, morvane::LastDays(statistics.games).first);
  PlayersSince(statistics, morvane::LastEvening(statistics.games).first);
  return statistics;
}

void CheckStatistics(const Statistics& statistics) {
  for (const Game& game : statistics.games) CheckGame(game);
  CheckTotals(statistics.summary, statistics.players, statistics.pairs);
  for (const morvane::Map& map : statistics.maps) {
    CheckTotals(map.summary, map.players, map.pairs);
  }
  CheckRanks(statistics);
}

}  // namespace fuzz
