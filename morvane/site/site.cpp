#include "morvane/site/site.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "config/file_names.h"
#include "morvane/site/figure_data.h"
#include "morvane/site/first_page.h"
#include "morvane/site/game_data.h"
#include "morvane/site/inputs.h"
#include "morvane/site/list_pages.h"
#include "morvane/site/map_data.h"
#include "morvane/site/navigation.h"
#include "morvane/site/page_folder.h"
#include "morvane/site/player_data.h"
#include "morvane/site/site_data.h"
#include "morvane/site/site_facts.h"
#include "morvane/site/site_output.h"
#include "morvane/site/site_templates.h"
#include "morvane/site/stats_json.h"
#include "morvane/site/template_source.h"
#include "platform/threads.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

/// What all threads read while they render.
struct Site {
  const SiteFacts& facts;
  const SharedData& shared;
  std::map<std::string, Data> templateData;  // by the name of the template
  Highest highest;                           // of all players
  ListParts& players;                        // of all, as templates that split them show them
  ListParts& games;
  SiteOutput& output;
  std::string& statsJson;  // written after the pages, which come before it where names meet
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

  void Main(std::size_t index) {
    Template& page = templates_.main[index];
    if (page.Split().empty()) {
      Page(page);
    } else {
      SplitPage(page, page.Split() == "games" ? site_.games : site_.players);
    }
  }

  void Map(std::size_t index) {
    const auto map = static_cast<std::uint32_t>(index);
    Data data = MapData(site_.facts, map);
    const auto pageOf = [&](const std::string& name) {
      return site_.facts.pages.MapPage(name, map);
    };
    Pages(templates_.maps, data, pageOf, [](const Template& page) { return !SplitsPlayers(page); });
    const auto& players = site_.facts.statistics.maps[map].players;
    const ListPages parts = ListPages::FromFirst(players.size());
    if (std::none_of(templates_.maps.begin(), templates_.maps.end(), SplitsPlayers)) return;
    for (std::size_t part = 0; part < parts.Count(); ++part) {
      const ListPages::Range rows = parts.Of(part);
      SetData(data, "players", PlayerList(site_.facts, players, rows.first, rows.end));
      Pages(templates_.maps, data, pageOf, SplitsPlayers, parts, part);
    }
  }

  void Game(std::size_t index) {
    const auto game = static_cast<std::uint32_t>(index);
    Data data = GameData(site_.facts, game);
    Pages(
        templates_.games, data,
        [&](const std::string& name) { return site_.facts.pages.GamePage(name, game); },
        [](const Template&) { return true; });
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
    Template& page = *templates_.gameList;
    const std::size_t games = site_.facts.statistics.games.size();
    if (page.Split() != "games") {
      Data data;
      Set(data, "games", GameRows({0, games}));
      Write(site_.facts.pages.Page(page.Name()), Render(page, data));
      return;
    }
    const ListPages parts = ListPages::FromLast(games);
    for (std::size_t part = 0; part < parts.Count(); ++part) {
      Data data;
      Set(data, "games", GameRows(parts.Of(part)));
      WritePart(page, site_.facts.pages.Page(page.Name()), parts, part, data);
    }
  }

  void Style(std::size_t index) {
    Template& style = templates_.styles[index];
    Write(style.Name() + ".css", Render(style, Data()));
  }

  void Asset(std::size_t index) {
    const std::string& name = templates_.assets[index];
    site_.output.Copy(fs::path(site_.facts.settings.sourcePath) / name, name);
  }

  void Statistics(std::size_t /*index*/) { site_.statsJson = StatsJson(site_.facts); }

 private:
  static bool SplitsPlayers(const Template& page) { return page.Split() == "players"; }

  void Page(Template& page) { Write(site_.facts.pages.Page(page.Name()), Render(page, Data())); }

