#include "morvane/site/demand.h"

#include <algorithm>
#include <vector>

namespace morvane {
namespace {

constexpr std::string_view kOpen = "{{";
constexpr std::string_view kClose = "}}";
constexpr std::string_view kCloseOfThree = "}}}";

/// A tag as the parser takes it: its first character where that says what it is for, and its name.
struct Tag {
  char kind = '\0';
  std::string_view name;
};

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kSpace = " \t\n\v\f\r";
  text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
  return text.substr(0, text.find_last_not_of(kSpace) + 1);
}

/// The next tag of a text, which is gone over; false where there is none.
bool TakeTag(std::string_view& text, Tag& tag) {
  const std::size_t open = text.find(kOpen);
  if (open == text.npos) return false;
  text.remove_prefix(open + kOpen.size());
  const bool isOfThree = text.starts_with('{');
  if (isOfThree) text.remove_prefix(1);
  const std::string_view close = isOfThree ? kCloseOfThree : kClose;
  const std::size_t end = text.find(close);
  if (end == text.npos) return false;
  tag.name = Trimmed(text.substr(0, end));
  tag.kind = tag.name.empty() ? '\0' : tag.name.front();
  const std::string_view kinds = isOfThree ? "=" : "=#^/&!";
  if (kinds.find(tag.kind) == kinds.npos) {
    tag.kind = '\0';
  } else {
    tag.name = Trimmed(tag.name.substr(1));
  }
  text.remove_prefix(end + close.size());
  return true;
}

}  // namespace

TagNames::TagNames(std::string_view text) {
  std::vector<VariableName> sections;  // the objects and lists that are around
  Tag tag;
  while (TakeTag(text, tag)) {
    if (tag.kind == '=') {
      isAll_ = true;
      all_.set();
      return;
    }
    if (tag.kind == '/' && !sections.empty()) sections.pop_back();
    if (tag.kind == '/' || tag.kind == '!') continue;
    const VariableName last = AddPath(tag.name, sections);
    if (tag.kind == '#' || tag.kind == '^') sections.push_back(last);
  }
}

/// The first member of a name with dots in it is sought in all sections around, each other one in
/// the object before it. Returns the last one.
VariableName TagNames::AddPath(std::string_view name, const std::vector<VariableName>& sections) {
  std::size_t dot = std::min(name.find('.'), name.size());
  VariableName member(name.substr(0, dot));
  all_.set(SlotOf(member));
  for (const VariableName& section : sections) within_[section.Hash()].set(SlotOf(member));
  while (dot < name.size()) {
    name.remove_prefix(dot + 1);
    dot = std::min(name.find('.'), name.size());
    const VariableName next(name.substr(0, dot));
    within_[member.Hash()].set(SlotOf(next));
    member = next;
  }
  return member;
}

void TagNames::Add(const TagNames& other) {
  isAll_ = isAll_ || other.isAll_;
  all_ |= other.all_;
  for (const auto& [name, slots] : other.within_) within_[name] |= slots;
}

Demand Demand::In(const VariableName& name) const {
  static const TagNames::Slots kNone;
  if (names_.isAll_) return {names_, names_.all_, store_};
  const auto found = names_.within_.find(name.Hash());
  return {names_, found == names_.within_.end() ? kNone : found->second, store_};
}

}  // namespace morvane
