#include "morvane/site/course_data.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "morvane/site/chart.h"
#include "morvane/site/figure_data.h"

namespace morvane {
namespace {

constexpr std::size_t kMostCurves = 5;
constexpr std::uint32_t kLate = 60;     // seconds after the start
constexpr std::int64_t kFarBehind = 5;  // makes a win a comeback, and a fifth of the score
constexpr std::uint32_t kShortRun = 3;

/// One whose score is followed: an entrant, or a team.
struct Side {
  std::string name;
  std::string link;
  std::string tone;
  std::vector<ChartLine::Point> points;
  std::int64_t score = 0;
  std::int64_t mostBehind = 0;
  std::uint32_t behindAt = 0;
};

bool ByTeams(const Game& game) { return game.teams && ScoresAreFrags(game.type); }

/// Whether the log tells when a kill was.
bool HasTimes(const Game& game) {
  return game.timed &&
         std::ranges::any_of(game.events, [](const KillEvent& event) { return event.second > 0; });
}

std::vector<Side> SidesOf(const Game& game, const std::vector<Label>& labels) {
  std::vector<Side> sides;
  if (ByTeams(game)) {
    sides.push_back({"Red", "Red", "tred", {}, 0, 0, 0});
    sides.push_back({"Blue", "Blue", "tblue", {}, 0, 0, 0});
    return sides;
  }
  for (std::size_t i = 0; i < labels.size(); ++i) {
    sides.push_back({labels[i].text, labels[i].link, "t" + std::to_string(i), {}, 0, 0, 0});
  }
  return sides;
}

/// The side of an entrant; as many as there are: none.
std::size_t SideOf(const Game& game, std::size_t entrant) {
  if (!ByTeams(game)) return entrant;
  switch (game.entrants[entrant].team) {
    case Team::kRed:
      return 0;
    case Team::kBlue:
      return 1;
    default:
      return 2;
  }
}

/// Plays the kills over: the points of each side, and how far it was behind the best other one.
void PlayScores(const Game& game, std::vector<Side>& sides) {
  const auto add = [&](std::size_t entrant, std::int64_t points, std::uint32_t second) {
    const std::size_t index = SideOf(game, entrant);
    if (index >= sides.size()) return;
    Side& side = sides[index];
    side.score += points;
    const ChartLine::Point point{static_cast<double>(second), static_cast<double>(side.score)};
    const bool isSame = !side.points.empty() && side.points.back().x == point.x;
    if (isSame) side.points.pop_back();
    side.points.push_back(point);
  };
  for (Side& side : sides) side.points.push_back({0, 0});
  // Behind whom: the best is sought only when somebody scores, and then among few.
  std::int64_t best = 0;
  for (const KillEvent& event : game.events) {
    const bool isFrag = IsFrag(event);
    add(event.killer == KillEvent::kWorld ? event.victim : event.killer, isFrag ? 1 : -1,
        event.second);
    if (!isFrag) continue;
    const std::size_t scorer = SideOf(game, event.killer);
    if (scorer >= sides.size() || sides[scorer].score <= best) continue;
    best = sides[scorer].score;
    for (Side& side : sides) {
      if (best - side.score <= side.mostBehind) continue;
      side.mostBehind = best - side.score;
      side.behindAt = event.second;
    }
  }
  for (Side& side : sides) {
    side.points.push_back({static_cast<double>(game.length), static_cast<double>(side.score)});
  }
}

/// The curves of the best placed, and who is which.
void SetCurve(Data& object, const Game& game, const std::vector<Side>& sides) {
  Chart chart;
  chart.text = "Score by the frags at the end:";
  Data list = List(std::min(sides.size(), kMostCurves));
  for (std::size_t i = 0; i < std::min(sides.size(), kMostCurves); ++i) {
    const Side& side = sides[i];
    chart.text += (i == 0 ? " " : ", ") + side.name + " " + std::to_string(side.score);
    chart.lines.push_back({side.tone, side.points, ChartLine::Form::kSteps});
    Data row;
    Set(row, "name", side.name);
    Set(row, "link", side.link);
    Set(row, "tone", side.tone.substr(1));
    Set(row, "score", side.score);
    Append(list, std::move(row));
  }
  chart.foot = {"0:00", Duration(game.length)};
  const bool isDrawn = HasTimes(game) && game.length > 0;
  SetOptional(object, "curve", isDrawn ? ChartHtml(chart) : std::string());
  SetData(object, "curve_leaders", std::move(list));
}

std::string TimeOf(const Game& game, std::uint32_t second) {
  return HasTimes(game) ? Duration(second) : std::string();
}

Data FirstFrag(const SiteFacts& facts, const Game& game, const std::vector<Label>& labels) {
  const auto first = std::ranges::find_if(game.events, IsFrag);
  if (first == game.events.end()) return Data(false);
  Data row;
  Set(row, "link", labels[first->killer].link);
  Set(row, "victim_link", labels[first->victim].link);
  Set(row, "weapon", WeaponText(facts, first->weapon));
  SetOptional(row, "at", TimeOf(game, first->second));
  return row;
}

/// The longest row of frags without a death.
Data LongestRun(const Game& game, const std::vector<Label>& labels) {
  struct Run {
    std::uint32_t kills = 0;
    std::uint32_t from = 0;
    std::uint32_t to = 0;
  };
  std::vector<Run> runs(labels.size());
  Run longest;
  std::size_t who = 0;
  for (const KillEvent& event : game.events) {
    if (IsFrag(event)) {
      Run& run = runs[event.killer];
      if (run.kills++ == 0) run.from = event.second;
      run.to = event.second;
      if (run.kills > longest.kills) {
        longest = run;
        who = event.killer;
      }
    }
    runs[event.victim] = {};
  }
  if (longest.kills < kShortRun) return Data(false);
  Data row;
  Set(row, "link", labels[who].link);
  Set(row, "kills", longest.kills);
  SetOptional(row, "from", TimeOf(game, longest.from));
  SetOptional(row, "to", TimeOf(game, longest.to));
  return row;
}

/// How far the winner was behind.
Data Comeback(const Game& game, const std::vector<Side>& sides) {
  std::size_t winner = sides.size();
  if (ByTeams(game)) {
    if (game.winningTeam != Team::kFree) winner = game.winningTeam == Team::kRed ? 0 : 1;
  } else if (!game.teams && ScoresAreFrags(game.type)) {
    const auto first = std::ranges::find_if(game.entrants, &Entrant::playerWon);
    winner = static_cast<std::size_t>(first - game.entrants.begin());
  }
  if (winner >= sides.size()) return Data(false);
  const Side& won = sides[winner];
  if (won.mostBehind < std::max(kFarBehind, won.score / kFarBehind)) return Data(false);
  Data row;
  Set(row, "link", won.link);
  Set(row, "behind", won.mostBehind);
  SetOptional(row, "at", TimeOf(game, won.behindAt));
  return row;
}

/// Those of whom `second` is not 0, with that time.
template <class SecondOf>
void SetComings(Data& object, const std::string& name, const Game& game,
                const std::vector<Label>& labels, const SecondOf& secondOf) {
  Data list = List(0);
  for (std::size_t i = 0; game.timed && i < labels.size(); ++i) {
    const std::uint32_t second = secondOf(game.entrants[i]);
    if (second == 0) continue;
    Data row;
    Set(row, "link", labels[i].link);
    Set(row, "at", Duration(second));
    Append(list, std::move(row));
  }
  SetFlag(object, ("has_" + name).c_str(), list.is_non_empty_list());
  SetData(object, name.c_str(), std::move(list));
}

void SetFeats(Data& object, const Game& game, const std::vector<Label>& labels) {
  Data list = List(0);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    Data feats = List(0);
    for (std::size_t feat = 0; feat < kFeats; ++feat) {
      if (game.entrants[i].feats[feat] == 0) continue;
      Data row;
      Set(row, "title", std::string(FeatTitle(static_cast<Feat>(feat))));
      Set(row, "count", game.entrants[i].feats[feat]);
      Append(feats, std::move(row));
    }
    if (!feats.is_non_empty_list()) continue;
    Data row;
    Set(row, "link", labels[i].link);
    SetData(row, "feats", std::move(feats));
    Append(list, std::move(row));
  }
  SetFlag(object, "has_achievers", list.is_non_empty_list());
  SetData(object, "achievers", std::move(list));
}

}  // namespace

void SetCourse(Data& object, const SiteFacts& facts, const Game& game,
               const std::vector<Label>& labels) {
  std::vector<Side> sides = SidesOf(game, labels);
  PlayScores(game, sides);
  SetCurve(object, game, sides);
  SetData(object, "first_frag", FirstFrag(facts, game, labels));
  SetData(object, "longest_run", LongestRun(game, labels));
  SetData(object, "comeback", Comeback(game, sides));
  SetComings(object, "latecomers", game, labels,
             [](const Entrant& entrant) { return entrant.came > kLate ? entrant.came : 0; });
  SetComings(object, "leavers", game, labels,
             [](const Entrant& entrant) { return entrant.stayed ? 0 : entrant.left; });
  SetFeats(object, game, labels);
}

}  // namespace morvane
