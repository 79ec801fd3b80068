#include "morvane/statistics/game.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <tuple>

#include "text/text.h"

namespace morvane {
namespace {

// In the order of the base game's numbers. GRAPPLE is 23 there and 28 in the mission pack.
constexpr std::array<std::string_view, 29> kMeans = {
    "UNKNOWN",  "SHOTGUN",        "GAUNTLET", "MACHINEGUN",    "GRENADE",      "GRENADE_SPLASH",
    "ROCKET",   "ROCKET_SPLASH",  "PLASMA",   "PLASMA_SPLASH", "RAILGUN",      "LIGHTNING",
    "BFG",      "BFG_SPLASH",     "WATER",    "SLIME",         "LAVA",         "CRUSH",
    "TELEFRAG", "FALLING",        "SUICIDE",  "TARGET_LASER",  "TRIGGER_HURT", "NAIL",
    "CHAINGUN", "PROXIMITY_MINE", "KAMIKAZE", "JUICED",        "GRAPPLE"};

struct Title {
  std::string_view name;
  std::string_view title;
};

constexpr Title kWeaponTitles[] = {{"MACHINEGUN", "Machine gun"}, {"BFG", "BFG"},
                                   {"BFG_SPLASH", "BFG splash"},  {"CRUSH", "Crushed"},
                                   {"TARGET_LASER", "Laser"},     {"TRIGGER_HURT", "Deadly place"},
                                   {"NAIL", "Nail gun"}};

constexpr Title kItemTitles[] = {{"weapon_rocketlauncher", "Rocket launcher"},
                                 {"weapon_grenadelauncher", "Grenade launcher"},
                                 {"weapon_plasmagun", "Plasma gun"},
                                 {"weapon_machinegun", "Machine gun"},
                                 {"weapon_bfg", "BFG"},
                                 {"item_armor_body", "Heavy armor"},
                                 {"item_armor_combat", "Combat armor"},
                                 {"item_armor_shard", "Armor shard"},
                                 {"item_health_mega", "Mega health"},
                                 {"item_health_small", "Small health"},
                                 {"item_health_large", "Large health"},
                                 {"item_quad", "Quad damage"},
                                 {"item_enviro", "Battle suit"},
                                 {"item_invis", "Invisibility"},
                                 {"team_CTF_redflag", "Red flag"},
                                 {"team_CTF_blueflag", "Blue flag"},
                                 {"ammo_bfg", "BFG ammo"}};

template <std::size_t N>
std::string_view FindTitle(const Title (&titles)[N], std::string_view name) {
  const auto* found = std::find_if(std::begin(titles), std::end(titles),
                                   [&](const Title& t) { return t.name == name; });
  return found == std::end(titles) ? std::string_view() : found->title;
}

/// The name without the first of the prefixes that it has, if anything is left of it then.
std::string_view WithoutPrefix(std::string_view name,
                               std::initializer_list<std::string_view> prefixes) {
  for (const std::string_view prefix : prefixes) {
    const bool has =
        name.size() > prefix.size() && text::SameName(name.substr(0, prefix.size()), prefix);
    if (has) return name.substr(prefix.size());
  }
  return name;
}

/// Blanks for underscores, the first letter large, the others small.
std::string Sentence(std::string_view name) {
  std::string text(name);
  std::replace(text.begin(), text.end(), '_', ' ');
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
    text[0] = static_cast<char>(text[0] - 'a' + 'A');
  }
  return text;
}

}  // namespace

const Pair* FindPair(const std::vector<Pair>& pairs, std::uint32_t killer, std::uint32_t victim) {
  const auto key = std::tuple(killer, victim);
  const auto found =
      std::lower_bound(pairs.begin(), pairs.end(), key, [](const Pair& pair, const auto& wanted) {
        return std::tie(pair.killer, pair.victim) < wanted;
      });
  const bool exact = found != pairs.end() && std::tie(found->killer, found->victim) == key;
  return exact ? &*found : nullptr;
}

std::string GameTypeName(int type) {
  static constexpr std::array<std::string_view, 8> kTypes = {
      "Free for all",     "Tournament",   "Single player", "Team deathmatch",
      "Capture the flag", "One flag CTF", "Overload",      "Harvester"};
  if (type >= 0 && static_cast<std::size_t>(type) < kTypes.size()) {
    return std::string(kTypes[static_cast<std::size_t>(type)]);
  }
  return "Type " + std::to_string(type);
}

std::string WeaponTitle(std::string_view name) {
  name = WithoutPrefix(name, {"UT_MOD_", "ut_"});
  const std::string_view title = FindTitle(kWeaponTitles, name);
  return title.empty() ? Sentence(name) : std::string(title);
}

std::string_view WithoutSplash(std::string_view name) {
  constexpr std::string_view kSplash = "_SPLASH";
  const bool isSplash = name.size() > kSplash.size() && name.ends_with(kSplash);
  return isSplash ? name.substr(0, name.size() - kSplash.size()) : name;
}

std::string ItemTitle(std::string_view name) {
  name = WithoutPrefix(name, {"ut_"});
  if (const auto title = FindTitle(kItemTitles, name); !title.empty()) return std::string(title);
  if (name.starts_with("ammo_")) return Sentence(name.substr(5)) + " ammo";
  for (const std::string_view prefix : {"weapon_", "item_", "holdable_", "team_"}) {
    if (name.starts_with(prefix)) return Sentence(name.substr(prefix.size()));
  }
  return Sentence(name);
}

int MeansOfDeath(std::string_view name) {
  const auto* found = std::find(kMeans.begin(), kMeans.end(), name);
  return found == kMeans.end() ? 0 : static_cast<int>(found - kMeans.begin());
}

const char* FeatTitle(Feat feat) {
  constexpr std::array<const char*, kFeats> kTitles = {
      "Excellent", "Impressive", "Humiliation",   "Defence",       "Assist",
      "Capture",   "Flag taken", "Flag captured", "Flag returned", "Flag carrier killed"};
  return kTitles[static_cast<std::size_t>(feat)];
}

}  // namespace morvane
