#include "morvane/store/game_record.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "morvane/store/database_error.h"

namespace morvane {
namespace {

class Writer {
 public:
  void Number(std::uint64_t value) {
    for (; value >= 0x80; value >>= 7) bytes_ += static_cast<char>(value | 0x80);
    bytes_ += static_cast<char>(value);
  }
  template <class Integer>
  void Value(const Integer& value) {
    // Negative numbers in turn with the others, so that small ones stay short.
    if constexpr (std::is_signed_v<Integer>) {
      const auto wide = static_cast<std::int64_t>(value);
      Number((static_cast<std::uint64_t>(wide) << 1) ^ static_cast<std::uint64_t>(wide >> 63));
    } else {
      Number(static_cast<std::uint64_t>(value));
    }
  }
  void Value(const std::string& text) {
    Number(text.size());
    bytes_ += text;
  }
  /// A number that is never negative.
  void Count(std::int64_t count) { Number(static_cast<std::uint64_t>(count)); }
  template <class Entry>
  std::size_t Size(const std::vector<Entry>& list) {
    Number(list.size());
    return list.size();
  }
  std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  template <class Integer>
  void Value(Integer& value) {
    const std::uint64_t number = Number();
    if constexpr (std::is_signed_v<Integer>) {
      value = static_cast<Integer>((number >> 1) ^ (~(number & 1) + 1));
    } else {
      value = static_cast<Integer>(number);
    }
  }
  void Value(std::string& text) {
    const std::uint64_t size = Number();
    if (size > bytes_.size()) return Fail();
    text = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
  }
  void Count(std::int64_t& count) { count = static_cast<std::uint32_t>(Number()); }
  template <class Entry>
  std::size_t Size(std::vector<Entry>& list) {
    const std::uint64_t count = Number();
    if (count > bytes_.size()) return Fail(), 0;  // every entry takes a byte or more
    list.resize(count);
    return count;
  }
  bool IsWhole() const { return !failed_ && bytes_.empty(); }

 private:
  void Fail() {
    failed_ = true;
    bytes_ = {};
  }
  std::uint64_t Number() {
    std::uint64_t value = 0;
    for (int shift = 0; shift < 64 && !bytes_.empty(); shift += 7) {
      const auto byte = static_cast<unsigned char>(bytes_.front());
      bytes_.remove_prefix(1);
      value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
      if ((byte & 0x80) == 0) return value;
    }
    Fail();
    return 0;
  }

