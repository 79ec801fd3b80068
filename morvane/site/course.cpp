#include "morvane/site/course.h"

#include <algorithm>

namespace morvane {
namespace {

constexpr std::uint32_t kLate = 60;     // seconds after the start
constexpr std::int64_t kFarBehind = 5;  // makes a win a comeback, and a fifth of the score
constexpr std::uint32_t kShortRun = 3;

/// The side of an entrant; as many as there are: none.
std::size_t SideOf(const Game& game, const Course& course, std::size_t entrant) {
  if (!course.byTeams) return entrant;
  switch (game.entrants[entrant].team) {
    case Team::kRed:
      return 0;
    case Team::kBlue:
      return 1;
    default:
      return 2;
  }
}

void Score(Course::Side& side, std::int64_t points, std::uint32_t second) {
  side.score += points;
  const ChartLine::Point point{static_cast<double>(second), static_cast<double>(side.score)};
  const bool isSame = !side.points.empty() && side.points.back().x == point.x;
  if (isSame) side.points.pop_back();
  side.points.push_back(point);
}

/// Plays the kills over: the points of each side, and how far it was behind the best other one.
void PlayScores(Course& course, const Game& game) {
  std::vector<Course::Side>& sides = course.sides;
  for (Course::Side& side : sides) side.points.push_back({0, 0});
  // Behind whom: the best is sought only when somebody scores, and then among few.
  std::int64_t best = 0;
  for (const KillEvent& event : game.events) {
    const bool isFrag = IsFrag(event);
    const std::uint16_t who = event.killer == KillEvent::kWorld ? event.victim : event.killer;
    const std::size_t scorer = SideOf(game, course, who);
    if (scorer >= sides.size()) continue;
    Score(sides[scorer], isFrag ? 1 : -1, event.second);
    if (!isFrag || sides[scorer].score <= best) continue;
    best = sides[scorer].score;
    for (Course::Side& side : sides) {
      if (best - side.score <= side.mostBehind) continue;
      side.mostBehind = best - side.score;
      side.behindAt = event.second;
    }
  }
  for (Course::Side& side : sides) {
    side.points.push_back({static_cast<double>(game.length), static_cast<double>(side.score)});
  }
}

std::optional<Course::Run> LongestRun(const Game& game) {
  std::vector<Course::Run> runs(game.entrants.size());
  Course::Run longest;
  for (const KillEvent& event : game.events) {
    if (IsFrag(event)) {
      Course::Run& run = runs[event.killer];
      if (run.kills++ == 0) run.from = event.second;
      run.to = event.second;
      run.entrant = event.killer;
      if (run.kills > longest.kills) longest = run;
    }
    runs[event.victim] = {};
  }
  if (longest.kills < kShortRun) return {};
  return longest;
}

/// The side that won, if it had been far behind.
std::optional<std::uint32_t> Comeback(const Course& course, const Game& game) {
  std::size_t winner = course.sides.size();
  if (course.byTeams) {
    if (game.winningTeam != Team::kFree) winner = game.winningTeam == Team::kRed ? 0 : 1;
  } else if (!game.teams && ScoresAreFrags(game.type)) {
    const auto first = std::ranges::find_if(game.entrants, &Entrant::playerWon);
    winner = static_cast<std::size_t>(first - game.entrants.begin());
  }
  if (winner >= course.sides.size()) return {};
  const Course::Side& won = course.sides[winner];
  if (won.mostBehind < std::max(kFarBehind, won.score / kFarBehind)) return {};
  return static_cast<std::uint32_t>(winner);
}

}  // namespace

Course CourseOf(const Game& game) {
  Course course;
  course.byTeams = game.teams && ScoresAreFrags(game.type);
  course.hasTimes = game.timed && std::ranges::any_of(game.events, [](const KillEvent& event) {
                      return event.second > 0;
                    });
  course.sides.resize(course.byTeams ? 2 : game.entrants.size());
  PlayScores(course, game);
  const auto first = std::ranges::find_if(game.events, IsFrag);
  if (first != game.events.end()) course.firstFrag = *first;
  course.longestRun = LongestRun(game);
  course.comeback = Comeback(course, game);
  return course;
}

std::uint32_t CameLate(const Game& game, const Entrant& entrant) {
  return game.timed && entrant.came > kLate ? entrant.came : 0;
}

std::uint32_t LeftEarly(const Game& game, const Entrant& entrant) {
  return game.timed && !entrant.stayed ? entrant.left : 0;
}

}  // namespace morvane
