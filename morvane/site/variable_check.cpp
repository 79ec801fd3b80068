#include "morvane/site/variable_check.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "morvane/site/template_source.h"
#include "text/text.h"

namespace morvane {
namespace {

constexpr std::array<std::string_view, 2> kNamedByTheUser = {"vars.", "links."};

/// A tag that asks for a variable.
struct Tag {
  std::string name;
  std::size_t position = 0;
  bool isSection = false;
};

/// What stands between two marks in a line, from `at` on, and moves `at` behind it; empty when
/// there is none.
std::string_view Between(std::string_view line, std::string_view open, std::string_view close,
                         std::size_t& at) {
  const std::size_t start = line.find(open, at);
  if (start == line.npos) return {};
  const std::size_t end = line.find(close, start + open.size());
  if (end == line.npos) return {};
  at = end + close.size();
  return line.substr(start + open.size(), end - start - open.size());
}

std::string_view NextLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

/// The tags of a template's text. After a change of the delimiters nothing is looked through.
std::vector<Tag> TagsOf(std::string_view text) {
  constexpr std::string_view kEnds = "/!>";
  std::vector<Tag> tags;
  for (std::size_t at = text.find("{{"); at != text.npos; at = text.find("{{", at)) {
    const std::size_t start = at;
    const std::string_view inside = Between(text, "{{", "}}", at);
    if (inside.empty()) {
      if (at == start) break;
      continue;
    }
    const char kind = inside.front();
    if (kind == '=') break;
    if (kEnds.find(kind) != kEnds.npos) continue;
    const bool isSection = kind == '#' || kind == '^';
    const bool isMarked = isSection || kind == '&' || kind == '{';
    const std::string_view name = text::TrimBlanks(inside.substr(isMarked ? 1 : 0));
    if (name != "." && !name.empty()) tags.push_back({std::string(name), start, isSection});
  }
  return tags;
}

/// How many characters have to be put in, taken out, changed or swapped with the next one to make
/// one name the other.
std::size_t Distance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> beforeLast(right.size() + 1);
  std::vector<std::size_t> last(right.size() + 1);
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < left.size(); ++i) {
    beforeLast.swap(last);
    last.swap(row);
    row[0] = i + 1;
    for (std::size_t j = 0; j < right.size(); ++j) {
      const std::size_t changed = last[j] + (left[i] == right[j] ? 0 : 1);
      row[j + 1] = std::min({changed, row[j] + 1, last[j + 1] + 1});
      const bool swapped = i > 0 && j > 0 && left[i] == right[j - 1] && left[i - 1] == right[j];
      if (swapped) row[j + 1] = std::min(row[j + 1], beforeLast[j - 1] + 1);
    }
  }
  return row.back();
}

bool IsNamedByTheUser(std::string_view name) {
  return std::any_of(kNamedByTheUser.begin(), kNamedByTheUser.end(),
                     [&](std::string_view object) { return name.starts_with(object); });
}

}  // namespace

VariableCheck::VariableCheck(const std::vector<std::string>& userVariables,
                             const std::vector<std::string>& pages) {
  ReadDocument();
  for (const auto& [heading, variables] : headings_) {
    for (const Variable& variable : variables) {
      names_.insert(variable.name);
      if (variable.members.empty()) continue;
      for (const Variable& member : headings_[variable.members]) {
        names_.insert(variable.name + "." + member.name);
      }
    }
  }
  std::erase_if(names_, IsNamedByTheUser);
  AddMembers("vars", userVariables);
  AddMembers("links", pages);
}

void VariableCheck::AddMembers(const std::string& object, const std::vector<std::string>& names) {
  names_.insert(object);
  const std::string prefix = object + ".";
  for (const std::string& name : names) names_.insert(prefix + name);
}

void VariableCheck::ReadDocument() {
  std::string_view text = TemplateDocument();
  std::string heading;
  while (!text.empty()) {
    const std::string_view line = NextLine(text);
    std::size_t at = 0;
    if (line.starts_with("## ") || line.starts_with("### ")) {
      heading = line.substr(line.find(' ') + 1);
      headings_[heading];
    } else if (line.starts_with("| `")) {
      const std::string_view name = Between(line, "`", "` |", at);
      const std::string_view type = text::TrimBlanks(line.substr(at, line.find('|', at) - at));
      constexpr std::string_view kObject = "object: ";
      const std::string_view members =
          type.starts_with(kObject) ? type.substr(kObject.size()) : std::string_view();
      headings_[heading].push_back({std::string(name), std::string(members)});
    }
  }
}

std::vector<TemplateFault> VariableCheck::FaultsOf(const TemplateSource& source) {
  const std::vector<Tag> tags = TagsOf(source.Text());
  std::set<std::string> asked;
  for (const Tag& tag : tags) {
    if (tag.isSection && IsNamedByTheUser(tag.name)) asked.insert(tag.name);
  }
  std::vector<TemplateFault> faults;
  for (const Tag& tag : tags) {
    if (names_.contains(tag.name) || asked.contains(tag.name)) continue;
    TemplateFault fault = source.FaultAt(tag.position, {});
    const std::string once = fault.file + "\n" + std::to_string(fault.line) + "\n" + tag.name;
    if (!told_.insert(once).second) continue;
    fault.text = Complaint(tag.name);
    faults.push_back(std::move(fault));
  }
  return faults;
}

std::string VariableCheck::Complaint(const std::string& name) const {
  const std::string* nearest = nullptr;
  std::size_t least = 0;
  for (const std::string& known : names_) {
    const std::size_t longer = std::max(name.size(), known.size());
    const std::size_t bound = longer - std::min(name.size(), known.size());
    if (nearest != nullptr && bound >= least) continue;
    const std::size_t distance = Distance(name, known);
    if (nearest != nullptr && distance >= least) continue;
    nearest = &known;
    least = distance;
  }
  return "there is no variable \"" + name + "\"; the nearest is \"" + *nearest + "\"";
}

}  // namespace morvane
