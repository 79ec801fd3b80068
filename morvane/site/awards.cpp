#include "morvane/site/awards.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "morvane/site/figure_data.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

constexpr std::size_t kMostWeapons = 10;
constexpr std::size_t kMostMaps = 6;
// What is measured by the game needs a few of them to say something.
constexpr std::uint32_t kFewGames = 5;
constexpr std::uint32_t kLeastMeetings = 5;
constexpr std::uint32_t kFewKills = 25;
constexpr std::int64_t kMorning = 6;

class Jury {
 public:
  explicit Jury(const SiteFacts& facts) : facts_(facts), statistics_(facts.statistics) {
    const std::vector<Player>& players = statistics_.players;
    const std::size_t count = statistics_.ranked > 0 ? statistics_.ranked : players.size();
    for (std::uint32_t i = 0; i < count; ++i) {
      if (!players[i].bot) candidates_.push_back(i);
    }
    for (std::uint32_t i = 0; candidates_.empty() && i < count; ++i) candidates_.push_back(i);
  }

  std::vector<Award> Take() { return std::move(awards_); }

  /// Gives an award to the candidate of the greatest value above 0, by index.
  void Give(std::string title, const std::string& unit, int decimals,
            const std::function<double(std::uint32_t)>& valueOf,
            const std::vector<std::uint32_t>& games = {}) {
    double best = 0;
    std::uint32_t winner = kNobody;
    for (const std::uint32_t i : candidates_) {
      const double value = valueOf(i);
      if (value <= best) continue;
      best = value;
      winner = i;
    }
    if (winner == kNobody) return;
    std::string value = Fixed(best, decimals) + unit;
    if (value.starts_with("1 ")) value.pop_back();  // "1 game"
    awards_.push_back(
        {std::move(title), std::move(value), winner, games.empty() ? kNobody : games[winner]});
  }

  void SingleGames();
  void Weapons();
  void Totals();
  void Rivals();
  void Newcomers();
  void Maps();

 private:
  const Player& Of(std::uint32_t player) const { return statistics_.players[player]; }

  const SiteFacts& facts_;
  const Statistics& statistics_;
  std::vector<std::uint32_t> candidates_;
  std::vector<Award> awards_;
};

/// What was done in one game, and in which.
void Jury::SingleGames() {
  struct Best {
    std::vector<std::int64_t> value;
    std::vector<std::uint32_t> game;
  };
  const std::size_t count = statistics_.players.size();
  Best score{std::vector<std::int64_t>(count), std::vector<std::uint32_t>(count)};
  Best streak = score;
  Best night = score;
  for (std::uint32_t game = 0; game < statistics_.games.size(); ++game) {
    const auto take = [&](Best& best, const Entrant& entrant, std::int64_t value) {
      if (value <= best.value[entrant.player]) return;
      best.value[entrant.player] = value;
      best.game[entrant.player] = game;
    };
    const bool isNight =
        HasDay(statistics_.games[game]) && LocalTime(statistics_.games[game].start).hour < kMorning;
    for (const Entrant& entrant : statistics_.games[game].entrants) {
      take(score, entrant, entrant.figures.score);
      take(streak, entrant, entrant.figures.killStreak);
      night.value[entrant.player] += isNight && entrant.standsForPlayer ? 1 : 0;
    }
  }
  const auto give = [&](const char* title, const char* unit, const Best& best) {
    Give(
        title, unit, 0, [&](std::uint32_t i) { return static_cast<double>(best.value[i]); },
        best.game);
  };
  give("Best single game", " points", score);
  give("Longest kill streak", " kills", streak);
  night.game.clear();
  give("Night owl: most games after midnight", " games", night);
}

/// Who makes most of the own kills with a weapon, for those used most: not one for all of them.
void Jury::Weapons() {
  const std::vector<WeaponUse> field =
      JoinSplash(statistics_.summary.figures.weapons, facts_.splashOf);
  for (std::size_t i = 0; i < std::min(field.size(), kMostWeapons); ++i) {
    if (field[i].kills == 0) break;
    Give("Best with the " + WeaponText(facts_, field[i].weapon) + ": share of the own kills",
         "\xC2\xA0%", 1, [&](std::uint32_t player) {
           const Figures& figures = Of(player).figures;
           double kills = 0;
           for (const WeaponUse& use : figures.weapons) {
             if (facts_.splashOf[use.weapon] == field[i].weapon) kills += use.kills;
           }
           return figures.kills < kFewKills ? 0 : 100 * kills / static_cast<double>(figures.kills);
         });
  }
}

