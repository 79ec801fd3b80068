#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/site/variable_name.h"

namespace morvane {

class ValueStore;

/// The value of a template's variable: a flag, a text, an object or a list. All but flags stand in
/// a store; it is no more than the place, and is copied freely. Good as long as the store is not
/// emptied.
class Data {
 public:
  enum class Kind : std::uint8_t { kFlag, kText, kObject, kList };

  explicit Data(bool flag) : first_(flag ? 1 : 0) {}
  static Data EmptyList() { return {nullptr, Kind::kList, 0, 0}; }

  bool IsFalse() const { return kind_ == Kind::kFlag && first_ == 0; }
  bool IsText() const { return kind_ == Kind::kText; }
  bool IsList() const { return kind_ == Kind::kList; }
  bool IsFlag() const { return kind_ == Kind::kFlag; }

  std::string_view Text() const;              ///< of a text
  std::size_t Size() const { return size_; }  ///< of a list
  Data Item(std::size_t index) const;         ///< of a list
  /// A member; none of what is no object.
  std::optional<Data> Find(const VariableName& name) const;

 private:
  friend class ValueStore;
  Data(const ValueStore* store, Kind kind, std::uint32_t first, std::uint32_t size)
      : store_(store), first_(first), size_(size), kind_(kind) {}

  const ValueStore* store_ = nullptr;
  std::uint32_t first_;  // of a text its first byte, of a list its first item, of an object the
                         // member that was set last
  std::uint32_t size_ = 0;
  Kind kind_ = Kind::kFlag;
};

/// Where the values of a page stand side by side: a page has thousands of them, and a site tens of
/// thousands of pages, so none has memory of its own. Those of one store hold 4 GB of texts at
/// most.
class ValueStore {
 public:
  ValueStore() = default;
  ValueStore(const ValueStore&) = delete;
  ValueStore& operator=(const ValueStore&) = delete;

  Data Text(std::string_view text);
  Data NewObject() { return {this, Data::Kind::kObject, kNone, 0}; }
  /// Sets a member, in the place of one of this name.
  void SetMember(Data& object, const VariableName& name, const Data& value);
  Data List(const std::vector<Data>& items);

  /// All values of the store are gone.
  void Clear();

 private:
  friend class Data;
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;
  struct Member {
    std::uint64_t name;  // its hash
    Data value;
    std::uint32_t next;
  };

  std::string text_;
  std::vector<Member> members_;
  std::vector<Data> items_;
};

}  // namespace morvane
