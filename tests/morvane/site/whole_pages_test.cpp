// Whole pages of small logs, each of which has something of its own to show: what stands between
// the head and the foot of a page, byte for byte, and what other programs are told.
//
// VANTREL3_ACCEPT=1 writes tests/morvane/site/pages anew: look at what has changed there.
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <sstream>

#include <nlohmann/json.hpp>

#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

/// A small log, the settings it is shown with, and the pages that are looked at.
struct Site {
  std::string name;
  std::string log;
  Names pages;
  std::vector<Names> settings = {};  // section, key, value
  std::string rules = {};            // of a ranking
  std::string players = {};
  int runs = 1;  // the second one takes what there is from the database
};

/// A log without its stamps.
std::string WithoutStamps(const std::string& log) {
  std::istringstream lines(log);
  std::string text;
  for (std::string line; std::getline(lines, line);) text += line.substr(7) + "\n";
  return text;
}

/// Ann beats Bob in each game but the last; Cid comes only then.
std::string Season() {
  std::string log;
  for (int kills = 1; kills <= 12; ++kills) log += Duel("Ann", "Bob", kills);
  return log + Init("q3dm6") + Join(0, "Ann") + Join(1, "Bob") + Join(2, "Cid") +
         Kill(1, 0, "ROCKET") + Kill(1, 0, "ROCKET_SPLASH") + Kill(1, 0) + Kill(0, 2) + kShutdown;
}

/// Thirty games that nobody knows the dates of; the leader changes.
std::string Undated() {
  std::string log;
  for (int i = 0; i < 30; ++i) log += Duel(i < 5 ? "Ann" : "Bob", "Cid", 1);
  return log;
}

/// Games whose dates are known, not after and reckoned; a bot, which gets no award; weapons with
/// their splash.
std::string Mixed() {
  const std::string bots = Init() + Join(0, "Ann") + JoinBot(1, "Bob") + Join(2, "Cid") +
                           Kills(3, 0, 1) + Kills(5, 1, 0) + Kill(0, 2, "SHOTGUN") +
                           Kill(1, 0, "ROCKET") + Kill(1, 0, "ROCKET_SPLASH") + kShutdown;
  return DatedDuel(kFriday, "Ann", "Cid", 2) + bots + Duel("Ann", "Cid", 1);
}

/// Evil meets others and leads them; he is left out.
std::string WithEvil() {
  return Init() + Join(0, "Evil") + Join(1, "Ann") + Join(2, "Bob") + Kill(0, 1, "BFG", "  0:10 ") +
         Kill(0, 1, "BFG", "  0:20 ") + Kill(1, 2, "BFG", "  0:30 ") +
         Kill(1, 0, "BFG", "  0:40 ") + Kill(1, 0, "BFG", "  0:50 ") + kShutdown +
         Duel("Evil", "Bob", 1) + Duel("Bob", "Cid", 2);
}

std::string Teams(int type) {
  return Init("q3dm7", type) + Join(0, "Ann", 1) + Join(1, "Bob", 2) + Kill(0, 1) + kShutdown;
}

/// Other settings than the shipped ones, as far as a page shows them.
const std::vector<Names> kOther = {{"HTML", "text_color", "#123456"},
                                   {"HTML", "link_color", "#12AB56"},
                                   {"HTML", "vlink_color", "#AB1256"},
                                   {"HTML", "alink_color", "#5612AB"},
                                   {"HTML", "bg_color", "white"},
                                   {"HTML", "name3", "#ABCDEF"},
                                   {"HTML", "name4", "#11CC22"},
                                   {"HTML", "bg_image", "no\\such.png"},
                                   {"KILL TABLES", "hilite_minhilite", "1"},
                                   {"KILL TABLES", "hilite_color0", "#ABCDEF"},
                                   {"KILL TABLES", "hilite_level1", "88"},
                                   {"KILL TABLES", "hilite_level3", "62"},
                                   {"KILL TABLES", "column1", "#FEDCBA"},
                                   {"Main", "time_format", "year %Y"},
                                   {"Game", "game_last_placed", "7"}};
const Names kFew = {"Main", "players_min_kills", "1"};
const Names kNone = {"Main", "players_min_kills", "7"};

