#include "morvane/site/site_facts.h"

#include <algorithm>
#include <numeric>

#include "morvane/site/page_text.h"
#include "morvane/statistics/figures.h"
#include "morvane/statistics/names.h"
#include "text/text.h"

namespace morvane {
namespace {

using config::Rgb;

std::string LinkHtml(const Label& label) {
  if (label.page.empty()) return label.html;
  return "<a href=\"" + UrlText(label.page) + "\">" + label.html + "</a>";
}

Label MakeLabel(std::string text, std::string html, std::string page) {
  Label label{std::move(text), std::move(html), std::move(page), {}, false};
  label.link = LinkHtml(label);
  return label;
}

/// How name colors are drawn on what may stand behind them.
NameGround GroundOf(const std::array<Rgb, 10>& colors, const std::vector<Rgb>& behind) {
  NameGround ground;
  for (std::size_t i = 0; i < colors.size(); ++i) {
    const Rgb color = colors[i];
    ground.own[i] = std::all_of(behind.begin(), behind.end(), [&](Rgb surface) {
      return Contrast(color, surface) >= config::kReadableContrast;
    });
    ground.colors[i] = "color:" + ColorText(ground.own[i] ? color : Readable(color, behind.back()));
  }
  return ground;
}

}  // namespace

SiteFacts::SiteFacts(const SiteSettings& theSettings, const Statistics& theStatistics,
                     const SiteTemplates& templates)
    : settings(theSettings),
      statistics(theStatistics),
      time(theSettings.timeFormat),
      pages(theStatistics, theSettings.fileExtension),
      splashOf(SplashOf(theStatistics.vocabulary.weapons)),
      evening(LastEvening(theStatistics.games)),
      days(LastDays(theStatistics.games)),
      games_(theStatistics.players.size()),
      playerMaps_(theStatistics.players.size()),
      deathPairs_(theStatistics.pairs.size()),
      firstDeaths_(theStatistics.players.size() + 1),
      ranksBefore_(RanksAfter(theStatistics, evening.first)) {
  StyleNames();
  if (!templates.games.empty()) firstGameTemplate_ = templates.games.front().Name();
  LabelPlayers(templates);
  LabelMaps(templates);
  IndexPlayers();
  awards_ = AwardsOf(*this);
}

const WeaponDuels& SiteFacts::Duels() const {
  std::call_once(duelsMade_,
                 [this] { duels_ = std::make_unique<WeaponDuels>(statistics, splashOf); });
  return *duels_;
}

// A name keeps the colors that its player chose. Where one of them can hardly be told from the
// page or a panel, such as pure blue on black, the whole name stands on a chip in the color of the
// text, in white or in black, and what still cannot be read there becomes lighter or darker.
void SiteFacts::StyleNames() {
  const Rgb page = settings.backgroundColor;
  const Rgb text = settings.textColor;
  const config::Shades shades = ShadesOf(page, text);
  nameStyles_.page = GroundOf(settings.nameColors, {page, shades.panel, shades.stripe});
  for (const Rgb chip : {text, Rgb{255, 255, 255}, Rgb{0, 0, 0}}) {
    nameStyles_.chips.push_back(GroundOf(settings.nameColors, {chip}));
    nameStyles_.chips.back().style =
        "background:" + ColorText(chip) + ";color:" + ColorText(InkOn(chip));
  }
}

void SiteFacts::LabelPlayers(const SiteTemplates& templates) {
  players_.reserve(statistics.players.size());
  for (std::uint32_t i = 0; i < statistics.players.size(); ++i) {
    const std::string& name = statistics.players[i].name;
    players_.push_back(MakeLabel(
        NameText(name), NameHtml(name, nameStyles_),
        templates.player ? pages.PlayerPage(templates.player->Name(), i) : std::string()));
    players_.back().bot = statistics.players[i].bot;
  }
}

void SiteFacts::LabelMaps(const SiteTemplates& templates) {
  for (std::uint32_t i = 0; i < statistics.maps.size(); ++i) {
    const std::string text = NameText(statistics.maps[i].title);
    maps_.push_back(MakeLabel(
        text, "<bdi>" + EscapeHtml(text) + "</bdi>",
        templates.maps.empty() ? std::string() : pages.MapPage(templates.maps.front().Name(), i)));
  }
}

void SiteFacts::IndexPlayers() {
  for (std::uint32_t game = 0; game < statistics.games.size(); ++game) {
    const std::vector<Entrant>& entrants = statistics.games[game].entrants;
    for (std::uint32_t i = 0; i < entrants.size(); ++i) {
      const bool played = entrants[i].player != kNobody && entrants[i].place > 0;
      if (played) games_[entrants[i].player].push_back({game, i});
    }
  }
  for (std::uint32_t map = 0; map < statistics.maps.size(); ++map) {
    const std::vector<Player>& players = statistics.maps[map].players;
    for (std::uint32_t i = 0; i < players.size(); ++i) {
      playerMaps_[players[i].player].emplace_back(map, i);
    }
  }
  // How many each victim has, then where they end, then, filled from behind, where they begin.
  for (const Pair& pair : statistics.pairs) ++firstDeaths_[pair.victim];
  std::partial_sum(firstDeaths_.begin(), firstDeaths_.end(), firstDeaths_.begin());
  for (std::size_t i = statistics.pairs.size(); i > 0; --i) {
    deathPairs_[--firstDeaths_[statistics.pairs[i - 1].victim]] = static_cast<std::uint32_t>(i - 1);
  }
}

Label SiteFacts::GameLabel(std::uint32_t game) const {
  const std::string text = "Game " + std::to_string(statistics.games[game].number);
  return MakeLabel(
      text, text,
      firstGameTemplate_.empty() ? std::string() : pages.GamePage(firstGameTemplate_, game));
}

Label SiteFacts::EntrantLabel(const Entrant& entrant) const {
  Label label =
      MakeLabel(NameText(entrant.name), NameHtml(entrant.name, nameStyles_),
                entrant.player == kNobody ? std::string() : players_[entrant.player].page);
  label.bot = entrant.bot;
  return label;
}

std::uint32_t SiteFacts::MapOf(const Game& game) const {
  const std::string name = text::FoldCase(game.map);
  const auto found =
      std::lower_bound(statistics.maps.begin(), statistics.maps.end(), name,
                       [](const Map& map, const std::string& wanted) { return map.name < wanted; });
  return static_cast<std::uint32_t>(found - statistics.maps.begin());
}

void SetLabel(Object& object, const Label& label) {
  Set(object, "name", label.text);
  Set(object, "name_html", label.html);
  Set(object, "link", label.link);
  SetOptional(object, "page", [&] { return UrlText(label.page); });
  SetFlag(object, "bot", label.bot);
}

}  // namespace morvane
