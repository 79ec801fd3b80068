#include "morvane/site/site.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "config/file_names.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/game_data.h"
#include "morvane/site/inputs.h"
#include "morvane/site/map_data.h"
#include "morvane/site/navigation.h"
#include "morvane/site/page_folder.h"
#include "morvane/site/player_data.h"
#include "morvane/site/site_data.h"
#include "morvane/site/site_facts.h"
#include "morvane/site/site_templates.h"
#include "morvane/site/template_source.h"
#include "platform/files.h"
#include "platform/threads.h"
#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

/// Puts files into the output folder and tells what fails.
class Output {
 public:
  Output(PageFolder& folder, Report& report) : folder_(folder), report_(report) {}

  /// Two pages never share a file, also where the file system does not tell A from a.
  void Write(const std::string& name, std::string_view content) {
    if (!Claim(name)) {
      Fail("two pages have the name " + name + "; one of them was left out");
    } else if (const std::error_code error = folder_.Write(name, content)) {
      const std::lock_guard lock(mutex_);
      Unwritten& unwritten = unwritten_[error.message()];
      if (unwritten.count++ == 0) unwritten.first = (folder_.Path() / name).string();
    }
  }

  void Copy(const fs::path& source, const std::string& name) {
    std::error_code error;
    const std::string content = platform::ReadWholeFile(source, error);
    if (error) {
      Fail(source.string() + " cannot be read: " + error.message());
    } else {
      Write(name, content);
    }
  }

  /// Tells what could not be written, each reason once: a full disk fails thousands of pages. How
  /// many files failed in all.
  std::size_t TellFailures() {
    std::size_t failed = 0;
    for (const auto& [reason, unwritten] : unwritten_) {
      const std::string others =
          unwritten.count == 2
              ? "; nor can 1 other file"
              : "; nor can " + std::to_string(unwritten.count - 1) + " other files";
      report_.Severe(Log::kMain,
                     "cannot be written: " + reason + (unwritten.count > 1 ? others : ""),
                     unwritten.first);
      failed += unwritten.count;
    }
    return failed;
  }

 private:
  struct Unwritten {
    std::string first;
    std::size_t count = 0;
  };

  bool Claim(const std::string& name) {
    const std::lock_guard lock(mutex_);
    return names_.insert(text::FoldCase(name)).second;
  }
  void Fail(const std::string& text) { report_.Severe(Log::kMain, text); }

  PageFolder& folder_;
  Report& report_;
  std::mutex mutex_;
  std::unordered_set<std::string> names_;
  std::map<std::string, Unwritten> unwritten_;  // by reason
};

/// What all threads read while they render.
struct Site {
  const SiteFacts& facts;
  const SharedData& shared;
  std::map<std::string, Data> templateData;  // by the name of the template
  Highest highest;                           // of all players
  Output& output;
};

/// The links between the pages of one map or game, one for each template.
template <class PageOf>
Data Tabs(const std::vector<Template>& templates, const Template& current, const PageOf& pageOf) {
  Data tabs = List(templates.size());
  if (templates.size() < 2) return tabs;
  for (const Template& page : templates) {
    Data tab;
    Set(tab, "title", page.Title());
    Set(tab, "page", UrlText(pageOf(page.Name())));
    SetFlag(tab, "current", &page == &current);
    Append(tabs, std::move(tab));
  }
  return tabs;
}

/// Renders pages, with templates of its own: one for each thread.
class Renderer {
 public:
  Renderer(const Site& site, SiteTemplates templates)
      : site_(site), templates_(std::move(templates)) {}

  void Main(std::size_t index) { Page(templates_.main[index]); }

  void Map(std::size_t index) {
    const auto map = static_cast<std::uint32_t>(index);
    Data data = MapData(site_.facts, map);
    Pages(templates_.maps, data,
          [&](const std::string& name) { return site_.facts.pages.MapPage(name, map); });
  }

