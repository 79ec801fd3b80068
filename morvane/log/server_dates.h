#pragma once

#include <cstdint>
#include <string_view>

namespace morvane {

/// Reads the dates that a server writes, local time as this machine's: "20190304173140". The days
/// that were met last are remembered, for the C library looks at files and waits for other threads
/// each time that it is asked: in a log with a date for each game that took a tenth of the reading.
class ServerDates {
 public:
  /// In seconds since 1970; 0 where the text begins with no date.
  std::int64_t Read(std::string_view text);

 private:
  std::int32_t day_ = -1;       // year, month and day, one after the other
  std::int64_t midnight_ = 0;   // its beginning
  bool isDayStraight_ = false;  // no clock was put forward or back on it
};

}  // namespace morvane
