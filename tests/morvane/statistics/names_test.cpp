#include "morvane/statistics/names.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

#include "morvane/site/page_names.h"
#include "morvane/site/page_text.h"
#include "tests/morvane/site_fixture.h"

namespace morvane {
namespace {

NameStyles Styles() {
  NameStyles styles;
  styles.page.own.set();
  styles.page.own.reset(4);  // 4 cannot be read on the page, 4 and 5 can on the one chip, 4 and 6
  styles.chips = {{"one", {}, {}}, {"other", {}, {}}};  // on the other
  styles.chips[0].own.set(4).set(5);
  styles.chips[1].own.set(4).set(6);
  for (std::size_t i = 0; i < 10; ++i) {
    styles.page.colors[i] = "s" + std::to_string(i);
    styles.chips[0].colors[i] = "a" + std::to_string(i);
    styles.chips[1].colors[i] = "b" + std::to_string(i);
  }
  return styles;
}

TEST(NamesOfLogs, BecomeTextAndHtml) {
  const struct {
    const char* name;
    const char* text;
    const char* html;
  } kCases[] = {
      {"Zeh", "Zeh", "<bdi>Zeh</bdi>"},
      {"^1Red^7Baron", "RedBaron",
       "<bdi><span style=\"s1\">Red</span><span style=\"s7\">Baron</span></bdi>"},
      {"^9x^8y", "xy", "<bdi><span style=\"s9\">x</span><span style=\"s8\">y</span></bdi>"},
      {"^ax^Iy", "xy", "<bdi><span style=\"s1\">xy</span></bdi>"},
      {"^4x", "x", "<bdi style=\"one\"><span style=\"a4\">x</span></bdi>"},
      {"a^6x^4y", "axy",
       "<bdi style=\"other\">a<span style=\"b6\">x</span><span style=\"b4\">y</span></bdi>"},
      {"^^1a^", "^a^", "<bdi>^<span style=\"s1\">a^</span></bdi>"},
      {"  ^1  a b ^2 ", "a b", "<bdi><span style=\"s1\">a b</span></bdi>"},
      {"<b>&\"'", "<b>&\"'", "<bdi>&lt;b&gt;&amp;&quot;&#39;</bdi>"},
      {"^1", "(no name)", "<bdi>(no name)</bdi>"},
      {" \xC2\xA0 ", "(no name)", "<bdi>(no name)</bdi>"},
      {"a\x01\x1B[31mb\tc", "a[31mb c", "<bdi>a[31mb c</bdi>"},
      {"caf\xE9\x80", "caf\xC3\xA9\xE2\x82\xAC", "<bdi>caf\xC3\xA9\xE2\x82\xAC</bdi>"},
      {"a\xE2\x80\xAE"
       "b\xEF\xBF\xBF",
       "ab", "<bdi>ab</bdi>"}};
  for (const auto& test : kCases) {
    EXPECT_EQ(NameText(test.name), test.text);
    EXPECT_EQ(NameHtml(test.name, Styles()), test.html);
  }
}

TEST(PlayerKeys, TellPlayersApartWithoutCaseAndColor) {
  EXPECT_EQ(PlayerKey("^1RED^7baron "), PlayerKey("RedBaron"));
  EXPECT_EQ(PlayerKey("\xC9"
                      "a\xD7"),
            PlayerKey("\xE9"
                      "A\xD7"));
  EXPECT_NE(PlayerKey("a\xD7"), PlayerKey("a\xF7"));
}

TEST(FileNameParts, AreSafeAndTheirOwn) {
  EXPECT_EQ(FileNamePart("Zeh_9"), "zeh_9");
  EXPECT_EQ(FileNamePart("\xC3\x89"
                         "a"),
            FileNamePart("\xC3\xA9"
                         "A"));
  std::vector<std::string> names = {"",
                                    " ",
                                    "a b",
                                    "a_b",
                                    "a-b",
                                    "a.b",
                                    "../../x",
                                    "con",
                                    std::string(300, 'x'),
                                    std::string(301, 'x'),
                                    "a_b-" + FileNamePart("a b").substr(4)};
  for (const std::string& hostile : test::kHostileNames) names.push_back(NameText(hostile) + "!");
  std::set<std::string> parts;
  for (const std::string& name : names) {
    const std::string part = FileNamePart(name);
    EXPECT_TRUE(parts.insert(part).second) << name;
    EXPECT_LE(part.size(), 57U);
    EXPECT_EQ(part.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_-"), part.npos) << part;
    EXPECT_FALSE(part.empty());
  }
}

}  // namespace
}  // namespace morvane
