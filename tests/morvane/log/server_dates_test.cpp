#include "morvane/log/server_dates.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

namespace morvane {
namespace {

// On the days on which clocks are put forward and back, around them, and at their ends.
TEST(ServerDates, AreLocalTimesOnAnyDay) {
  const char* const former = std::getenv("TZ");
  const std::string zone = former != nullptr ? former : "";
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  ServerDates dates;
  for (const std::int64_t day : {1774652400, 1774738800, 1774821600, 1792879200, 1793055600}) {
    for (std::int64_t second = day; second < day + 90000; second += 1799) {
      const std::time_t time = second;
      std::tm parts = {};
      localtime_r(&time, &parts);
      char text[32];
      std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &parts);
      parts.tm_isdst = -1;
      EXPECT_EQ(dates.Read(text), std::mktime(&parts)) << text;
    }
  }
  EXPECT_EQ(dates.Read("20260329 3000"), 0);
  former != nullptr ? setenv("TZ", zone.c_str(), 1) : unsetenv("TZ");
}

}  // namespace
}  // namespace morvane