  void SplitPage(Template& page, ListParts& parts) {
    for (std::size_t part = 0; part < parts.Pages().Count(); ++part) {
      WritePart(page, site_.facts.pages.Page(page.Name()), parts.Pages(), part, parts.Get(part));
    }
  }

  /// The rows of games as the loop template makes them, the last one first.
  std::string GameRows(ListPages::Range range) {
    std::string rows;
    for (std::size_t game = range.end; game > range.first && templates_.gameListLoop; --game) {
      rows += Render(*templates_.gameListLoop,
                     GameRow(site_.facts, static_cast<std::uint32_t>(game - 1)));
    }
    return rows;
  }

  /// Those pages of one map or game that are asked for. `file`: of a template's name.
  template <class FileOf, class Wanted>
  void Pages(std::vector<Template>& templates, Data& data, const FileOf& file,
             const Wanted& isWanted, const ListPages& parts = ListPages::FromFirst(0),
             std::size_t part = 0) {
    for (Template& page : templates) {
      if (!isWanted(page)) continue;
      SetData(data, "tabs", Tabs(templates, page, file));
      WritePart(page, file(page.Name()), parts, part, data);
    }
  }

  /// A page of a list that is split. `file`: of the first one.
  void WritePart(Template& page, const std::string& file, const ListPages& parts, std::size_t part,
                 const Data& data) {
    const auto numbered = [&](std::size_t number) {
      return site_.facts.pages.Numbered(file, number);
    };
    Data links;
    parts.SetLinks(links, part, numbered);
    Write(numbered(parts.Number(part)), Render(page, data, &links));
  }

  std::string Render(Template& page, const Data& data, const Data* links = nullptr) {
    const auto layer = site_.templateData.find(page.Name());
    std::vector<const Data*> layers = {&data};
    if (links != nullptr) layers.push_back(links);
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
  add(&Renderer::Statistics, 1);
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

/// What no template makes: a first page, and the file for other programs. Not in the place of what
/// a template makes, or would make if it could be read; and not alone.
void WriteOwnFiles(const Site& site, const SiteTemplates& templates) {
  if (site.output.Folder().Written() + site.output.Folder().Unchanged() == 0) return;
  const auto write = [&](const std::string& name, const std::string& content) {
    if (!content.empty() && !templates.MayLack(name)) site.output.WriteOwn(name, content);
  };
  write(site.facts.pages.Page(kFirstPage), FirstPage(site.facts, templates));
  write(kStatsJson, site.statsJson);
  const std::vector<GameFile> files = GameFiles(site.facts.statistics);
  platform::ForEachOnThreads(files.size(), 0, [&](std::size_t i) {
    write(files[i].name, GamesJson(site.facts, files[i]));
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
  SharedData shared;
  DefineSharedData(shared, facts);
  ListParts players(ListPages::FromFirst(statistics.players.size()), [&](ListPages::Range rows) {
    Data object;
    SetData(object, "players", PlayerList(facts, statistics.players, rows.first, rows.end));
    return object;
  });
  ListParts games(ListPages::FromLast(statistics.games.size()), [&](ListPages::Range rows) {
    Data object;
    SetData(object, "games", GameList(facts, rows.first, rows.end));
    return object;
  });
  SiteOutput output(folder, report);
  std::string statsJson;
  const Site site{facts,
                  shared,
                  TemplateData(templates, facts.pages),
                  HighestOf(statistics.players),
                  players,
                  games,
                  output,
                  statsJson};
  RenderAll(site, templates, report);
  WriteOwnFiles(site, templates);
  output.Finish([&](const std::string& name) {
    // The first page leads to one that may be lacking in this run.
    const bool isFirst = name == facts.pages.Page(kFirstPage);
    return templates.MayLack(name) || (isFirst && !templates.failed.empty());
  });
  AddTo(result, output);
  const std::string first = FirstPageFile(facts, templates);
  if (!first.empty()) result.firstPage = (folder.Path() / first).string();
  CopyBackgroundImage(settings, inputs, report, result);
  return result;
}

}  // namespace morvane
