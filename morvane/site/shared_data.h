#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "morvane/site/demand.h"
#include "morvane/site/values.h"
#include "morvane/statistics/fingerprint.h"

namespace morvane {

/// Which of SharedData's variables were asked for, by Entry::number.
using Asked = std::vector<bool>;

/// Variables whose values are made when a template first asks for them, once for all pages. Safe
/// to read from several threads after the last Define.
class SharedData {
 public:
  /// `names`: of all templates that read the values.
  explicit SharedData(TagNames names = {}) : names_(std::move(names)) {}

  /// Makes a value, of which this is asked.
  using Maker = std::function<Data(Demand)>;
  /// What a value is made from: the settings alone; the games; or it is a text or a flag, and says
  /// itself whether it is another one than it was.
  enum class From { kSettings, kGames, kItself };

  void Define(const std::string& name, Maker maker, From from = From::kGames);
  void DefineFlag(const std::string& name, std::function<bool()> make);
  /// The text, or a false flag for an empty one.
  void DefineText(const std::string& name, std::function<std::string()> make);

  /// The value of a name without dots; none of a name that was not defined. Notes in `asked` that
  /// it was asked for.
  std::optional<Data> Get(std::string_view name, Asked* asked = nullptr) const;

  /// The names of those that were asked for, in order.
  std::vector<std::string> NamesOf(const Asked& asked) const;
  /// What the values of some variables say. `games`: stands for all games. None where a name was
  /// not defined.
  Digest128 FingerprintOf(const std::vector<std::string>& names, const Digest128& games) const;

 private:
  struct Entry {
    std::string name;
    Maker maker;
    From from;
    std::size_t number;
    std::once_flag made;
    ValueStore store;
    Data value{false};
  };

  TagNames names_;
  std::unordered_map<std::string_view, std::unique_ptr<Entry>> entries_;
};

}  // namespace morvane
