#include "morvane/site/page_fingerprints.h"

#include <algorithm>
#include <string>

#include "morvane/site/career_data.h"
#include "morvane/site/map_data.h"
#include "morvane/statistics/model_fingerprint.h"
#include "platform/threads.h"

namespace morvane {
namespace {

// Taken apart into all members: a new one does not compile until it is added here, too.
void AddLabel(Fingerprint& print, const Label& label) {
  const auto& [text, html, page, link, bot] = label;
  print.Add(text).Add(html).Add(page).Add(link).Add(bot);
}

Digest128 OfLabel(const Label& label) {
  Fingerprint print;
  AddLabel(print, label);
  return print.Value();
}

/// A game as pages tell it: with the pages of its players, its map's and its own.
void AddGame(Fingerprint& print, const SiteFacts& facts, std::uint32_t index) {
  const Game& game = facts.statistics.games[index];
  AddTo(print, game);
  AddLabel(print, facts.GameLabel(index));
  AddLabel(print, facts.MapLabel(facts.MapOf(game)));
  for (const Entrant& entrant : game.entrants) {
    const bool isKnown = entrant.player != kNobody;
    print.Add(isKnown ? facts.PlayerLabel(entrant.player).page : std::string());
  }
}

template <class Item, class Of>
std::vector<Digest128> DigestsOf(const std::vector<Item>& items, const Of& of) {
  std::vector<Digest128> digests(items.size());
  constexpr std::size_t kTogether = 64;
  const std::size_t parts = (items.size() + kTogether - 1) / kTogether;
  platform::ForEachOnThreads(parts, 0, [&](std::size_t part) {
    const std::size_t end = std::min(items.size(), (part + 1) * kTogether);
    for (std::size_t i = part * kTogether; i < end; ++i) {
      digests[i] = of(static_cast<std::uint32_t>(i));
    }
  });
  return digests;
}

Digest128 OfRange(const std::vector<Digest128>& digests, ListPages::Range rows) {
  Fingerprint print;
  print.Add(rows.first).Add(rows.end);
  for (std::size_t i = rows.first; i < rows.end; ++i) print.Add(digests[i]);
  return print.Value();
}

}  // namespace

PageFingerprints::PageFingerprints(const SiteFacts& facts, const Highest& highest)
    : facts_(facts), highest_(highest) {
  const Statistics& statistics = facts.statistics;
  labels_ = DigestsOf(statistics.players,
                      [&](std::uint32_t player) { return OfLabel(facts.PlayerLabel(player)); });
  maps_ =
      DigestsOf(statistics.maps, [&](std::uint32_t map) { return OfLabel(facts.MapLabel(map)); });
  games_ = DigestsOf(statistics.games, [&](std::uint32_t game) {
    Fingerprint print;
    AddGame(print, facts, game);
    return print.Value();
  });
  names_ = DigestsOf(statistics.games, [&](std::uint32_t game) {
    Fingerprint print;
    for (const Entrant& entrant : statistics.games[game].entrants) {
      print.Add(entrant.player == kNobody ? Digest128() : labels_[entrant.player]);
    }
    return print.Value();
  });
  players_ = DigestsOf(statistics.players, [&](std::uint32_t player) { return PlayerRow(player); });
  Fingerprint all;
  all.Add(statistics.gamesFound).Add(statistics.ranked);
  all.Add(OfRange(games_, {0, games_.size()})).Add(OfRange(players_, {0, players_.size()}));
  all_ = all.Value();
}

Digest128 PageFingerprints::OfPlayers(ListPages::Range rows) const {
  return OfRange(players_, rows);
}

Digest128 PageFingerprints::OfGames(ListPages::Range rows) const { return OfRange(games_, rows); }

Digest128 PageFingerprints::OfGame(std::uint32_t game) const {
  Fingerprint print;
  print.Add(games_[game]);
  AddNeighbour(print, game - 1);
  AddNeighbour(print, game + 1);
  return print.Value();
}

void PageFingerprints::AddNeighbour(Fingerprint& print, std::uint32_t game) const {
  const bool isThere = game < games_.size();
  print.Add(isThere);
  if (isThere) AddLabel(print, facts_.GameLabel(game));
}

Digest128 PageFingerprints::PlayerRow(std::uint32_t index) const {
  const Player& player = facts_.statistics.players[index];
  Fingerprint print;
  AddTo(print, player);
  print.Add(labels_[index]);
  for (const Rival& rival : {player.figures.nemesis, player.figures.favouriteVictim}) {
    print.Add(rival.index == kNobody ? Digest128() : labels_[rival.index]);
  }
  for (const auto& [name, text] : BarsOf(player, highest_)) print.Add(text);
  print.Add(facts_.RankBefore(index)).Add(facts_.evening.first > 0);
  print.Add(facts_.statistics.customRanking);
  const auto& games = facts_.Games(index);
  for (std::size_t i = games.size() - std::min(games.size(), kSparkGames); i < games.size(); ++i) {
    const Entrant& entrant = facts_.statistics.games[games[i].game].entrants[games[i].entrant];
    print.Add(entrant.rating).Add(entrant.figures.score);
  }
  return print.Value();
}

Digest128 PageFingerprints::OfPlayer(std::uint32_t index) const {
  Fingerprint print;
  print.Add(players_[index]);
  const Player& player = facts_.statistics.players[index];
  const auto [own, field] = FavouriteSharesOf(facts_, player.figures);
  print.Add(own).Add(field);
  for (const Award& award : facts_.Awards()) {
    const auto& [title, value, winner, game] = award;
    if (winner != index) continue;
    print.Add(title).Add(value).Add(game == kNobody ? std::string() : facts_.GameLabel(game).link);
  }
  AddGames(print, index);
  for (const auto& [map, there] : facts_.Maps(index)) {
    const Player& onMap = facts_.statistics.maps[map].players[there];
    print.Add(maps_[map]).Add(onMap.ranked).Add(onMap.rank);
  }
  return print.Value();
}

/// All that others did with a player, they did in games of his.
void PageFingerprints::AddGames(Fingerprint& print, std::uint32_t player) const {
  print.Add(facts_.Games(player).size());
  for (const auto& [game, entrant] : facts_.Games(player)) {
    print.Add(games_[game]).Add(names_[game]).Add(entrant);
  }
}

Digest128 PageFingerprints::OfGamesWithNames(const std::vector<std::uint32_t>& games) const {
  Fingerprint print;
  for (const std::uint32_t game : games) print.Add(games_[game]).Add(names_[game]);
  return print.Value();
}

Digest128 PageFingerprints::OfMap(std::uint32_t index) const {
  const Map& map = facts_.statistics.maps[index];
  Fingerprint print;
  print.Add(maps_[index]).Add(facts_.statistics.customRanking);
  for (const auto& [name, text] : BarsOf(map, MostOf(facts_.statistics.maps))) print.Add(text);
  print.Add(map.games.size());
  for (const std::uint32_t game : map.games) print.Add(games_[game]);
  for (const Player& player : map.players) {
    print.Add(labels_[player.player]).Add(player.ranked).Add(player.rank).Add(player.rating);
  }
  return print.Value();
}

}  // namespace morvane
