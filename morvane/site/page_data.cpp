#include "morvane/site/page_data.h"

#include <algorithm>

#include "morvane/site/format.h"

namespace morvane {

void SetDecimal(Object& object, const VariableName& name, double number) {
  if (object.Wants(name)) object.Put(name, Fixed(number, 2));
}

std::string ShareText(double part, double whole) {
  return Fixed(std::clamp(Percent(part, whole), 0.0, 100.0), 1);
}

}  // namespace morvane
