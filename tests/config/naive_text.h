#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace config {

/// Profile text as simple as can be, to hold ProfileText against: it knows nothing but the lines,
/// and looks at all of them anew for every call.
class NaiveText {
 public:
  explicit NaiveText(std::string_view bytes);

  std::string Bytes() const;
  std::optional<std::string> Get(std::string_view section, std::string_view key) const;
  std::vector<std::string> KeyNames(std::string_view section) const;
  void Set(std::string_view section, std::string_view key, std::string_view value);
  void EmptySection(std::string_view section);
  void SpaceHeaders();

 private:
  enum class Kind { kBlank, kHeader, kComment, kKey, kOther };
  struct Line {
    Kind kind;
    std::string text;
    std::string ending;
    std::string section;   // that it stands in, headers in their own; folded
    std::string key = {};  // folded
  };

  void Add(std::size_t place, std::string_view text, std::string_view ending);
  /// The first key line of the name; the number of lines where there is none.
  std::size_t PlaceOf(const std::string& section, const std::string& key) const;
  /// Behind the last key of the first section of the name, or its header and comments. The section
  /// is made where there is none.
  std::size_t PlaceOfNewKey(std::string_view section);
  /// The ending that a line gets which is put in a place.
  std::string EndingAt(std::size_t place) const;

  std::string mark_;
  bool usable_;  // no UTF-16
  std::vector<Line> lines_;
};

}  // namespace config
