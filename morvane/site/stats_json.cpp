#include "morvane/site/stats_json.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <nlohmann/json.hpp>

#include "morvane/site/figure_data.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

using Json = nlohmann::ordered_json;

/// What is not known is null.
Json Known(bool isKnown, Json value) { return isKnown ? std::move(value) : Json(); }

Json DatedName(Dated dated) {
  switch (dated) {
    case Dated::kKnown:
      return "known";
    case Dated::kReckoned:
      return "reckoned";
    case Dated::kNotAfter:
      return "not after";
    case Dated::kUnknown:
      break;
  }
  return {};
}

void SetTime(Json& object, const std::string& name, std::int64_t secondsSince1970, Dated dated) {
  object[name] = Known(secondsSince1970 != 0, secondsSince1970);
  object[name + "_is"] = Known(secondsSince1970 != 0, DatedName(dated));
}

void SetSeen(Json& object, const Seen& seen) {
  SetTime(object, "first_seen", seen.first, seen.firstDated);
  SetTime(object, "last_seen", seen.last, seen.lastDated);
}

Json Page(const std::string& file) { return Known(!file.empty(), UrlText(file)); }

std::string WeaponName(const SiteFacts& facts, std::uint16_t weapon) {
  return PageText(WeaponTitle(facts.statistics.vocabulary.weapons[weapon]));
}

Json Weapons(const SiteFacts& facts, const std::vector<WeaponUse>& uses) {
  Json list = Json::array();
  for (const WeaponUse& use : uses) {
    list.push_back(
        {{"name", WeaponName(facts, use.weapon)}, {"kills", use.kills}, {"deaths", use.deaths}});
  }
  return list;
}

Json Items(const SiteFacts& facts, const std::vector<ItemCount>& counts) {
  Json list = Json::array();
  for (const ItemCount& item : counts) {
    list.push_back({{"name", PageText(ItemTitle(facts.statistics.vocabulary.items[item.item]))},
                    {"count", item.count}});
  }
  return list;
}

