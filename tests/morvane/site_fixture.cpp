#include "tests/morvane/site_fixture.h"

#include <regex>

#include "config/modIni.h"
#include "morvane/run.h"
#include "morvane/site/page_list.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

const fs::path kTemplates = MORVANE_TEMPLATES;

std::string Stamped(const std::string& stamp, const std::string& text) {
  return stamp + text + "\n";
}

std::string FreeForAll() {
  std::string log = Init("q3dm17");
  log += Join(0, "^1Red^7Baron") + JoinBot(1, "Visor");
  for (std::size_t i = 0; i < kHostileNames.size(); ++i) {
    log += Join(static_cast<int>(i) + 2, kHostileNames[i]);
  }
  for (int i = 0; i < static_cast<int>(kHostileNames.size()); ++i) {
    log += Kills(i + 3, 0, i + 2) + Kill(i + 2, 0, "ROCKET", "  2:00 ");
  }
  log += Kills(2, 1, 1) + Kill(1022, 1, "FALLING") + Kill(1022, 1, "LAVA") +
         Kill(1, 0, "ROCKET_SPLASH");
  log +=
      Stamped("  2:10 ", "Item: 0 weapon_rocketlauncher") + Stamped("  2:11 ", "Item: 1 item_quad");
  return log + Stamped("  5:00 ", "Exit: Timelimit hit.") + kShutdown;
}

std::string CaptureTheFlag() {
  std::string log = Init("Q3CTF1", 4);
  log += Join(0, "^1Red^7Baron", 1) + JoinBot(1, "Visor", 2) + Join(2, "^4Blue^5Sky", 1);
  log += Kills(5, 0, 1) + Kill(0, 2, "SHOTGUN") + Kill(1, 0, "GAUNTLET", "  3:00 ");
  log += Stamped("  5:00 ", "Exit: Capturelimit hit.") + Stamped("  5:00 ", "red:3  blue:1");
  return log + kShutdown;
}

/// Of a bot, too.
std::string OneDuel(int kills) {
  return Init() + Join(0, "^1Red^7Baron") + JoinBot(1, "Visor") + Kills(kills, 0, 1) + kShutdown;
}

/// What the links of a page lead to, without those within it.
std::vector<std::string> LinksOf(const std::string& page) {
  static const std::regex kLink(R"re((?:href|src)="([^"]*)")re");
  std::vector<std::string> links;
  for (std::sregex_iterator at(page.begin(), page.end(), kLink), end; at != end; ++at) {
    if (!(*at)[1].str().starts_with("#")) links.push_back((*at)[1]);
  }
  return links;
}

}  // namespace

SiteRun::SiteRun() {
  WriteFile(Folder() / "morvane.cfg", ReadFile(kTemplates.parent_path() / "morvane.cfg"));
  Set("Main", "src_path", kTemplates.string());
  for (const char* key :
       {"use_main_log", "use_logparser_log", "use_templateparser_log", "use_customrank_log"}) {
    Set("Main", key, "5");  // to the files alone
  }
  for (const char* key : {"players_min_time", "players_min_games", "players_min_kills"}) {
    Set("Main", key, "0");
  }
  for (const char* key : {"min_players", "min_time", "min_kills"}) Set("Game", key, "0");
}

void SiteRun::Set(std::string_view section, std::string_view key, std::string_view value) {
  config::modIni(Folder().string()).WriteIni(section, key, value);
}

fs::path SiteRun::OwnTemplates() {
  const fs::path folder = Folder() / "templates";
  fs::copy(kTemplates, folder, fs::copy_options::recursive);
  Set("Main", "src_path", "templates");
  return folder;
}

void SiteRun::Log(std::string_view text) { WriteFile(Folder() / "games.log", text); }

int SiteRun::Run() { return morvane::Run(Folder().string()); }

std::map<std::string, std::string> SiteRun::Pages() const {
  std::map<std::string, std::string> pages;
  for (const auto& entry : fs::directory_iterator(Output())) {
    const bool isPage = entry.path().filename() != PageList::kFileName;
    if (isPage && entry.is_regular_file())
      pages[entry.path().filename().string()] = ReadFile(entry.path());
  }
  return pages;
}

std::string FullHouse(int first) {
  constexpr int kSlots = 60;
  std::string log = Init("q3dm6");
  for (int slot = 0; slot < kSlots; ++slot)
    log += Join(slot, "Guest" + std::to_string(first + slot));
  for (int slot = 0; slot < kSlots; ++slot) log += Kill(slot, (slot + 1) % kSlots);
  return log + kShutdown;
}

std::string RichLog() {
  std::string log = FreeForAll() + CaptureTheFlag() + FullHouse(0) + FullHouse(60);
  for (int i = 0; i < 105; ++i) log += OneDuel(1 + i % 3);
  return log;
}

std::string Turnaround() {
  std::string log = Init() + Join(0, "Ann") + Join(1, "Bob") + Join(2, "Dan");
  for (int i = 0; i < 8; ++i) log += Kill(1, 0, "ROCKET", "  1:10 ");
  log += "  2:00 ClientDisconnect: 2\n" + Join(3, "Cid", 0, "  2:30 ");
  log += "  2:40 Award: 0 1: Ann gained the GAUNTLET award! gained the EXCELLENT award!\n";
  log += "  2:41 CTF: 3 1 1: Cid captured the RED flag!\n  2:41 Award: 3 9: Cid hopped\n";
  log += "  2:42 Award: 40 1: Nobody gained the IMPRESSIVE award!\n";
  for (int i = 0; i < 10; ++i) log += Kill(0, 1, "SHOTGUN", "  3:00 ");
  return log + "  4:00 Exit: Fraglimit hit.\n" + kShutdown;
}

std::string OneGame(const std::vector<std::string>& names) {
  std::string log = Init();
  for (std::size_t i = 0; i < names.size(); ++i) log += Join(static_cast<int>(i), names[i]);
  for (int i = 1; i < static_cast<int>(names.size()); ++i) log += Kills(i, 0, i);
  return log + kShutdown;
}

std::string DatedDuel(std::int64_t start, std::string_view winner, std::string_view loser,
                      int kills) {
  return Init() + ServerTime(start) + Join(0, winner) + Join(1, loser) + Kills(kills, 0, 1) +
         kShutdown;
}

std::string Weekend() {
  return DatedDuel(kFriday - 60 * kDay, "Ann", "Bob", 10) + DatedDuel(kFriday, "Ann", "Bob", 4) +
         DatedDuel(kFriday + 600, "Bob", "Ann", 2) + DatedDuel(kFriday + kDay, "Bob", "Ann", 15) +
         DatedDuel(kFriday + kDay + 600, "Cid", "Ann", 3);
}

std::string CaseLog() {
  return OneGame({"^4Boss", "^3One", "Two", "Three"}) + Duel("Two", "^4Boss", 1);
}

void ExpectLinksResolve(const SiteRun& site) {
  const std::map<std::string, std::string> pages = site.Pages();
  for (const auto& [name, text] : pages) {
    if (!name.ends_with(".html")) continue;
    for (const std::string& link : LinksOf(text)) {
      EXPECT_EQ(pages.count(link), 1U) << name << " leads to " << link;
    }
  }
}

std::size_t Count(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

}  // namespace morvane::test
