#include "morvane/site/template.h"

#include <functional>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "morvane/site/page_data.h"
#include "tests/morvane/test_support.h"

namespace morvane::test {
namespace {

/// The page with the values that `fill` sets.
std::string Rendered(const TempFolder& folder, const std::function<void(Object&)>& fill) {
  Template loaded;
  if (const auto fault = loaded.Load(folder.Path(), "page")) return "fault: " + fault->text;
  ValueStore store;
  Object object(Demand(loaded.Names(), store));
  fill(object);
  return loaded.Render(SharedData(), {object.Done()});
}

TEST(Templates, TakeIncludesAndLeaveCommentsOut) {
  TempFolder folder;
  WriteFile(folder.Path() / "page.htmlt",
            "\xEF\xBB\xBF{{! title: A & B }}\n{{! Group : Games}}\n<\n  {{> part}}\n>{{! x "
            "}}\n{{>part}}");
  WriteFile(folder.Path() / "part.htmlt", "{{! title: Other }}\nP{{name}}\n");
  EXPECT_EQ(Rendered(folder, [](Object& page) { Set(page, "name", std::string("<1>")); }),
            "<\nP&lt;1&gt;\n>\nP&lt;1&gt;\n");
  Template page;
  ASSERT_FALSE(page.Load(folder.Path(), "page.htmlt"));
  EXPECT_EQ(page.Name(), "page");
  EXPECT_EQ(page.Title(), "A & B");
  EXPECT_EQ(page.Group(), "Games");
}

TEST(Templates, FindMembersAndOuterValues) {
  const std::vector<int> kItems = {1, 2};
  const auto fill = [&](Object& page) {
    SetData(page, "vars", [](Demand demand) {
      Data vars = demand.Store().NewObject();
      demand.Store().SetMember(vars, "a.b", demand.Store().Text("dots"));
      demand.Store().SetMember(vars, "off", Data(false));
      return vars;
    });
    SetRows(page, "list", kItems, [](Object& row, int item) {
      Set(row, "item", item);
      SetFlag(row, "late", item == 2);
      SetRows(row, "own", std::vector<int>(static_cast<std::size_t>(item)),
              [](Object& inner, int) { Set(inner, "deep", std::string("d")); });
    });
    SetData(page, "best", [](Demand demand) {
      Object best(demand);
      SetData(best, "of", [](Demand asked) {
        Object of(asked);
        Set(of, "item", 3);
        Set(of, "late", std::string("!"));
        return of.Done();
      });
      return best.Done();
    });
    Set(page, "outer", std::string("o"));
    Set(page, "item", std::string("of the page"));
    Set(page, "late", std::string("of the page"));
  };
  const TempFolder folder;
  const std::pair<const char*, const char*> kCases[] = {
      {"{{#list}}{{item}}{{outer}}{{/list}} {{item}}", "1o2o of the page"},
      {"{{vars.a.b}} {{vars.no}}|{{#vars.off}}x{{/vars.off}}{{^vars.off}}y{{/vars.off}}",
       "dots |y"},
      {"{{#list}}{{#late}}{{item}}{{/late}}{{^late}}-{{/late}}{{/list}}", "-2"},
      {"{{#list}}{{#own}}{{item}}{{deep}}{{outer}}{{/own}} {{/list}}", "1do 2do2do "},
      {"{{# list }}{{{ \n item }}}{{&outer}}{{/list}}{{^none}}{{item}}{{/none}}",
       "1o2oof the page"},
      {"{{#vars}}{{off}}{{a.b}}{{#list}}{{item}}{{/list}}{{/vars}}", "12"},
      {"{{#best.of}}{{item}}{{outer}}{{/best.of}}{{best.of.late}}{{best.item}}", "3o!"},
      {"{{=<% %>=}}<%#list%><%item%><%#own%><%deep%><%/own%><%/list%>", "1d2dd"}};
  for (const auto& [text, page] : kCases) {
    WriteFile(folder.Path() / "page.htmlt", text);
    EXPECT_EQ(Rendered(folder, fill), page) << text;
  }
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
