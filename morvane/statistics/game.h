#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// No player, no entrant.
inline constexpr std::uint32_t kNobody = 0xFFFFFFFF;

enum class Team : std::uint8_t { kFree, kRed, kBlue, kSpectator };

/// How well a point of time is known.
enum class Dated : std::uint8_t {
  kUnknown,
  kNotAfter,  ///< it was then or earlier
  kReckoned,  ///< back from the time at which the log was last changed
  kKnown      ///< the log tells it
};

/// Kills and deaths by one means of death.
struct WeaponUse {
  std::uint16_t weapon = 0;  ///< index into the names of weapons
  std::uint32_t kills = 0;   ///< frags
  std::uint32_t deaths = 0;  ///< deaths of every kind, own ones included
};

struct ItemCount {
  std::uint16_t item = 0;  ///< index into the names of items
  std::uint32_t count = 0;
};

/// An opponent and how often.
struct Rival {
  std::uint32_t index = kNobody;
  std::uint32_t count = 0;
};

/// What was counted of one, or of several together. kCounters (figures.h) has a row for each. Wide,
/// for a few games of a hostile log are more than 32 bits hold.
struct Counts {
  std::int64_t kills = 0;   ///< frags: kills of opponents
  std::int64_t deaths = 0;  ///< of every kind: by opponents, team mates, own hand, the world
  std::int64_t suicides = 0;
  std::int64_t teamKills = 0;
  std::int64_t worldDeaths = 0;
  std::int64_t score = 0;
  std::int64_t seconds = 0;      ///< time played
  std::int64_t killStreak = 0;   ///< longest row of frags without a death, within one game
  std::int64_t deathStreak = 0;  ///< longest row of deaths without a frag, within one game
  std::int64_t items = 0;        ///< items taken
};

/// What one did: an entrant in a game, a player on a map or over all games.
struct Figures : Counts {
  Rival nemesis;                      ///< who killed this one most often
  Rival favouriteVictim;              ///< whom this one killed most often
  std::vector<WeaponUse> weapons;     ///< most kills first, then most deaths
  std::vector<ItemCount> itemCounts;  ///< most first
};

/// What a mod's log tells of a player besides kills ("Award:", "CTF:").
enum class Feat : std::uint8_t {
  kExcellent,
  kImpressive,
  kGauntlet,
  kDefence,
  kAssist,
  kCapture,
  kFlagTaken,
  kFlagCaptured,
  kFlagReturned,
  kCarrierKilled,
  kCount
};
inline constexpr auto kFeats = static_cast<std::size_t>(Feat::kCount);

/// A feat for people: "Flag captured".
const char* FeatTitle(Feat feat);

/// How often one killed another; killer and victim are indices into the list beside it.
struct Pair {
  std::uint32_t killer = 0;
  std::uint32_t victim = 0;
  std::uint32_t kills = 0;      ///< frags
  std::uint32_t teamKills = 0;  ///< kills of a team mate
};

/// The pair in a list sorted by killer, then victim; nullptr when there is none.
const Pair* FindPair(const std::vector<Pair>& pairs, std::uint32_t killer, std::uint32_t victim);

/// One client in one game. Who comes back under the same name goes on as the same entrant.
struct Entrant {
  std::string name;                ///< bytes of the log, as last used in the game; see names.h
  std::uint32_t player = kNobody;  ///< index into Statistics::players
  bool joined = false;             ///< the player bears another name, by the user's will
  // Of several entrants of one player in a game, the best placed one stands for all of them.
  bool standsForPlayer = true;
  bool playerWon = false;   ///< the player won the game; only where `standsForPlayer`
  Team team = Team::kFree;  ///< the last one played in
  std::uint32_t place = 0;  ///< 1 is best, equal scores share it; who left comes after who stayed
  bool stayed = false;      ///< to the end of the game; true for all in one that is broken off
  bool winner = false;  ///< place 1 among several, or in team games of Game::winningTeam at the end
  bool bot = false;     ///< no person, when last seen in the game
  std::uint32_t came = 0;                     ///< seconds since the start, by the log's stamps
  std::uint32_t left = 0;                     ///< for good, before the end; 0: stayed, or not known
  std::array<std::uint32_t, kFeats> feats{};  ///< how often each
  double rating = 0;  ///< the player's, when the game was over; see Player::rating
  Figures figures;    ///< rivals are indices into the game's entrants
};

