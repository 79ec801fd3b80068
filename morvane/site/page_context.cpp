#include "morvane/site/page_context.h"

#include <string_view>
#include <utility>

namespace morvane {
namespace {

using Shown = kainjow::mustache::data;

/// The member that a name with dots in it leads to. A member's own name may hold dots: user
/// variables are named freely.
std::optional<Data> FindMember(const Data& object, std::string_view name) {
  if (const std::optional<Data> member = object.Find(VariableName(name))) return member;
  const std::size_t dot = name.find('.');
  if (dot == name.npos) return std::nullopt;
  const std::optional<Data> inner = object.Find(VariableName(name.substr(0, dot)));
  return inner ? FindMember(*inner, name.substr(dot + 1)) : std::nullopt;
}

}  // namespace

PageContext::PageContext(const SharedData& shared, std::vector<Data> layers, Asked* asked)
    : shared_(shared), layers_(std::move(layers)), asked_(asked) {}

/// Enters an item of the list around the place, the first one of the list that was shown last, or
/// any other value that was shown last.
void PageContext::push(const Shown* data) {
  std::size_t index = 0;
  if (depth_ > 0 && IsItem(data, open_[depth_ - 1], index)) {
    --depth_;
  } else if (depth_ == open_.size() || !IsItem(data, open_[depth_], index)) {
    layers_.push_back(last_);
    closes_.push_back(false);
    return;
  }
  const Data list = open_[depth_].list;
  layers_.push_back(list.Item(index));
  closes_.push_back(index + 1 == list.Size());
  ++depth_;
}

void PageContext::pop() {
  layers_.pop_back();
  if (closes_.back()) --depth_;
  closes_.pop_back();
}

bool PageContext::IsItem(const Shown* data, const OpenList& open, std::size_t& index) const {
  const auto& items = open.shown.list_value();
  if (items.empty() || std::less<>()(data, &items.front()) || std::less<>()(&items.back(), data)) {
    return false;
  }
  index = static_cast<std::size_t>(data - items.data());
  return true;
}

std::optional<Data> PageContext::Find(std::string_view name) const {
  const VariableName hashed(name);
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
    if (const std::optional<Data> value = layer->Find(hashed)) return value;
  }
  return shared_.Get(name, asked_);
}

std::optional<Data> PageContext::FindPath(std::string_view name) const {
  const std::size_t dot = name.find('.');
  if (dot == name.npos) return Find(name);
  const std::optional<Data> object = Find(name.substr(0, dot));
  return object ? FindMember(*object, name.substr(dot + 1)) : std::nullopt;
}

const Shown* PageContext::get(const std::string& name) const {
  if (name == ".") return layers_.empty() ? nullptr : Show(layers_.back());
  const std::optional<Data> value = FindPath(name);
  return value ? Show(*value) : nullptr;
}

const Shown* PageContext::Show(const Data& value) const {
  static const Shown kFalse(false);
  static const Shown kAnything(true);  // to go into
  last_ = value;
  if (value.IsList()) return ShowList(value);
  if (!value.IsText()) return value.IsFalse() ? &kFalse : &kAnything;
  const_cast<std::string&>(text_.string_value()).assign(value.Text());
  return &text_;
}

const Shown* PageContext::ShowList(const Data& list) const {
  if (depth_ == open_.size()) open_.emplace_back();
  OpenList& open = open_[depth_];
  open.list = list;
  // There is no other way to change the length of one of the library's lists.
  auto& items = const_cast<kainjow::mustache::list&>(open.shown.list_value());
  while (items.size() > list.Size()) items.pop_back();
  while (items.size() < list.Size()) items.emplace_back(false);
  return &open.shown;
}

}  // namespace morvane
