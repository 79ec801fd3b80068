#include "morvane/log/game_builder.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

#include "morvane/statistics/names.h"
#include "morvane/statistics/sorting.h"

namespace morvane {
namespace {

// Far beyond any real game; keeps indices in 16 bits and a hostile log's memory in bounds.
constexpr std::size_t kMostEntrants = 60000;
constexpr std::size_t kUsualEntrants = 16;

bool IsBetter(const Entrant& left, const Entrant& right) {
  return std::tuple(left.stayed, left.figures.score, left.figures.kills) >
         std::tuple(right.stayed, right.figures.score, right.figures.kills);
}

void SetPlaces(std::vector<Entrant>& entrants) {
  for (std::size_t i = 0; i < entrants.size(); ++i) {
    const bool shared = i > 0 && entrants[i].stayed == entrants[i - 1].stayed &&
                        entrants[i].figures.score == entrants[i - 1].figures.score;
    entrants[i].place = shared ? entrants[i - 1].place : static_cast<std::uint32_t>(i + 1);
  }
}

void MoveIndices(Game& game, const std::vector<std::uint32_t>& newIndex) {
  for (KillEvent& event : game.events) {
    event.victim = static_cast<std::uint16_t>(newIndex[event.victim]);
    if (event.killer != KillEvent::kWorld) {
      event.killer = static_cast<std::uint16_t>(newIndex[event.killer]);
    }
  }
  if (game.teams) return;
  for (LeadChange& change : game.lead) {
    if (change.leader != kNobody) change.leader = newIndex[change.leader];
  }
}

std::uint32_t WholeSeconds(std::int64_t tenths) {
  return static_cast<std::uint32_t>(
      std::clamp<std::int64_t>(tenths / 10, 0, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

void GameBuilder::Open(std::string_view map, int type, bool timed, std::int64_t tenths) {
  game_ = Game{};
  game_.map = map;
  game_.type = type;
  game_.teams = IsTeamType(type);
  game_.timed = timed;
  slots_.fill({});
  events_.clear();
  left_.clear();
  firstStamp_ = lastStamp_ = tenths;
  clock_ = 0;
  leader_ = kNobody;
  leadScore_ = 0;
  teamScores_ = {};
  frozen_ = false;
  open_ = true;
}

void GameBuilder::Userinfo(std::size_t slot, std::string_view name, Team team, bool bot) {
  Slot& client = slots_[slot];
  // Someone new: the slot was bound by an event that came after its last client had gone.
  if (!client.begun) Leave(client);
  client.name = name;
  client.team = team;
  client.bot = bot;
  if (team == Team::kRed || team == Team::kBlue) PlayInTeams();
  if (client.entrant != kNobody) {
    Entrant& entrant = game_.entrants[client.entrant];
    if (entrant.name != name) entrant.name = name;
    entrant.bot = bot;
  }
  if (!client.begun) return;
  if (team == Team::kSpectator) {
    Leave(client);
    client.begun = true;
  } else {
    StartPlaying(slot);
  }
}

void GameBuilder::Connect(std::size_t slot) { Leave(slots_[slot]); }

void GameBuilder::Disconnect(std::size_t slot) { Leave(slots_[slot]); }

void GameBuilder::Begin(std::size_t slot) {
  Slot& client = slots_[slot];
  client.begun = true;
  if (client.team == Team::kSpectator) {
    Leave(client);
    client.begun = true;
    return;
  }
  if (frozen_ || game_.complete) return;
  StartPlaying(slot);
  CountsOf(client.entrant).score = 0;
  FindLead();
}

void GameBuilder::PlayInTeams() {
  if (game_.teams || game_.type < 8) return;
  game_.teams = true;
  // Who led alone until now led nothing that counts.
  game_.lead.clear();
  leader_ = kNobody;
}

void GameBuilder::StartPlaying(std::size_t slot) {
  if (frozen_ || game_.complete) return;
  Slot& client = slots_[slot];
  game_.entrants[EntrantIn(slot)].team = client.team;
  if (client.playingSince < 0) client.playingSince = clock_;
}

void GameBuilder::StopPlaying(Slot& slot) {
  if (slot.playingSince >= 0 && slot.entrant != kNobody) {
    CountsOf(slot.entrant).seconds += WholeSeconds(clock_ - slot.playingSince);
  }
  slot.playingSince = -1;
}

void GameBuilder::Leave(Slot& slot) {
  StopPlaying(slot);
  if (slot.entrant != kNobody) {
    left_[PlayerKey(slot.name)].push_back(slot.entrant);
    if (!game_.complete) game_.entrants[slot.entrant].left = WholeSeconds(clock_);
  }
  const bool led = slot.entrant != kNobody;
  slot.entrant = kNobody;
  slot.begun = false;
  if (led) FindLead();
}

std::uint32_t GameBuilder::SeatEntrant(Slot& slot) {
  slot.entrant = EntrantNamed(slot.name);
  game_.entrants[slot.entrant].team = slot.team;
  game_.entrants[slot.entrant].bot = slot.bot;
  return slot.entrant;
}

std::uint32_t GameBuilder::EntrantNamed(std::string_view name) {
  const auto back = left_.empty() ? left_.end() : left_.find(PlayerKey(name));
  if (back != left_.end() && !back->second.empty()) {
    const std::uint32_t entrant = back->second.back();
    back->second.pop_back();
    game_.entrants[entrant].name = name;
    game_.entrants[entrant].left = 0;
    return entrant;
  }
  if (game_.entrants.size() < kMostEntrants) {
    if (game_.entrants.empty()) game_.entrants.reserve(kUsualEntrants);
    game_.entrants.emplace_back().name = name;
    game_.entrants.back().came = WholeSeconds(clock_);
    if (live_.size() < game_.entrants.size()) live_.emplace_back();
  }
  return static_cast<std::uint32_t>(game_.entrants.size() - 1);
}

void GameBuilder::Kill(std::size_t killerSlot, std::size_t victimSlot, std::uint16_t weapon) {
  if (frozen_) return;
  const std::uint32_t victim = EntrantIn(victimSlot);
  const Team victimTeam = slots_[victimSlot].team;
  KillEvent event{KillEvent::kWorld, static_cast<std::uint16_t>(victim), weapon, false,
                  WholeSeconds(clock_)};
  ++game_.kills;
  if (killerSlot == kWorld) {
    ++CountsOf(victim).worldDeaths;
    AddScore(victim, -1, victimTeam);
  } else {
    const std::uint32_t killer = EntrantIn(killerSlot);
    const Team killerTeam = slots_[killerSlot].team;
    event.killer = static_cast<std::uint16_t>(killer);
    if (killerSlot == victimSlot) {
      ++CountsOf(victim).suicides;
      AddScore(victim, -1, victimTeam);
    } else if (game_.teams && killerTeam == victimTeam &&
               (killerTeam == Team::kRed || killerTeam == Team::kBlue)) {
      event.teamKill = true;
      ++CountsOf(killer).teamKills;
      pairs_.Add({killer, victim, 0, 1});
      AddScore(killer, -1, killerTeam);
    } else {
      Frag(killer, victim, weapon, killerTeam);
    }
  }
  CountDeath(live_[victim], weapon);
  if (keepEvents_) events_.push_back(event);
}

void GameBuilder::Frag(std::uint32_t killer, std::uint32_t victim, std::uint16_t weapon,
                       Team team) {
  Live& live = live_[killer];
  ++game_.frags;
  ++live.counts.kills;
  ++EntryOf(live.weapons, &WeaponUse::weapon, weapon).kills;
  live.counts.killStreak = std::max(live.counts.killStreak, ++live.killRun);
  live.deathRun = 0;
  pairs_.Add({killer, victim, 1, 0});
  AddScore(killer, 1, team);
}

void GameBuilder::CountDeath(Live& victim, std::uint16_t weapon) {
  ++victim.counts.deaths;
  ++EntryOf(victim.weapons, &WeaponUse::weapon, weapon).deaths;
  victim.counts.deathStreak = std::max(victim.counts.deathStreak, ++victim.deathRun);
  victim.killRun = 0;
}

void GameBuilder::Achieve(std::size_t slot, Feat feat) {
  if (frozen_ || game_.complete || slots_[slot].entrant == kNobody) return;
  ++game_.entrants[slots_[slot].entrant].feats[static_cast<std::size_t>(feat)];
}

void GameBuilder::TakeItem(std::size_t slot, std::uint16_t item) {
  if (frozen_) return;
  ++EntryOf(live_[EntrantIn(slot)].items, &ItemCount::item, item).count;
}

void GameBuilder::AddScore(std::uint32_t entrant, std::int32_t points, Team team) {
  if (live_[entrant].scoreGiven) return;
  std::int64_t& score = CountsOf(entrant).score;
  score += points;
  if (game_.complete) return;
  teamScores_[static_cast<std::size_t>(team)] += points;
  if (game_.teams) {
    UpdateTeamLead();
  } else if (points > 0 && game_.frags > 1) {
    if (score > leadScore_) SetLead(entrant, score);
    if (score == leadScore_ && leader_ != entrant) SetLead(kNobody, score);
  } else if (points > 0 || leader_ == entrant || (leader_ == kNobody && score + 1 == leadScore_)) {
    FindLead();
  }
}

void GameBuilder::UpdateTeamLead() {
  const std::int32_t red = teamScores_[static_cast<std::size_t>(Team::kRed)];
  const std::int32_t blue = teamScores_[static_cast<std::size_t>(Team::kBlue)];
  const Team team = red > blue ? Team::kRed : Team::kBlue;
  // Before the first frag nobody leads; and frags tell nothing where flags decide.
  if (game_.frags == 0 || !ScoresAreFrags(game_.type)) return;
  SetLead(red == blue ? kNobody : static_cast<std::uint32_t>(team), std::max(red, blue));
}

void GameBuilder::FindLead() {
  if (game_.teams || game_.complete) return;
  std::uint32_t leader = kNobody;
  std::int64_t best = 0;  // nobody leads with less than 1, at the beginning as later
  for (const Slot& slot : slots_) {
    if (slot.entrant == kNobody) continue;
    const std::int64_t score = CountsOf(slot.entrant).score;
    if (score >= best) leader = score == best ? kNobody : slot.entrant;
    best = std::max(best, score);
  }
  SetLead(leader, best);
}

void GameBuilder::SetLead(std::uint32_t leader, std::int64_t score) {
  leadScore_ = score;
  if (leader == leader_) return;
  leader_ = leader;
  const LeadChange change{WholeSeconds(clock_), leader, score};
  if (!game_.lead.empty() && game_.lead.back().second == change.second) {
    game_.lead.back() = change;
  } else {
    game_.lead.push_back(change);
  }
}

void GameBuilder::Warmup() {
  if (game_.kills == 0) game_.warmup = true;
  for (Slot& slot : slots_) StopPlaying(slot);
  frozen_ = true;
}

bool GameBuilder::Round() {
  if (!frozen_ || game_.complete) return false;
  frozen_ = false;
  const bool begins = game_.warmup;
  game_.warmup = false;
  if (begins) {
    firstStamp_ = lastStamp_;
    clock_ = 0;
    for (Entrant& entrant : game_.entrants) entrant.came = entrant.left = 0;
  }
  for (std::size_t slot = 0; slot < kSlots; ++slot) {
    if (slots_[slot].begun && slots_[slot].team != Team::kSpectator) StartPlaying(slot);
  }
  return begins;
}

void GameBuilder::Exit(std::string_view reason) {
  if (game_.complete) return;
  game_.length = SecondsSinceStart();
  for (Slot& slot : slots_) StopPlaying(slot);
  MarkStayed();
  game_.complete = true;
  game_.exitReason = reason;
}

void GameBuilder::MarkStayed() {
  for (const Slot& slot : slots_) {
    if (slot.begun && slot.entrant != kNobody) game_.entrants[slot.entrant].stayed = true;
  }
}

void GameBuilder::TeamScores(std::int32_t red, std::int32_t blue) {
  if (!game_.complete) return;
  PlayInTeams();
  if (!game_.teams) return;
  game_.hasTeamScores = true;
  game_.redScore = red;
  game_.blueScore = blue;
}

void GameBuilder::Score(std::size_t slot, std::int32_t score) {
  if (!game_.complete || frozen_) return;
  const std::uint32_t entrant = EntrantIn(slot);
  CountsOf(entrant).score = score;
  game_.entrants[entrant].stayed = true;
  live_[entrant].scoreGiven = true;
}

/// A win needs an opponent: a team of which nobody was there is none.
Team GameBuilder::WinningTeam() const {
  if (!game_.hasTeamScores && !ScoresAreFrags(game_.type)) return Team::kFree;
  if (game_.redScore == game_.blueScore) return Team::kFree;
  const auto isThere = [&](Team team) {
    return std::any_of(game_.entrants.begin(), game_.entrants.end(),
                       [team](const Entrant& entrant) { return entrant.team == team; });
  };
  if (!isThere(Team::kRed) || !isThere(Team::kBlue)) return Team::kFree;
  return game_.redScore > game_.blueScore ? Team::kRed : Team::kBlue;
}

void GameBuilder::SettleWinners() {
  if (!game_.teams) {
    const bool opposed = game_.entrants.size() > 1;
    for (Entrant& entrant : game_.entrants) entrant.winner = opposed && entrant.place == 1;
    return;
  }
  if (!game_.hasTeamScores && ScoresAreFrags(game_.type)) {
    game_.redScore = teamScores_[static_cast<std::size_t>(Team::kRed)];
    game_.blueScore = teamScores_[static_cast<std::size_t>(Team::kBlue)];
  }
  game_.winningTeam = WinningTeam();
  if (game_.winningTeam == Team::kFree) return;
  for (Entrant& entrant : game_.entrants) {
    entrant.winner = entrant.stayed && entrant.team == game_.winningTeam;
  }
}

std::uint32_t GameBuilder::SecondsSinceStart() const {
  const bool straight = lastStamp_ >= firstStamp_;
  return WholeSeconds(straight ? lastStamp_ - firstStamp_ : clock_);
}

/// What was counted comes into the figures, and the next game begins with nothing.
void GameBuilder::SettleCounts() {
  for (std::size_t i = 0; i < game_.entrants.size(); ++i) {
    Live& live = live_[i];
    Figures& figures = game_.entrants[i].figures;
    static_cast<Counts&>(figures) = live.counts;
    figures.weapons = TakeWeapons(live.weapons);
    figures.itemCounts = TakeItems(live.items);
    for (const ItemCount& item : figures.itemCounts) figures.items += item.count;
    live = {{}, 0, 0, false, std::move(live.weapons), std::move(live.items)};
  }
}

Game GameBuilder::Close() {
  for (Slot& slot : slots_) StopPlaying(slot);
  // Nobody sees the end of a game that is broken off.
  if (!game_.complete) {
    for (Entrant& entrant : game_.entrants) entrant.stayed = true;
  }
  if (!game_.complete) game_.length = SecondsSinceStart();
  SettleCounts();
  game_.events = events_;
  const std::vector<std::uint32_t> newIndex = SortAndNumber(game_.entrants, IsBetter);
  game_.pairs = pairs_.Take(newIndex);
  MoveIndices(game_, newIndex);
  SetPlaces(game_.entrants);
  SettleWinners();
  SettleRivals(game_.pairs, [this](std::uint32_t entrant) -> Figures& {
    return game_.entrants[entrant].figures;
  });
  open_ = false;
  return std::move(game_);
}

}  // namespace morvane
