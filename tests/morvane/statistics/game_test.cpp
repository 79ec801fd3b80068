#include "morvane/statistics/game.h"

#include <gtest/gtest.h>

#include "morvane/statistics/figures.h"
#include "morvane/statistics/vocabulary.h"

namespace morvane {
namespace {

TEST(Names, LaterOnesShareANumber) {
  Names names;
  for (std::size_t i = 0; i < 2 * Names::kMost; ++i) names.Number("W" + std::to_string(i));
  EXPECT_EQ(names.size(), Names::kMost);
  EXPECT_EQ(names.Number("W7"), 7);
  EXPECT_EQ(names[names.Number("ANOTHER")], "OTHER");
}

TEST(Titles, AreForPeople) {
  EXPECT_EQ(WeaponTitle("ROCKET_SPLASH"), "Rocket splash");
  EXPECT_EQ(WeaponTitle("MACHINEGUN"), "Machine gun");
  EXPECT_EQ(WeaponTitle("UT_MOD_KNIFE_THROWN"), "Knife thrown");
  EXPECT_EQ(WeaponTitle("UT_MOD_NAIL"), "Nail gun");
  EXPECT_EQ(WeaponTitle("ut_ak103"), "Ak103");
  EXPECT_EQ(WeaponTitle("UT_MOD_"), "Mod ");
  EXPECT_EQ(ItemTitle("ut_weapon_ak103"), "Ak103");
  EXPECT_EQ(ItemTitle("weapon_rocketlauncher"), "Rocket launcher");
  EXPECT_EQ(ItemTitle("ammo_rockets"), "Rockets ammo");
  EXPECT_EQ(ItemTitle("holdable_medkit"), "Medkit");
  EXPECT_EQ(GameTypeName(4), "Capture the flag");
  EXPECT_EQ(GameTypeName(-3), "Type -3");
  EXPECT_EQ(MeansOfDeath("TRIGGER_HURT"), 22);
  EXPECT_EQ(MeansOfDeath("NONE_SUCH"), 0);
}

TEST(JoinSplash, TakesAWeaponAndItsSplashAsOne) {
  Names weapons;
  for (const char* name : {"ROCKET_SPLASH", "RAILGUN", "ROCKET", "BFG_SPLASH", "_SPLASH"}) {
    weapons.Number(name);
  }
  std::string text;
  for (const WeaponUse& use :
       JoinSplash({{0, 3, 4}, {1, 5, 5}, {2, 4, 2}, {3, 1, 1}, {4, 0, 9}}, SplashOf(weapons))) {
    text += std::string(WithoutSplash(weapons[use.weapon])) + " " + std::to_string(use.kills) +
            "/" + std::to_string(use.deaths) + " ";
  }
  EXPECT_EQ(text, "ROCKET 7/6 RAILGUN 5/5 BFG 1/1 _SPLASH 0/9 ");
}

TEST(FindPair, FindsInASortedList) {
  const std::vector<Pair> pairs = {{0, 1, 5, 0}, {0, 3, 6, 0}, {2, 0, 7, 1}};
  ASSERT_NE(FindPair(pairs, 2, 0), nullptr);
  EXPECT_EQ(FindPair(pairs, 0, 3)->kills, 6U);
  EXPECT_EQ(FindPair(pairs, 0, 2), nullptr);
  EXPECT_EQ(FindPair({}, 0, 0), nullptr);
}

}  // namespace
}  // namespace morvane
