#include "morvane/site/renderer.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <utility>
#include <vector>

#include "morvane/site/game_data.h"
#include "morvane/site/map_data.h"
#include "morvane/site/player_data.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr VariableName kPlayers = "players";
constexpr VariableName kGames = "games";

/// Sets the links between the pages of one map or game, one for each template.
template <class PageOf>
void SetTabs(Object& object, const std::vector<Template>& templates, const Template& current,
             const PageOf& pageOf) {
  const std::span shown(templates.data(), templates.size() < 2 ? 0 : templates.size());
  SetRows(object, "tabs", shown, [&](Object& tab, const Template& page) {
    Set(tab, "title", page.Title());
    Set(tab, "page", UrlText(pageOf(page.Name())));
    SetFlag(tab, "current", &page == &current);
  });
}

}  // namespace

ListPages Renderer::PlayersPages(const SiteFacts& facts) {
  return ListPages::FromFirst(facts.statistics.players.size());
}

ListPages Renderer::GamesPages(const SiteFacts& facts) {
  return ListPages::FromLast(facts.statistics.games.size());
}

void Renderer::Main(std::size_t index) {
  Template& main = templates_.main[index];
  if (!main.Split().empty()) return;
  const Page page{main, SiteTemplates::kMain, site_.facts.pages.Page(main.Name()),
                  site_.fingerprints.OfAll()};
  if (!Stands(page)) Write(page, Data(false));
}

void Renderer::PlayersPart(std::size_t part) {
  const ListPages pages = PlayersPages(site_.facts);
  const ListPages::Range rows = pages.Of(part);
  SplitPart(kPlayers, pages, part, site_.fingerprints.OfPlayers(rows), [&](Demand demand) {
    return PlayerList(site_.facts, site_.facts.statistics.players, demand, rows.first, rows.end);
  });
}

void Renderer::GamesPart(std::size_t part) {
  const ListPages pages = GamesPages(site_.facts);
  const ListPages::Range rows = pages.Of(part);
  SplitPart(kGames, pages, part, site_.fingerprints.OfGames(rows), [&](Demand demand) {
    return morvane::GameList(site_.facts, rows.first, rows.end, demand);
  });
}

template <class MakeRows>
void Renderer::SplitPart(const VariableName& list, const ListPages& pages, std::size_t part,
                         const Digest128& rows, const MakeRows& makeRows) {
  for (Template& main : templates_.main) {
    if (main.Split() != list.Text()) continue;
    const std::string file = site_.facts.pages.Page(main.Name());
    const Page page = PartOf(main, SiteTemplates::kMain, file, pages, part, rows);
    if (Stands(page)) continue;
    const Demand demand = NewPage(main);
    Object data(demand);
    SetData(data, list, makeRows);
    const Data links = LinksOf(demand, file, pages, part);
    Write(page, data.Done(), &links);
  }
}

Renderer::Page Renderer::PartOf(Template& page, const char* kind, const std::string& file,
                                const ListPages& pages, std::size_t part, const Digest128& rows) {
  Fingerprint print;
  print.Add(rows);
  pages.AddLinks(print, part);
  return {page, kind, site_.facts.pages.Numbered(file, pages.Number(part)), print.Value()};
}

Data Renderer::LinksOf(Demand demand, const std::string& file, const ListPages& pages,
                       std::size_t part) const {
  Object links(demand);
  pages.SetLinks(links, part,
                 [&](std::size_t number) { return site_.facts.pages.Numbered(file, number); });
  return links.Done();
}

void Renderer::Map(std::size_t index) {
  const auto map = static_cast<std::uint32_t>(index);
  const std::size_t players = site_.facts.statistics.maps[map].players.size();
  const Digest128 fingerprint = site_.fingerprints.OfMap(map);
  for (Template& page : templates_.maps) {
    const bool isSplit = page.Split() == kPlayers.Text();
    const ListPages pages = ListPages::FromFirst(isSplit ? players : 0);
    for (std::size_t part = 0; part < pages.Count(); ++part) {
      MapPart(map, page, pages, part, fingerprint);
    }
  }
}

void Renderer::MapPart(std::uint32_t map, Template& page, const ListPages& pages, std::size_t part,
                       const Digest128& fingerprint) {
  const auto fileOf = [&](const std::string& name) { return site_.facts.pages.MapPage(name, map); };
  const std::string file = fileOf(page.Name());
  const Page made = PartOf(page, SiteTemplates::kMap, file, pages, part, fingerprint);
  if (Stands(made)) return;
  const ListPages::Range all{0, site_.facts.statistics.maps[map].players.size()};
  const ListPages::Range rows = page.Split().empty() ? all : pages.Of(part);
  const Demand demand = NewPage(page);
  Object data = MapData(site_.facts, map, rows, demand);
  SetTabs(data, templates_.maps, page, fileOf);
  const Data links = LinksOf(demand, file, pages, part);
  Write(made, data.Done(), &links);
}

