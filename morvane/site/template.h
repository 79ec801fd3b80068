#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <kainjow/mustache.hpp>

#include "morvane/statistics/fingerprint.h"

namespace morvane {

/// The values of a template's variables: texts, flags, objects and lists of them.
using Data = kainjow::mustache::data;

class TemplateSource;

/// What is wrong with a template, for a message.
struct TemplateFault {
  std::string file;  ///< path of the file to mend
  int line = 0;      ///< counted from 1; 0: the file as a whole
  std::string text;
};

/// Which of SharedData's variables were asked for, by Entry::number.
using Asked = std::vector<bool>;

/// Variables whose values are made when a template first asks for them, once for all pages. Safe
/// to read from several threads after the last Define.
class SharedData {
 public:
  using Maker = std::function<Data()>;
  /// What a value is made from: the settings alone; the games; or it is a text or a flag, and says
  /// itself whether it is another one than it was.
  enum class From { kSettings, kGames, kText };

  void Define(const std::string& name, Maker maker, From from = From::kGames);
  /// The value of a name without dots; nullptr for a name that was not defined. Notes in `asked`
  /// that it was asked for.
  const Data* Get(const std::string& name, Asked* asked = nullptr) const;

  /// The names of those that were asked for, in order.
  std::vector<std::string> NamesOf(const Asked& asked) const;
  /// What the values of some variables say. `games`: stands for all games. None where a name was
  /// not defined.
  Digest128 FingerprintOf(const std::vector<std::string>& names, const Digest128& games) const;

 private:
  struct Entry {
    Maker maker;
    From from;
    std::size_t number;
    std::once_flag made;
    Data value;
  };
  std::unordered_map<std::string, std::unique_ptr<Entry>> entries_;
};

/// Where a page's variables are looked up: the innermost section first, then the layers given
/// here from the last to the first, then what all pages share. "a.b" is the member b of a.
class PageContext : public kainjow::mustache::basic_context<std::string> {
 public:
  /// The data must outlive the context. `asked`: see SharedData::Get.
  explicit PageContext(const SharedData& shared, std::vector<const Data*> layers = {},
                       Asked* asked = nullptr)
      : shared_(shared), layers_(std::move(layers)), asked_(asked) {}

  void push(const Data* data) override { layers_.push_back(data); }
  void pop() override { layers_.pop_back(); }
  const Data* get(const std::string& name) const override;
  const Data* get_partial(const std::string& /*name*/) const override { return nullptr; }

 private:
  const Data* Find(const std::string& name) const;

  const SharedData& shared_;
  std::vector<const Data*> layers_;
  Asked* asked_;
};

/// A mustache template read from a file. `{{> NAME}}` puts another file of the same folder in its
/// place; the comments `{{! title: TEXT }}` and `{{! group: TEXT }}` say how the site's
/// navigation calls the page, `{{! split: LIST }}` which list has several pages. Copies are
/// independent: one for each thread that renders.
class Template {
 public:
  /// Reads NAME.htmlt of a folder, or NAME where the name has an extension. The result says why
  /// that fails: the file or one that it includes is missing or is no valid template.
  std::optional<TemplateFault> Load(const std::filesystem::path& folder, std::string_view name);
  /// The same from a source that was read. `name`: of the pages.
  std::optional<TemplateFault> Parse(const TemplateSource& source, std::string name);

  /// The name of its pages: that of the file, without folder and extension.
  const std::string& Name() const { return name_; }
  /// The page's title in the navigation; the name where the template does not say.
  const std::string& Title() const { return title_; }
  /// The heading it stands under in the navigation; the title where the template does not say.
  const std::string& Group() const { return group_; }

  /// The list that is parted into pages of kRowsPerPage rows, `players` or `games`; empty: none.
  const std::string& Split() const { return split_; }

  /// Of all that it is read from.
  const Digest128& Fingerprint() const { return fingerprint_; }

  /// Whether a tag of it may ask for a variable, or a member, of this name.
  bool MayAskFor(const std::string& name) const;
  /// What its pages have asked for of what all pages share, in this copy.
  const Asked& WasAsked() const { return asked_; }

  /// The page. Variables without a value give nothing.
  std::string Render(const SharedData& shared, std::vector<const Data*> layers = {});

 private:
  void ReadWords(std::string_view text);

  std::string name_;
  std::string title_;
  std::string group_;
  std::string split_;
  Digest128 fingerprint_;
  std::set<std::string> words_;  // of its tags
  bool hasOtherTags_ = false;    // whose words are not known
  Asked asked_;
  std::size_t typicalSize_ = 0;  // of the pages rendered so far
  std::unique_ptr<kainjow::mustache::mustache> parsed_;

 public:
  Template() = default;
  Template(const Template& other);
  Template& operator=(const Template&) = delete;
  Template(Template&&) = default;
  Template& operator=(Template&&) = default;
  ~Template() = default;
};

}  // namespace morvane
