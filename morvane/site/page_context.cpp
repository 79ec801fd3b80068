#include "morvane/site/page_context.h"

#include <string_view>
#include <utility>

namespace morvane {
namespace {

using Shown = kainjow::mustache::data;

/// The member that a name with dots in it leads to. A member's own name may hold dots: user
/// variables are named freely.
bool FindMember(const Data& object, std::string_view name, Data& value) {
  if (object.Find(VariableName(name), value)) return true;
  const std::size_t dot = name.find('.');
  if (dot == name.npos) return false;
  Data inner(false);
  return object.Find(VariableName(name.substr(0, dot)), inner) &&
         FindMember(inner, name.substr(dot + 1), value);
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

bool PageContext::Find(std::string_view name, Data& value) const {
  const VariableName hashed(name);
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
    if (layer->Find(hashed, value)) return true;
  }
  return shared_.Get(name, value, asked_);
}

bool PageContext::FindPath(std::string_view name, Data& value) const {
  const std::size_t dot = name.find('.');
  if (dot == name.npos) return Find(name, value);
  Data object(false);
  return Find(name.substr(0, dot), object) && FindMember(object, name.substr(dot + 1), value);
}

const Shown* PageContext::get(const std::string& name) const {
  Data value(false);
  if (name == ".") return layers_.empty() ? nullptr : Show(layers_.back());
  return FindPath(name, value) ? Show(value) : nullptr;
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
