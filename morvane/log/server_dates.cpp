#include "morvane/log/server_dates.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>

namespace morvane {
namespace {

/// Year, month, day, hour, minute, second.
using Parts = std::array<int, 6>;

bool ReadParts(std::string_view text, Parts& parts) {
  constexpr std::array<std::size_t, 6> kDigits = {4, 2, 2, 2, 2, 2};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string_view digits = text.substr(0, kDigits[i]);
    if (digits.size() < kDigits[i] || digits.find_first_not_of("0123456789") != digits.npos) {
      return false;
    }
    for (const char digit : digits) parts[i] = parts[i] * 10 + (digit - '0');
    text.remove_prefix(kDigits[i]);
  }
  const auto [year, month, day, hour, minute, second] = parts;
  const auto date = std::chrono::year(year) / month / day;
  return date.ok() && hour <= 23 && minute <= 59 && second <= 60;
}

std::int64_t LocalTime(const Parts& parts) {
  const auto [year, month, day, hour, minute, second] = parts;
  std::tm time = {};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = second;
  time.tm_isdst = -1;
  return std::mktime(&time);
}

}  // namespace

std::int64_t ServerDates::Read(std::string_view text) {
  constexpr std::int64_t kDay = std::int64_t{24} * 3600;
  Parts parts{};
  if (!ReadParts(text, parts)) return 0;
  const auto [year, month, day, hour, minute, second] = parts;
  const std::int32_t number = (year * 100 + month) * 100 + day;
  if (number != day_) {
    day_ = number;
    midnight_ = LocalTime({year, month, day, 0, 0, 0});
    isDayStraight_ = LocalTime({year, month, day, 23, 59, 59}) == midnight_ + kDay - 1;
  }
  const bool isKnown = isDayStraight_ && second <= 59;
  const std::int64_t ofDay = (std::int64_t{hour} * 60 + minute) * 60 + second;
  return std::max<std::int64_t>(0, isKnown ? midnight_ + ofDay : LocalTime(parts));
}

}  // namespace morvane