  std::string_view bytes_;
  bool failed_ = false;
};

// One walk over the fields serves both directions: Stream is Writer or Reader, the second argument
// const for the first.
template <class Stream, class... Values>
void Each(Stream& stream, Values&... values) {
  (stream.Value(values), ...);
}

template <class Stream, class Rival>
void WalkRival(Stream& stream, Rival& rival) {
  Each(stream, rival.index, rival.count);
}

template <class Stream, class Figures>
void WalkFigures(Stream& stream, Figures& f, int version) {
  for (const Counter& counter : kCounters) {
    if (counter.since > version) continue;
    if (counter.member == &Counts::score) {
      stream.Value(f.score);
    } else {
      stream.Count(f.*counter.member);
    }
  }
  std::uint16_t favouriteWeapon = 0;  // told by the weapons themselves
  if (version < 3) Each(stream, favouriteWeapon);
  WalkRival(stream, f.nemesis);
  WalkRival(stream, f.favouriteVictim);
  stream.Size(f.weapons);
  for (auto& use : f.weapons) Each(stream, use.weapon, use.kills, use.deaths);
  stream.Size(f.itemCounts);
  for (auto& item : f.itemCounts) Each(stream, item.item, item.count);
}

/// Of most players none is told: then one byte says so.
template <class Feats>
void WalkFeats(Writer& writer, const Feats& feats) {
  const bool any = std::ranges::any_of(feats, [](std::uint32_t count) { return count > 0; });
  writer.Value(any);
  for (std::size_t i = 0; any && i < feats.size(); ++i) writer.Value(feats[i]);
}
template <class Feats>
void WalkFeats(Reader& reader, Feats& feats) {
  bool any = false;
  reader.Value(any);
  for (std::size_t i = 0; any && i < feats.size(); ++i) reader.Value(feats[i]);
}

template <class Stream, class Game>
void WalkGame(Stream& stream, Game& game, int version) {
  Each(stream, game.map, game.type, game.start, game.length, game.timed, game.warmup, game.complete,
       game.exitReason, game.hasTeamScores, game.redScore, game.blueScore, game.kills, game.frags);
  if (version >= 3) Each(stream, game.dated, game.teams, game.winningTeam);
  stream.Size(game.entrants);
  for (auto& entrant : game.entrants) {
    Each(stream, entrant.name, entrant.team, entrant.place, entrant.stayed, entrant.winner);
    if (version >= 3) Each(stream, entrant.bot);
    if (version >= 4) Each(stream, entrant.came, entrant.left);
    if (version >= 4) WalkFeats(stream, entrant.feats);
    WalkFigures(stream, entrant.figures, version);
  }
  stream.Size(game.pairs);
  for (auto& pair : game.pairs) Each(stream, pair.killer, pair.victim, pair.kills, pair.teamKills);
  stream.Size(game.lead);
  for (auto& change : game.lead) Each(stream, change.second, change.leader, change.score);
  stream.Size(game.events);
  for (auto& event : game.events) {
    Each(stream, event.killer, event.victim, event.weapon, event.teamKill);
    if (version >= 4) Each(stream, event.second);
  }
}

/// Whether a number is one that a game can have; far greater ones would not stand being added up.
bool IsPossible(std::int64_t number) {
  constexpr std::int64_t kMost = std::int64_t{1} << 40;
  return number > -kMost && number < kMost;
}

bool IsSound(const Game& game, std::size_t weapons, std::size_t items) {
  const std::size_t count = game.entrants.size();
  const auto isEntrant = [&](std::size_t index) { return index < count; };
  const auto isRival = [&](const Rival& rival) {
    return rival.index == kNobody || isEntrant(rival.index);
  };
  const auto isLeader = [&](const LeadChange& change) {
    const bool isOne = game.teams ? change.leader <= 3 : isEntrant(change.leader);
    return (change.leader == kNobody || isOne) && IsPossible(change.score);
  };
  const auto isFine = [&](const Entrant& entrant) {
    const Figures& f = entrant.figures;
    return entrant.place >= 1 && entrant.place <= count && entrant.team <= Team::kSpectator &&
           IsPossible(f.score) && isRival(f.nemesis) && isRival(f.favouriteVictim) &&
           std::ranges::all_of(f.weapons, [&](const auto& use) { return use.weapon < weapons; }) &&
           std::ranges::all_of(f.itemCounts, [&](const auto& i) { return i.item < items; });
  };
  return game.dated <= Dated::kKnown && IsPossible(game.start) && game.winningTeam <= Team::kBlue &&
         std::ranges::all_of(game.entrants, isFine) && std::ranges::all_of(game.lead, isLeader) &&
         std::ranges::all_of(
             game.pairs,
             [&](const Pair& p) { return isEntrant(p.killer) && isEntrant(p.victim); }) &&
         std::ranges::all_of(game.events, [&](const KillEvent& e) {
           return isEntrant(e.victim) && e.weapon < weapons &&
                  (e.killer == KillEvent::kWorld || isEntrant(e.killer));
         });
}

/// Sets what versions 1 and 2, which have one form, did not tell; and takes back what they told
/// without knowing: the lead and the winner by frags where flags decide, a win over nobody.
void Complete(Game& game) {
  // Every start was reckoned back, over gaps that nobody knows.
  game.dated = game.start == 0 ? Dated::kUnknown : Dated::kNotAfter;
  const auto plays = [&](Team team) {
    return std::ranges::any_of(game.entrants, [&](const Entrant& e) { return e.team == team; });
  };
  const bool wereTeams = game.type >= 3;
  game.teams = IsTeamType(game.type) ||
               (wereTeams && (game.hasTeamScores || plays(Team::kRed) || plays(Team::kBlue)));
  const bool isKnown = game.hasTeamScores || ScoresAreFrags(game.type);
  if (game.teams != wereTeams || !ScoresAreFrags(game.type)) game.lead.clear();
  if (!isKnown) game.redScore = game.blueScore = 0;
  if (game.teams && game.redScore != game.blueScore && plays(Team::kRed) && plays(Team::kBlue)) {
    game.winningTeam = game.redScore > game.blueScore ? Team::kRed : Team::kBlue;
  }
  for (Entrant& entrant : game.entrants) {
    entrant.winner = game.teams ? entrant.stayed && game.winningTeam != Team::kFree &&
                                      entrant.team == game.winningTeam
                                : entrant.place == 1 && game.entrants.size() > 1;
  }
}

}  // namespace

std::string PackGame(const Game& game) {
  Writer writer;
  WalkGame(writer, game, kRecordVersion);
  return writer.Take();
}

Game UnpackGame(std::string_view bytes, int version, std::size_t weapons, std::size_t items) {
  constexpr const char* kDamaged = "a game in it is damaged";
  if (version < 1 || version > kRecordVersion) throw DatabaseError(kDamaged);
  Reader reader(bytes);
  Game game;
  WalkGame(reader, game, version);
  if (version < 3) Complete(game);
  if (!reader.IsWhole() || !IsSound(game, weapons, items)) throw DatabaseError(kDamaged);
  return game;
}

}  // namespace morvane
