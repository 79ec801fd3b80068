#include "bench/log_generator.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace bench {
namespace {

/// Random numbers that are the same everywhere (SplitMix64).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  double Unit() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1.0p-53;
  }
  std::size_t Below(std::size_t count) {
    return static_cast<std::size_t>(Unit() * static_cast<double>(count));
  }
  bool Chance(double probability) { return Unit() < probability; }
  template <class List>
  const auto& OneOf(const List& list) {
    return list[Below(std::size(list))];
  }

 private:
  std::uint64_t state_;
};

enum Type { kFreeForAll = 0, kTournament = 1, kTeamDeathmatch = 3, kCaptureTheFlag = 4 };

struct Weapon {
  int number;
  const char* name;
  double share;  // of the kills
};

constexpr Weapon kWeapons[] = {
    {6, "ROCKET", 0.23},        {7, "ROCKET_SPLASH", 0.2}, {10, "RAILGUN", 0.19},
    {11, "LIGHTNING", 0.09},    {1, "SHOTGUN", 0.07},      {8, "PLASMA", 0.06},
    {9, "PLASMA_SPLASH", 0.04}, {3, "MACHINEGUN", 0.05},   {5, "GRENADE_SPLASH", 0.03},
    {2, "GAUNTLET", 0.02},      {18, "TELEFRAG", 0.01},    {12, "BFG", 0.01}};
constexpr Weapon kWorldDeaths[] = {
    {22, "TRIGGER_HURT", 0.4}, {19, "FALLING", 0.4}, {16, "LAVA", 0.2}};
constexpr Weapon kOwnDeaths[] = {{7, "ROCKET_SPLASH", 0.8}, {5, "GRENADE_SPLASH", 0.2}};

constexpr const char* kItems[] = {
    "item_armor_shard",       "item_armor_shard",  "item_armor_shard", "item_health",
    "item_health_large",      "item_health_small", "weapon_shotgun",   "ammo_shells",
    "weapon_rocketlauncher",  "ammo_rockets",      "weapon_railgun",   "ammo_slugs",
    "weapon_plasmagun",       "ammo_cells",        "weapon_lightning", "ammo_lightning",
    "item_armor_combat",      "item_armor_body",   "item_health_mega", "item_quad",
    "weapon_grenadelauncher", "holdable_medkit"};

struct Place {
  const char* map;
  Type type;
};

constexpr Place kPlaces[] = {
    {"q3dm17", kFreeForAll},     {"q3dm6", kFreeForAll},      {"q3tourney2", kTournament},
    {"q3dm7", kTeamDeathmatch},  {"Q3CTF4", kCaptureTheFlag}, {"q3dm13", kFreeForAll},
    {"q3tourney4", kTournament}, {"q3ctf1", kCaptureTheFlag}, {"q3dm17", kTeamDeathmatch}};

constexpr const char* kTalk[] = {"gg",
                                 "nice shot",
                                 "lag...",
                                 "lol",
                                 "one more map?",
                                 "brb",
                                 "who has the quad?",
                                 "^1r^2a^3i^4l^7 only!",
                                 "that was <close>"};

struct Person {
  const char* name;
  double skill;        // 1: average
  double comes;        // on an evening
  std::size_t weapon;  // index of the favourite
  // Which part of the evenings, from 0 to 1, passes without: one who comes late, one who was away.
  double awayFrom = 0;
  double awayTo = 0;
  double warmsUp = 0;           // what the skill gains in the course of a game
  const char* rival = nullptr;  // whom this one looks for
  bool bot = false;
};

