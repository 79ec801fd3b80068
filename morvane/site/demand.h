#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "morvane/site/values.h"

namespace morvane {

class Demand;

/// All that the tags of some templates name, as a whole and within the sections of a name. A value
/// that none of them names need not be made. As a tag finds its value in any of the sections around
/// it, a name counts for all of them. Names share slots: one may be taken for another one that is
/// named, which makes a value too many and none too few. Of names with dots the pieces count: an
/// object whose members' own names have dots has to have them all.
class TagNames {
 public:
  /// None.
  TagNames() = default;
  /// Those of a template whose includes are in place and that the parser takes. One that sets
  /// delimiters of its own is not looked through: it names everything.
  explicit TagNames(std::string_view text);
  /// Adds all that another one holds.
  void Add(const TagNames& other);

 private:
  friend class Demand;
  using Slots = std::bitset<2048>;

  VariableName AddPath(std::string_view name, const std::vector<VariableName>& sections);
  static std::size_t SlotOf(const VariableName& name) { return name.Hash() % Slots().size(); }

  bool isAll_ = false;
  Slots all_;
  std::unordered_map<std::uint64_t, Slots> within_;  // by the hash of the object's name
};

/// What templates may ask one object for, of all that they may ask for, and where its values go. To
/// be passed by value.
class Demand {
 public:
  /// Of the outermost object. Both must outlive the demand.
  Demand(const TagNames& names, ValueStore& store)
      : names_(names), slots_(names.all_), store_(store) {}

  bool Holds(const VariableName& name) const { return slots_.test(TagNames::SlotOf(name)); }
  /// Of the object that a variable is, or of each item of the list.
  Demand In(const VariableName& name) const;

  ValueStore& Store() const { return store_; }

 private:
  Demand(const TagNames& names, const TagNames::Slots& slots, ValueStore& store)
      : names_(names), slots_(slots), store_(store) {}

  const TagNames& names_;
  const TagNames::Slots& slots_;
  ValueStore& store_;
};

}  // namespace morvane
