#include "morvane/site/format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <ctime>

#include "morvane/site/page_text.h"

namespace morvane {
namespace {

constexpr const char* kIsoFormat = "%Y-%m-%d %H:%M:%S";
constexpr std::string_view kFlags = "_-0^#123456789EO";
constexpr std::string_view kConversions = "aAbBcCdDeFgGhHIjklmMnprRsStTuUVwWxXyYzZ%P";

/// Whether every "%" of a format begins a conversion that strftime knows.
bool KnowsConversions(std::string_view format) {
  for (std::size_t at = format.find('%'); at != format.npos; at = format.find('%', at + 1)) {
    at = format.find_first_not_of(kFlags, at + 1);
    if (at == format.npos || kConversions.find(format[at]) == kConversions.npos) return false;
  }
  return true;
}

std::string FormatTime(const std::string& format, std::int64_t seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  std::tm parts = {};
  if (localtime_r(&time, &parts) == nullptr) return {};
  std::array<char, 512> buffer;
  const std::size_t size = std::strftime(buffer.data(), buffer.size(), format.c_str(), &parts);
  return PageText({buffer.data(), size});
}

bool IsUsableFormat(const std::string& format) {
  return KnowsConversions(format) &&
         FormatTime(format, 1).find_first_not_of(' ') != std::string::npos;
}

}  // namespace

std::string Fixed(double number, int decimals) {
  std::array<char, 352> buffer;  // the greatest double has 309 digits
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                    std::isfinite(number) ? number : 0, std::chars_format::fixed, decimals);
  return {buffer.data(), end};
}

std::string Grouped(std::int64_t number) {
  std::string text = std::to_string(number);
  const std::size_t first = text.front() == '-' ? 1 : 0;
  for (std::size_t at = text.size(); at > first + 3;) text.insert(at -= 3, 1, ',');
  return text;
}

double Percent(double part, double whole) { return whole > 0 ? 100 * part / whole : 0; }

std::string Duration(std::int64_t seconds) {
  const auto two = [](std::int64_t number) {
    return (number < 10 ? ":0" : ":") + std::to_string(number);
  };
  const std::int64_t minutes = seconds / 60;
  if (minutes < 60) return std::to_string(minutes) + two(seconds % 60);
  return std::to_string(minutes / 60) + two(minutes % 60) + two(seconds % 60);
}

WallClock LocalTime(std::int64_t secondsSince1970) {
  const auto time = static_cast<std::time_t>(secondsSince1970);
  std::tm parts = {};
  localtime_r(&time, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, (parts.tm_wday + 6) % 7, parts.tm_hour};
}

TimeFormat::TimeFormat(std::string format)
    : format_(std::move(format)), usable_(IsUsableFormat(format_)) {
  if (!usable_) format_ = kIsoFormat;
}

std::string TimeFormat::Text(std::int64_t secondsSince1970) const {
  return secondsSince1970 == 0 ? std::string() : FormatTime(format_, secondsSince1970);
}

std::string UrlText(std::string_view fileName) {
  std::string url;
  for (const char c : fileName) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                       c == '_' || c == '-' || c == '.' || c == '~' || c == '/';
    if (plain) {
      url += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      url += '%';
      url += "0123456789ABCDEF"[byte >> 4];
      url += "0123456789ABCDEF"[byte & 0xF];
    }
  }
  return url;
}

}  // namespace morvane