constexpr Person kPeople[] = {{"^1Karm^7ina", 1.26, 0.92, 2},
                              {"Halbert", 1.2, 0.95, 0, 0, 0, 0, "^4o^5z^6o^2n"},
                              {"^4o^5z^6o^2n", 1.19, 0.9, 3, 0, 0, 0, "Halbert"},
                              {"[VX]^3Mirel", 1.1, 0.85, 1, 0, 0, 0.5},
                              {"^2pond^0frog", 1.04, 0.9, 4},
                              {"Tarnished Tim", 0.97, 0.88, 0},
                              {"^6Lun^7ette", 0.95, 0.85, 5},
                              {"b<o>lt & nut", 0.93, 0.8, 2},
                              {"^5Ingrid", 0.88, 0.9, 7},
                              {"Slow\xE9", 0.82, 0.85, 8},
                              {"^3drop^1bear", 1.05, 0.3, 1},
                              {"Passer-by", 0.9, 0.12, 7},
                              {"^7Old ^1Hand", 1.22, 0.7, 2, 0.3, 0.75},
                              {"^2fresh^7mint", 1.08, 0.9, 2, 0, 0.8},
                              {"Cogsworth", 0.8, 0, 3, 0, 0, 0, nullptr, true},
                              {"Rivet", 0.76, 0, 0, 0, 0, 0, nullptr, true}};

struct Client {
  const Person* person = nullptr;
  int team = 0;
  int score = 0;
  int leavesAt = 0;  // second of the evening
};

/// A server with its clients, and the log that it writes.
class Server {
 public:
  Server(std::uint64_t seed, const std::function<void(std::string_view)>& write)
      : random_(seed), write_(write) {}

  /// One evening; the clock begins at 0. `progress`: how far all evenings are, from 0 to 1. The
  /// result is its length in seconds.
  int PlayEvening(double progress);

 private:
  static constexpr int kTimeLimit = 15 * 60;
  static constexpr int kFragLimit = 35;
  static constexpr int kCaptureLimit = 8;

  template <class... Values>
  void Line(const char* format, Values... values);
  void Separator() { Line("------------------------------------------------------------"); }
  void Init(const Place& place);
  void PlayGame(const Place& place);
  void PlaySecond(const Place& place);
  void Arrivals();
  bool IsAway(const Person& person) const;
  void SeatBots();
  void LateComer(const Place& place);
  void ChooseDate();
  void ServerTime();
  double SkillOf(std::size_t slot) const;
  std::size_t VictimOf(std::size_t killer, const std::vector<std::size_t>& slots);
  const Weapon& WeaponOf(std::size_t killer);
  void Join(std::size_t slot, const Place& place);
  void Fight(const Place& place);
  void OwnMistake(std::size_t slot);
  void Kill(std::size_t killer, std::size_t victim, const Weapon& weapon);
  void TakeItems();
  void Talk();
  void Capture();
  bool IsOver(const Place& place) const;
  void Exit(const char* reason, const Place& place);
  std::vector<std::size_t> Players() const;
  enum class By { kStrength, kWeakness };
  std::size_t Pick(const std::vector<std::size_t>& slots, By by);
  void ChooseDuel();
  bool AreMates(std::size_t left, std::size_t right) const {
    return clients_[left].team != 0 && clients_[left].team == clients_[right].team;
  }

  Random random_;
  const std::function<void(std::string_view)>& write_;
  std::array<Client, 12> clients_;
  std::array<int, 3> teamScores_{};
  int now_ = 0;
  int end_ = 0;
  int gameStart_ = 0;
  double progress_ = 0;
  int day_ = 0;       // of the evening, counted from the first
  int startsAt_ = 0;  // second of that day
};

template <class... Values>
void Server::Line(const char* format, Values... values) {
  char text[1100];
  const int stamp = std::snprintf(text, sizeof text, "%3d:%02d ", now_ / 60, now_ % 60);
  const auto used = static_cast<std::size_t>(stamp);
  int size = 0;
  if constexpr (sizeof...(values) == 0) {
    size = std::snprintf(text + used, sizeof text - used, "%s", format);
  } else {
    size = std::snprintf(text + used, sizeof text - used, format, values...);
  }
  write_(std::string(text, used + static_cast<std::size_t>(size)) + "\n");
}

