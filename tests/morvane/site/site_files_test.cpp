// The files of a site: which are written, kept and taken away.
#include <gtest/gtest.h>
#include <set>

#include "morvane/site/page_list.h"
#include "tests/morvane/site_fixture.h"
#include "text/text.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

std::set<std::string> NamesOf(const SiteRun& site) {
  std::set<std::string> names;
  for (const auto& [name, text] : site.Pages()) names.insert(name);
  return names;
}

TEST(SiteFiles, KeepsTheNamesOfPlayerPages) {
  SiteRun site;
  site.Log(OneGame({"A.B", "a b", "Zeh"}));
  ASSERT_EQ(site.Run(), 0);
  std::set<std::string> before;
  for (const auto& [name, text] : site.Pages()) before.insert(name);
  site.Log(OneGame({"zeh", "^1A.b", "Other", "A B"}));
  ASSERT_EQ(site.Run(), 0);
  for (const auto& [name, text] : site.Pages()) {
    if (name.starts_with("player_")) {
      EXPECT_TRUE(before.count(name) == 1 || name == "player_other.html") << name;
    }
  }
}

TEST(SiteFiles, RewritesOnlyWhatChanges) {
  SiteRun site;
  site.Log(RichLog());
  ASSERT_EQ(site.Run(), 0);
  const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1);
  for (const auto& entry : fs::directory_iterator(site.Output())) {
    fs::last_write_time(entry.path(), past);
  }
  const auto rewritten = [&] {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(site.Output())) {
      const std::string name = entry.path().filename().string();
      if (entry.last_write_time() > past && name != PageList::kFileName) names.insert(name);
    }
    return names;
  };
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(rewritten(), std::set<std::string>());
  site.Set("HTML", "link_color", "#101010");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(rewritten().count("style.css"), 1U);
  EXPECT_EQ(rewritten().count("playerrank.html"), 0U);
}

TEST(SiteFiles, PagesOfEarlierRunsGoAndNothingElse) {
  SiteRun site;
  site.Log(CaseLog());
  WriteFile(site.Folder() / "stars.png", "stars");
  site.Set("HTML", "bg_image", "stars.png");
  ASSERT_EQ(site.Run(), 0);
  const std::set<std::string> first = NamesOf(site);
  ASSERT_TRUE(first.contains("player_three.html") && first.contains("index.html"));
  WriteFile(site.Output() / "player_one.html", "changed by hand");
  WriteFile(site.Output() / "own.html", "own");
  WriteFile(site.Output() / "images" / "own.png", "own");

  site.Log(OneGame({"^4Boss", "Two"}));
  site.Set("HTML", "bg_image", "");
  site.Set("HTML", "file_ext", ".htm");
  ASSERT_EQ(site.Run(), 0);
  for (const std::string& name : NamesOf(site)) {
    const bool isOwn = name == "player_one.html" || name == "own.html";
    EXPECT_TRUE(isOwn || !name.ends_with(".html")) << name;
  }
  EXPECT_EQ(site.Page("player_one.html"), "changed by hand");
  EXPECT_EQ(site.Page("images/stars.png") + site.Page("images/own.png"), "own");
  EXPECT_EQ(Count(site.Page("index.htm"), "url=stats.htm\""), 1U);

  // Back again: what stood there by hand does not keep the page from being made.
  site.Log(CaseLog());
  site.Set("HTML", "file_ext", ".html");
  ASSERT_EQ(site.Run(), 0);
  std::set<std::string> expected = first;
  expected.insert("own.html");
  EXPECT_EQ(NamesOf(site), expected);

  const fs::path former = site.Output();
  site.Set("Main", "dest_path", "elsewhere");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(NamesOf(site), expected) << "another folder is no reason to empty this one: " << former;
}

TEST(SiteFiles, TemplatesThatCannotBeReadKeepTheirPages) {
  SiteRun site;
  site.Log(CaseLog());
  const fs::path templates = site.OwnTemplates();
  ASSERT_EQ(site.Run(), 0);
  const std::set<std::string> all = NamesOf(site);
  fs::rename(templates / "game.htmlt", templates / "game.off");
  site.Set("TEMPLATES", "player_template", "");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_TRUE(NamesOf(site).contains("game_1.html"));
  EXPECT_FALSE(NamesOf(site).contains("player_boss.html"));
  fs::rename(templates, site.Folder() / "gone");
  EXPECT_EQ(site.Run(), 1) << "nothing could be written";
  EXPECT_TRUE(NamesOf(site).contains("game_1.html") && NamesOf(site).contains("style.css"));
  fs::rename(site.Folder() / "gone", templates);
  fs::rename(templates / "game.off", templates / "game.htmlt");
  site.Set("TEMPLATES", "player_template", "player");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(NamesOf(site), all);
}

TEST(SiteFiles, AFirstPageAndStatsJsonKeepOutOfTheWay) {
  SiteRun site;
  site.Log(CaseLog());
  fs::create_directories(site.Output());
  WriteFile(site.Output() / "index.html", "own");
  WriteFile(site.Output() / "stats.json", "own");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(site.Page("index.html") + site.Page("stats.json"), "ownown");
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "is not the engine's"), 2U);
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), " severe "), 0U);

  const fs::path templates = site.OwnTemplates();
  WriteFile(templates / "Index.htmlt", "by a template");
  site.Set("TEMPLATES", "main_template1", "Index");
  site.Set("HTML", "file_ext", ".json");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(site.Page("Index.json"), "by a template");
  EXPECT_EQ(site.Page("index.json"), "");
  EXPECT_EQ(Count(site.Page("stats.json"), "<!DOCTYPE html>"), 1U);
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), " severe "), 0U);
}

TEST(SiteFiles, MissingAndBrokenTemplatesCostOnlyTheirPages) {
  SiteRun site;
  site.Log(CaseLog());
  const fs::path folder = site.OwnTemplates();
  WriteFile(folder / "game.htmlt", "one\n{{#players}}\n");
  fs::remove(folder / "map.htmlt");
  site.Set("TEMPLATES", "main_template3", "own.tpl");
  WriteFile(folder / "own.tpl", "own {{vars.x}}");
  site.Set("TEMPLATES", "main_template4", "stats");
  ASSERT_EQ(site.Run(), 0);
  const std::string messages = site.Messages("templateparser.log.txt");
  EXPECT_EQ(Count(messages, " severe "), 2U);
  EXPECT_EQ(Count(messages, "game.htmlt:2: Unclosed section \"players\""), 1U);
  EXPECT_EQ(Count(messages, "map.htmlt: the template cannot be read"), 1U);
  EXPECT_EQ(site.Page("game_1.html") + site.Page("map_q3dm17.html"), "");
  EXPECT_NE(site.Page("gameplayer_1.html"), "");
  EXPECT_EQ(site.Page("own.html"), "own ");
  ExpectLinksResolve(site);
}

TEST(SiteFiles, TwoPagesOfOneNameAreASevereMessage) {
  SiteRun site;
  site.Log(OneGame({"Zeh", "Mal"}));
  const fs::path templates = site.OwnTemplates();
  WriteFile(templates / "player_zeh.htmlt", "own");
  WriteFile(templates / "Player_Mal.htmlt", "own");
  site.Set("TEMPLATES", "main_template1", "player_zeh");
  site.Set("TEMPLATES", "main_template2", "Player_Mal");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(text::FoldCase(site.Messages("morvane.log.txt")),
                  "two pages have the name player_mal.html"),
            1U)
      << "where the file system does not tell A from a, they are the same";
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "two pages have the name player_zeh.html"), 1U);
}

}  // namespace
}  // namespace morvane::test