void Renderer::Game(std::size_t index) {
  const auto game = static_cast<std::uint32_t>(index);
  const Digest128 fingerprint = site_.fingerprints.OfGame(game);
  const auto fileOf = [&](const std::string& name) {
    return site_.facts.pages.GamePage(name, game);
  };
  for (Template& page : templates_.games) {
    const Page made{page, SiteTemplates::kGame, fileOf(page.Name()), fingerprint};
    if (Stands(made)) continue;
    Object data = GameData(site_.facts, game, NewPage(page));
    SetTabs(data, templates_.games, page, fileOf);
    Write(made, data.Done());
  }
}

void Renderer::Player(std::size_t index) {
  const auto player = static_cast<std::uint32_t>(index);
  const Page page{*templates_.player, SiteTemplates::kPlayer,
                  site_.facts.pages.PlayerPage(templates_.player->Name(), player),
                  site_.fingerprints.OfPlayer(player)};
  if (Stands(page)) return;
  Write(page, PlayerData(site_.facts, player, site_.highest, NewPage(page.from)));
}

void Renderer::LastGame(std::size_t /*index*/) {
  Template& lastGame = *templates_.lastGame;
  const auto games = static_cast<std::uint32_t>(site_.facts.statistics.games.size());
  const Page page{lastGame, SiteTemplates::kLastGame, site_.facts.pages.Page(lastGame.Name()),
                  games == 0 ? site_.fingerprints.OfAll() : site_.fingerprints.OfGame(games - 1)};
  if (Stands(page)) return;
  const Demand demand = NewPage(lastGame);
  Write(page, games == 0 ? Data(false) : GameData(site_.facts, games - 1, demand).Done());
}

void Renderer::GameListPart(std::size_t part) {
  Template& list = *templates_.gameList;
  const std::string file = site_.facts.pages.Page(list.Name());
  const bool isSplit = list.Split() == kGames.Text();
  if (!isSplit && part > 0) return;
  const ListPages pages = isSplit ? GamesPages(site_.facts) : ListPages::FromFirst(0);
  const ListPages::Range rows =
      isSplit ? pages.Of(part) : ListPages::Range{0, site_.facts.statistics.games.size()};
  const Page page =
      PartOf(list, SiteTemplates::kGameList, file, pages, part, site_.fingerprints.OfGames(rows));
  if (Stands(page)) return;
  const Demand demand = NewPage(list);
  Object data(demand);
  Set(data, kGames, [&] { return GameRows(rows); });
  const Data links = LinksOf(demand, file, pages, part);
  Write(page, data.Done(), &links);
}

/// The rows of games as the loop template makes them, the last one first.
std::string Renderer::GameRows(ListPages::Range range) {
  std::string rows;
  for (std::size_t game = range.end; game > range.first && templates_.gameListLoop; --game) {
    rowValues_.Clear();
    const Demand demand(templates_.gameListLoop->Names(), rowValues_);
    const Object row = GameRow(site_.facts, static_cast<std::uint32_t>(game - 1), demand);
    rows += Render(*templates_.gameListLoop, row.Done());
  }
  return rows;
}

void Renderer::Style(std::size_t index) {
  Template& style = templates_.styles[index];
  const Page page{style, SiteTemplates::kStyle, style.Name() + ".css",
                  Fingerprint().Add("style").Value()};
  if (!Stands(page)) Write(page, Data(false));
}

void Renderer::Asset(std::size_t index) {
  const std::string& name = templates_.assets[index];
  site_.output.Copy(fs::path(site_.facts.settings.sourcePath) / name, name);
}

bool Renderer::Stands(const Page& page) {
  return site_.frames.IsSame(page.kind + page.from.Name()) &&
         site_.output.Stands(page.file, page.fingerprint);
}

void Renderer::Write(const Page& page, const Data& data, const Data* links) {
  site_.output.Write(page.file, Render(page.from, data, links), page.fingerprint);
}

std::string Renderer::Render(Template& page, const Data& data, const Data* links) {
  const auto layer = site_.templateData.find(page.Name());
  std::vector<Data> layers;
  if (layer != site_.templateData.end()) layers.push_back(layer->second);
  layers.push_back(data);
  if (links != nullptr) layers.push_back(*links);
  return page.Render(site_.shared, std::move(layers));
}

/// What a page asks for; the values of the last one are gone.
Demand Renderer::NewPage(const Template& page) {
  values_.Clear();
  return {page.Names(), values_};
}

}  // namespace morvane
