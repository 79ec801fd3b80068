// Pages that are left alone because they are made from the same as before: after whatever has
// changed, the site is the one that a run makes into an empty folder, byte for byte.
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "config/settings.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

/// A free game of eight and a team game, with whatever lines a log may hold.
std::string SmallLog() {
  std::string log = Init("q3dm17") + ServerTime(1700000000) + Join(0, "^1Red^7Baron") +
                    JoinBot(1, "Visor") + Join(2, "Ann") + Join(3, "Bob");
  log += Kills(3, 0, 1) + Kill(1, 0, "ROCKET", "  2:00 ") + Kill(2, 3, "ROCKET_SPLASH") +
         Kill(1022, 3, "FALLING") + Kill(2, 2, "GRENADE") + Kill(3, 2, "SHOTGUN", "  2:30 ");
  log += "  2:31 Item: 0 weapon_rocketlauncher\n  2:32 Item: 2 item_quad\n";
  log += "  2:40 Award: 0 1: RedBaron gained the GAUNTLET award!\n";
  log +=
      "  3:00 ClientDisconnect: 3\n" + Join(4, "Cid", 0, "  3:10 ") + Kill(4, 2, "BFG", "  4:00 ");
  log += "  5:00 Exit: Timelimit hit.\n  5:00 score: 9  ping: 40  client: 0 RedBaron\n" + kShutdown;
  log += Init("Q3CTF1", 4) + ServerTime(1700003600) + Join(0, "ann", 1) + Join(1, "Visor", 2) +
         Kills(2, 0, 1) + "  4:00 CTF: 0 1 1: Ann captured the RED flag!\n" +
         "  5:00 Exit: Capturelimit hit.\n  5:00 red:3  blue:1\n" + kShutdown;
  return log + Duel("Bob", "^4Dan", 2, "q3dm6");
}

/// Another value of a setting that is one value and leads nowhere else.
std::string OtherValue(const config::Setting& setting) {
  switch (setting.encoding) {
    case config::Encoding::kFlag:
    case config::Encoding::kFlagUnlessZero:
      return setting.defaultValue == "0" ? "1" : "0";
    case config::Encoding::kColor:
    case config::Encoding::kColorWithoutNames:
      return "#345678";
    case config::Encoding::kFileExtension:
      return ".htm";
    case config::Encoding::kText:
      return setting.key == "time_format" ? "%Y %H" : "3";
    default:
      return {};
  }
}

class Incremental : public testing::Test {
 protected:
  Incremental() { site.Log(SmallLog()); }

  /// A run over the pages of the runs before, and one into an empty folder.
  void ExpectAsNew(const std::string& what) {
    ASSERT_EQ(site.Run(), 0) << what;
    const std::map<std::string, std::string> pages = site.Pages();
    const fs::path kept = site.Folder() / "kept";
    fs::rename(site.Output(), kept);
    ASSERT_EQ(site.Run(), 0) << what;
    const std::map<std::string, std::string> anew = site.Pages();
    fs::remove_all(site.Output());
    fs::rename(kept, site.Output());
    for (const auto& [name, text] : anew) {
      const auto page = pages.find(name);
      ASSERT_TRUE(page != pages.end()) << what << ": lacks " << name;
      ASSERT_EQ(page->second, text) << what << ": " << name;
    }
    ASSERT_EQ(pages.size(), anew.size()) << what << ": has too many";
  }

  SiteRun site;
};

TEST_F(Incremental, EverySetting) {
  ExpectAsNew("the first run");
  for (const config::Setting& setting : config::Settings()) {
    const std::string value = OtherValue(setting);
    if (value.empty()) continue;
    site.Set(setting.section, setting.key, value);
    ExpectAsNew(std::string(setting.key));
    if (HasFatalFailure()) return;
  }
  const std::vector<std::vector<std::string>> more = {{"USER VARS", "title", "A"},
                                                      {"USER VARS", "title", "B"},
                                                      {"USER VARS", "footer", "C"},
                                                      {"KILL TABLES", "hilite_level0", "10"},
                                                      {"KILL TABLES", "hilite_color1", "#111111"},
                                                      {"KILL TABLES", "hilite_levels", "1"},
                                                      {"TEMPLATES", "main_template12", "none"},
                                                      {"TEMPLATES", "game_templates_number", "2"},
                                                      {"TEMPLATES", "map_template0", "mapktable"},
                                                      {"TEMPLATES", "player_template", ""},
                                                      {"TEMPLATES", "gamelist_loop_template", ""},
                                                      {"TEMPLATES", "lastgame_template", "game"},
                                                      {"Main", "players_min_kills", "2"},
                                                      {"Game", "min_kills", "3"}};
  for (const std::vector<std::string>& change : more) {
    site.Set(change[0], change[1], change[2]);
    site.Run();  // a template that is missing ends it with 0, too, but is told
    ExpectAsNew(change[1] + "=" + change[2]);
    if (HasFatalFailure()) return;
  }
}

