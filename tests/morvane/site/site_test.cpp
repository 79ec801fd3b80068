// The site as a whole.
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <thread>

#include "bench/log_generator.h"
#include "platform/process.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

TEST(Site, LinksResolveAndLeadNowhereElse) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  ExpectLinksResolve(site);
  for (const auto& [name, text] : site.Pages()) {
    // The name of SVG is an address, but nobody asks for what is there.
    const std::size_t names = Count(text, "xmlns=\"http://www.w3.org/2000/svg\"");
    EXPECT_EQ(Count(text, "://") + Count(text, "url(//"), names) << name;
  }
}

TEST(Site, IsConsistentWithFewTemplates) {
  for (const char* lone : {"player_template", "lastgame_template", "gamelist_template", "none"}) {
    SiteRun site;
    site.Log(RichLog());
    for (const char* key : {"map_templates_number", "game_templates_number"}) {
      site.Set("TEMPLATES", key, "0");
    }
    site.Set("TEMPLATES", "main_templates_number", "2");
    for (const char* key : {"player_template", "lastgame_template", "gamelist_template"}) {
      if (std::string_view(key) != lone) site.Set("TEMPLATES", key, "");
    }
    ASSERT_EQ(site.Run(), 0);
    ExpectLinksResolve(site);
    EXPECT_EQ(Count(site.Page("stats.html"), "href=\"playerKDS.html\""), 1U);
  }
}

TEST(Site, NoPageNamesWhoIsLeftOut) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  ASSERT_GT(Count(site.Page("stats.html"), "RedBaron") + Count(site.Page("stats.html"), "Baron"),
            0U);
  WriteFile(site.Folder() / "players.txt", "- redbaron\nGuest7 = Guest8\nnothing\n");
  fs::remove_all(site.Output());
  ASSERT_EQ(site.Run(), 0);
  for (const auto& [name, text] : site.Pages()) {
    EXPECT_EQ(Count(text, "Baron") + Count(text, "redbaron") + Count(name, "baron"), 0U) << name;
  }
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "severe players.txt:3: neither"), 1U);
  EXPECT_EQ(site.Page("player_guest7.html"), "");
  EXPECT_GT(Count(site.Page("gameplayer_3.html"), "player_guest8.html\"><bdi>Guest7<"), 0U)
      << "the name borne in the game";
  ExpectLinksResolve(site);
}

TEST(Site, HostileNamesStayTextAndInsideTheFolder) {
  SiteRun site;
  site.Log(RichLog());
  site.Set("USER VARS", "secret", "<i>leak</i>");
  ASSERT_EQ(site.Run(), 0);
  std::size_t playerPages = 0;
  for (const auto& [name, text] : site.Pages()) {
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                     "0123456789_-."),
              name.npos)
        << name;
    for (const char* raw :
         {"<script>alert", "<img", "<i>leak", "\xE2\x80\xAE", "\x1B", "\x07", "caf\xE9 "}) {
      EXPECT_EQ(Count(text, raw), 0U) << name << ": " << raw;
    }
    if (name.starts_with("player_")) ++playerPages;
  }
  EXPECT_GT(Count(site.Page("playerrank.html"), "&lt;script&gt;alert(1)&lt;/script&gt;</bdi>"), 0U);
  EXPECT_EQ(playerPages, 3U + kHostileNames.size() + 120U) << "two players shared a page";
}

/// Runs tidy over files; the result is what it says about them.
std::string Tidy(const fs::path& report, const std::vector<std::string>& files) {
  std::vector<std::string> arguments = {"tidy", "-q", "-e", "-f", report.string()};
  arguments.insert(arguments.end(), files.begin(), files.end());
  platform::ProcessHandle tidy = platform::OpenProcess(platform::StartProcess(arguments).processId);
  unsigned code = platform::kStillActive;
  while (code == platform::kStillActive) {
    if (platform::GetExitCodeProcess(tidy, code)) return "tidy cannot be started";
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return ReadFile(report);
}

TEST(Site, PagesAreValid) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  std::vector<std::string> files;
  for (const auto& [name, text] : site.Pages()) {
    const bool oneOfMany = name.find("_9") != name.npos || name.find("_guest") != name.npos;
    if (name.ends_with(".html") && !oneOfMany) files.push_back((site.Output() / name).string());
  }
  ASSERT_GT(files.size(), 40U);
  std::istringstream lines(Tidy(site.Folder() / "tidy.txt", files));
  for (std::string line; std::getline(lines, line);) {
    // This tidy is older than these attributes; and a table may well have no rows.
    const bool known = line.find("\"aria-current\"") != line.npos ||
                       line.find("\"viewbox\"") != line.npos ||
                       line.find("\"preserveaspectratio\"") != line.npos ||
                       line.find("trimming empty <tbody>") != line.npos;
    EXPECT_TRUE(known) << line;
  }
}

