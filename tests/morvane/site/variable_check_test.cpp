// Variables of templates that no page has.
#include "morvane/site/variable_check.h"

#include <gtest/gtest.h>

#include "morvane/site/template_source.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

/// The complaints about a template, with "%" for the folder, one a line.
std::string Complaints(const std::string& page, const std::string& part = "") {
  TempFolder folder;
  WriteFile(folder.Path() / "page.htmlt", page);
  WriteFile(folder.Path() / "part.htmlt", part);
  VariableCheck check({"title", "my.site"}, {"stats", "gamelist"});
  std::string all;
  for (int i = 0; i < 2; ++i) {  // a second template with the same parts says nothing new
    TemplateSource source;
    EXPECT_FALSE(source.Read(folder.Path(), "page"));
    for (const TemplateFault& found : check.FaultsOf(source)) {
      all += fs::path(found.file).filename().string() + ":" + std::to_string(found.line) + ": " +
             found.text + "\n";
    }
  }
  return all;
}

std::string Unknown(const std::string& place, const std::string& name, const std::string& nearest) {
  return place + ": there is no variable \"" + name + "\"; the nearest is \"" + nearest + "\"\n";
}

TEST(VariableCheck, TellsFileLineAndTheNearestName) {
  const struct {
    std::string page;
    std::string said;
    std::string part = {};
  } kCases[] = {
      {"{{#players}}{{name}} {{{ name_html }}}{{&link}}{{/players}}{{.}}{{! nothing }}", ""},
      {"{{summary.games}}{{#summary}}{{kills}}{{/summary}}{{colors.text}}", ""},
      {"1\n2 {{playres}}", Unknown("page.htmlt:2", "playres", "players")},
      {"{{#playerz}}\n{{nmae}}\n{{/playerz}}",
       Unknown("page.htmlt:1", "playerz", "players") + Unknown("page.htmlt:2", "nmae", "name")},
      {"{{^gamse}}{{/gamse}}", Unknown("page.htmlt:1", "gamse", "games")},
      {"{{{name_htm}}}", Unknown("page.htmlt:1", "name_htm", "name_html")},
      {"{{summary.gaems}}", Unknown("page.htmlt:1", "summary.gaems", "summary.games")},
      {"{{colors.Limk}}", Unknown("page.htmlt:1", "colors.Limk", "colors.link")},
      {"{{Name}}", Unknown("page.htmlt:1", "Name", "name")},
      {"{{vars.title}}{{vars.my.site}}{{links.stats}}", ""},
      {"{{vars.titel}}", Unknown("page.htmlt:1", "vars.titel", "vars.title")},
      {"{{#vars.logo}}{{vars.logo}}{{/vars.logo}}{{^links.x}}-{{/links.x}}", ""},
      {"{{links.stat}}", Unknown("page.htmlt:1", "links.stat", "links.stats")},
      {"{{> part}}\n{{> part}}\n{{nmae}}",
       Unknown("part.htmlt:2", "gaems", "games") + Unknown("page.htmlt:3", "nmae", "name"),
       "\n{{gaems}}\n"},
      {"{{nmae}} {{nmae}}", Unknown("page.htmlt:1", "nmae", "name")},
      {"{{=<% %>=}}<%nmae%>{{nmae}}", ""},
      {"{{}}{{nmae}}", Unknown("page.htmlt:1", "nmae", "name")},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(Complaints(test.page, test.part), test.said) << test.page;
  }
}

TEST(VariableCheck, HasNothingAgainstTheShippedTemplatesAndIsToldByARun) {
  SiteRun site;
  site.Log(Duel("Ann", "Bob", 3));
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(site.Messages("templateparser.log.txt"), "");
  const fs::path templates = site.OwnTemplates();
  std::ofstream(templates / "_foot.htmlt", std::ios::app) << "{{gmaes}}\n";
  std::ofstream(templates / "style.css", std::ios::app) << "{{colors.lnik}}\n";
  ASSERT_EQ(site.Run(), 0);
  const std::string said = site.Messages("templateparser.log.txt");
  EXPECT_EQ(Count(said, "\n"), 2U) << said;
  EXPECT_EQ(Count(said, "there is no variable \"gmaes\"; the nearest is \"games\""), 1U);
  EXPECT_EQ(Count(said, " normal " + (templates / "style.css").string() + ":"), 1U);
  EXPECT_EQ(Count(said, "there is no variable \"colors.lnik\"; the nearest is \"colors.link\""),
            1U);
}

}  // namespace
}  // namespace morvane::test