/// Leads, but is left out of all pages.
inline constexpr std::uint32_t kLeftOut = 0xFFFFFFFE;

/// From `second` on the lead is `leader`'s: an index into the game's entrants or kLeftOut, in team
/// games a Team. kNobody: more than one leads. `score` is what the leader stands at then, by the
/// frags.
struct LeadChange {
  std::uint32_t second = 0;  ///< since the start of the game
  std::uint32_t leader = kNobody;
  std::int64_t score = 0;
};

/// A kill in the order of play; indices into the game's entrants.
struct KillEvent {
  std::uint16_t killer = 0;  ///< the victim's own for a suicide; kWorld for the world
  std::uint16_t victim = 0;
  std::uint16_t weapon = 0;
  bool teamKill = false;
  std::uint32_t second = 0;  ///< since the start, by the log's stamps
  static constexpr std::uint16_t kWorld = 0xFFFF;
};

/// Whether it is the kill of an opponent.
inline bool IsFrag(const KillEvent& event) {
  return !event.teamKill && event.killer != KillEvent::kWorld && event.killer != event.victim;
}

/// One game of a log.
struct Game {
  std::uint32_t number = 0;       ///< its own, by which its pages are named; 0: none yet
  std::string map;                ///< as the log writes it
  int type = 0;                   ///< g_gametype
  std::int64_t start = 0;         ///< seconds since 1970; 0: not known
  Dated dated = Dated::kUnknown;  ///< how well `start` is known
  std::uint32_t length = 0;       ///< seconds, to the Exit where there is one
  bool timed = false;             ///< the log has stamps; without them `length` says nothing
  bool warmup = false;
  bool complete = false;       ///< has an Exit
  std::string exitReason;      ///< "Timelimit", "Fraglimit", ...: the Exit's text without " hit."
  bool teams = false;          ///< played in teams
  bool hasTeamScores = false;  ///< the log tells the scores of the teams
  Team winningTeam = Team::kFree;  ///< red or blue; kFree: neither, not known, or no teams
  std::int32_t redScore = 0;       ///< without `hasTeamScores` the frags', where ScoresAreFrags
  std::int32_t blueScore = 0;
  std::uint32_t kills = 0;        ///< kills of every kind, own ones and the world's included
  std::uint32_t frags = 0;        ///< kills of opponents
  std::vector<Entrant> entrants;  ///< who played, best place first; who only looked on is none
  std::vector<Pair> pairs;        ///< sorted by killer, then victim
  std::vector<LeadChange> lead;
  std::vector<KillEvent> events;
};

/// Whether every game of this g_gametype is played in teams. One of a mod's own types, from 8 on,
/// may be.
inline bool IsTeamType(int type) { return type >= 3 && type <= 7; }

/// Whether frags decide a game of this type. In those about flags and the like they are not what
/// the scores are made of, and the log tells nothing else while they are played.
inline bool ScoresAreFrags(int type) { return type < 4 || type > 7; }

/// "Free for all", "Tournament", ...; "Type 9" for one that a mod made.
std::string GameTypeName(int type);

/// A means of death for people: "Rocket splash" for "ROCKET_SPLASH". What mods put before their
/// names ("UT_MOD_", "ut_") is left out.
std::string WeaponTitle(std::string_view name);

/// The name of a weapon without the ending of its splash.
std::string_view WithoutSplash(std::string_view name);

/// An item for people: "Rocket launcher" for "weapon_rocketlauncher"; unknown ones with blanks for
/// their underscores.
std::string ItemTitle(std::string_view name);

/// The number of a means of death in the base game; 0, "UNKNOWN", for a name that it has not.
int MeansOfDeath(std::string_view name);

}  // namespace morvane
