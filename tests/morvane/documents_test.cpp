// Holds the documents against the engine. A template made from docs/templates.md uses every
// variable named there, and each has to have a value on some page of its kind; every event,
// variable and example of docs/ranking.md has to make a rule.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "morvane/statistics/ranking.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

namespace fs = std::filesystem;

const fs::path kDocuments = fs::path(MORVANE_TEMPLATES) / "../../docs";

struct Variable {
  std::string name;
  std::string type;
};

/// The document by headings: the variables of each, and the headings whose variables it takes over.
struct Documented {
  std::map<std::string, std::vector<Variable>> variables;
  std::map<std::string, std::string> takenOver;
};

Documented ReadDocument() {
  Documented documented;
  std::string heading;
  std::istringstream lines(ReadFile(kDocuments / "templates.md"));
  const std::regex row(R"(\| `([\w.]+)` \| ([^|]+) \|.*)");
  const std::regex takes(R"re(.*(?:those|All|variables) of "([^"]+)".*)re");
  std::smatch match;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("## ") || line.starts_with("### ")) {
      heading = line.substr(line.find(' ') + 1);
    } else if (std::regex_match(line, match, row)) {
      documented.variables[heading].push_back({match[1], match[2]});
    } else if (std::regex_match(line, match, takes)) {
      documented.takenOver[heading] = match[1];
    }
  }
  return documented;
}

/// The variables of a heading, each once: its own first.
std::vector<Variable> VariablesOf(const Documented& documented, const std::string& heading) {
  std::vector<Variable> variables;
  const auto add = [&](const std::string& from) {
    const auto found = documented.variables.find(from);
    ASSERT_NE(found, documented.variables.end()) << "no variables under " << from;
    for (const Variable& variable : found->second) {
      const bool known = std::any_of(variables.begin(), variables.end(),
                                     [&](const Variable& v) { return v.name == variable.name; });
      if (!known) variables.push_back(variable);
    }
  };
  const auto more = documented.takenOver.find(heading);
  if (documented.variables.count(heading) == 1 || more == documented.takenOver.end()) add(heading);
  if (more != documented.takenOver.end()) add(more->second);
  return variables;
}

/// Makes a template from the variables under a heading and the rows and objects among them; `uses`
/// gets a mark for each. `kind`: of the template.
std::string TemplateOf(const Documented& documented, const std::string& heading,
                       const std::string& kind, std::set<std::string>& uses) {
  std::string text;
  for (const auto& [name, type] : VariablesOf(documented, heading)) {
    const std::string mark = "@" + kind + "/" + heading + "/" + name + "@";
    const std::size_t colon = type.find(": ");
    if (colon != type.npos) {
      text += "{{#" + name + "}}\n" + TemplateOf(documented, type.substr(colon + 2), kind, uses) +
              "{{/" + name + "}}\n";
      continue;
    }
    uses.insert(mark);
    if (type == "flag") {
      text += "{{#" + name + "}}" + mark + "set@@{{/" + name + "}}\n";
    } else {
      text += mark + (type == "html" ? "{{{" + name + "}}}" : "{{" + name + "}}") + "@@\n";
    }
  }
  return text;
}

bool HasValue(const std::string& pages, const std::string& mark) {
  for (std::size_t at = pages.find(mark); at != pages.npos; at = pages.find(mark, at + 1)) {
    if (pages.compare(at + mark.size(), 2, "@@") != 0) return true;
  }
  return false;
}

/// The pages of templates, one after the other.
std::string PagesOf(const SiteRun& site, const std::string& prefix) {
  std::string all;
  for (const auto& [name, text] : site.Pages()) {
    if (name.starts_with(prefix)) all += text;
  }
  return all;
}

/// A kind of template: where the settings name it, and the heading it is documented under.
struct Kind {
  const char* key;
  const char* name;
  const char* heading;
};

constexpr Kind kKinds[] = {{"main_template0", "everymain", "In every template"},
                           {"map_template0", "everymap", "Page of a map"},
                           {"game_template0", "everygame", "Page of a game"},
                           {"gamelist_template", "gamelist", "Page of the list of games"},
                           {"gamelist_loop_template", "everyloop", "Row of the list of games"},
                           {"player_template", "everyplayer", "Page of a player"}};

