#include "morvane/store/game_mark.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "morvane/log/line_reader.h"
#include "morvane/log/log_line.h"
#include "morvane/store/digest.h"

namespace morvane {
namespace {

constexpr std::uint32_t kTimedKill = 10;

/// Of a text without its carriage returns: a log that was copied as a text keeps its games.
std::uint64_t TextDigest(std::string_view text) {
  std::uint64_t digest = 0;
  if (text.find('\r') == text.npos) {
    digest = Digest(text);
  } else {
    std::string plain(text);
    std::erase(plain, '\r');
    digest = Digest(plain);
  }
  return digest != 0 ? digest : 1;
}

void SetKills(GameMark& mark, std::string_view text, bool timed) {
  LineReader reader(text);
  std::string_view line;
  std::string_view last;
  while (mark.weight < kEvidence && reader.Next(line)) {
    const std::string_view event = CutLine(line).text;
    if (!event.starts_with("Kill: ")) continue;
    if (timed) {
      mark.weight += kTimedKill;
    } else if (event != last) {
      ++mark.weight;
    }
    last = event;
  }
  if (mark.weight >= kEvidence) mark.beginning = TextDigest(text.substr(0, reader.LineEnd()));
}

std::string FactsOf(const Game& game, const Vocabulary& words) {
  std::string facts = game.map + '\n' + std::to_string(game.type) + (game.timed ? "t" : "");
  for (const KillEvent& event : game.events) {
    facts += '\n';
    if (event.killer != KillEvent::kWorld) facts += game.entrants[event.killer].name;
    facts += '\\' + game.entrants[event.victim].name + '\\' + words.weapons[event.weapon];
  }
  return facts;
}

std::uint32_t Variety(const Game& game) {
  const auto tied = [](const KillEvent& e) { return std::tuple(e.killer, e.victim, e.weapon); };
  std::uint32_t variety = game.events.empty() ? 0 : 1;
  for (std::size_t i = 1; i < game.events.size(); ++i) {
    if (tied(game.events[i]) != tied(game.events[i - 1])) ++variety;
  }
  return variety;
}

bool IsStartOf(const GameMark& start, const GameMark& whole) {
  return start.open && (!whole.open || start.kills <= whole.kills);
}

}  // namespace

GameMark MarkGame(std::string_view lines, const Game& game, bool open, const Vocabulary& words) {
  GameMark mark;
  if (const std::size_t end = lines.find('\n'); end != lines.npos) {
    mark.opening = TextDigest(lines.substr(0, end));
  }
  const std::string_view text = CutLine(lines).text;  // a log may begin within the first stamp
  mark.digest = TextDigest(text);
  if (!game.events.empty()) mark.facts = TextDigest(FactsOf(game, words));
  mark.kills = game.kills;
  mark.size = static_cast<std::uint32_t>(text.size() -
                                         static_cast<std::size_t>(std::ranges::count(text, '\r')));
  mark.open = open;
  SetKills(mark, text, game.timed);
  return mark;
}

GameMark MarkGame(const Game& game, bool open, const Vocabulary& words) {
  GameMark mark;
  mark.facts = game.events.empty() ? 0 : TextDigest(FactsOf(game, words));
  mark.weight = std::min(kEvidence, Variety(game) * (game.timed ? 3 : 1));
  mark.kills = game.kills;
  mark.open = open;
  return mark;
}

bool IsSameGame(const GameMark& left, const GameMark& right) {
  if (left.digest == 0 || right.digest == 0) return left.facts != 0 && left.facts == right.facts;
  return left.digest == right.digest || (left.beginning != 0 && left.beginning == right.beginning &&
                                         (IsStartOf(left, right) || IsStartOf(right, left)));
}

bool MayBeSameGame(const GameMark& left, const GameMark& right) {
  const bool torn = (left.open && left.opening == 0) || (right.open && right.opening == 0);
  return (torn || (left.opening != 0 && left.opening == right.opening)) &&
         ((left.open && left.kills <= right.kills) || (right.open && right.kills <= left.kills));
}

}  // namespace morvane
