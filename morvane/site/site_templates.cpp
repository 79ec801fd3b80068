#include "morvane/site/site_templates.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "config/file_names.h"
#include "morvane/site/template_source.h"
#include "morvane/site/variable_check.h"
#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 11> kAssetExtensions = {
    ".js", ".png", ".jpg", ".jpeg", ".gif", ".svg", ".webp", ".ico", ".woff", ".woff2", ".ttf"};

class Loader {
 public:
  Loader(const SiteSettings& settings, Report& report)
      : folder_(settings.sourcePath),
        variables_(UserVariables(settings), LinkedPages(settings)),
        report_(report) {}

  std::optional<Template> One(const std::string& named) {
    const std::string_view name = text::TrimBlanks(named);
    Template loaded;
    TemplateSource source;
    if (name.empty()) return {};
    std::optional<TemplateFault> fault = source.Read(folder_, name);
    if (!fault) fault = loaded.Parse(source, PageName(name));
    if (fault) {
      Tell(*fault, true);
      failed_.push_back(PageName(name));
      return {};
    }
    for (const TemplateFault& unknown : variables_.FaultsOf(source)) Tell(unknown, false);
    return loaded;
  }

  /// A list that names a template twice has its pages once.
  std::vector<Template> Many(const std::vector<std::string>& names) {
    std::vector<Template> loaded;
    for (const std::string& name : names) {
      std::optional<Template> one = One(name);
      const bool isNew = one && std::none_of(loaded.begin(), loaded.end(), [&](const Template& t) {
                           return t.Name() == one->Name();
                         });
      if (isNew) loaded.push_back(std::move(*one));
    }
    return loaded;
  }

  /// The names of the folder's files with one of the extensions, in order.
  std::vector<std::string> Files(const auto& extensions) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
      const std::string extension = text::FoldCase(entry->path().extension().string());
      const bool wanted =
          std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
      if (wanted) names.push_back(entry->path().filename().string());
    }
    folderRead_ = folderRead_ && !error;
    std::sort(names.begin(), names.end());
    return names;
  }

  const std::vector<std::string>& Failed() const { return failed_; }
  bool FolderRead() const { return folderRead_; }

 private:
  static std::string PageName(std::string_view name) {
    return TemplatePath({}, text::TrimBlanks(name)).stem().string();
  }
  static std::vector<std::string> UserVariables(const SiteSettings& settings) {
    std::vector<std::string> names;
    for (const auto& variable : settings.userVariables) names.push_back(variable.first);
    return names;
  }
  static std::vector<std::string> LinkedPages(const SiteSettings& settings) {
    std::vector<std::string> names;
    for (const std::string& name : settings.mainTemplates) names.push_back(PageName(name));
    names.push_back(PageName(settings.gameListTemplate));
    names.push_back(PageName(settings.lastGameTemplate));
    return names;
  }

  void Tell(const TemplateFault& fault, bool severe) {
    report_.Write({Log::kTemplates, severe, fault.text, fault.file,
                   static_cast<std::size_t>(std::max(fault.line, 0))});
  }

  fs::path folder_;
  VariableCheck variables_;
  Report& report_;
  std::vector<std::string> failed_;
  bool folderRead_ = true;
};

}  // namespace

std::vector<std::string> TemplatePatterns() {
  std::vector<std::string> patterns = {std::string("*.") + config::kTemplateExtension, "*.css"};
  for (const std::string_view extension : kAssetExtensions) {
    patterns.push_back("*" + std::string(extension));
  }
  return patterns;
}

bool SiteTemplates::MayLack(const std::string& page) const {
  return !folderRead || std::any_of(failed.begin(), failed.end(), [&](const std::string& name) {
    // NAME.html, NAME-2.html, NAME_q3dm17.html
    return page.starts_with(name) &&
           std::string_view(".-_").find(page[std::min(name.size(), page.size() - 1)]) !=
               std::string_view::npos;
  });
}

SiteTemplates LoadTemplates(const SiteSettings& settings, Report& report) {
  Loader loader(settings, report);
  SiteTemplates templates;
  templates.main = loader.Many(settings.mainTemplates);
  templates.maps = loader.Many(settings.mapTemplates);
  templates.games = loader.Many(settings.gameTemplates);
  templates.gameList = loader.One(settings.gameListTemplate);
  templates.gameListLoop = loader.One(settings.gameListLoopTemplate);
  templates.lastGame = loader.One(settings.lastGameTemplate);
  templates.player = loader.One(settings.playerTemplate);
  templates.styles = loader.Many(loader.Files(std::array<std::string_view, 1>{".css"}));
  templates.assets = loader.Files(kAssetExtensions);
  templates.failed = loader.Failed();
  templates.folderRead = loader.FolderRead();
  return templates;
}

}  // namespace morvane
