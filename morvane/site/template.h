#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <kainjow/mustache.hpp>

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

/// Variables whose values are made when a template first asks for them, once for all pages. Safe
/// to read from several threads after the last Define.
class SharedData {
 public:
  using Maker = std::function<Data()>;

  void Define(const std::string& name, Maker maker);
  /// The value of a name without dots; nullptr for a name that was not defined.
  const Data* Get(const std::string& name) const;

 private:
  struct Entry {
    Maker maker;
    std::once_flag made;
    Data value;
  };
  std::unordered_map<std::string, std::unique_ptr<Entry>> entries_;
};

/// Where a page's variables are looked up: the innermost section first, then the layers given
/// here from the last to the first, then what all pages share. "a.b" is the member b of a.
class PageContext : public kainjow::mustache::basic_context<std::string> {
 public:
  /// The data must outlive the context.
  explicit PageContext(const SharedData& shared, std::vector<const Data*> layers = {})
      : shared_(shared), layers_(std::move(layers)) {}

  void push(const Data* data) override { layers_.push_back(data); }
  void pop() override { layers_.pop_back(); }
  const Data* get(const std::string& name) const override;
  const Data* get_partial(const std::string& /*name*/) const override { return nullptr; }

 private:
  const Data* Find(const std::string& name) const;

  const SharedData& shared_;
  std::vector<const Data*> layers_;
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

  /// The page. Variables without a value give nothing.
  std::string Render(PageContext& context);

 private:
  std::string name_;
  std::string title_;
  std::string group_;
  std::string split_;
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
