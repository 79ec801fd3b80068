#include "morvane/statistics/game.h"

#include <gtest/gtest.h>

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
  EXPECT_EQ(ItemTitle("weapon_rocketlauncher"), "Rocket launcher");
  EXPECT_EQ(ItemTitle("ammo_rockets"), "Rockets ammo");
  EXPECT_EQ(ItemTitle("holdable_medkit"), "Medkit");
  EXPECT_EQ(GameTypeName(4), "Capture the flag");
  EXPECT_EQ(GameTypeName(-3), "Type -3");
  EXPECT_EQ(MeansOfDeath("TRIGGER_HURT"), 22);
  EXPECT_EQ(MeansOfDeath("NONE_SUCH"), 0);
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