/// `timed`: it is known how long they played.
void AddFigures(Json& object, const Figures& figures, bool timed) {
  for (const Counter& counter : kCounters) object[counter.name] = figures.*counter.member;
  object["seconds"] = Known(timed, figures.seconds);
  object["ratio"] = Ratio(figures);
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

Json RivalJson(const SiteFacts& facts, const Rival& rival) {
  if (rival.index == kNobody || rival.count == 0) return {};
  return {{"name", facts.PlayerLabel(rival.index).text}, {"kills", rival.count}};
}

/// The rank, games and figures of a player, over all games or on a map.
void AddStanding(Json& object, const Player& player) {
  object["rank"] = Known(player.ranked, player.rank);
  object["rating"] = player.rating;
  object["games"] = player.games;
  object["wins"] = player.wins;
  object["placed"] = player.placed;
  AddFigures(object, player.figures, player.timed.games > 0);
}

Json PlayerJson(const SiteFacts& facts, const Player& player) {
  const Label& label = facts.PlayerLabel(player.player);
  Json object;
  object["name"] = label.text;
  object["page"] = Page(label.page);
  object["bot"] = player.bot;
  AddStanding(object, player);
  SetSeen(object, player.seen);
  object["nemesis"] = RivalJson(facts, player.figures.nemesis);
  object["victim"] = RivalJson(facts, player.figures.favouriteVictim);
  object["weapons"] = Weapons(facts, player.figures.weapons);
  object["items"] = Items(facts, player.figures.itemCounts);
  return object;
}

Json MapJson(const SiteFacts& facts, std::uint32_t index) {
  const Map& map = facts.statistics.maps[index];
  const Label& label = facts.MapLabel(index);
  Json object;
  object["name"] = label.text;
  object["page"] = Page(label.page);
  object.update(SummaryJson(facts, map.summary));
  Json players = Json::array();
  for (const Player& player : map.players) {
    Json row;
    row["name"] = facts.PlayerLabel(player.player).text;
    AddStanding(row, player);
    players.push_back(std::move(row));
  }
  object["players"] = std::move(players);
  return object;
}

Json EntrantJson(const SiteFacts& facts, const Entrant& entrant, bool timed) {
  Json object;
  object["name"] = facts.EntrantLabel(entrant).text;
  // A player may have changed the letters of the name since.
  object["player"] =
      Known(entrant.player != kNobody,
            entrant.player == kNobody ? std::string() : facts.PlayerLabel(entrant.player).text);
  object["bot"] = entrant.bot;
  object["place"] = Known(entrant.place != 0, entrant.place);
  object["winner"] = entrant.winner;
  object["team"] = entrant.team == Team::kRed    ? Json("red")
                   : entrant.team == Team::kBlue ? Json("blue")
                                                 : Json();
  AddFigures(object, entrant.figures, timed);
  return object;
}

Json GameJson(const SiteFacts& facts, std::uint32_t index) {
  const Game& game = facts.statistics.games[index];
  const Label label = facts.GameLabel(index);
  Json object;
  object["name"] = label.text;
  object["page"] = Page(label.page);
  object["map"] = facts.MapLabel(facts.MapOf(game)).text;
  object["type"] = PageText(GameTypeName(game.type));
  object["type_number"] = game.type;
  SetTime(object, "start", game.start, game.dated);
  object["seconds"] = Known(game.timed, game.length);
  object["complete"] = game.complete;
  object["exit"] = Known(!game.exitReason.empty(), PageText(game.exitReason));
  object["red_score"] = Known(game.hasTeamScores, game.redScore);
  object["blue_score"] = Known(game.hasTeamScores, game.blueScore);
  object["kills"] = game.frags;
  object["deaths"] = game.kills;
  Json players = Json::array();
  for (const Entrant& entrant : game.entrants) {
    players.push_back(EntrantJson(facts, entrant, game.timed));
  }
  object["players"] = std::move(players);
  return object;
}

/// Names come from strangers, and somebody may put this text into a page as it stands: no tag can
/// begin in it. "<" stands only in strings.
std::string TextOf(const Json& value) {
  const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  std::string safe;
  safe.reserve(text.size());
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

/// How many rows make a piece.
constexpr std::size_t kRows = 200;

/// Opens the list before its first row.
void OpenList(std::string& text, const char* name) {
  text += ",\n\"" + std::string(name) + "\": [";
}

/// Appends rows `first` to before `end` of a list.
template <class Make>
void AppendRows(std::string& text, ListPages::Range rows, const Make& make) {
  for (std::size_t i = rows.first; i < rows.end; ++i) {
    text += i == 0 ? "\n" : ",\n";
    text += TextOf(make(static_cast<std::uint32_t>(i)));
  }
}

std::string HeadText(const SiteFacts& facts) {
  const Statistics& statistics = facts.statistics;
  Json summary = SummaryJson(facts, statistics.summary);
  summary["players"] = statistics.players.size();
  summary["ranked"] = statistics.ranked;
  summary["maps"] = statistics.maps.size();
  summary["games_found"] = statistics.gamesFound;
  return "{\n\"version\": " + std::to_string(kStatsJsonVersion) +
         ",\n\"ranked_by\": " + (statistics.customRanking ? "\"rating\"" : "\"score\"") +
         ",\n\"summary\": " + TextOf(summary);
}

}  // namespace

StatsJson::StatsJson(const SiteFacts& facts, const PageFingerprints& fingerprints)
    : facts_(facts), fingerprints_(fingerprints) {
  const Statistics& statistics = facts.statistics;
  const auto add = [&](List list, std::size_t count, std::size_t rows) {
    pieces_.push_back({list, {0, 0}});  // opens the list
    for (std::size_t first = 0; first < count; first += rows) {
      pieces_.push_back({list, {first, std::min(count, first + rows)}});
    }
  };
  pieces_.push_back({List::kHead, {0, 0}});
  add(List::kPlayers, statistics.players.size(), kRows);
  add(List::kMaps, statistics.maps.size(), 1);
  add(List::kGames, statistics.games.size(), kRows);
  pieces_.push_back({List::kEnd, {0, 0}});
}

Digest128 StatsJson::FingerprintOf(std::size_t piece) const {
  const auto& [list, rows] = pieces_[piece];
  Fingerprint print;
  print.Add(list).Add(rows.first).Add(rows.end);
  if (list == List::kHead) print.Add(fingerprints_.OfAll());
  if (list == List::kPlayers) print.Add(fingerprints_.OfPlayers(rows));
  if (list == List::kGames) print.Add(fingerprints_.OfGamesWithNames(rows));
  if (list == List::kMaps && rows.end > rows.first) {
    print.Add(fingerprints_.OfMap(static_cast<std::uint32_t>(rows.first)));
  }
  return print.Value();
}

std::string StatsJson::TextOf(std::size_t piece) const {
  const auto& [list, rows] = pieces_[piece];
  const bool opens = rows.first == rows.end;
  std::string text;
  switch (list) {
    case List::kHead:
      return HeadText(facts_);
    case List::kPlayers:
      if (opens) OpenList(text, "players");
      AppendRows(text, rows,
                 [&](std::uint32_t i) { return PlayerJson(facts_, facts_.statistics.players[i]); });
      break;
    case List::kMaps:
      if (opens) OpenList(text += "\n]", "maps");
      AppendRows(text, rows, [&](std::uint32_t i) { return MapJson(facts_, i); });
      break;
    case List::kGames:
      if (opens) OpenList(text += "\n]", "games");
      AppendRows(text, rows, [&](std::uint32_t i) { return GameJson(facts_, i); });
      break;
    case List::kEnd:
      return "\n]\n}\n";
  }
  return text;
}

}  // namespace morvane
