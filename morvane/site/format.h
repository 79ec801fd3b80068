#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morvane {

/// A number with `decimals` digits after the point ("1.50"); what is no number gives "0".
std::string Fixed(double number, int decimals);

/// A whole number in groups of three: "1,234,567".
std::string Grouped(std::int64_t number);

/// `part` in hundredths of `whole`, one digit after the point ("33.3"); 0 of a whole of 0.
double Percent(double part, double whole);

/// Seconds as "m:ss", from an hour on as "h:mm:ss".
std::string Duration(std::int64_t seconds);

/// A point of time on a wall clock.
struct WallClock {
  int year = 0;
  int month = 0;    ///< 1 to 12
  int weekday = 0;  ///< 0: Monday
  int hour = 0;
};
WallClock LocalTime(std::int64_t secondsSince1970);

/// How points of time are shown: local time, in a strftime format.
class TimeFormat {
 public:
  /// An empty format, or one with a conversion that strftime does not know or that shows nothing,
  /// is replaced by ISO 8601 ("2024-05-17 20:15:00"); see IsUsable.
  explicit TimeFormat(std::string format);

  /// Whether the format given is the one in use.
  bool IsUsable() const { return usable_; }
  /// The time as UTF-8 text, not escaped; empty for 0, the time that is not known.
  std::string Text(std::int64_t secondsSince1970) const;

 private:
  std::string format_;
  bool usable_;
};

/// A file of the site as it stands in a link: bytes that an address cannot hold become %XX.
std::string UrlText(std::string_view fileName);

}  // namespace morvane