int Server::PlayEvening(double progress) {
  progress_ = progress;
  ChooseDate();
  now_ = 0;
  end_ = static_cast<int>(2.5 * 3600) + static_cast<int>(random_.Below(5400));
  for (std::size_t slot = 0; slot < clients_.size(); ++slot) clients_[slot] = {};
  std::size_t round = random_.Below(std::size(kPlaces));
  while (now_ < end_) PlayGame(kPlaces[round++ % std::size(kPlaces)]);
  return now_;
}

void Server::Init(const Place& place) {
  Separator();
  Line(
      "InitGame: \\sv_hostname\\The Cellar\\g_gametype\\%d\\sv_maxclients\\12\\fraglimit\\%d"
      "\\timelimit\\15\\capturelimit\\%d\\version\\ioq3 1.36\\protocol\\68\\mapname\\%s"
      "\\gamename\\baseq3\\g_needpass\\0",
      static_cast<int>(place.type), kFragLimit, kCaptureLimit, place.map);
  ServerTime();
  gameStart_ = now_;
  teamScores_ = {};
}

/// Most evenings are at the end of a week; Sundays begin in the afternoon.
void Server::ChooseDate() {
  constexpr double kChances[] = {0.03, 0.05, 0.15, 0.08, 0.6, 0.5, 0.25};  // Monday first
  constexpr int kHour = 3600;
  do {
    ++day_;
  } while (!random_.Chance(kChances[day_ % 7]));
  const bool isSunday = day_ % 7 == 6;
  startsAt_ =
      (isSunday ? 15 : 19) * kHour + static_cast<int>(random_.Below(std::size_t{2} * kHour));
}

/// The line that tells the date and the time of day.
void Server::ServerTime() {
  using namespace std::chrono;
  constexpr sys_days kFirstMonday = 2026y / March / 2;
  const seconds time(startsAt_ + now_);
  const auto days = floor<std::chrono::days>(time);
  const year_month_day date(kFirstMonday + std::chrono::days(day_) + days);
  const hh_mm_ss<seconds> clock(time - days);
  Line("ServerTime:\t%04d%02u%02u%02d%02d%02d\t00:00", static_cast<int>(date.year()),
       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
       static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
       static_cast<int>(clock.seconds().count()));
}

void Server::PlayGame(const Place& place) {
  if (place.type == kTournament) {
    Init(place);
    Line("Warmup:");
    now_ += 15;
    Line("ShutdownGame:");
    Separator();
  }
  Init(place);
  Arrivals();
  SeatBots();
  for (Client& client : clients_) client.team = 0;
  if (place.type == kTournament) ChooseDuel();
  for (std::size_t slot = 0; slot < clients_.size(); ++slot) {
    if (clients_[slot].person != nullptr) Join(slot, place);
  }
  while (!IsOver(place)) PlaySecond(place);
  if (place.type == kTournament && Players().size() < 2) {
    // The one who stays has nobody to play against.
  } else if (now_ - gameStart_ >= kTimeLimit) {
    Exit("Timelimit", place);
  } else {
    Exit(place.type == kCaptureTheFlag ? "Capturelimit" : "Fraglimit", place);
  }
  now_ += 10;
  Line("ShutdownGame:");
  Separator();
}

/// Who comes and goes between two games.
void Server::Arrivals() {
  for (Client& client : clients_) {
    if (client.person != nullptr && now_ >= client.leavesAt) client = {};
  }
  for (const Person& person : kPeople) {
    const bool isHere = std::any_of(clients_.begin(), clients_.end(),
                                    [&](const Client& client) { return client.person == &person; });
    // The first game of an evening draws the crowd, the later ones stragglers.
    const double comes = gameStart_ < 60 ? person.comes : person.comes / 12;
    if (isHere || person.bot || IsAway(person) || !random_.Chance(comes)) continue;
    const auto free = std::find_if(clients_.begin(), clients_.end(),
                                   [](const Client& client) { return client.person == nullptr; });
    if (free == clients_.end()) return;
    *free = {&person, 0, 0, end_ - static_cast<int>(random_.Below(4000))};
  }
}

