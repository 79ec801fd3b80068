#include "morvane/site/stats_json.h"

#include <algorithm>
#include <utility>

#include "morvane/site/career_data.h"
#include "morvane/site/duel_data.h"
#include "morvane/site/evening.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/json_values.h"
#include "morvane/site/map_records.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

constexpr std::size_t kLatestGames = 100;
constexpr std::size_t kBestPlayers = 10;  // of a map or an evening

std::string NameOf(const SiteFacts& facts, std::uint32_t player) {
  return facts.PlayerLabel(player).text;
}

Json NumberOf(const SiteFacts& facts, std::uint32_t game) {
  return game == kNobody ? Json() : Json(facts.statistics.games[game].number);
}

void SetSeen(Json& object, const Seen& seen) {
  SetTime(object, "first_seen", seen.first, seen.firstDated);
  SetTime(object, "last_seen", seen.last, seen.lastDated);
}

/// Adds kills and deaths to those under a name: mods may give two means of death one title.
void AddUse(Json& weapons, const std::string& name, std::uint32_t kills, std::uint32_t deaths) {
  Json& use = weapons[name];
  if (use.is_null()) use = {0, 0};
  use[0] = use[0].get<std::int64_t>() + kills;
  use[1] = use[1].get<std::int64_t>() + deaths;
}

Json Weapons(const SiteFacts& facts, const std::vector<WeaponUse>& uses) {
  Json weapons = Json::object();
  for (const WeaponUse& use : uses) {
    AddUse(weapons, PageText(WeaponTitle(facts.statistics.vocabulary.weapons[use.weapon])),
           use.kills, use.deaths);
  }
  return weapons;
}

Json Items(const SiteFacts& facts, const std::vector<ItemCount>& counts) {
  Json items = Json::object();
  for (const ItemCount& item : counts) {
    Json& count = items[PageText(ItemTitle(facts.statistics.vocabulary.items[item.item]))];
    count = (count.is_null() ? 0 : count.get<std::int64_t>()) + item.count;
  }
  return items;
}

Json SummaryJson(const SiteFacts& facts, const Summary& summary) {
  Json object;
  object["games"] = summary.games;
  for (const Counter& counter : kCounters) {
    if (counter.summary != nullptr) object[counter.name] = summary.figures.*counter.member;
  }
  object["seconds"] = Known(summary.timedGames > 0, summary.seconds);
  SetSeen(object, summary.seen);
  object["weapons"] = Weapons(facts, summary.figures.weapons);
  object["items"] = Items(facts, summary.figures.itemCounts);
  return object;
}

/// What one did in some of the games: on a map, on an evening, of late.
Json ShareJson(const Player& player) {
  Json object;
  object["rank"] = Known(player.ranked, player.rank);
  object["rating"] = Rounded(player.rating);
  object["games"] = player.games;
  object["wins"] = player.wins;
  object["kills"] = player.figures.kills;
  object["deaths"] = player.figures.deaths;
  return object;
}

/// The first of a list of players, with what they did.
Json BestJson(const SiteFacts& facts, const std::vector<Player>& players) {
  Json list = Json::array();
  for (std::size_t i = 0; i < std::min(players.size(), kBestPlayers); ++i) {
    Json row;
    row["name"] = NameOf(facts, players[i].player);
    row.update(ShareJson(players[i]));
    list.push_back(std::move(row));
  }
  return list;
}

Json RivalJson(const SiteFacts& facts, const Rival& rival) {
  if (rival.index == kNobody || rival.count == 0) return {};
  return {{"name", NameOf(facts, rival.index)}, {"kills", rival.count}};
}

/// The game in which a figure of the player's was highest.
Json HighestJson(const SiteFacts& facts, std::uint32_t player, const char* name,
                 std::int64_t Counts::*figure) {
  const SiteFacts::Appearance* best = HighestAppearance(facts, player, figure);
  if (best == nullptr) return {};
  const Game& game = facts.statistics.games[best->game];
  return {{name, game.entrants[best->entrant].figures.*figure}, {"game", game.number}};
}

/// The last games, the latest at the end.
Json FormJson(const SiteFacts& facts, std::uint32_t player) {
  const std::vector<SiteFacts::Appearance>& games = facts.Games(player);
  Json list = Json::array();
  for (std::size_t i = games.size() - std::min(games.size(), kForm); i < games.size(); ++i) {
    const Game& game = facts.statistics.games[games[i].game];
    const Entrant& entrant = game.entrants[games[i].entrant];
    list.push_back({game.number, entrant.place, entrant.figures.score, entrant.winner ? 1 : 0});
  }
  return list;
}

Json PlayerJson(const SiteFacts& facts, const Player& player, const Player* late) {
  const Label& label = facts.PlayerLabel(player.player);
  const std::uint32_t before = facts.RankBefore(player.player);
  Json object;
  object["name"] = label.text;
  object["page"] = PageJson(label.page);
  object["bot"] = player.bot;
  object["rank"] = Known(player.ranked, player.rank);
  object["rank_before"] = Known(before != 0, before);
  object["rating"] = Rounded(player.rating);
  object["games"] = player.games;
  object["wins"] = player.wins;
  object["placed"] = player.placed;
  for (const Counter& counter : kCounters) object[counter.name] = player.figures.*counter.member;
  object["seconds"] = Known(player.timed.games > 0, player.figures.seconds);
  object["ratio"] = Rounded(Ratio(player.figures));
  SetSeen(object, player.seen);
  object["nemesis"] = RivalJson(facts, player.figures.nemesis);
  object["victim"] = RivalJson(facts, player.figures.favouriteVictim);
  object["best_game"] = HighestJson(facts, player.player, "score", &Counts::score);
  object["streak_game"] = HighestJson(facts, player.player, "kills", &Counts::killStreak);
  object["form"] = FormJson(facts, player.player);
  object["late"] = late == nullptr ? Json() : ShareJson(*late);
  object["weapons"] = Weapons(facts, player.figures.weapons);
  object["items"] = Items(facts, player.figures.itemCounts);
  return object;
}

