#include "morvane/site/career_data.h"

#include <algorithm>
#include <string>

#include "morvane/site/chart.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/game_data.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

using Appearances = std::vector<SiteFacts::Appearance>;

constexpr std::size_t kDots = 300;  // more games make a cloud of them
constexpr std::size_t kFewest = 3;  // games that make a chart

const Entrant& EntrantOf(const SiteFacts& facts, const SiteFacts::Appearance& appearance) {
  return facts.statistics.games[appearance.game].entrants[appearance.entrant];
}

/// A game with its date where there is one, as HTML.
std::string FootText(const SiteFacts& facts, std::uint32_t game) {
  const std::string date =
      TimeText(facts, facts.statistics.games[game].start, facts.statistics.games[game].dated);
  return EscapeHtml(facts.GameLabel(game).text + (date.empty() ? "" : ", " + date));
}

/// The mean score of the game and the nine before it.
std::vector<ChartLine::Point> MeanScores(const std::vector<double>& scores) {
  std::vector<ChartLine::Point> points;
  double sum = 0;
  for (std::size_t i = 0; i < scores.size(); ++i) {
    sum += scores[i] - (i >= kForm ? scores[i - kForm] : 0);
    points.push_back({static_cast<double>(i), sum / static_cast<double>(std::min(i + 1, kForm))});
  }
  return points;
}

std::vector<ChartLine::Point> Numbered(const std::vector<double>& values) {
  std::vector<ChartLine::Point> points;
  for (std::size_t i = 0; i < values.size(); ++i) {
    points.push_back({static_cast<double>(i), values[i]});
  }
  return points;
}

std::vector<double> ValuesOf(const SiteFacts& facts, const Appearances& games,
                             double (*value)(const Entrant&)) {
  std::vector<double> values;
  for (const SiteFacts::Appearance& game : games) values.push_back(value(EntrantOf(facts, game)));
  return values;
}

double RatingOf(const Entrant& entrant) { return entrant.rating; }
double ScoreOf(const Entrant& entrant) { return static_cast<double>(entrant.figures.score); }

std::string ChartText(const std::string& what, const std::vector<double>& values, int decimals) {
  const auto [least, most] = std::minmax_element(values.begin(), values.end());
  return what + " in " + std::to_string(values.size()) + " games: first " +
         Fixed(values.front(), decimals) + ", last " + Fixed(values.back(), decimals) +
         ", lowest " + Fixed(*least, decimals) + ", highest " + Fixed(*most, decimals);
}

/// The rating where it goes by rules; else the score of each game, as the sum only ever rises.
std::string CareerChart(const SiteFacts& facts, const Appearances& games) {
  if (games.size() < kFewest) return {};
  Chart chart;
  if (facts.statistics.customRanking) {
    const std::vector<double> ratings = ValuesOf(facts, games, RatingOf);
    chart.text = ChartText("Rating", ratings, 0);
    chart.lines.push_back({"main", Numbered(ratings), ChartLine::Form::kLine});
  } else {
    const std::vector<double> scores = ValuesOf(facts, games, ScoreOf);
    chart.text = ChartText("Score", scores, 0);
    if (scores.size() <= kDots) {
      chart.lines.push_back({"part", Numbered(scores), ChartLine::Form::kDots});
    }
    chart.lines.push_back({"main", MeanScores(scores), ChartLine::Form::kLine});
  }
  chart.foot.push_back(FootText(facts, games.front().game));
  chart.foot.push_back(FootText(facts, games.back().game));
  return ChartHtml(chart);
}

/// The last games, the earliest of them first.
Data FormList(const SiteFacts& facts, const Appearances& games, Demand demand) {
  const std::size_t shown = std::min(games.size(), kForm);
  List list(demand, shown);
  for (std::size_t i = games.size() - shown; i < games.size(); ++i) {
    const Label label = facts.GameLabel(games[i].game);
    const Entrant& entrant = EntrantOf(facts, games[i]);
    Object row(demand);
    SetLabel(row, label);
    Set(row, "map", facts.MapLabel(facts.MapOf(facts.statistics.games[games[i].game])).text);
    SetPlace(row, entrant);
    Set(row, "score", entrant.figures.score);
    list.Append(row);
  }
  return list.Done();
}

