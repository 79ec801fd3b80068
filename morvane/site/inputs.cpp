#include "morvane/site/inputs.h"

#include <algorithm>
#include <fnmatch.h>

#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

class InputErrors : public std::error_category {
 public:
  const char* name() const noexcept override { return "input"; }
  std::string message(int /*number*/) const override {
    return "the engine reads or keeps a file of this name";
  }
};

std::string Folded(const fs::path& path) { return text::FoldCase(path.string()); }

}  // namespace

std::error_code IsAnInput() {
  static const InputErrors category;
  return {1, category};
}

void Inputs::Add(const fs::path& file) {
  const std::string name = file.filename().string();
  std::error_code error;
  const fs::path folder = fs::weakly_canonical(file.parent_path(), error);
  if (error || name.empty()) return;
  files_.insert(Folded(folder / name));
  const fs::path target = fs::canonical(file, error);  // where the name is a link's
  if (!error) files_.insert(Folded(target));
  if (name.find_first_of("*?[") != name.npos) patterns_.emplace_back(folder, Folded(name));
}

bool Inputs::Cover(const fs::path& folder, std::string_view name) const {
  if (files_.contains(Folded(folder / name))) return true;
  const std::string folded = text::FoldCase(name);
  return std::any_of(patterns_.begin(), patterns_.end(), [&](const auto& pattern) {
    return pattern.first == folder &&
           fnmatch(pattern.second.c_str(), folded.c_str(), FNM_PERIOD | FNM_NOESCAPE) == 0;
  });
}

}  // namespace morvane
