#pragma once

#include <concepts>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "morvane/site/demand.h"
#include "morvane/site/template.h"
#include "morvane/site/values.h"

namespace morvane {

// The values of template variables are texts and flags: numbers are shown as they are written
// here. A variable without a value is a false flag rather than missing, so that a template does
// not find the variable of the same name that stands further out.

/// An object under construction, which takes only the variables that templates may ask it for.
class Object {
 public:
  explicit Object(Demand demand) : demand_(demand), data_(demand.Store().NewObject()) {}

  /// Whether a variable need be made.
  bool Wants(const VariableName& name) const { return demand_.Holds(name); }
  /// What is asked of the object, or of the items of the list, that a variable is.
  Demand In(const VariableName& name) const { return demand_.In(name); }
  void Put(const VariableName& name, Data value) { demand_.Store().SetMember(data_, name, value); }
  void Put(const VariableName& name, std::string_view text) {
    Put(name, demand_.Store().Text(text));
  }

  const Data& Done() const { return data_; }

 private:
  Demand demand_;
  Data data_;
};

/// A list under construction.
class List {
 public:
  List(Demand demand, std::size_t size) : store_(demand.Store()) { items_.reserve(size); }

  void Append(const Object& row) { items_.push_back(row.Done()); }
  Data Done() const { return store_.List(items_); }

 private:
  ValueStore& store_;
  std::vector<Data> items_;
};

// Each sets a variable, where it is wanted. A function as the value is called only then.

inline void Set(Object& object, const VariableName& name, std::string_view text) {
  if (object.Wants(name)) object.Put(name, text);
}
template <std::integral Number>
requires(!std::same_as<Number, bool>) void Set(Object& object, const VariableName& name,
                                               Number number) {
  if (object.Wants(name)) object.Put(name, std::to_string(number));
}
template <std::invocable Make>
void Set(Object& object, const VariableName& name, const Make& make) {
  if (object.Wants(name)) Set(object, name, make());
}

inline void SetFlag(Object& object, const VariableName& name, bool flag) {
  if (object.Wants(name)) object.Put(name, Data(flag));
}
/// The text, or a false flag for an empty one.
inline void SetOptional(Object& object, const VariableName& name, std::string_view text) {
  if (text.empty()) {
    SetFlag(object, name, false);
  } else {
    Set(object, name, text);
  }
}
template <std::invocable Make>
void SetOptional(Object& object, const VariableName& name, const Make& make) {
  if (object.Wants(name)) SetOptional(object, name, make());
}
/// What `make` makes for what is asked of it.
template <std::invocable<Demand> Make>
void SetData(Object& object, const VariableName& name, const Make& make) {
  if (object.Wants(name)) object.Put(name, make(object.In(name)));
}
/// A number with two digits after the point.
void SetDecimal(Object& object, const VariableName& name, double number);
/// `part` of `whole` in percent, one digit after the point, 0 to 100: the length of a bar.
std::string ShareText(double part, double whole);
/// The same as a value.
template <class Part, class Whole>
void SetPercent(Object& object, const VariableName& name, Part part, Whole whole) {
  if (!object.Wants(name)) return;
  Set(object, name, ShareText(static_cast<double>(part), static_cast<double>(whole)));
}

/// The length of a bar, and the variable that holds it.
struct Bar {
  VariableName name;
  std::string text;
};

/// A list with a row for each item, which `fill(row, item)` fills.
template <class Items, class Fill>
Data Rows(const Items& items, Demand demand, const Fill& fill) {
  List list(demand, std::size(items));
  for (const auto& item : items) {
    Object row(demand);
    fill(row, item);
    list.Append(row);
  }
  return list.Done();
}
template <class Items, class Fill>
void SetRows(Object& object, const VariableName& name, const Items& items, const Fill& fill) {
  SetData(object, name, [&](Demand demand) { return Rows(items, demand, fill); });
}

}  // namespace morvane