bool Server::IsAway(const Person& person) const {
  return progress_ >= person.awayFrom && progress_ < person.awayTo;
}

/// Bots fill the server while few people are there.
void Server::SeatBots() {
  constexpr std::ptrdiff_t kFewPeople = 6;
  const auto people = std::count_if(clients_.begin(), clients_.end(), [](const Client& client) {
    return client.person != nullptr && !client.person->bot;
  });
  for (Client& client : clients_) {
    if (client.person != nullptr && client.person->bot) client = {};
  }
  if (people >= kFewPeople) return;
  for (const Person& person : kPeople) {
    const auto free = std::find_if(clients_.begin(), clients_.end(),
                                   [](const Client& client) { return client.person == nullptr; });
    if (person.bot && free != clients_.end()) *free = {&person, 0, 0, end_ + kTimeLimit};
  }
}

/// Somebody comes in the middle of a game.
void Server::LateComer(const Place& place) {
  const Person& person = random_.OneOf(kPeople);
  const bool isHere = std::any_of(clients_.begin(), clients_.end(),
                                  [&](const Client& client) { return client.person == &person; });
  const auto free = std::find_if(clients_.begin(), clients_.end(),
                                 [](const Client& client) { return client.person == nullptr; });
  if (isHere || person.bot || IsAway(person) || free == clients_.end()) return;
  *free = {&person, 0, 0, end_ - static_cast<int>(random_.Below(2000))};
  Join(static_cast<std::size_t>(free - clients_.begin()), place);
}

void Server::Join(std::size_t slot, const Place& place) {
  Client& client = clients_[slot];
  const int id = static_cast<int>(slot);
  const bool inTeams = place.type >= kTeamDeathmatch;
  if (inTeams) client.team = 1 + static_cast<int>(slot % 2);
  client.score = 0;
  Line("ClientConnect: %d", id);
  Line(
      "ClientUserinfoChanged: %d n\\%s\\t\\%d\\model\\sarge\\hmodel\\sarge\\c1\\4\\c2\\5"
      "\\hc\\100\\w\\0\\l\\0\\tt\\0\\tl\\0%s",
      id, client.person->name, client.team, client.person->bot ? "\\skill\\    3.00" : "");
  Line("ClientBegin: %d", id);
}

/// Sends all but two to the benches.
void Server::ChooseDuel() {
  std::vector<std::size_t> slots = Players();
  while (slots.size() > 2) {
    const auto out = slots.begin() + static_cast<std::ptrdiff_t>(random_.Below(slots.size()));
    clients_[*out].team = 3;
    slots.erase(out);
  }
}

/// The slots that fight; the others look on.
std::vector<std::size_t> Server::Players() const {
  std::vector<std::size_t> slots;
  for (std::size_t slot = 0; slot < clients_.size(); ++slot) {
    if (clients_[slot].person != nullptr && clients_[slot].team != 3) slots.push_back(slot);
  }
  return slots;
}

/// One of the slots, the strong or the weak more often.
std::size_t Server::Pick(const std::vector<std::size_t>& slots, By by) {
  const auto weight = [&](std::size_t slot) {
    const double skill = SkillOf(slot);
    return by == By::kStrength ? skill * skill : 1 / skill;
  };
  double all = 0;
  for (const std::size_t slot : slots) all += weight(slot);
  double left = random_.Unit() * all;
  for (const std::size_t slot : slots) {
    left -= weight(slot);
    if (left <= 0) return slot;
  }
  return slots.back();
}

double Server::SkillOf(std::size_t slot) const {
  const Person& person = *clients_[slot].person;
  const double played = static_cast<double>(now_ - gameStart_) / (kTimeLimit / 2.0);
  return person.skill + person.warmsUp * (std::min(played, 1.0) - 0.5);
}