std::vector<Site> Sites() {
  const std::string rules = "kill.killer = rank + 2\nkill.victim = rank - 1\n";
  const std::string untimed = WithoutStamps(OneGame({"Ann", "Bob"}));
  return {
      {"season", Season(), {"player_ann", "player_bob", "player_cid"}},
      {"rules", Season(), {"player_ann"}, {}, rules},
      {"leftout", Season(), {"player_ann"}, {}, "", "- Bob\n"},
      {"evil", WithEvil(), {"stats.json", "game_1", "game_2", "player_ann"}, {}, rules, "- EVIL\n"},
      {"empty", "", {"stats", "lastgame", "stats.json"}},
      {"weekend",
       Weekend() + DatedDuel(kFriday + kDay + 1200, "Bob", "Ann", 1),
       {"stats", "playerrank", "playerpergame", "playerperhour", "map_q3dm17", "stats.json"}},
      {"gained", Weekend(), {"playerrank"}, {}, rules},
      {"undated", Undated(), {"stats", "playerrank"}},
      {"turnaround", Turnaround(), {"game_1", "stats.json"}},
      {"turnaround", Turnaround(), {"game_1", "stats.json"}, {{"Main", "use_db", "1"}}, "", "", 2},
      {"mixed",
       Mixed(),
       {"stats", "game_1", "game_2", "game_3", "gamelist", "morekilltables", "allkilltable",
        "playerFSES", "player_bob"}},
      {"untimed",
       untimed,
       {"stats", "game_1", "gameplayer_1", "gamelist", "map_q3dm17", "maplist", "playerrank",
        "playerlist", "playerperhour", "playerpermin", "player_ann"}},
      {"frags", Teams(3), {"game_1", "gamelist", "player_ann"}},
      {"flags", Teams(4), {"game_1", "gamelist"}},
      {"shipped", CaseLog(), {"allkilltable", "gamektable_1"}},
      {"other",
       CaseLog(),
       {"style.css", "stats", "gamektable_1", "allkilltable", "game_1", "playerGWP"},
       kOther},
      {"few", CaseLog(), {"allkilltable", "playerrank", "morekilltables", "player_boss"}, {kFew}},
      {"tables", CaseLog(), {"allkilltable"}, {kFew, {"Main", "limit_overall_killtables", "0"}}},
      {"none", CaseLog(), {"allkilltable", "otherkilltables", "playerrank"}, {kNone}},
      {"plain", CaseLog(), {"gamektable_1"}, {{"KILL TABLES", "hilite_levels", "0"}}}};
}

void Make(SiteRun& run, const Site& site) {
  run.Log(site.log);
  fs::last_write_time(run.Folder() / "games.log",
                      fs::file_time_type(std::chrono::file_clock::from_sys(
                          std::chrono::sys_seconds(std::chrono::seconds(kFriday + 9 * kDay)))));
  run.Set("Main", "time_format", "%Y-%m-%d %H:%M:%S");
  for (const Names& setting : site.settings) run.Set(setting[0], setting[1], setting[2]);
  if (!site.rules.empty()) {
    WriteFile(run.OwnTemplates() / "custrank.htmlt", site.rules);
    run.Set("Main", "use_cust_rank", "1");
    run.Set("Main", "cust_rank_start", "100");
  }
  if (!site.players.empty()) WriteFile(run.Folder() / "players.txt", site.players);
  for (int i = 0; i < site.runs; ++i) ASSERT_EQ(run.Run(), 0);
}

/// What is looked at of a file: the part of its own of a page; of others all, of JSON a member of
/// the whole in each line.
std::string OwnPart(const std::string& page) {
  if (page.starts_with('{')) {
    std::string text;
    for (const auto& [name, value] : nlohmann::json::parse(page).items()) {
      text += name + ": " + value.dump() + "\n";
    }
    return text;
  }
  const std::size_t begin = page.find("<main");
  if (begin == page.npos) return page;
  return page.substr(begin, page.find("</main>") - begin);
}

TEST(WholePages, AreAsTheyWere) {
  setenv("TZ", "UTC", 1);
  tzset();
  for (const Site& site : Sites()) {
    SiteRun run;
    Make(run, site);
    std::string found;
    for (const std::string& name : site.pages) {
      const std::string page = name + (name.find('.') == name.npos ? ".html" : "");
      found += "==== " + page + "\n" + OwnPart(run.Page(page)) + "\n";
    }
    const fs::path file = fs::path(MORVANE_EXPECTED_PAGES) / (site.name + ".txt");
    if (std::getenv("VANTREL3_ACCEPT") != nullptr) WriteFile(file, found);
    EXPECT_EQ(found, ReadFile(file)) << file;
  }
}

}  // namespace
}  // namespace morvane::test