TEST_F(Incremental, EveryTemplateAndPartial) {
  const fs::path folder = site.OwnTemplates();
  site.Set("USER VARS", "footer", "by us");
  ExpectAsNew("the first run");
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    const std::string text = ReadFile(file);
    const bool isTemplate = file.extension() == ".htmlt";
    WriteFile(file,
              text + (isTemplate ? "<!-- {{kills}}{{vars.footer}}{{summary.kills}} -->" : " "));
    ExpectAsNew(file.filename().string());
    if (HasFatalFailure()) return;
  }
  // All pages now ask for what changes with every game.
  site.Log(SmallLog() + Duel("Ann", "Bob", 1));
  ExpectAsNew("a game more");
}

TEST_F(Incremental, EveryLineOfALogAndOfPlayersTxt) {
  ExpectAsNew("the first run");
  const std::string log = SmallLog();
  for (std::size_t begin = 0; begin < log.size() && !HasFatalFailure();) {
    const std::size_t end = log.find('\n', begin) + 1;
    site.Log(log.substr(0, begin) + log.substr(end));
    ExpectAsNew("without the line " + log.substr(begin, end - begin));
    begin = end;
  }
  for (const char* names :
       {"Ann = Bob\n", "Ann = ^3Bob\n", "- Ann\n", "Cid = Dan\n- Visor\n", ""}) {
    WriteFile(site.Folder() / "players.txt", names);
    ExpectAsNew(std::string("players.txt: ") + names);
  }
}

// They hold 200 games each, and tell the names that players bear now. The games have dates of their
// own: what is reckoned from the log's time changes with each run.
TEST_F(Incremental, FilesOfGames) {
  for (const char* kind : {"game", "map"}) {
    site.Set("TEMPLATES", std::string(kind) + "_templates_number", "0");
  }
  site.Set("TEMPLATES", "player_template", "");
  std::string log;
  for (int i = 0; i < 200; ++i) log += DatedDuel(kFriday + std::int64_t{600} * i, "Ann", "Bob", 1);
  for (const char* winner : {"Bob", "Cid", "ANN"}) {
    log += DatedDuel(kFriday + 9 * kDay, winner, "Dan", 1);
    site.Log(log);
    ExpectAsNew(std::string("a game of ") + winner);
    if (HasFatalFailure()) return;
  }
  site.Set("Game", "min_kills", "1");
  ExpectAsNew("the limit");
  log += DatedDuel(kFriday + 9 * kDay, "Ann", "Bob", 0);
  site.Log(log);
  ExpectAsNew("a game that does not count");
  for (const char* names : {"Ann = Zoe\n", "Ann = ZOE\n", "- Cid\n", "- Dan\n"}) {
    WriteFile(site.Folder() / "players.txt", names);
    ExpectAsNew(std::string("players.txt: ") + names);
  }
}

// Games come, logs are rotated, settings go back and forth, and a person does this and that.
TEST_F(Incremental, AnyHistory) {
  const fs::path templates = site.OwnTemplates();
  const std::string foot = ReadFile(templates / "_foot.htmlt");
  std::mt19937 random(10);
  const auto below = [&](std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
  };
  const std::vector<std::string> names = {"Ann", "Bob", "^1Cid", "Dan", "ANN", "<b>"};
  std::string log = SmallLog();
  const auto anyPage = [&] {
    const auto pages = site.Pages();
    return site.Output() /
           std::next(pages.begin(), static_cast<std::ptrdiff_t>(below(pages.size())))->first;
  };
  const std::vector<std::function<void()>> steps = {
      [&] { log += Duel(names[below(6)], names[below(6)], static_cast<int>(below(9))); },
      [&] {
        log += Init("q3dm6") + Join(0, names[below(6)]) + Join(1, names[below(3)], 1) +
               Kills(2, 0, 1) + kShutdown;
      },
      [&] {
        WriteFile(site.Folder() / "games.log", log);
        fs::rename(site.Folder() / "games.log", site.Folder() / "games.log.1");
        log = Duel("Ann", names[below(6)], 2);
      },
      [&] { site.Set("HTML", "link_color", below(2) == 0 ? "#0000FF" : "#00FFFF"); },
      [&] { site.Set("Game", "min_kills", below(2) == 0 ? "0" : "3"); },
      [&] { site.Set("Main", "use_db", below(3) == 0 ? "0" : "1"); },
      [&] { site.Set("Main", "players_min_kills", below(2) == 0 ? "0" : "2"); },
      [&] {
        WriteFile(templates / "_foot.htmlt", foot + (below(2) == 0 ? "{{player_count}}" : ""));
      },
      [&] { fs::remove(anyPage()); },
      [&] {  // of the same size
        const fs::path page = anyPage();
        std::string text = ReadFile(page);
        if (!text.empty()) text[below(text.size())] ^= 1;
        WriteFile(page, text);
      },
      [&] { fs::last_write_time(anyPage(), fs::file_time_type::clock::now()); },
      [&] { fs::permissions(anyPage(), fs::perms::group_write, fs::perm_options::add); },
      [&] {
        const fs::path page = anyPage();
        const std::string text = ReadFile(page);
        fs::remove(page);
        WriteFile(page, text);
      }};
  for (int i = 0; i < 60; ++i) {
    std::string what = std::to_string(i) + ":";
    for (std::size_t count = below(3); count-- > 0;) {
      const std::size_t step = below(steps.size());
      steps[step]();
      what += " " + std::to_string(step);
    }
    site.Log(log);
    ExpectAsNew(what);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace morvane::test
