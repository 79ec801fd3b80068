#include "morvane/site/renderer.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "morvane/site/game_data.h"
#include "morvane/site/map_data.h"
#include "morvane/site/player_data.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPlayers = "players";
constexpr const char* kGames = "games";

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

Data Rows(const char* name, Data rows) {
  Data object;
  SetData(object, name, std::move(rows));
  return object;
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
  if (!Stands(page)) Write(page, Data());
}

void Renderer::PlayersPart(std::size_t part) {
  const ListPages pages = PlayersPages(site_.facts);
  const ListPages::Range rows = pages.Of(part);
  SplitPart(kPlayers, pages, part, site_.fingerprints.OfPlayers(rows), [&] {
    return Rows(kPlayers,
                PlayerList(site_.facts, site_.facts.statistics.players, rows.first, rows.end));
  });
}

void Renderer::GamesPart(std::size_t part) {
  const ListPages pages = GamesPages(site_.facts);
  const ListPages::Range rows = pages.Of(part);
  SplitPart(kGames, pages, part, site_.fingerprints.OfGames(rows),
            [&] { return Rows(kGames, morvane::GameList(site_.facts, rows.first, rows.end)); });
}

/// The rows are made once for all templates, and not at all where no page needs them.
template <class MakeData>
void Renderer::SplitPart(const std::string& list, const ListPages& pages, std::size_t part,
                         const Digest128& rows, const MakeData& makeData) {
  std::vector<Page> toMake;
  for (Template& main : templates_.main) {
    if (main.Split() != list) continue;
    Page page =
        PartOf(main, SiteTemplates::kMain, site_.facts.pages.Page(main.Name()), pages, part, rows);
    if (!Stands(page)) toMake.push_back(std::move(page));
  }
  if (toMake.empty()) return;
  const Data data = makeData();
  for (const Page& page : toMake) {
    const Data links = LinksOf(site_.facts.pages.Page(page.from.Name()), pages, part);
    Write(page, data, &links);
  }
}

Renderer::Page Renderer::PartOf(Template& page, const char* kind, const std::string& file,
                                const ListPages& pages, std::size_t part, const Digest128& rows) {
  Fingerprint print;
  print.Add(rows);
  pages.AddLinks(print, part);
  return {page, kind, site_.facts.pages.Numbered(file, pages.Number(part)), print.Value()};
}

Data Renderer::LinksOf(const std::string& file, const ListPages& pages, std::size_t part) const {
  Data links;
  pages.SetLinks(links, part,
                 [&](std::size_t number) { return site_.facts.pages.Numbered(file, number); });
  return links;
}

// The pages of a map that have to be made, those of one part of its players together.
void Renderer::Map(std::size_t index) {
  const auto map = static_cast<std::uint32_t>(index);
  const auto& players = site_.facts.statistics.maps[map].players;
  const ListPages all = ListPages::FromFirst(players.size());
  const ListPages unsplit = ListPages::FromFirst(0);
  const Digest128 fingerprint = site_.fingerprints.OfMap(map);
  const auto fileOf = [&](const std::string& name) { return site_.facts.pages.MapPage(name, map); };
  Data data(false);  // until a page needs it
  const auto make = [&](std::size_t part, bool split) {
    bool hasRows = false;
    for (Template& page : templates_.maps) {
      if ((page.Split() == kPlayers) != split) continue;
      const ListPages& pages = split ? all : unsplit;
      const std::string file = fileOf(page.Name());
      const Page made = PartOf(page, SiteTemplates::kMap, file, pages, part, fingerprint);
      if (Stands(made)) continue;
      if (data.is_false()) data = MapData(site_.facts, map);
      if (!hasRows && page.MayAskFor(kPlayers)) {
        const ListPages::Range rows = split ? all.Of(part) : ListPages::Range{0, players.size()};
        SetData(data, kPlayers, PlayerList(site_.facts, players, rows.first, rows.end));
        hasRows = true;
      }
      SetData(data, "tabs", Tabs(templates_.maps, page, fileOf));
      const Data links = LinksOf(file, pages, part);
      Write(made, data, &links);
    }
  };
  make(0, false);
  for (std::size_t part = 0; part < all.Count(); ++part) make(part, true);
}

void Renderer::Game(std::size_t index) {
  const auto game = static_cast<std::uint32_t>(index);
  const Digest128 fingerprint = site_.fingerprints.OfGame(game);
  const auto fileOf = [&](const std::string& name) {
    return site_.facts.pages.GamePage(name, game);
  };
  Data data(false);  // until a page needs it
  for (Template& page : templates_.games) {
    const Page made{page, SiteTemplates::kGame, fileOf(page.Name()), fingerprint};
    if (Stands(made)) continue;
    if (data.is_false()) data = GameData(site_.facts, game);
    SetData(data, "tabs", Tabs(templates_.games, page, fileOf));
    Write(made, data);
  }
}

void Renderer::Player(std::size_t index) {
  const auto player = static_cast<std::uint32_t>(index);
  const Page page{*templates_.player, SiteTemplates::kPlayer,
                  site_.facts.pages.PlayerPage(templates_.player->Name(), player),
                  site_.fingerprints.OfPlayer(player)};
  if (!Stands(page)) Write(page, PlayerData(site_.facts, player, site_.highest));
}

void Renderer::LastGame(std::size_t /*index*/) {
  Template& lastGame = *templates_.lastGame;
  const auto games = static_cast<std::uint32_t>(site_.facts.statistics.games.size());
  const Page page{lastGame, SiteTemplates::kLastGame, site_.facts.pages.Page(lastGame.Name()),
                  games == 0 ? site_.fingerprints.OfAll() : site_.fingerprints.OfGame(games - 1)};
  if (!Stands(page)) Write(page, games == 0 ? Data() : GameData(site_.facts, games - 1));
}

void Renderer::GameListPart(std::size_t part) {
  Template& list = *templates_.gameList;
  const std::string file = site_.facts.pages.Page(list.Name());
  const bool isSplit = list.Split() == kGames;
  if (!isSplit && part > 0) return;
  const ListPages pages = isSplit ? GamesPages(site_.facts) : ListPages::FromFirst(0);
  const ListPages::Range rows =
      isSplit ? pages.Of(part) : ListPages::Range{0, site_.facts.statistics.games.size()};
  const Page page =
      PartOf(list, SiteTemplates::kGameList, file, pages, part, site_.fingerprints.OfGames(rows));
  if (Stands(page)) return;
  Data data;
  Set(data, "games", GameRows(rows));
  const Data links = LinksOf(file, pages, part);
  Write(page, data, &links);
}

/// The rows of games as the loop template makes them, the last one first.
std::string Renderer::GameRows(ListPages::Range range) {
  std::string rows;
  for (std::size_t game = range.end; game > range.first && templates_.gameListLoop; --game) {
    const Data row = GameRow(site_.facts, static_cast<std::uint32_t>(game - 1));
    rows += Render(*templates_.gameListLoop, row);
  }
  return rows;
}

void Renderer::Style(std::size_t index) {
  Template& style = templates_.styles[index];
  const Page page{style, SiteTemplates::kStyle, style.Name() + ".css",
                  Fingerprint().Add("style").Value()};
  if (!Stands(page)) Write(page, Data());
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
  std::vector<const Data*> layers = {&data};
  if (links != nullptr) layers.push_back(links);
  if (layer != site_.templateData.end()) layers.insert(layers.begin(), &layer->second);
  return page.Render(site_.shared, std::move(layers));
}

}  // namespace morvane
