#include "morvane/site/page_data.h"

#include <algorithm>

#include "morvane/site/format.h"

namespace morvane {

void SetDecimal(Data& object, const char* name, double number) {
  object[name] = Data(Fixed(number, 2));
}

std::string ShareText(double part, double whole) {
  return Fixed(std::clamp(Percent(part, whole), 0.0, 100.0), 1);
}

Data List(std::size_t size) {
  Data list(Data::type::list);
  const_cast<kainjow::mustache::list&>(list.list_value()).reserve(size);
  return list;
}

void Append(Data& list, Data item) {
  list.push_back(Data(false));
  const_cast<Data&>(list.list_value().back()) = std::move(item);
}

}  // namespace morvane
