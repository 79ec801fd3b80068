#include "morvane/statistics/ranking.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <muParser.h>
#include <numeric>
#include <system_error>
#include <utility>

#include "config/file_names.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "text/characters.h"
#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 7> kEventNames = {
    "kill.killer", "kill.victim", "suicide", "world", "teamkill", "game.win", "game.placed"};

std::string_view WithoutComment(std::string_view line) {
  return line.substr(0, std::min(line.find("//"), line.find(';')));
}

/// Where the rules may lie, the likeliest place first.
std::vector<fs::path> RulePlaces(const RankingSettings& settings) {
  const fs::path name = platform::SystemPath(settings.file);
  std::vector<fs::path> places;
  for (const fs::path folder : settings.folders) places.push_back(folder / name);
  const bool tryExtension = !name.has_extension() && !places.empty();
  if (tryExtension) places.emplace_back(places.front().string() + "." + config::kTemplateExtension);
  return places;
}

}  // namespace

struct Ranking::Rule {
  mu::Parser parser;
  std::size_t line = 0;
};

Ranking::Ranking(std::string_view rules, std::string file, double start, Report& report)
    : file_(std::move(file)), start_(start), report_(report) {
  rules = text::WithoutMark(rules);
  for (std::size_t number = 1; !rules.empty(); ++number) {
    const std::size_t end = std::min(rules.find('\n'), rules.size());
    std::string_view line = rules.substr(0, end);
    rules.remove_prefix(std::min(end + 1, rules.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = text::TrimBlanks(WithoutComment(line));
    if (!line.empty()) AddRule(line, number);
  }
}

Ranking::~Ranking() = default;

void Ranking::AddRule(std::string_view line, std::size_t number) {
  const auto refuse = [&](const std::string& why) {
    report_.Severe(Log::kRanking, why + "; rule skipped", file_, number);
  };
  const std::size_t equals = line.find('=');
  if (equals == line.npos) return refuse("no \"=\" in \"" + std::string(line) + "\"");
  const std::string_view name = text::TrimBlanks(line.substr(0, equals));
  const auto* event = std::find(kEventNames.begin(), kEventNames.end(), name);
  if (event == kEventNames.end()) return refuse("unknown event \"" + std::string(name) + "\"");
  std::unique_ptr<Rule>& place = rules_[static_cast<std::size_t>(event - kEventNames.begin())];
  if (place != nullptr) {
    return refuse("\"" + std::string(name) + "\" stands already in line " +
                  std::to_string(place->line));
  }
  auto rule = std::make_unique<Rule>();
  rule->line = number;
  try {
    rule->parser.DefineVar("rank", &variables_.rank);
    rule->parser.DefineVar("other", &variables_.other);
    rule->parser.DefineVar("mod", &variables_.mod);
    rule->parser.DefineVar("kills", &variables_.kills);
    rule->parser.DefineVar("deaths", &variables_.deaths);
    rule->parser.DefineVar("place", &variables_.place);
    rule->parser.DefineVar("players", &variables_.players);
    rule->parser.DefineVar("minutes", &variables_.minutes);
    rule->parser.SetExpr(std::string(line.substr(equals + 1)));
    rule->parser.Eval();
  } catch (const mu::ParserError& error) {
    return refuse("\"" + std::string(name) + "\" does not parse: " + error.GetMsg());
  }
  if (const int results = rule->parser.GetNumResults(); results != 1) {
    return refuse("\"" + std::string(name) + "\" gives " + std::to_string(results) +
                  " results: a comma parts them, the decimal sign is a point");
  }
  place = std::move(rule);
}

double Ranking::Apply(Event event, double rank) {
  std::unique_ptr<Rule>& rule = rules_[event];
  if (rule == nullptr) return rank;
  variables_.rank = rank;
  std::string why = "a result that is no number";
  try {
    const double result = rule->parser.Eval();
    if (std::isfinite(result)) return result;
  } catch (const mu::ParserError& error) {
    why = error.GetMsg();
  }
  report_.Severe(Log::kRanking,
                 "\"" + std::string(kEventNames[event]) + "\" gives " + why + "; rule skipped",
                 file_, rule->line);
  rule.reset();
  return rank;
}

void Ranking::Play(const Game& game, const Names& weapons, int lastPlaced,
                   std::vector<double>& ranks) {
  inGame_.assign(game.entrants.size(), {});
  for (std::size_t i = 0; i < game.entrants.size(); ++i) {
    inGame_[i].place = game.entrants[i].place;
    inGame_[i].players = static_cast<double>(game.entrants.size());
    inGame_[i].minutes = game.length / 60.0;
  }
  for (const KillEvent& event : game.events) {
    const double mod = MeansOfDeath(weapons[event.weapon]);
    inGame_[event.victim].mod = mod;
    if (event.killer != KillEvent::kWorld) inGame_[event.killer].mod = mod;
    PlayEvent(game, event, ranks);
  }
  for (RuleVariables& variables : inGame_) variables.mod = 0;
  EndGame(game, lastPlaced, ranks);
}

void Ranking::PlayEvent(const Game& game, const KillEvent& event, std::vector<double>& ranks) {
  double& victim = ranks[game.entrants[event.victim].player];
  const double victimBefore = victim;
  const auto apply = [&](Event kind, std::size_t entrant, double rank, double other) {
    variables_ = inGame_[entrant];
    variables_.other = other;
    return Apply(kind, rank);
  };
  ++inGame_[event.victim].deaths;
  if (event.killer == KillEvent::kWorld) {
    victim = apply(kWorldDeath, event.victim, victim, victim);
    return;
  }
  double& killer = ranks[game.entrants[event.killer].player];
  if (event.killer == event.victim) {
    killer = apply(kSuicide, event.killer, killer, killer);
  } else if (event.teamKill) {
    killer = apply(kTeamKill, event.killer, killer, victim);
  } else {
    ++inGame_[event.killer].kills;
    const double killerBefore = killer;
    killer = apply(kKiller, event.killer, killerBefore, victimBefore);
    if (&killer != &victim) victim = apply(kVictim, event.victim, victimBefore, killerBefore);
  }
}

void Ranking::EndGame(const Game& game, int lastPlaced, std::vector<double>& ranks) {
  std::vector<double> before;
  for (const Entrant& entrant : game.entrants) before.push_back(ranks[entrant.player]);
  const double sum = std::accumulate(before.begin(), before.end(), 0.0);
  for (std::size_t i = 0; i < game.entrants.size(); ++i) {
    const Entrant& entrant = game.entrants[i];
    const bool placed = static_cast<int>(entrant.place) <= lastPlaced;
    if (!entrant.standsForPlayer || (!entrant.playerWon && !placed)) continue;
    double& rank = ranks[entrant.player];
    variables_ = inGame_[i];
    const auto others = static_cast<double>(before.size()) - 1;
    variables_.other = others > 0 ? (sum - before[i]) / others : rank;
    rank = Apply(entrant.playerWon ? kWin : kPlaced, rank);
  }
}

std::unique_ptr<Ranking> ReadRanking(const RankingSettings& settings, Report& report) {
  std::error_code error = std::make_error_code(std::errc::no_such_file_or_directory);
  for (const fs::path& place : RulePlaces(settings)) {
    std::error_code problem;
    const std::string rules = platform::ReadWholeFile(place, problem);
    if (!problem) return std::make_unique<Ranking>(rules, place.string(), settings.start, report);
    if (problem != std::errc::no_such_file_or_directory) error = problem;
  }
  report.Severe(Log::kRanking,
                "the rules of the custom ranking cannot be read (" + error.message() +
                    "); players are ranked by their score",
                settings.file);
  return nullptr;
}

}  // namespace morvane