  void Game(std::size_t index) {
    const auto game = static_cast<std::uint32_t>(index);
    Data data = GameData(site_.facts, game);
    Pages(templates_.games, data,
          [&](const std::string& name) { return site_.facts.pages.GamePage(name, game); });
  }

  void Player(std::size_t index) {
    const auto player = static_cast<std::uint32_t>(index);
    const Data data = PlayerData(site_.facts, player, site_.highest);
    Write(site_.facts.pages.PlayerPage(templates_.player->Name(), player),
          Render(*templates_.player, data));
  }

  void LastGame(std::size_t /*index*/) {
    const std::size_t games = site_.facts.statistics.games.size();
    if (games == 0) {
      Page(*templates_.lastGame);
      return;
    }
    const Data data = GameData(site_.facts, static_cast<std::uint32_t>(games - 1));
    Write(site_.facts.pages.Page(templates_.lastGame->Name()), Render(*templates_.lastGame, data));
  }

  void GameList(std::size_t /*index*/) {
    std::string rows;
    const auto games = static_cast<std::uint32_t>(site_.facts.statistics.games.size());
    for (std::uint32_t game = games; game > 0 && templates_.gameListLoop; --game) {
      rows += Render(*templates_.gameListLoop, GameRow(site_.facts, game - 1));
    }
    Data data;
    Set(data, "games", rows);
    Write(site_.facts.pages.Page(templates_.gameList->Name()), Render(*templates_.gameList, data));
  }

  void Style(std::size_t index) {
    Template& style = templates_.styles[index];
    Write(style.Name() + ".css", Render(style, Data()));
  }

  void Asset(std::size_t index) {
    const std::string& name = templates_.assets[index];
    site_.output.Copy(fs::path(site_.facts.settings.sourcePath) / name, name);
  }

 private:
  void Page(Template& page) { Write(site_.facts.pages.Page(page.Name()), Render(page, Data())); }

  template <class PageOf>
  void Pages(std::vector<Template>& templates, Data& data, const PageOf& pageOf) {
    for (Template& page : templates) {
      SetData(data, "tabs", Tabs(templates, page, pageOf));
      Write(pageOf(page.Name()), Render(page, data));
    }
  }

  std::string Render(Template& page, const Data& data) {
    const auto layer = site_.templateData.find(page.Name());
    std::vector<const Data*> layers = {&data};
    if (layer != site_.templateData.end()) layers.insert(layers.begin(), &layer->second);
    PageContext context(site_.shared, std::move(layers));
    return page.Render(context);
  }

  void Write(const std::string& name, const std::string& content) {
    site_.output.Write(name, content);
  }

  const Site& site_;
  SiteTemplates templates_;
};

/// A page, or the pages of one map or game: what a thread does in one go.
struct Unit {
  void (Renderer::*render)(std::size_t);
  std::size_t index;
};

/// The pages that take longest come first, so that no thread is left with one at the end.
std::vector<Unit> Units(const SiteTemplates& templates, const Statistics& statistics) {
  std::vector<Unit> units;
  const auto add = [&](void (Renderer::*render)(std::size_t), std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) units.push_back({render, i});
  };
  add(&Renderer::GameList, templates.gameList ? 1 : 0);
  add(&Renderer::Main, templates.main.size());
  add(&Renderer::Map, templates.maps.empty() ? 0 : statistics.maps.size());
  add(&Renderer::LastGame, templates.lastGame ? 1 : 0);
  add(&Renderer::Style, templates.styles.size());
  add(&Renderer::Asset, templates.assets.size());
  add(&Renderer::Player, templates.player ? statistics.players.size() : 0);
  add(&Renderer::Game, templates.games.empty() ? 0 : statistics.games.size());
  return units;
}

void RenderAll(const Site& site, const SiteTemplates& templates, Report& report) {
  const std::vector<Unit> units = Units(templates, site.facts.statistics);
  platform::ShareOnThreads(units.size(), 0, [&]() -> platform::Task {
    return [&, renderer = Renderer(site, templates)](std::size_t i) mutable {
      (renderer.*units[i].render)(units[i].index);
      report.Progress("Writing pages", i + 1, units.size());
    };
  });
}

