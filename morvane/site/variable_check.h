#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/site/template.h"

namespace morvane {

class TemplateSource;

/// The text of docs/templates.md, whose tables name every variable that pages have.
std::string_view TemplateDocument();

/// Finds tags of templates that ask for a variable which no page has.
class VariableCheck {
 public:
  /// `userVariables`: the members of "vars"; `pages`: those of "links".
  VariableCheck(const std::vector<std::string>& userVariables,
                const std::vector<std::string>& pages);

  /// A fault for each such tag, with the nearest name that there is. A tag of a file is told once,
  /// however many templates include it. Members of "vars" and "links" may be missing where the
  /// template asks whether they are there, in a section of their name.
  std::vector<TemplateFault> FaultsOf(const TemplateSource& source);

 private:
  struct Variable {
    std::string name;
    std::string members;  // of an object: the heading of its members
  };

  void ReadDocument();
  void AddMembers(const std::string& object, const std::vector<std::string>& names);
  std::string Complaint(const std::string& name) const;

  std::map<std::string, std::vector<Variable>> headings_;
  std::set<std::string> names_;  // "a", and "a.b" for members of objects
  std::set<std::string> told_;
};

}  // namespace morvane