TEST(Site, NoPageIsHeavy) {
  constexpr std::size_t kKilobyte = 1024;
  const auto text = [](const auto& generate) {
    std::string log;
    generate([&](std::string_view piece) { log += piece; });
    return log;
  };
  SiteRun site;
  for (const std::string& log :
       {text([](const auto& write) { bench::GenerateLog(1999, 40, write); }),  // that of the stage
        text([](const auto& write) { bench::GenerateCrowdLog(100, 250, write); })}) {
    site.Log(log);
    ASSERT_EQ(site.Run(), 0);
    const std::map<std::string, std::string> pages = site.Pages();
    EXPECT_LE(Packed(pages.at("style.css")).size() + Packed(pages.at("sort.js")).size(),
              12 * kKilobyte);
    for (const auto& [name, page] : pages) {
      const bool isPage = name.ends_with(".html");
      EXPECT_LE(isPage ? Packed(page).size() : 0, 30 * kKilobyte) << name;
    }
  }
}

/// Numbers of the games or ranks that the rows of a page hold, in order.
std::vector<int> RowsOf(const std::string& page, const std::string& pattern) {
  const std::regex row(pattern);
  std::vector<int> rows;
  for (std::sregex_iterator at(page.begin(), page.end(), row), end; at != end; ++at) {
    rows.push_back(std::stoi((*at)[1]));
  }
  return rows;
}

TEST(Site, LongListsHaveSeveralPages) {
  SiteRun site;
  std::string log;
  for (int i = 0; i < 401; ++i) log += Duel("Player" + std::to_string(i), "Victim", 1);
  site.Log(log);
  for (const char* key : {"game_templates_number", "map_templates_number"}) {
    site.Set("TEMPLATES", key, "0");
  }
  const fs::path templates = site.OwnTemplates();
  WriteFile(templates / "every.htmlt", "{{#games}}game {{number}};{{/games}}");
  WriteFile(templates / "some.htmlt", "{{! split: games }}{{#games}}game {{number}};{{/games}}");
  site.Set("TEMPLATES", "main_template0", "every");
  site.Set("TEMPLATES", "main_template1", "some");
  ASSERT_EQ(site.Run(), 0);
  ExpectLinksResolve(site);
  const std::string number = R"re(<th scope="row" data-sort="(\d+)">)re";
  const auto descending = [](int last, int first) {
    std::vector<int> rows;
    for (int i = last; i >= first; --i) rows.push_back(i);
    return rows;
  };
  EXPECT_EQ(RowsOf(site.Page("gamelist.html"), number), descending(401, 202));
  EXPECT_EQ(RowsOf(site.Page("gamelist-2.html"), number), descending(201, 201));
  EXPECT_EQ(RowsOf(site.Page("gamelist-1.html"), number), descending(200, 1));
  EXPECT_EQ(RowsOf(site.Page("every.html"), "game (\\d+);"), descending(401, 1));
  EXPECT_EQ(RowsOf(site.Page("some.html"), "game (\\d+);"), descending(401, 202));
  EXPECT_EQ(RowsOf(site.Page("some-1.html"), "game (\\d+);"), descending(200, 1));
  const std::string player = "<th scope=\"row\"><a href=\"player_";
  const std::string first = site.Page("playerrank.html");
  EXPECT_EQ(Count(first.substr(0, first.find("<div class=\"span-late\"")), player), 200U);
  EXPECT_GT(Count(first, "class=\"span-late\""), 0U) << "once, beside the first page";
  EXPECT_EQ(Count(site.Page("playerrank-2.html"), player), 200U);
  EXPECT_EQ(Count(site.Page("playerrank-3.html"), player), 2U);
  EXPECT_EQ(Count(site.Page("playerrank-2.html"),
                  "<a href=\"playerrank-2.html\" aria-current=\"page\">201–400</a>"),
            1U);
  // A list that grows leaves its older pages alone.
  const std::string oldest = site.Page("gamelist-1.html");
  site.Log(log + Duel("Victim", "Player1", 1));
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(RowsOf(site.Page("gamelist.html"), number), descending(402, 203));
  EXPECT_EQ(RowsOf(site.Page("gamelist-1.html"), number), descending(200, 1));
}

}  // namespace
}  // namespace morvane::test
