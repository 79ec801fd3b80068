#include "morvane/site/game_data.h"

#include <algorithm>
#include <map>
#include <string>

#include "morvane/site/course_data.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/kill_table.h"
#include "morvane/site/page_text.h"
#include "morvane/statistics/figures.h"

namespace morvane {
namespace {

constexpr std::uint32_t kTones = 8;  // colors of players

std::string_view TeamName(Team team) {
  switch (team) {
    case Team::kRed:
      return "red";
    case Team::kBlue:
      return "blue";
    case Team::kSpectator:
      return "spectator";
    case Team::kFree:
      break;
  }
  return {};
}

/// Who won, as HTML; empty for a draw or a game without players.
std::string WinnerHtml(const SiteFacts& facts, const Game& game) {
  if (game.teams) {
    if (game.winningTeam == Team::kFree) return {};
    return game.winningTeam == Team::kRed ? "Red" : "Blue";
  }
  const auto winners = std::count_if(game.entrants.begin(), game.entrants.end(),
                                     [](const Entrant& entrant) { return entrant.playerWon; });
  if (winners != 1) return {};
  const auto winner = std::find_if(game.entrants.begin(), game.entrants.end(),
                                   [](const Entrant& entrant) { return entrant.playerWon; });
  return facts.EntrantLabel(*winner).link;
}

void SetTeams(Object& row, const Game& game) {
  SetFlag(row, "team_game", game.teams);
  SetFlag(row, "has_team_scores", game.hasTeamScores);
  const bool isKnown = game.hasTeamScores || (game.teams && ScoresAreFrags(game.type));
  SetOptional(row, "red_score", isKnown ? std::to_string(game.redScore) : std::string());
  SetOptional(row, "blue_score", isKnown ? std::to_string(game.blueScore) : std::string());
}

/// The color of a leader: that of the curve of the scores, by the place.
std::string ToneOf(const Game& game, std::uint32_t leader) {
  if (leader == kNobody) return "tie";
  if (game.teams) return std::string(TeamName(static_cast<Team>(leader)));
  return std::to_string(leader % kTones);
}

/// The labels of a game's entrants.
using Labels = std::vector<Label>;

Label LeaderLabel(const Labels& labels, const Game& game, std::uint32_t leader) {
  if (leader == kNobody) return {"Tie", "Tie", {}, "Tie", false};
  if (!game.teams) return labels[leader];
  const std::string name = static_cast<Team>(leader) == Team::kRed ? "Red" : "Blue";
  return {name, name, {}, name, false};
}

/// What a leader held the lead for in all.
struct Reign {
  std::uint32_t leader;
  std::uint32_t seconds;
};

void AddReign(std::vector<Reign>& reigns, std::uint32_t leader, std::uint32_t seconds) {
  const auto known = std::find_if(reigns.begin(), reigns.end(),
                                  [&](const Reign& reign) { return reign.leader == leader; });
  if (known == reigns.end()) {
    reigns.push_back({leader, seconds});
  } else {
    known->seconds += seconds;
  }
}

/// A part of a game in which one held the lead.
struct Step {
  const LeadChange* change;
  std::uint32_t end;
};

/// The parts in which somebody is to be shown, in the order of play.
std::vector<Step> StepsOf(const Game& game) {
  std::vector<Step> steps;
  for (std::size_t i = 0; i < game.lead.size() && game.timed; ++i) {
    const LeadChange& change = game.lead[i];
    const std::uint32_t next = i + 1 < game.lead.size() ? game.lead[i + 1].second : game.length;
    const std::uint32_t end = std::clamp(next, change.second, std::max(game.length, change.second));
    if (end > change.second && change.leader != kLeftOut) steps.push_back({&change, end});
  }
  return steps;
}

/// Who led, longest first.
std::vector<Reign> ReignsOf(const std::vector<Step>& steps) {
  std::vector<Reign> reigns;
  for (const auto& [change, end] : steps) AddReign(reigns, change->leader, end - change->second);
  std::stable_sort(reigns.begin(), reigns.end(), [](const Reign& left, const Reign& right) {
    return left.seconds > right.seconds;
  });
  return reigns;
}

/// `lead`: the steps; `leaders`: who led, longest first. False flags where nothing is known.
void SetLead(Object& object, const Labels& labels, const Game& game) {
  const std::vector<Step> steps = StepsOf(game);
  SetFlag(object, "has_lead", !steps.empty());
  SetRows(object, "lead", steps, [&](Object& row, const Step& step) {
    const LeadChange& change = *step.change;
    SetLabel(row, LeaderLabel(labels, game, change.leader));
    Set(row, "from", Duration(change.second));
    Set(row, "to", Duration(step.end));
    SetPercent(row, "start_percent", change.second, game.length);
    SetPercent(row, "width_percent", step.end - change.second, game.length);
    Set(row, "score", change.score);
    Set(row, "tone", ToneOf(game, change.leader));
  });
  SetData(object, "leaders", [&](Demand demand) {
    return Rows(ReignsOf(steps), demand, [&](Object& row, const Reign& reign) {
      SetLabel(row, LeaderLabel(labels, game, reign.leader));
      Set(row, "tone", ToneOf(game, reign.leader));
      Set(row, "time", Duration(reign.seconds));
      SetPercent(row, "percent", reign.seconds, game.length);
    });
  });
}

Object EntrantRow(const SiteFacts& facts, const Game& game, const Labels& labels, std::size_t index,
                  const Figures& most, Demand demand) {
  const Entrant& entrant = game.entrants[index];
  Object row(demand);
  SetLabel(row, labels[index]);
  SetPlace(row, entrant);
  SetFigures(row, facts, entrant.figures, game.timed,
             [&](std::uint32_t rival) -> const Label& { return labels[rival]; });
  SetUses(row, facts, entrant.figures.weapons, entrant.figures.itemCounts);
  SetPercent(row, "kills_percent", entrant.figures.kills, most.kills);
  SetPercent(row, "deaths_percent", entrant.figures.deaths, most.deaths);
  SetPercent(row, "score_percent", entrant.figures.score, most.score);
  SetPercent(row, "time_percent", entrant.figures.seconds, game.length);
  return row;
}

Data Entrants(const SiteFacts& facts, const Game& game, const Labels& labels, Demand demand) {
  Figures most;
  for (const Entrant& entrant : game.entrants) {
    most.kills = std::max(most.kills, entrant.figures.kills);
    most.deaths = std::max(most.deaths, entrant.figures.deaths);
    most.score = std::max(most.score, entrant.figures.score);
  }
  List rows(demand, labels.size());
  for (std::size_t i = 0; i < labels.size(); ++i) {
    rows.Append(EntrantRow(facts, game, labels, i, most, demand));
  }
  return rows.Done();
}

Labels LabelsOf(const SiteFacts& facts, const Game& game) {
  Labels labels;
  labels.reserve(game.entrants.size());
  for (const Entrant& entrant : game.entrants) labels.push_back(facts.EntrantLabel(entrant));
  return labels;
}

Data GameTable(const SiteFacts& facts, const Game& game, const Labels& labels, Demand demand) {
  return KillTableData(facts.settings, game.entrants, game.pairs, demand,
                       [&](const Entrant& entrant) {
                         return labels[static_cast<std::size_t>(&entrant - game.entrants.data())];
                       });
}

/// The kills and deaths by weapon of all players of a game.
std::vector<WeaponUse> WeaponsOf(const Game& game) {
  std::vector<WeaponUse> weapons;
  for (const Entrant& entrant : game.entrants) AddWeapons(weapons, entrant.figures.weapons);
  SortWeapons(weapons);
  return weapons;
}

Data Neighbour(const SiteFacts& facts, std::uint32_t game, Demand demand) {
  if (game >= facts.statistics.games.size()) return Data(false);
  const Label label = facts.GameLabel(game);
  if (label.page.empty()) return Data(false);
  Object object(demand);
  SetLabel(object, label);
  return object.Done();
}

}  // namespace

void SetPlace(Object& object, const Entrant& entrant) {
  SetOptional(object, "place", entrant.place == 0 ? std::string() : std::to_string(entrant.place));
  SetFlag(object, "winner", entrant.winner);
  SetOptional(object, "team", std::string(TeamName(entrant.team)));
}

Object GameRow(const SiteFacts& facts, std::uint32_t index, Demand demand) {
  const Game& game = facts.statistics.games[index];
  const Label& map = facts.MapLabel(facts.MapOf(game));
  Object row(demand);
  SetLabel(row, facts.GameLabel(index));
  Set(row, "number", game.number);
  Set(row, "map", map.text);
  Set(row, "map_link", map.link);
  Set(row, "type", [&] { return PageText(GameTypeName(game.type)); });
  Set(row, "type_number", game.type);
  SetTime(row, facts, kStartTime, game.start, game.dated);
  SetOptional(row, "length", [&] { return game.timed ? Duration(game.length) : std::string(); });
  Set(row, "seconds", game.length);
  SetFlag(row, "complete", game.complete);
  SetOptional(row, "exit", [&] { return PageText(game.exitReason); });
  Set(row, "player_count", game.entrants.size());
  Set(row, "kills", game.frags);
  Set(row, "deaths", game.kills);
  SetTeams(row, game);
  SetOptional(row, "winner_link", [&] { return WinnerHtml(facts, game); });
  return row;
}

Object GameData(const SiteFacts& facts, std::uint32_t index, Demand demand) {
  const Game& game = facts.statistics.games[index];
  const Labels labels = LabelsOf(facts, game);
  Object object = GameRow(facts, index, demand);
  SetFlag(object, "has_reckoned", game.dated == Dated::kReckoned);
  SetFlag(object, "has_not_after", game.dated == Dated::kNotAfter);
  SetFlag(object, "has_players", !game.entrants.empty());
  SetData(object, "players", [&](Demand asked) { return Entrants(facts, game, labels, asked); });
  SetData(object, "kill_table",
          [&](Demand asked) { return GameTable(facts, game, labels, asked); });
  SetUses(object, facts, WeaponsOf(game), {});
  SetLead(object, labels, game);
  SetCourse(object, facts, game, labels);
  SetData(object, "previous", [&](Demand asked) { return Neighbour(facts, index - 1, asked); });
  SetData(object, "next", [&](Demand asked) { return Neighbour(facts, index + 1, asked); });
  return object;
}

Data GameList(const SiteFacts& facts, std::size_t first, std::size_t end, Demand demand) {
  List list(demand, end - first);
  for (std::size_t game = end; game > first; --game) {
    list.Append(GameRow(facts, static_cast<std::uint32_t>(game - 1), demand));
  }
  return list.Done();
}

Data LatestGames(const SiteFacts& facts, const std::vector<std::uint32_t>& games, std::size_t most,
                 Demand demand) {
  const std::size_t shown = std::min(most, games.size());
  List list(demand, shown);
  for (std::size_t i = 0; i < shown; ++i) {
    list.Append(GameRow(facts, games[games.size() - 1 - i], demand));
  }
  return list.Done();
}

}  // namespace morvane