std::size_t Server::VictimOf(std::size_t killer, const std::vector<std::size_t>& slots) {
  const char* rival = clients_[killer].person->rival;
  if (rival != nullptr && random_.Chance(0.12)) {
    for (const std::size_t slot : slots) {
      if (std::string_view(clients_[slot].person->name) == rival) return slot;
    }
  }
  return Pick(slots, By::kWeakness);
}

const Weapon& Server::WeaponOf(std::size_t killer) {
  if (random_.Chance(0.25)) return kWeapons[clients_[killer].person->weapon];
  double left = random_.Unit();
  for (const Weapon& weapon : kWeapons) {
    left -= weapon.share;
    if (left <= 0) return weapon;
  }
  return kWeapons[0];
}

void Server::PlaySecond(const Place& place) {
  ++now_;
  const std::vector<std::size_t> players = Players();
  for (std::size_t i = 0; i < players.size(); ++i) {
    if (random_.Chance(0.07)) Fight(place);
  }
  TakeItems();
  if (place.type != kTournament && random_.Chance(0.001)) LateComer(place);
  if (random_.Chance(0.01)) Talk();
  if (place.type == kCaptureTheFlag && random_.Chance(0.009)) Capture();
  for (std::size_t slot = 0; slot < clients_.size(); ++slot) {
    Client& client = clients_[slot];
    // Most see the game out.
    const bool leaves = client.person != nullptr && now_ >= client.leavesAt;
    if (!leaves || !random_.Chance(0.001)) continue;
    Line("ClientDisconnect: %d", static_cast<int>(slot));
    client = {};
  }
}

void Server::Fight(const Place& place) {
  const std::vector<std::size_t> players = Players();
  if (players.size() < 2 || random_.Chance(0.1)) {
    if (!players.empty()) OwnMistake(Pick(players, By::kWeakness));
    return;
  }
  const std::size_t killer = Pick(players, By::kStrength);
  const std::size_t victim = VictimOf(killer, players);
  if (victim == killer || (AreMates(killer, victim) && !random_.Chance(0.03))) return;
  Kill(killer, victim, WeaponOf(killer));
  const int points = AreMates(killer, victim) ? -1 : 1;
  clients_[killer].score += points;
  if (place.type == kTeamDeathmatch) {
    teamScores_[static_cast<std::size_t>(clients_[killer].team)] += points;
  }
}

void Server::OwnMistake(std::size_t slot) {
  Client& client = clients_[slot];
  --client.score;
  if (random_.Chance(0.4)) {
    Kill(slot, slot, random_.OneOf(kOwnDeaths));
    return;
  }
  const Weapon& end = random_.OneOf(kWorldDeaths);
  Line("Kill: 1022 %d %d: <world> killed %s by MOD_%s", static_cast<int>(slot), end.number,
       client.person->name, end.name);
}

void Server::Kill(std::size_t killer, std::size_t victim, const Weapon& weapon) {
  Line("Kill: %d %d %d: %s killed %s by MOD_%s", static_cast<int>(killer), static_cast<int>(victim),
       weapon.number, clients_[killer].person->name, clients_[victim].person->name, weapon.name);
}

void Server::TakeItems() {
  for (std::size_t slot = 0; slot < clients_.size(); ++slot) {
    const Client& client = clients_[slot];
    if (client.person == nullptr || client.team == 3 || !random_.Chance(0.12)) continue;
    Line("Item: %d %s", static_cast<int>(slot), random_.OneOf(kItems));
  }
}

void Server::Talk() {
  const Client& client = random_.OneOf(clients_);
  if (client.person == nullptr) return;
  Line(client.team == 1 || client.team == 2 ? "sayteam: %s: %s" : "say: %s: %s",
       client.person->name, random_.OneOf(kTalk));
}

