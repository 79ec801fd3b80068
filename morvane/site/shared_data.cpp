#include "morvane/site/shared_data.h"

#include <algorithm>

namespace morvane {

void SharedData::Define(const std::string& name, Maker maker, From from) {
  auto entry = std::make_unique<Entry>();
  entry->name = name;
  entry->maker = std::move(maker);
  entry->from = from;
  entry->number = entries_.size();
  const std::string_view key = entry->name;
  entries_[key] = std::move(entry);
}

void SharedData::DefineFlag(const std::string& name, std::function<bool()> make) {
  Define(
      name, [make = std::move(make)](Demand /*demand*/) { return Data(make()); }, From::kItself);
}

void SharedData::DefineText(const std::string& name, std::function<std::string()> make) {
  const auto maker = [make = std::move(make)](Demand demand) {
    const std::string text = make();
    return text.empty() ? Data(false) : demand.Store().Text(text);
  };
  Define(name, maker, From::kItself);
}

std::optional<Data> SharedData::Get(std::string_view name, Asked* asked) const {
  const auto found = entries_.find(name);
  if (found == entries_.end()) return std::nullopt;
  Entry& entry = *found->second;
  if (asked != nullptr) {
    if (asked->size() <= entry.number) asked->resize(entries_.size());
    (*asked)[entry.number] = true;
  }
  std::call_once(entry.made, [&] {
    entry.value = entry.maker(Demand(names_, entry.store).In(VariableName(name)));
  });
  return entry.value;
}

std::vector<std::string> SharedData::NamesOf(const Asked& asked) const {
  std::vector<std::string> names;
  for (const auto& [name, entry] : entries_) {
    if (entry->number < asked.size() && asked[entry->number]) names.emplace_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

Digest128 SharedData::FingerprintOf(const std::vector<std::string>& names,
                                    const Digest128& games) const {
  Fingerprint print;
  for (const std::string& name : names) {
    const auto found = entries_.find(name);
    if (found == entries_.end()) return {};
    print.Add(name);
    const From from = found->second->from;
    if (from == From::kSettings) continue;
    if (from == From::kGames) {
      print.Add(games);
    } else if (const Data value = *Get(name); value.IsText()) {
      print.Add(value.Text());
    } else {
      print.Add(!value.IsFalse());
    }
  }
  return print.Value();
}

}  // namespace morvane
