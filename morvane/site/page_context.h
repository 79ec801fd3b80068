#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include <kainjow/mustache.hpp>

#include "morvane/site/shared_data.h"
#include "morvane/site/values.h"

namespace morvane {

/// Where a page's variables are looked up: the innermost section first, then the layers given
/// here from the last to the first, then what all pages share. "a.b" is the member b of a.
///
/// The template library asks for values of its own, each with memory of its own. It gets such as
/// stand for ours: a text when it asks for one, and lists of so many items that hold nothing; when
/// it enters an item, its place in the list tells which of ours it is.
class PageContext : public kainjow::mustache::basic_context<std::string> {
 public:
  /// The data must outlive the context. `asked`: see SharedData::Get.
  explicit PageContext(const SharedData& shared, std::vector<Data> layers = {},
                       Asked* asked = nullptr);

  void push(const kainjow::mustache::data* data) override;
  void pop() override;
  const kainjow::mustache::data* get(const std::string& name) const override;
  const kainjow::mustache::data* get_partial(const std::string& /*name*/) const override {
    return nullptr;
  }

 private:
  using Shown = kainjow::mustache::data;

  /// The sections of a list around the current place, and one in which the last list that was asked
  /// for is shown.
  struct OpenList {
    Shown shown{Shown::type::list};
    Data list = Data::EmptyList();
  };

  std::optional<Data> Find(std::string_view name) const;
  std::optional<Data> FindPath(std::string_view name) const;
  const Shown* Show(const Data& value) const;
  const Shown* ShowList(const Data& list) const;
  bool IsItem(const Shown* data, const OpenList& open, std::size_t& index) const;

  const SharedData& shared_;
  std::vector<Data> layers_;
  Asked* asked_;
  std::vector<bool> closes_;  // for each section around the place: it is of a list's last item
  std::size_t depth_ = 0;     // of lists
  // What was shown last. The library holds a text no longer than it takes to write it.
  mutable Data last_{false};
  mutable Shown text_{Shown::type::string};
  mutable std::deque<OpenList> open_;
};

}  // namespace morvane