Data HighestGame(const SiteFacts& facts, std::uint32_t player, std::int64_t Counts::*figure,
                 Demand demand) {
  const SiteFacts::Appearance* best = HighestAppearance(facts, player, figure);
  return best == nullptr ? Data(false) : GamePlayed(facts, *best, demand).Done();
}

}  // namespace

const SiteFacts::Appearance* HighestAppearance(const SiteFacts& facts, std::uint32_t player,
                                               std::int64_t Counts::*figure) {
  const Appearances& games = facts.Games(player);
  const auto value = [&](const SiteFacts::Appearance& game) {
    return EntrantOf(facts, game).figures.*figure;
  };
  const auto best = std::ranges::max_element(games, {}, value);
  return best == games.end() || value(*best) <= 0 ? nullptr : &*best;
}

Object GamePlayed(const SiteFacts& facts, const SiteFacts::Appearance& appearance, Demand demand) {
  const Entrant& entrant = EntrantOf(facts, appearance);
  Object row = GameRow(facts, appearance.game, demand);
  SetPlace(row, entrant);
  Set(row, "kills", entrant.figures.kills);
  Set(row, "deaths", entrant.figures.deaths);
  Set(row, "suicides", entrant.figures.suicides);
  Set(row, "score", entrant.figures.score);
  SetDecimal(row, "ratio", Ratio(entrant.figures));
  Set(row, "kill_streak", entrant.figures.killStreak);
  return row;
}

FavouriteShares FavouriteSharesOf(const SiteFacts& facts, const Figures& figures) {
  const std::vector<WeaponUse> own = JoinSplash(figures.weapons, facts.splashOf);
  if (own.empty() || own.front().kills == 0) return {};
  double fieldKills = 0;
  double fieldUse = 0;
  for (const WeaponUse& use : facts.statistics.summary.figures.weapons) {
    fieldKills += use.kills;
    if (facts.splashOf[use.weapon] == own.front().weapon) fieldUse += use.kills;
  }
  return {Fixed(Percent(own.front().kills, static_cast<double>(figures.kills)), 1),
          Fixed(Percent(fieldUse, fieldKills), 1)};
}

void SetCareer(Object& object, const SiteFacts& facts, std::uint32_t player) {
  const Appearances& games = facts.Games(player);
  SetOptional(object, "chart", [&] { return CareerChart(facts, games); });
  SetFlag(object, "chart_dots", !facts.statistics.customRanking && games.size() <= kDots);
  SetData(object, "form", [&](Demand demand) { return FormList(facts, games, demand); });
  const auto setHighest = [&](const VariableName& name, std::int64_t Counts::*figure) {
    SetData(object, name,
            [&](Demand demand) { return HighestGame(facts, player, figure, demand); });
  };
  setHighest("best_game", &Counts::score);
  setHighest("streak_game", &Counts::killStreak);
  const auto [own, field] = FavouriteSharesOf(facts, facts.statistics.players[player].figures);
  SetOptional(object, "weapon_share", own);
  SetOptional(object, "weapon_field_share", field);
  std::vector<Award> won;
  std::ranges::copy_if(facts.Awards(), std::back_inserter(won),
                       [&](const Award& award) { return award.player == player; });
  SetFlag(object, "has_won", !won.empty());
  SetData(object, "won_awards", [&](Demand demand) { return AwardList(facts, won, demand); });
}

std::string RatingSpark(const SiteFacts& facts, std::uint32_t player) {
  const Appearances& games = facts.Games(player);
  const Appearances last(
      games.end() - static_cast<std::ptrdiff_t>(std::min(games.size(), kSparkGames)), games.end());
  // A sum of scores only ever rises: what tells more is each game's own.
  const bool ruled = facts.statistics.customRanking;
  const std::vector<double> values = ValuesOf(facts, last, ruled ? RatingOf : ScoreOf);
  if (values.size() < 2) return {};
  return SparkHtml(values, ChartText(ruled ? "Rating" : "Score", values, 0));
}

Data AwardList(const SiteFacts& facts, const std::vector<Award>& awards, Demand demand) {
  return Rows(awards, demand, [&](Object& row, const Award& award) {
    Set(row, "title", PageText(award.title));
    Set(row, "value", award.value);
    Set(row, "link", facts.PlayerLabel(award.player).link);
    SetOptional(row, "game_link",
                award.game == kNobody ? std::string() : facts.GameLabel(award.game).link);
  });
}

}  // namespace morvane