TEST(TemplateDocument, EveryVariableHasAValueSomewhere) {
  const Documented documented = ReadDocument();
  SiteRun site;
  std::string crowd;  // so many that not every page of a list is linked
  for (int first = 120; first < 1500; first += 60) crowd += FullHouse(first);
  for (int first = 0; first < 240; first += 60) {  // and one who met more than a page shows
    std::vector<std::string> names = {"Host"};
    for (int i = 0; i < 59; ++i) names.push_back("Visitor" + std::to_string(first + i));
    crowd += OneGame(names);
  }
  // One who climbs, a bot that owns a map, a comeback, and a game of flags at the end.
  crowd += Duel("Zero", "Guest6", 30) + Init("q3bots") + JoinBot(0, "Robot") + Join(1, "Guest6") +
           Kills(3, 0, 1) + kShutdown + Turnaround() + Init("q3ctf1", 4) + Join(0, "Ann", 1) +
           Join(1, "Bob", 2) + Kills(2, 0, 1) + "  5:00 Exit: Capturelimit hit.\n" +
           "  5:00 red:3  blue:1\n" + kShutdown;
  site.Log(OneGame({"Ann", "Zero"}) + RichLog() + crowd);
  const fs::path folder = site.OwnTemplates();
  WriteFile(folder / "custrank.htmlt", "kill.killer = rank + 1\n");
  WriteFile(site.Folder() / "stars.png", "not a picture");
  site.Set("Main", "use_cust_rank", "1");
  site.Set("HTML", "bg_image", "stars.png");
  std::map<std::string, std::set<std::string>> uses;
  for (const Kind& kind : kKinds) {
    const std::string text = TemplateOf(documented, kind.heading, kind.name, uses[kind.name]);
    WriteFile(folder / (std::string(kind.name) + ".htmlt"),
              "{{! group: All }}{{! split: players }}\n" + text);
    site.Set("TEMPLATES", kind.key, kind.name);
  }
  // A variable that is not there has to be found missing, or the test would be worth nothing.
  std::ofstream(folder / "everymain.htmlt", std::ios::app) << "@everymain/none@{{none}}@@\n";
  std::map<std::string, std::string> pagesOf;
  const auto run = [&] {
    ASSERT_EQ(site.Run(), 0);
    for (const auto& [name, marks] : uses) {
      pagesOf[name] += PagesOf(site, name == "everyloop" ? "gamelist" : name);
    }
  };
  run();
  // What is there only without rules, where nobody is ranked, and where all games or none may have
  // been earlier.
  site.Set("Main", "use_cust_rank", "0");
  site.Set("Main", "players_min_kills", "1000");
  site.Log(OneGame({"Ann", "Bob"}));
  run();
  site.Log(OneGame({"Ann", "Bob"}) + Init() + "  0:00 Warmup:\n" + kShutdown);
  run();
  for (const auto& [name, marks] : uses) {
    const std::string& pages = pagesOf[name];
    ASSERT_FALSE(marks.empty());
    for (const std::string& mark : marks) EXPECT_TRUE(HasValue(pages, mark)) << mark;
  }
  EXPECT_FALSE(HasValue(pagesOf["everymain"], "@everymain/none@"));
}

/// The example page: the lines of its section that are set off by four blanks.
std::string ExamplePage() {
  std::istringstream lines(ReadFile(kDocuments / "templates.md"));
  std::string page;
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("## ")) inside = line == "## A small page";
    if (inside && line.starts_with("    ")) page += line.substr(4) + "\n";
  }
  return page;
}

TEST(TemplateDocument, TheExamplePageWorks) {
  SiteRun site;
  site.Log(OneGame({"Ann", "Bob"}));
  WriteFile(site.OwnTemplates() / "evening.htmlt", ExamplePage());
  site.Set("TEMPLATES", "main_template0", "evening");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(site.Messages("templateparser.log.txt"), "");
  const std::string page = site.Page("evening.html");
  EXPECT_EQ(Count(page, "<p>1 games, 2 players, 1 kills.</p>"), 1U) << page;
  EXPECT_EQ(Count(page, "<bdi>Ann</bdi></a> 1</li>"), 1U) << page;
  EXPECT_EQ(Count(page, "No game has been counted"), 0U);
}

/// What the engine has against rules.
std::string Complaints(const std::string& rules) {
  Told told;
  const Ranking ranking(rules, "rules", 1000, told);
  return told.severe;
}

TEST(RankingDocument, TellsRulesThatWork) {
  const std::regex code(R"(\| `([a-z.]+)` \|.*)");
  std::istringstream lines(ReadFile(kDocuments / "ranking.md"));
  std::string examples;
  std::string table;
  std::size_t rules = 0;
  std::smatch match;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("    ")) examples += line + "\n";
    if (line.starts_with("| Event") || line.starts_with("| Variable")) table = line.substr(2, 5);
    if (!std::regex_match(line, match, code)) continue;
    const std::string rule =
        table == "Event" ? match[1].str() + " = rank" : "world = rank + " + match[1].str();
    EXPECT_EQ(Complaints(rule), "") << rule;
    ++rules;
  }
  EXPECT_EQ(rules, 15U) << "seven events and eight variables";
  EXPECT_EQ(Count(examples, "\n"), 5U);
  EXPECT_EQ(Complaints(examples), "");
  EXPECT_EQ(Count(Complaints("none = rank\nworld = none"), "rule skipped"), 2U);
}

}  // namespace
}  // namespace morvane::test
