#include "morvane/site/values.h"

#include <stdexcept>

namespace morvane {
namespace {

/// A place in a store.
std::uint32_t Place(std::size_t place) {
  if (place >= 0xFFFFFFFF) throw std::length_error("a page has too many values");
  return static_cast<std::uint32_t>(place);
}

}  // namespace

std::string_view Data::Text() const {
  return std::string_view(store_->text_).substr(first_, size_);
}

Data Data::Item(std::size_t index) const { return store_->items_[first_ + index]; }

std::optional<Data> Data::Find(const VariableName& name) const {
  if (kind_ != Kind::kObject) return std::nullopt;
  for (std::uint32_t at = first_; at != ValueStore::kNone; at = store_->members_[at].next) {
    if (store_->members_[at].name == name.Hash()) return store_->members_[at].value;
  }
  return std::nullopt;
}

Data ValueStore::Text(std::string_view text) {
  const std::size_t first = text_.size();
  text_.append(text);
  return {this, Data::Kind::kText, Place(first), Place(text.size())};
}

// What was set last is found first.
void ValueStore::SetMember(Data& object, const VariableName& name, const Data& value) {
  members_.push_back({name.Hash(), value, object.first_});
  object.first_ = Place(members_.size() - 1);
}

Data ValueStore::List(const std::vector<Data>& items) {
  const std::size_t first = items_.size();
  items_.insert(items_.end(), items.begin(), items.end());
  return {this, Data::Kind::kList, Place(first), Place(items.size())};
}

void ValueStore::Clear() {
  text_.clear();
  members_.clear();
  items_.clear();
}

}  // namespace morvane
