#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "morvane/site/awards.h"
#include "morvane/site/format.h"
#include "morvane/site/page_data.h"
#include "morvane/site/page_names.h"
#include "morvane/site/page_text.h"
#include "morvane/site/site_settings.h"
#include "morvane/site/site_templates.h"
#include "morvane/statistics/duels.h"
#include "morvane/statistics/history.h"
#include "morvane/statistics/statistics.h"

namespace morvane {

/// How pages speak of a player, a map or a game.
struct Label {
  std::string text;  ///< not escaped
  std::string html;  ///< escaped, in its colors
  std::string page;  ///< the file of its page; empty where there is none
  std::string link;  ///< HTML: `html`, as a link where there is a page
  bool bot = false;  ///< of no person
};

/// Everything that pages are made from, looked up and named once for all of them.
class SiteFacts {
 public:
  /// All arguments must outlive the facts.
  SiteFacts(const SiteSettings& settings, const Statistics& statistics,
            const SiteTemplates& templates);

  const SiteSettings& settings;
  const Statistics& statistics;
  const TimeFormat time;
  const PageNames pages;
  const std::vector<std::uint16_t> splashOf;  ///< see SplashOf
  const Period evening;                       ///< the last one
  const Period days;                          ///< those of late

  const Label& PlayerLabel(std::uint32_t player) const { return players_[player]; }
  const Label& MapLabel(std::uint32_t map) const { return maps_[map]; }
  /// "Game 12", to the first of the game's pages.
  Label GameLabel(std::uint32_t game) const;
  /// The name that a client bore in a game, to the player's page.
  Label EntrantLabel(const Entrant& entrant) const;

  /// Index of a game's map in Statistics::maps.
  std::uint32_t MapOf(const Game& game) const;

  /// A player's games, as indices of the game and of the entrant in it, in order.
  struct Appearance {
    std::uint32_t game;
    std::uint32_t entrant;
  };
  const std::vector<Appearance>& Games(std::uint32_t player) const { return games_[player]; }
  /// The maps a player was on, as indices of the map and into its players.
  const std::vector<std::pair<std::uint32_t, std::uint32_t>>& Maps(std::uint32_t player) const {
    return playerMaps_[player];
  }
  /// Indices into Statistics::pairs in which the player is the victim.
  std::span<const std::uint32_t> DeathPairs(std::uint32_t player) const {
    return std::span(deathPairs_)
        .subspan(firstDeaths_[player], firstDeaths_[player + 1] - firstDeaths_[player]);
  }

  /// The rank of a player before the last evening; 0: not ranked then.
  std::uint32_t RankBefore(std::uint32_t player) const { return ranksBefore_[player]; }
  const std::vector<Award>& Awards() const { return awards_; }
  /// Made when first asked for: a site without pages of players does without.
  const WeaponDuels& Duels() const;

 private:
  void StyleNames();
  void LabelPlayers(const SiteTemplates& templates);
  void LabelMaps(const SiteTemplates& templates);
  void IndexPlayers();

  NameStyles nameStyles_;
  std::string firstGameTemplate_;  // empty: games have no pages
  std::vector<Label> players_;
  std::vector<Label> maps_;
  std::vector<std::vector<Appearance>> games_;
  std::vector<std::vector<std::pair<std::uint32_t, std::uint32_t>>> playerMaps_;
  std::vector<std::uint32_t> deathPairs_;  // by victim
  std::vector<std::size_t> firstDeaths_;   // where a victim's begin, and an end
  std::vector<std::uint32_t> ranksBefore_;
  std::vector<Award> awards_;
  mutable std::once_flag duelsMade_;
  mutable std::unique_ptr<const WeaponDuels> duels_;
};

/// Sets `name`, `name_html`, `link`, `page` and `bot`.
void SetLabel(Object& object, const Label& label);

}  // namespace morvane