void Jury::Totals() {
  const auto perGame = [this](std::uint32_t i, std::int64_t count) {
    return Of(i).games < kFewGames ? 0 : static_cast<double>(count) / Of(i).games;
  };
  Give("Most steadfast: most games", " games", 0, [&](std::uint32_t i) { return Of(i).games; });
  Give("Surest winner: most of the games won", "\xC2\xA0%", 0,
       [&](std::uint32_t i) { return 100 * perGame(i, Of(i).wins); });
  Give("Fastest: most kills per minute", "", 2, [&](std::uint32_t i) {
    const TimedFigures& timed = Of(i).timed;
    return timed.games < kFewGames || timed.seconds == 0
               ? 0
               : 60.0 * static_cast<double>(timed.kills) / static_cast<double>(timed.seconds);
  });
  Give("Collector: most items per game", "", 1,
       [&](std::uint32_t i) { return perGame(i, Of(i).figures.items); });
  Give("Own worst enemy: most suicides per game", "", 1,
       [&](std::uint32_t i) { return perGame(i, Of(i).figures.suicides); });
  Give("Cannon fodder: most deaths per game", "", 1,
       [&](std::uint32_t i) { return perGame(i, Of(i).figures.deaths); });
}

void Jury::Rivals() {
  std::vector<std::uint32_t> won(statistics_.players.size());
  std::vector<std::uint32_t> ofFirst(statistics_.players.size());
  for (const Pair& pair : statistics_.pairs) {
    if (pair.killer == pair.victim) continue;
    if (pair.victim == 0) ofFirst[pair.killer] = pair.kills;
    if (2 * pair.kills <= kLeastMeetings) continue;  // spares most of the search
    const Pair* back = FindPair(statistics_.pairs, pair.victim, pair.killer);
    const std::uint32_t lost = back == nullptr ? 0 : back->kills;
    if (pair.kills > lost && pair.kills + lost >= kLeastMeetings) ++won[pair.killer];
  }
  Give("Most duels won: opponents behind", "", 0, [&](std::uint32_t i) { return won[i]; });
  if (statistics_.ranked > 0) {
    Give("Giant slayer: most kills of the first in the ranking", " kills", 0,
         [&](std::uint32_t i) { return ofFirst[i]; });
  }
}

/// Who came first within the days of late, and who climbed on the last evening.
void Jury::Newcomers() {
  Give("Best newcomer", " points", 0, [&](std::uint32_t i) {
    const auto& games = facts_.Games(i);
    const bool isNew =
        facts_.days.first > 0 && !games.empty() && games.front().game >= facts_.days.first;
    return isNew ? static_cast<double>(Of(i).figures.score) : 0;
  });
  Give("Climber of the last evening: places up", "", 0, [&](std::uint32_t i) {
    const std::uint32_t before = facts_.RankBefore(i);
    const bool climbed = before > 0 && Of(i).ranked && before > Of(i).rank;
    return climbed ? before - Of(i).rank : 0;
  });
}

/// Who does better than elsewhere, on each of the maps played most.
void Jury::Maps() {
  std::vector<const Map*> maps;
  for (const Map& map : statistics_.maps) {
    if (map.summary.games >= kFewGames) maps.push_back(&map);
  }
  std::ranges::stable_sort(maps, std::ranges::greater(),
                           [](const Map* map) { return map->summary.games; });
  if (maps.size() > kMostMaps) maps.resize(kMostMaps);
  std::vector<double> better(statistics_.players.size());
  for (const Map* map : maps) {
    std::ranges::fill(better, 0);
    for (const Player& there : map->players) {
      const double usual = Ratio(Of(there.player).figures);
      const bool isEnough =
          there.games >= kFewGames && usual > 0 && map->summary.games < statistics_.games.size();
      better[there.player] = isEnough ? 100 * (Ratio(there.figures) / usual - 1) : 0;
    }
    Give("At home on " + NameText(map->title) + ": kills per death above the usual", "\xC2\xA0%", 0,
         [&](std::uint32_t i) { return better[i] < 1 ? 0 : better[i]; });
  }
}

}  // namespace

std::vector<Award> AwardsOf(const SiteFacts& facts) {
  Jury jury(facts);
  jury.SingleGames();
  jury.Weapons();
  jury.Rivals();
  jury.Newcomers();
  jury.Totals();
  jury.Maps();
  return jury.Take();
}

}  // namespace morvane
