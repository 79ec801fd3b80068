#include "morvane/site/site.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "config/file_names.h"
#include "morvane/site/first_page.h"
#include "morvane/site/frames.h"
#include "morvane/site/inputs.h"
#include "morvane/site/navigation.h"
#include "morvane/site/page_fingerprints.h"
#include "morvane/site/page_folder.h"
#include "morvane/site/renderer.h"
#include "morvane/site/site_data.h"
#include "morvane/site/site_facts.h"
#include "morvane/site/site_output.h"
#include "morvane/site/site_templates.h"
#include "morvane/site/stats_json.h"
#include "morvane/site/template_source.h"
#include "platform/this_process.h"
#include "platform/threads.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

/// A page, or the pages of one map or game: what a thread does in one go.
struct Unit {
  void (Renderer::*render)(std::size_t);
  std::size_t index;
};

/// The pages that take longest come first, so that no thread is left with one at the end.
std::vector<Unit> Units(const SiteTemplates& templates, const SiteFacts& facts) {
  std::vector<Unit> units;
  const auto add = [&](void (Renderer::*render)(std::size_t), std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) units.push_back({render, i});
  };
  const Statistics& statistics = facts.statistics;
  const std::size_t players = Renderer::PlayersPages(facts).Count();
  const std::size_t games = Renderer::GamesPages(facts).Count();
  add(&Renderer::Main, templates.main.size());
  add(&Renderer::PlayersPart, players);
  add(&Renderer::GamesPart, games);
  add(&Renderer::GameListPart, templates.gameList ? games : 0);
  add(&Renderer::Map, templates.maps.empty() ? 0 : statistics.maps.size());
  add(&Renderer::LastGame, templates.lastGame ? 1 : 0);
  add(&Renderer::Style, templates.styles.size());
  add(&Renderer::Asset, templates.assets.size());
  add(&Renderer::Player, templates.player ? statistics.players.size() : 0);
  add(&Renderer::Game, templates.games.empty() ? 0 : statistics.games.size());
  return units;
}

/// Takes note in `frames` of what the pages asked for.
void RenderAll(const Site& site, const SiteTemplates& templates, Frames& frames, Report& report) {
  const std::vector<Unit> units = Units(templates, site.facts);
  std::mutex mutex;
  std::vector<std::unique_ptr<Renderer>> renderers;
  platform::ShareOnThreads(units.size(), 0, [&]() -> platform::Task {
    const std::lock_guard lock(mutex);
    Renderer& renderer = *renderers.emplace_back(std::make_unique<Renderer>(site, templates));
    return [&](std::size_t i) {
      (renderer.*units[i].render)(units[i].index);
      report.Progress("Writing pages", i + 1, units.size());
    };
  });
  for (const auto& renderer : renderers) frames.Take(renderer->Templates());
}

/// `store`: where the values stand.
std::map<std::string, Data> TemplateData(const SiteTemplates& templates, const PageNames& pages,
                                         ValueStore& store) {
  const Navigation navigation(templates, pages);
  std::map<std::string, Data> byName;
  const auto add = [&](const Template& page) {
    byName.insert_or_assign(page.Name(), navigation.For(page, store));
  };
  for (const auto* list : {&templates.main, &templates.maps, &templates.games}) {
    std::for_each(list->begin(), list->end(), add);
  }
  for (const auto* one : {&templates.gameList, &templates.lastGame, &templates.player}) {
    if (*one) add(**one);
  }
  return byName;
}

TagNames NamesIn(const SiteTemplates& templates) {
  TagNames names;
  templates.ForEach([&](const std::string&, const Template& page) { names.Add(page.Names()); });
  if (templates.gameListLoop) names.Add(templates.gameListLoop->Names());
  return names;
}

void AddTo(SiteResult& result, const SiteOutput& output) {
  result.written += output.Folder().Written();
  result.unchanged += output.Folder().Unchanged();
  result.takenAway += output.Folder().TakenAway();
  result.failed += output.Failed();
}

/// The background image is named relative to the pages, so it goes with them. One that the settings
/// do not name any more is taken away.
void CopyBackgroundImage(const SiteSettings& settings, const Inputs& inputs, Report& report,
                         SiteResult& result) {
  const fs::path folder = fs::path(settings.outputPath) / config::kImageFolder;
  std::error_code error;
  const bool isWanted = !settings.backgroundImage.empty();
  if (!isWanted && !fs::exists(folder / PageList::kFileName, error)) return;
  PageFolder images(folder, inputs, error);
  if (error) {
    report.Severe(Log::kMain, images.Path().string() + " cannot be used: " + error.message());
    ++result.failed;
    return;
  }
  SiteOutput output(images, report);
  const fs::path source = settings.backgroundImage;
  if (isWanted) output.Copy(source, source.filename().string());
  output.Finish([](const std::string& /*name*/) { return false; });
  AddTo(result, output);
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

/// What no template makes: a first page, and the files for other programs. Not in the place of what
/// a template makes, or would make if it could be read; and not alone.
void WriteOwnFiles(const Site& site, const SiteTemplates& templates) {
  if (site.output.Folder().Written() + site.output.Folder().Unchanged() == 0) return;
  const auto write = [&](const std::string& name, const Digest128& madeFrom, const auto& make) {
    const Digest128 fingerprint = Fingerprint().Add(site.frames.Base()).Add(madeFrom).Value();
    if (templates.MayLack(name) || site.output.Stands(name, fingerprint)) return;
    const std::string content = make();
    if (!content.empty()) site.output.WriteOwn(name, content, fingerprint);
  };
  const SiteFacts& facts = site.facts;
  write(facts.pages.Page(kFirstPage), Fingerprint().Add(kFirstPage).Value(),
        [&] { return FirstPage(facts, templates); });
  const std::vector<GameFile> files = GameFiles(facts.statistics);
  platform::ForEachOnThreads(files.size() + 1, 0, [&](std::size_t i) {
    if (i == 0) {  // takes longest
      write(kStatsJson, site.fingerprints.OfAll(), [&] { return StatsJson(facts); });
      return;
    }
    const GameFile& file = files[i - 1];
    write(file.name, site.fingerprints.OfGamesWithNames(file.games),
          [&] { return GamesJson(facts, file); });
  });
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
  SharedData shared(NamesIn(templates));
  DefineSharedData(shared, facts);
  const Highest highest = HighestOf(statistics.players);
  const PageFingerprints fingerprints(facts, highest);
  Frames frames(facts, shared, templates, fingerprints.OfAll(), folder.Remarked());
  ValueStore store;
  const std::map<std::string, Data> templateData = TemplateData(templates, facts.pages, store);
  SiteOutput output(folder, report);
  const Site site{facts, shared, templateData, highest, fingerprints, frames, output};
  platform::GiveMemoryBack();  // of adding up, which other threads did
  RenderAll(site, templates, frames, report);
  WriteOwnFiles(site, templates);
  const auto mayLack = [&](const std::string& name) {
    // The first page leads to one that may be lacking in this run.
    const bool isFirst = name == facts.pages.Page(kFirstPage);
    return templates.MayLack(name) || (isFirst && !templates.failed.empty());
  };
  output.Finish(mayLack, frames.Remarks());
  AddTo(result, output);
  const std::string first = FirstPageFile(facts, templates);
  if (!first.empty()) result.firstPage = (folder.Path() / first).string();
  CopyBackgroundImage(settings, inputs, report, result);
  return result;
}

}  // namespace morvane
