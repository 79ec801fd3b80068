#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "morvane/site/template.h"

namespace morvane {

// The values of template variables are texts and flags: numbers are shown as they are written
// here. A variable without a value is a false flag rather than missing, so that a template does
// not find the variable of the same name that stands further out.

inline void Set(Data& object, const char* name, std::string_view text) {
  object[name] = Data(std::string(text));
}
template <std::integral Number>
requires(!std::same_as<Number, bool>) void Set(Data& object, const char* name, Number number) {
  object[name] = Data(std::to_string(number));
}
void Set(Data& object, const char* name, const char* text) = delete;  // taken for a flag

inline void SetData(Data& object, const char* name, Data value) { object[name] = std::move(value); }
inline void SetFlag(Data& object, const char* name, bool flag) { object[name] = Data(flag); }
/// The text, or a false flag for an empty one.
inline void SetOptional(Data& object, const char* name, std::string_view text) {
  object[name] = text.empty() ? Data(false) : Data(std::string(text));
}
/// A number with two digits after the point.
void SetDecimal(Data& object, const char* name, double number);
/// `part` of `whole` in percent, one digit after the point, 0 to 100: the length of a bar.
std::string ShareText(double part, double whole);
/// The same as a value.
template <class Part, class Whole>
void SetPercent(Data& object, const char* name, Part part, Whole whole) {
  Set(object, name, ShareText(static_cast<double>(part), static_cast<double>(whole)));
}

/// The length of a bar, and the variable that holds it.
struct Bar {
  const char* name;
  std::string text;
};

/// An empty list with room for `size` items: a list that grows copies all that it holds.
Data List(std::size_t size);
/// Adds an item without copying it, which the list's own way of adding does.
void Append(Data& list, Data item);

}  // namespace morvane
