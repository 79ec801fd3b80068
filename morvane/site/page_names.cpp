#include "morvane/site/page_names.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>
#include <utility>

#include "morvane/statistics/names.h"

namespace morvane {
namespace {

/// FNV-1a, 64 bits: the same number for the same bytes on every machine.
std::uint64_t Digest(std::string_view bytes) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  return hash;
}

std::string HexText(std::uint64_t number) {
  std::string text(16, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4) {
    *digit = "0123456789abcdef"[number & 0xF];
  }
  return text;
}

bool IsFileCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

/// One file name part for each name. Names made to meet in one part are told apart by a number,
/// given in the order of the names, so that it does not depend on anyone's rank.
std::vector<std::string> Parts(const std::vector<std::string_view>& names) {
  std::vector<std::size_t> order(names.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&](std::size_t left, std::size_t right) { return names[left] < names[right]; });
  std::vector<std::string> parts(names.size());
  std::unordered_set<std::string> taken;
  for (const std::size_t index : order) {
    const std::string part = FileNamePart(names[index]);
    std::string free = part;
    for (int number = 2; !taken.insert(free).second; ++number) {
      free = part + "-" + std::to_string(number);
    }
    parts[index] = std::move(free);
  }
  return parts;
}

template <class Items, class Member>
std::vector<std::string_view> NamesOf(const Items& items, Member member) {
  std::vector<std::string_view> names;
  names.reserve(items.size());
  for (const auto& item : items) names.emplace_back(item.*member);
  return names;
}

}  // namespace

std::string FileNamePart(std::string_view name) {
  constexpr std::size_t kMostPlain = 40;
  const std::string folded = LowerCase(name);
  std::string part = folded.substr(0, kMostPlain);
  std::replace_if(
      part.begin(), part.end(), [](char c) { return !IsFileCharacter(c); }, '_');
  // A part without "-" is the name itself; every other one carries the number after its "-".
  return part == folded && !part.empty() ? part : part + "-" + HexText(Digest(folded));
}

PageNames::PageNames(const Statistics& statistics, std::string extension)
    : extension_(std::move(extension)),
      players_(Parts(NamesOf(statistics.players, &Player::plain))),
      maps_(Parts(NamesOf(statistics.maps, &Map::name))) {
  games_.reserve(statistics.games.size());
  for (const Game& game : statistics.games) games_.push_back(game.number);
}

std::string PageNames::Page(std::string_view templateName) const {
  return std::string(templateName) + extension_;
}

std::string PageNames::Numbered(const std::string& page, std::size_t number) const {
  if (number == 0) return page;
  return page.substr(0, page.size() - extension_.size()) + "-" + std::to_string(number) +
         extension_;
}

std::string PageNames::Join(std::string_view templateName, std::string_view part) const {
  return std::string(templateName) + "_" + std::string(part) + extension_;
}

std::string PageNames::PlayerPage(std::string_view templateName, std::uint32_t player) const {
  return Join(templateName, players_[player]);
}

std::string PageNames::MapPage(std::string_view templateName, std::uint32_t map) const {
  return Join(templateName, maps_[map]);
}

std::string PageNames::GamePage(std::string_view templateName, std::uint32_t game) const {
  return Join(templateName, std::to_string(games_[game]));
}

}  // namespace morvane
