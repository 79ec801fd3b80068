#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "morvane/site/frames.h"
#include "morvane/site/list_pages.h"
#include "morvane/site/page_fingerprints.h"
#include "morvane/site/site_facts.h"
#include "morvane/site/site_output.h"
#include "morvane/site/site_templates.h"
#include "morvane/site/template.h"

namespace morvane {

/// What all threads read while they render.
struct Site {
  const SiteFacts& facts;
  const SharedData& shared;
  const std::map<std::string, Data>& templateData;  ///< by the name of the template
  const Highest& highest;                           ///< of all players
  const PageFingerprints& fingerprints;
  const Frames& frames;
  SiteOutput& output;
};

/// Renders pages, with templates of its own: one for each thread. What stands as an earlier run
/// made it from the same is left alone.
class Renderer {
 public:
  /// `site` must outlive this.
  Renderer(const Site& site, const SiteTemplates& templates) : site_(site), templates_(templates) {}

  /// With all that their pages have asked for.
  const SiteTemplates& Templates() const { return templates_; }

  // What a thread does in one go, by index.

  /// A main template that is not split.
  void Main(std::size_t index);
  /// A part of a split list, with all main templates that show it.
  void PlayersPart(std::size_t part);
  void GamesPart(std::size_t part);
  /// The pages of one map, player or game.
  void Map(std::size_t index);
  void Player(std::size_t index);
  void Game(std::size_t index);
  void LastGame(std::size_t index);
  /// A part of the list of games.
  void GameListPart(std::size_t part);
  void Style(std::size_t index);
  void Asset(std::size_t index);

  /// How the lists are split.
  static ListPages PlayersPages(const SiteFacts& facts);
  static ListPages GamesPages(const SiteFacts& facts);

 private:
  /// One page of a template.
  struct Page {
    Template& from;
    const char* kind;  // see SiteTemplates::ForEach
    std::string file;
    Digest128 fingerprint;
  };

  template <class MakeRows>
  void SplitPart(const VariableName& list, const ListPages& pages, std::size_t part,
                 const Digest128& rows, const MakeRows& makeRows);
  void MapPart(std::uint32_t map, Template& page, const ListPages& pages, std::size_t part,
               const Digest128& fingerprint);
  bool Stands(const Page& page);
  void Write(const Page& page, const Data& data, const Data* links = nullptr);
  std::string Render(Template& page, const Data& data, const Data* links = nullptr);
  Demand NewPage(const Template& page);
  Page PartOf(Template& page, const char* kind, const std::string& file, const ListPages& pages,
              std::size_t part, const Digest128& rows);
  Data LinksOf(Demand demand, const std::string& file, const ListPages& pages,
               std::size_t part) const;
  std::string GameRows(ListPages::Range range);

  const Site& site_;
  SiteTemplates templates_;
  ValueStore values_;     // of the page that is being made
  ValueStore rowValues_;  // of the row that is rendered for one
};

}  // namespace morvane