Json OwnerJson(const SiteFacts& facts, const Map& map) {
  const Player* owner = OwnerOf(map);
  if (owner == nullptr) return {};
  return {{"name", NameOf(facts, owner->player)}, {"wins", owner->wins}, {"games", owner->games}};
}

Json BestGameJson(const SiteFacts& facts, const Map& map) {
  const std::optional<Play> best = BestPlay(facts.statistics, map);
  if (!best) return {};
  const Entrant& entrant = facts.statistics.games[best->game].entrants[best->entrant];
  return {{"name", NameOf(facts, entrant.player)},
          {"score", entrant.figures.score},
          {"game", NumberOf(facts, best->game)}};
}

Json MapJson(const SiteFacts& facts, std::uint32_t index) {
  const Map& map = facts.statistics.maps[index];
  const Label& label = facts.MapLabel(index);
  Json object;
  object["name"] = label.text;
  object["page"] = PageJson(label.page);
  object.update(SummaryJson(facts, map.summary));
  object["owner"] = OwnerJson(facts, map);
  object["best_game"] = BestGameJson(facts, map);
  Json months = Json::object();
  for (const auto& [month, played] : MonthsOf(facts.statistics, map)) {
    months[MonthText(month)] = {{"games", played.games},
                                {"seconds", Known(played.seconds > 0, played.seconds)}};
  }
  object["months"] = std::move(months);
  object["player_count"] = map.players.size();
  object["players"] = BestJson(facts, map.players);
  return object;
}

Json EveningJson(const SiteFacts& facts) {
  const std::vector<Game>& games = facts.statistics.games;
  if (games.empty()) return {};
  const Evening evening = LastEveningOf(facts);
  const Game& first = games[facts.evening.first];
  Json object;
  object["by_date"] = facts.evening.byDate;
  SetTime(object, "start", facts.evening.byDate ? first.start : 0, first.dated);
  object["first_game"] = first.number;
  object["games"] = games.size() - facts.evening.first;
  object["kills"] = evening.kills;
  object["player_count"] = evening.players.size();
  object["players"] = BestJson(facts, evening.players);
  object["climbers"] = Json::array();
  for (const Evening::Step& step : evening.climbers) {
    object["climbers"].push_back({{"name", NameOf(facts, step.player)},
                                  {"rank", facts.statistics.players[step.player].rank},
                                  {"places_up", step.places}});
  }
  object["newcomers"] = Json::array();
  for (const std::uint32_t player : evening.newcomers) {
    object["newcomers"].push_back(NameOf(facts, player));
  }
  return object;
}

Json AwardJson(const SiteFacts& facts, const Award& award) {
  return {{"title", PageText(award.title)},
          {"value", award.value},
          {"player", NameOf(facts, award.player)},
          {"game", NumberOf(facts, award.game)}};
}

Json DuelJson(const SiteFacts& facts, const Duel& duel) {
  Json weapons = Json::object();
  for (const WeaponDuels::Balance& use : facts.Duels().Between(duel.one.killer, duel.one.victim)) {
    AddUse(weapons, WeaponText(facts, use.weapon), use.kills, use.deaths);
  }
  return {{"ahead", NameOf(facts, duel.one.killer)},
          {"behind", NameOf(facts, duel.one.victim)},
          {"kills", duel.one.kills},
          {"deaths", duel.back},
          {"weapons", std::move(weapons)}};
}

std::string Header(const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  Json summary = SummaryJson(facts, statistics.summary);
  summary["players"] = statistics.players.size();
  summary["ranked"] = statistics.ranked;
  summary["maps"] = statistics.maps.size();
  summary["games_found"] = statistics.gamesFound;
  const Json late = {{"by_date", facts.days.byDate},
                     {"games", statistics.games.size() - facts.days.first}};
  return "{\n\"version\": " + std::to_string(kStatsJsonVersion) +
         ",\n\"ranked_by\": " + (statistics.customRanking ? "\"rating\"" : "\"score\"") +
         ",\n\"summary\": " + TextOf(summary) + ",\n\"late\": " + TextOf(late) +
         ",\n\"evening\": " + TextOf(EveningJson(facts));
}

}  // namespace

std::string StatsJson(const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  std::string text = Header(facts);
  AppendList(text, "awards", facts.Awards().size(),
             [&](std::size_t i) { return AwardJson(facts, facts.Awards()[i]); });
  const std::vector<Duel> duels = FiercestDuels(statistics);
  AppendList(text, "duels", duels.size(), [&](std::size_t i) { return DuelJson(facts, duels[i]); });
  const std::vector<Player> late = PlayersSince(statistics, facts.days.first);
  std::vector<const Player*> lateOf(statistics.players.size());
  for (const Player& player : late) lateOf[player.player] = &player;
  AppendList(text, "players", statistics.players.size(),
             [&](std::size_t i) { return PlayerJson(facts, statistics.players[i], lateOf[i]); });
  AppendList(text, "maps", statistics.maps.size(),
             [&](std::size_t i) { return MapJson(facts, static_cast<std::uint32_t>(i)); });
  const std::size_t games = statistics.games.size();
  const std::size_t shown = std::min(games, kLatestGames);
  AppendList(text, "games", shown, [&](std::size_t i) {
    return GameJson(facts, static_cast<std::uint32_t>(games - shown + i));
  });
  text += "\n}\n";
  return text;
}

}  // namespace morvane
