#include <algorithm>
#include <map>

#include "morvane/site/course.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/json_values.h"
#include "morvane/site/stats_json.h"
#include "morvane/statistics/figures.h"

namespace morvane {
namespace {

constexpr std::uint32_t kGamesPerFile = 200;

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

Json TeamJson(Team team) {
  return team == Team::kRed ? Json("red") : team == Team::kBlue ? Json("blue") : Json();
}

/// The name of who plays as an entrant; the name borne in the game for one who has no page.
std::string PlayerName(const SiteFacts& facts, const Entrant& entrant) {
  return entrant.player == kNobody ? facts.EntrantLabel(entrant).text
                                   : facts.PlayerLabel(entrant.player).text;
}

/// Sets a value that is something.
void SetIf(Json& object, const char* name, Json value) {
  const bool isNothing = value.is_null() || value == Json(0) || value == Json(false);
  if (!isNothing) object[name] = std::move(value);
}

Json FeatsJson(const Entrant& entrant) {
  Json feats;
  for (std::size_t feat = 0; feat < kFeats; ++feat) {
    SetIf(feats, FeatTitle(static_cast<Feat>(feat)), entrant.feats[feat]);
  }
  return feats;
}

/// What is nothing is left out: of so many that makes half.
Json EntrantJson(const SiteFacts& facts, const Game& game, const Entrant& entrant) {
  Json object;
  object["player"] = PlayerName(facts, entrant);
  const std::string name = facts.EntrantLabel(entrant).text;
  if (object["player"] != name) object["name"] = name;
  SetIf(object, "bot", entrant.bot);
  SetIf(object, "place", entrant.place);
  SetIf(object, "winner", entrant.winner);
  SetIf(object, "team", TeamJson(entrant.team));
  for (const Counter& counter : kCounters) {
    SetIf(object, counter.name, entrant.figures.*counter.member);
  }
  SetIf(object, "came", CameLate(game, entrant));
  SetIf(object, "left", LeftEarly(game, entrant));
  SetIf(object, "feats", FeatsJson(entrant));
  return object;
}

/// Sets what the kills tell one after the other.
void SetCourse(Json& object, const SiteFacts& facts, const Game& game) {
  const Course course = CourseOf(game);
  const auto nameOf = [&](std::size_t entrant) {
    return PlayerName(facts, game.entrants[entrant]);
  };
  const auto at = [&](std::uint32_t second) { return Known(course.hasTimes, second); };
  object["first_frag"] = Json();
  object["longest_run"] = Json();
  object["comeback"] = Json();
  if (const auto& first = course.firstFrag) {
    object["first_frag"] = {{"player", nameOf(first->killer)},
                            {"victim", nameOf(first->victim)},
                            {"weapon", WeaponText(facts, first->weapon)},
                            {"at", at(first->second)}};
  }
  if (const auto& run = course.longestRun) {
    object["longest_run"] = {{"player", nameOf(run->entrant)},
                             {"kills", run->kills},
                             {"from", at(run->from)},
                             {"to", at(run->to)}};
  }
  if (course.comeback) {
    const Course::Side& side = course.sides[*course.comeback];
    object["comeback"] = {
        {course.byTeams ? "team" : "player",
         course.byTeams ? TeamJson(game.winningTeam) : Json(nameOf(*course.comeback))},
        {"behind", side.mostBehind},
        {"at", at(side.behindAt)}};
  }
}

}  // namespace

void SetTime(Json& object, const std::string& name, std::int64_t secondsSince1970, Dated dated) {
  object[name] = Known(secondsSince1970 != 0, secondsSince1970);
  object[name + "_is"] = Known(secondsSince1970 != 0, DatedName(dated));
}

Json PageJson(const std::string& file) { return Known(!file.empty(), UrlText(file)); }

Json GameJson(const SiteFacts& facts, std::uint32_t index) {
  const Game& game = facts.statistics.games[index];
  const Label label = facts.GameLabel(index);
  Json object;
  object["number"] = game.number;
  object["name"] = label.text;
  object["page"] = PageJson(label.page);
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
  SetCourse(object, facts, game);
  Json players = Json::array();
  for (const Entrant& entrant : game.entrants) {
    players.push_back(EntrantJson(facts, game, entrant));
  }
  object["players"] = std::move(players);
  return object;
}

std::string TextOf(const Json& value) {
  const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  std::string safe;
  safe.reserve(text.size());
  for (const char c : text) {  // "<" stands only in strings
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

std::vector<GameFile> GameFiles(const Statistics& statistics) {
  std::map<std::uint32_t, GameFile> files;
  for (std::uint32_t i = 0; i < statistics.games.size(); ++i) {
    const std::uint32_t file = (statistics.games[i].number - 1) / kGamesPerFile + 1;
    files[file].name = "stats-games-" + std::to_string(file) + ".json";
    files[file].games.push_back(i);
  }
  std::vector<GameFile> list;
  for (auto& [number, file] : files) {
    std::ranges::sort(file.games, {}, [&](std::uint32_t i) { return statistics.games[i].number; });
    list.push_back(std::move(file));
  }
  return list;
}

std::string GamesJson(const SiteFacts& facts, const GameFile& file) {
  std::string text = "{\n\"version\": " + std::to_string(kStatsJsonVersion);
  AppendList(text, "games", file.games.size(),
             [&](std::size_t i) { return GameJson(facts, file.games[i]); });
  return text + "\n}\n";
}

}  // namespace morvane
