#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "morvane/site/site_facts.h"

namespace morvane {

/// The values of the files that other programs read, see stats_json.h.
using Json = nlohmann::ordered_json;

/// What is not known is null.
inline Json Known(bool isKnown, Json value) { return isKnown ? std::move(value) : Json(); }

/// With two digits behind the point.
inline Json Rounded(double value) { return std::round(value * 100) / 100; }

/// Sets NAME, in seconds since 1970, and NAME_is: how well that is known.
void SetTime(Json& object, const std::string& name, std::int64_t secondsSince1970, Dated dated);

/// The address of a page; null for none.
Json PageJson(const std::string& file);

/// A game with all that its page tells.
Json GameJson(const SiteFacts& facts, std::uint32_t game);

/// The text of a value on one line. Names come from strangers, and somebody may put this text into
/// a page as it stands: no tag can begin in it.
std::string TextOf(const Json& value);

/// Appends a list with a line for each entry, by and by: only the text of a whole site is ever
/// held, not its values.
template <class Make>
void AppendList(std::string& text, std::string_view name, std::size_t count, const Make& make) {
  constexpr std::size_t kFirst = 100;  // by which the room for all is reckoned
  text += ",\n\"" + std::string(name) + "\": [";
  const std::size_t begin = text.size();
  for (std::size_t i = 0; i < count; ++i) {
    // A text of many megabytes that grows by doubling is held three times over.
    if (i == kFirst) text.reserve(begin + (text.size() - begin) / kFirst * (count + count / 16));
    text += i == 0 ? "\n" : ",\n";
    text += TextOf(make(i));
  }
  text += "\n]";
}

}  // namespace morvane
