#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <kainjow/mustache.hpp>

#include "morvane/site/demand.h"
#include "morvane/site/shared_data.h"
#include "morvane/statistics/fingerprint.h"

namespace morvane {

class TemplateSource;

/// What is wrong with a template, for a message.
struct TemplateFault {
  std::string file;  ///< path of the file to mend
  int line = 0;      ///< counted from 1; 0: the file as a whole
  std::string text;
};

/// A mustache template read from a file. `{{> NAME}}` puts another file of the same folder in its
/// place; the comments `{{! title: TEXT }}` and `{{! group: TEXT }}` say how the site's
/// navigation calls the page, `{{! split: LIST }}` which list has several pages. A thread
/// that renders takes a copy.
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

  /// What its tags may ask for.
  const TagNames& Names() const { return *names_; }
  /// What its pages have asked for of what all pages share, in this copy.
  const Asked& WasAsked() const { return asked_; }

  /// The page. Variables without a value give nothing.
  std::string Render(const SharedData& shared, std::vector<Data> layers = {});

 private:
  std::string name_;
  std::string title_;
  std::string group_;
  std::string split_;
  Digest128 fingerprint_;
  std::shared_ptr<const TagNames> names_;
  Asked asked_;
  std::size_t typicalSize_ = 0;  // of the pages rendered so far
  // One for all copies: many times as large as the text. The library changes it while rendering
  // only where a partial or a lambda is at fault, and PageContext gives it neither.
  std::shared_ptr<kainjow::mustache::mustache> parsed_;
};

}  // namespace morvane
