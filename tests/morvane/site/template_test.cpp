#include "morvane/site/template.h"

#include <gtest/gtest.h>

#include "morvane/site/page_data.h"
#include "tests/morvane/test_support.h"

namespace morvane::test {
namespace {

std::string Rendered(const TempFolder& folder, const Data& data) {
  Template loaded;
  if (const auto fault = loaded.Load(folder.Path(), "page")) return "fault: " + fault->text;
  const SharedData shared;
  return loaded.Render(shared, {&data});
}

TEST(Templates, TakeIncludesAndLeaveCommentsOut) {
  TempFolder folder;
  WriteFile(folder.Path() / "page.htmlt",
            "\xEF\xBB\xBF{{! title: A & B }}\n{{! Group : Games}}\n<\n  {{> part}}\n>{{! x "
            "}}\n{{>part}}");
  WriteFile(folder.Path() / "part.htmlt", "{{! title: Other }}\nP{{name}}\n");
  Data data;
  Set(data, "name", std::string("<1>"));
  EXPECT_EQ(Rendered(folder, data), "<\nP&lt;1&gt;\n>\nP&lt;1&gt;\n");
  Template page;
  ASSERT_FALSE(page.Load(folder.Path(), "page.htmlt"));
  EXPECT_EQ(page.Name(), "page");
  EXPECT_EQ(page.Title(), "A & B");
  EXPECT_EQ(page.Group(), "Games");
}

TEST(Templates, FindMembersAndOuterValues) {
  TempFolder folder;
  WriteFile(
      folder.Path() / "page.htmlt",
      "{{#list}}{{.}}{{outer}}{{/list}} {{vars.a.b}} {{vars.no}}|{{#vars.off}}x{{/vars.off}}");
  Data vars;
  Set(vars, "a.b", std::string("dots"));
  SetFlag(vars, "off", false);
  Data list = List(2);
  Append(list, Data(std::string("1")));
  Append(list, Data(std::string("2")));
  Data data;
  SetData(data, "vars", std::move(vars));
  SetData(data, "list", std::move(list));
  Set(data, "outer", std::string("o"));
  EXPECT_EQ(Rendered(folder, data), "1o2o dots |");
}

struct FaultCase {
  const char* page;
  const char* part;
  const char* file;
  int line;
  const char* text;
};
/// GoogleTest would print the bytes, those between the members among them.
void PrintTo(const FaultCase& test, std::ostream* stream) { *stream << test.page; }

class BrokenTemplates : public testing::TestWithParam<FaultCase> {};

TEST_P(BrokenTemplates, NameFileAndLine) {
  TempFolder folder;
  WriteFile(folder.Path() / "page.htmlt", GetParam().page);
  WriteFile(folder.Path() / "part.htmlt", GetParam().part);
  Template page;
  const auto fault = page.Load(folder.Path(), "page");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->file, (folder.Path() / GetParam().file).string());
  EXPECT_EQ(fault->line, GetParam().line);
  EXPECT_NE(fault->text.find(GetParam().text), std::string::npos) << fault->text;
}

INSTANTIATE_TEST_SUITE_P(
    Table, BrokenTemplates,
    testing::Values(FaultCase{"1\n2\n{{#x}}\n", "", "page.htmlt", 3, "Unclosed section \"x\""},
                    FaultCase{"1\n{{/x}}", "", "page.htmlt", 2, "Unopened section \"x\""},
                    FaultCase{"{{#a}}\n{{#b}}\n{{/a}}{{/b}}", "", "page.htmlt", 1, "section"},
                    FaultCase{"1\n\n{{name", "", "page.htmlt", 3, "Unclosed tag"},
                    FaultCase{"1\n{{> part}}\n{{x}}", "a\nb\n{{#x}}", "part.htmlt", 3, "Unclosed"},
                    FaultCase{"{{> part}}\n\n{{#z}}", "a\nb\n", "page.htmlt", 3, "Unclosed"},
                    FaultCase{"1\n{{> none}}", "", "page.htmlt", 2, "none.htmlt does not exist"},
                    FaultCase{"{{> part}}", "\n{{> part}}", "part.htmlt", 2, "includes itself"}));

std::string Repeated(int times, const std::string& text) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(Templates, ThatGrowWithoutEndEndWithAFault) {
  const TempFolder folder;
  // Each part includes the next one ten times: without a bound 10^12 of the last.
  for (int i = 0; i < 12; ++i) {
    WriteFile(folder.Path() / (std::to_string(i) + ".htmlt"),
              "\n" + Repeated(10, "{{> " + std::to_string(i + 1) + "}}\n"));
  }
  WriteFile(folder.Path() / "12.htmlt", "x");
  WriteFile(folder.Path() / "deep.htmlt",
            "\n{{=<% %>=}}" + Repeated(20000, "<%#a%>") + Repeated(20000, "<%/a%>"));
  const struct {
    const char* name;
    const char* said;
  } kCases[] = {{"0", "more than 1 MB are included"}, {"deep", "one inside the other"}};
  for (const auto& test : kCases) {
    const auto fault = Template().Load(folder.Path(), test.name);
    ASSERT_TRUE(fault) << test.name;
    EXPECT_GT(fault->line, 1) << fault->text;
    EXPECT_NE(fault->text.find(test.said), std::string::npos) << fault->text;
  }
}

TEST(Templates, MissingOneIsAFaultOfTheFile) {
  TempFolder folder;
  Template page;
  const auto fault = page.Load(folder.Path(), "none");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->file, (folder.Path() / "none.htmlt").string());
  EXPECT_EQ(fault->line, 0);
  EXPECT_NE(fault->text.find("cannot be read"), std::string::npos);
}

}  // namespace
}  // namespace morvane::test