void Server::Capture() {
  const std::vector<std::size_t> players = Players();
  if (players.empty()) return;
  const std::size_t slot = Pick(players, By::kStrength);
  Client& client = clients_[slot];
  const char* const flag = client.team == 1 ? "BLUE" : "RED";
  const int id = static_cast<int>(slot);
  Line("Item: %d team_CTF_%sflag", id, client.team == 1 ? "blue" : "red");
  Line("CTF: %d %d 0: %s got the %s flag!", id, 3 - client.team, client.person->name, flag);
  if (random_.Chance(0.5)) return;
  Line("CTF: %d %d 1: %s captured the %s flag!", id, 3 - client.team, client.person->name, flag);
  Line("Award: %d 4: %s gained the CAPTURE award!", id, client.person->name);
  client.score += 5;
  ++teamScores_[static_cast<std::size_t>(client.team)];
}

bool Server::IsOver(const Place& place) const {
  if (now_ - gameStart_ >= kTimeLimit) return true;
  if (place.type == kTournament && Players().size() < 2) return true;
  const int best = *std::max_element(teamScores_.begin(), teamScores_.end());
  if (place.type == kCaptureTheFlag) return best >= kCaptureLimit;
  if (place.type == kTeamDeathmatch) return best >= 2 * kFragLimit;
  return std::any_of(clients_.begin(), clients_.end(),
                     [](const Client& client) { return client.score >= kFragLimit; });
}

void Server::Exit(const char* reason, const Place& place) {
  Line("Exit: %s hit.", reason);
  if (place.type >= kTeamDeathmatch) Line("red:%d  blue:%d", teamScores_[1], teamScores_[2]);
  std::vector<std::size_t> slots = Players();
  std::stable_sort(slots.begin(), slots.end(), [this](std::size_t left, std::size_t right) {
    return clients_[left].score > clients_[right].score;
  });
  for (const std::size_t slot : slots) {
    Line("score: %d  ping: %d  client: %d %s", clients_[slot].score,
         20 + static_cast<int>(random_.Below(60)), static_cast<int>(slot),
         clients_[slot].person->name);
  }
}

/// The fields of a line of the log after its stamp.
template <class... Values>
std::string Text(const char* format, Values... values) {
  char text[512];
  const int size = std::snprintf(text, sizeof text, format, values...);
  return {text, static_cast<std::size_t>(size)};
}

}  // namespace

void GenerateCrowdLog(std::size_t players, std::size_t games,
                      const std::function<void(std::string_view)>& write) {
  constexpr std::size_t kSeats = 8;
  constexpr int kKills = 40;
  Random random(players + games);
  for (std::size_t game = 0; game < games; ++game) {
    write(Text("  0:00 InitGame: \\g_gametype\\0\\mapname\\%s\n", random.OneOf(kPlaces).map));
    for (std::size_t slot = 0; slot < kSeats; ++slot) {
      // Everybody comes in turn, so that a large enough number of games shows them all.
      const std::size_t who = slot == 0 ? game % players : random.Below(players);
      write(
          Text("  0:01 ClientUserinfoChanged: %zu n\\^%zuplayer %zu\\t\\0\n", slot, who % 8, who));
      write(Text("  0:01 ClientBegin: %zu\n", slot));
    }
    for (int kill = 0; kill < kKills; ++kill) {
      const Weapon& weapon = random.OneOf(kWeapons);
      write(Text("%3d:%02d Kill: %zu %zu %d: a killed b by MOD_%s\n", kill / 4, kill % 4 * 15,
                 random.Below(kSeats), random.Below(kSeats), weapon.number, weapon.name));
    }
    write(" 10:00 Exit: Timelimit hit.\n 10:00 ShutdownGame:\n");
  }
}

void GenerateLog(std::uint64_t seed, double hours,
                 const std::function<void(std::string_view)>& write) {
  Server server(seed, write);
  const double seconds = hours * 3600;
  for (double played = 0; played < seconds;) played += server.PlayEvening(played / seconds);
}

}  // namespace bench