std::map<std::string, Data> TemplateData(const SiteTemplates& templates, const PageNames& pages) {
  const Navigation navigation(templates, pages);
  std::map<std::string, Data> byName;
  const auto add = [&](const Template& page) {
    byName.insert_or_assign(page.Name(), navigation.For(page));
  };
  for (const auto* list : {&templates.main, &templates.maps, &templates.games}) {
    std::for_each(list->begin(), list->end(), add);
  }
  for (const auto* one : {&templates.gameList, &templates.lastGame, &templates.player}) {
    if (*one) add(**one);
  }
  return byName;
}

/// The background image is named relative to the pages, so it goes with them.
void CopyBackgroundImage(const SiteSettings& settings, const Inputs& inputs, Report& report,
                         SiteResult& result) {
  if (settings.backgroundImage.empty()) return;
  const fs::path source = settings.backgroundImage;
  std::error_code error;
  PageFolder images(fs::path(settings.outputPath) / config::kImageFolder, inputs, error);
  if (error) {
    report.Severe(Log::kMain, images.Path().string() + " cannot be used: " + error.message());
    ++result.failed;
    return;
  }
  Output output(images, report);
  output.Copy(source, source.filename().string());
  result.written += images.Written();
  result.unchanged += images.Unchanged();
  result.failed += output.TellFailures();
}

/// What the pages are made from, and what the rest of the engine reads and keeps.
Inputs InputsOf(const SiteSettings& settings) {
  Inputs inputs;
  for (const std::string& file : settings.keptFiles) inputs.Add(file);
  const fs::path folder = settings.sourcePath;
  for (const std::string& pattern : TemplatePatterns()) inputs.Add(folder / pattern);
  for (const auto* names :
       {&settings.mainTemplates, &settings.mapTemplates, &settings.gameTemplates}) {
    for (const std::string& name : *names) inputs.Add(TemplatePath(folder, name));
  }
  for (const auto* name : {&settings.gameListTemplate, &settings.gameListLoopTemplate,
                           &settings.lastGameTemplate, &settings.playerTemplate}) {
    inputs.Add(TemplatePath(folder, *name));
  }
  if (!settings.backgroundImage.empty()) inputs.Add(settings.backgroundImage);
  return inputs;
}

/// The page that a person looks at first.
std::string FirstPage(const SiteTemplates& templates, const PageNames& pages) {
  if (!templates.main.empty()) return pages.Page(templates.main.front().Name());
  if (templates.gameList) return pages.Page(templates.gameList->Name());
  if (templates.lastGame) return pages.Page(templates.lastGame->Name());
  return {};
}

}  // namespace

SiteResult WritePages(const SiteSettings& settings, const Statistics& statistics, Report& report) {
  SiteResult result;
  std::error_code error;
  const Inputs inputs = InputsOf(settings);
  PageFolder folder(settings.outputPath, inputs, error);
  if (error) {
    report.Severe(Log::kMain, "the output directory " + settings.outputPath +
                                  " cannot be used: " + error.message());
    return result;
  }
  result.usable = true;
  const SiteTemplates templates = LoadTemplates(settings, report);
  const SiteFacts facts(settings, statistics, templates);
  if (!facts.time.IsUsable()) {
    report.Normal(Log::kMain, "the time format \"" + settings.timeFormat +
                                  "\" cannot be used; times are shown as 2024-12-31 23:59:59");
  }
  SharedData shared;
  DefineSharedData(shared, facts);
  Output output(folder, report);
  const Site site{facts, shared, TemplateData(templates, facts.pages),
                  HighestOf(statistics.players), output};
  RenderAll(site, templates, report);
  result.written = folder.Written();
  result.unchanged = folder.Unchanged();
  result.failed = output.TellFailures();
  const std::string first = FirstPage(templates, facts.pages);
  if (!first.empty()) result.firstPage = (folder.Path() / first).string();
  CopyBackgroundImage(settings, inputs, report, result);
  return result;
}

}  // namespace morvane
