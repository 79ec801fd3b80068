#include "morvane/site/course_data.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "morvane/site/chart.h"
#include "morvane/site/course.h"
#include "morvane/site/figure_data.h"

namespace morvane {
namespace {

constexpr std::size_t kMostCurves = 5;

/// How pages speak of a side.
struct SideLabel {
  std::string name;
  std::string link;
  std::string tone;
};

SideLabel LabelOf(const Course& course, const std::vector<Label>& labels, std::size_t side) {
  if (!course.byTeams) return {labels[side].text, labels[side].link, std::to_string(side)};
  return side == 0 ? SideLabel{"Red", "Red", "red"} : SideLabel{"Blue", "Blue", "blue"};
}

/// The curves of the best placed.
std::string Curve(const Game& game, const Course& course, const std::vector<Label>& labels) {
  if (!course.hasTimes || game.length == 0) return {};
  Chart chart;
  chart.text = "Score by the frags at the end:";
  for (std::size_t i = 0; i < std::min(course.sides.size(), kMostCurves); ++i) {
    const Course::Side& side = course.sides[i];
    const SideLabel label = LabelOf(course, labels, i);
    chart.text += (i == 0 ? " " : ", ") + label.name + " " + std::to_string(side.score);
    chart.lines.push_back({"t" + label.tone, side.points, ChartLine::Form::kSteps});
  }
  chart.foot = {"0:00", Duration(game.length)};
  return ChartHtml(chart);
}

/// Whose curves they are.
Data CurveLeaders(const Course& course, const std::vector<Label>& labels, Demand demand) {
  const std::size_t shown = std::min(course.sides.size(), kMostCurves);
  List list(demand, shown);
  for (std::size_t i = 0; i < shown; ++i) {
    const SideLabel label = LabelOf(course, labels, i);
    Object row(demand);
    Set(row, "name", label.name);
    Set(row, "link", label.link);
    Set(row, "tone", label.tone);
    Set(row, "score", course.sides[i].score);
    list.Append(row);
  }
  return list.Done();
}

std::string TimeOf(const Course& course, std::uint32_t second) {
  return course.hasTimes ? Duration(second) : std::string();
}

Data FirstFrag(const SiteFacts& facts, const Course& course, const std::vector<Label>& labels,
               Demand demand) {
  if (!course.firstFrag) return Data(false);
  Object row(demand);
  Set(row, "link", labels[course.firstFrag->killer].link);
  Set(row, "victim_link", labels[course.firstFrag->victim].link);
  Set(row, "weapon", WeaponText(facts, course.firstFrag->weapon));
  SetOptional(row, "at", TimeOf(course, course.firstFrag->second));
  return row.Done();
}

Data LongestRun(const Course& course, const std::vector<Label>& labels, Demand demand) {
  if (!course.longestRun) return Data(false);
  Object row(demand);
  Set(row, "link", labels[course.longestRun->entrant].link);
  Set(row, "kills", course.longestRun->kills);
  SetOptional(row, "from", TimeOf(course, course.longestRun->from));
  SetOptional(row, "to", TimeOf(course, course.longestRun->to));
  return row.Done();
}

/// How far the winner was behind.
Data Comeback(const Course& course, const std::vector<Label>& labels, Demand demand) {
  if (!course.comeback) return Data(false);
  const Course::Side& won = course.sides[*course.comeback];
  Object row(demand);
  Set(row, "link", LabelOf(course, labels, *course.comeback).link);
  Set(row, "behind", won.mostBehind);
  SetOptional(row, "at", TimeOf(course, won.behindAt));
  return row.Done();
}

/// One who came late or left early.
struct Coming {
  const Label* who;
  std::uint32_t second;
};

/// Those of whom `secondOf` is not 0, with that time.
void SetComings(Object& object, const VariableName& has, const VariableName& name, const Game& game,
                const std::vector<Label>& labels,
                std::uint32_t (*secondOf)(const Game&, const Entrant&)) {
  std::vector<Coming> comings;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::uint32_t second = secondOf(game, game.entrants[i]);
    if (second > 0) comings.push_back({&labels[i], second});
  }
  SetFlag(object, has, !comings.empty());
  SetRows(object, name, comings, [](Object& row, const Coming& coming) {
    Set(row, "link", coming.who->link);
    Set(row, "at", Duration(coming.second));
  });
}

Data FeatList(const Entrant& entrant, Demand demand) {
  List feats(demand, 0);
  for (std::size_t feat = 0; feat < kFeats; ++feat) {
    if (entrant.feats[feat] == 0) continue;
    Object row(demand);
    Set(row, "title", std::string(FeatTitle(static_cast<Feat>(feat))));
    Set(row, "count", entrant.feats[feat]);
    feats.Append(row);
  }
  return feats.Done();
}

bool HasFeats(const Entrant& entrant) {
  return std::ranges::any_of(entrant.feats, [](std::uint32_t count) { return count > 0; });
}

Data Achievers(const Game& game, const std::vector<Label>& labels, Demand demand) {
  List list(demand, 0);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (!HasFeats(game.entrants[i])) continue;
    Object row(demand);
    Set(row, "link", labels[i].link);
    SetData(row, "feats", [&](Demand feats) { return FeatList(game.entrants[i], feats); });
    list.Append(row);
  }
  return list.Done();
}

}  // namespace

void SetCourse(Object& object, const SiteFacts& facts, const Game& game,
               const std::vector<Label>& labels) {
  const Course course = CourseOf(game);
  SetOptional(object, "curve", [&] { return Curve(game, course, labels); });
  SetData(object, "curve_leaders",
          [&](Demand demand) { return CurveLeaders(course, labels, demand); });
  SetData(object, "first_frag",
          [&](Demand demand) { return FirstFrag(facts, course, labels, demand); });
  SetData(object, "longest_run", [&](Demand demand) { return LongestRun(course, labels, demand); });
  SetData(object, "comeback", [&](Demand demand) { return Comeback(course, labels, demand); });
  SetComings(object, "has_latecomers", "latecomers", game, labels, CameLate);
  SetComings(object, "has_leavers", "leavers", game, labels, LeftEarly);
  SetFlag(object, "has_achievers", std::ranges::any_of(game.entrants, HasFeats));
  SetData(object, "achievers", [&](Demand demand) { return Achievers(game, labels, demand); });
}

}  // namespace morvane
