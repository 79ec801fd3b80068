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

/// The curves of the best placed, and who is which.
void SetCurve(Data& object, const Game& game, const Course& course,
              const std::vector<Label>& labels) {
  Chart chart;
  chart.text = "Score by the frags at the end:";
  const std::size_t shown = std::min(course.sides.size(), kMostCurves);
  Data list = List(shown);
  for (std::size_t i = 0; i < shown; ++i) {
    const Course::Side& side = course.sides[i];
    const SideLabel label = LabelOf(course, labels, i);
    chart.text += (i == 0 ? " " : ", ") + label.name + " " + std::to_string(side.score);
    chart.lines.push_back({"t" + label.tone, side.points, ChartLine::Form::kSteps});
    Data row;
    Set(row, "name", label.name);
    Set(row, "link", label.link);
    Set(row, "tone", label.tone);
    Set(row, "score", side.score);
    Append(list, std::move(row));
  }
  chart.foot = {"0:00", Duration(game.length)};
  const bool isDrawn = course.hasTimes && game.length > 0;
  SetOptional(object, "curve", isDrawn ? ChartHtml(chart) : std::string());
  SetData(object, "curve_leaders", std::move(list));
}

std::string TimeOf(const Course& course, std::uint32_t second) {
  return course.hasTimes ? Duration(second) : std::string();
}

Data FirstFrag(const SiteFacts& facts, const Course& course, const std::vector<Label>& labels) {
  if (!course.firstFrag) return Data(false);
  Data row;
  Set(row, "link", labels[course.firstFrag->killer].link);
  Set(row, "victim_link", labels[course.firstFrag->victim].link);
  Set(row, "weapon", WeaponText(facts, course.firstFrag->weapon));
  SetOptional(row, "at", TimeOf(course, course.firstFrag->second));
  return row;
}

Data LongestRun(const Course& course, const std::vector<Label>& labels) {
  if (!course.longestRun) return Data(false);
  Data row;
  Set(row, "link", labels[course.longestRun->entrant].link);
  Set(row, "kills", course.longestRun->kills);
  SetOptional(row, "from", TimeOf(course, course.longestRun->from));
  SetOptional(row, "to", TimeOf(course, course.longestRun->to));
  return row;
}

/// How far the winner was behind.
Data Comeback(const Course& course, const std::vector<Label>& labels) {
  if (!course.comeback) return Data(false);
  const Course::Side& won = course.sides[*course.comeback];
  Data row;
  Set(row, "link", LabelOf(course, labels, *course.comeback).link);
  Set(row, "behind", won.mostBehind);
  SetOptional(row, "at", TimeOf(course, won.behindAt));
  return row;
}

/// Those of whom `second` is not 0, with that time.
void SetComings(Data& object, const std::string& name, const Game& game,
                const std::vector<Label>& labels,
                std::uint32_t (*secondOf)(const Game&, const Entrant&)) {
  Data list = List(0);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const std::uint32_t second = secondOf(game, game.entrants[i]);
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
  const Course course = CourseOf(game);
  SetCurve(object, game, course, labels);
  SetData(object, "first_frag", FirstFrag(facts, course, labels));
  SetData(object, "longest_run", LongestRun(course, labels));
  SetData(object, "comeback", Comeback(course, labels));
  SetComings(object, "latecomers", game, labels, CameLate);
  SetComings(object, "leavers", game, labels, LeftEarly);
  SetFeats(object, game, labels);
}

}  // namespace morvane
