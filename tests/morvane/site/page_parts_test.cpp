// The small parts that pages are made with: texts of numbers and times, charts, highlights.
#include <gtest/gtest.h>
#include <unistd.h>

#include "config/rgb.h"
#include "morvane/site/chart.h"
#include "morvane/site/format.h"
#include "morvane/site/kill_table.h"
#include "morvane/site/page_folder.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

TEST(Format, WritesNumbersForPeople) {
  EXPECT_EQ(Fixed(1.005, 1), "1.0");
  EXPECT_EQ(Fixed(0.0 / 0.0, 2), "0.00");
  EXPECT_EQ(Grouped(999), "999");
  EXPECT_EQ(Grouped(-1234567), "-1,234,567");
  EXPECT_EQ(Duration(59), "0:59");
  EXPECT_EQ(Duration(3599), "59:59");
  EXPECT_EQ(Duration(108061), "30:01:01");
  EXPECT_EQ(UrlText("a b\"<\xC3.html"), "a%20b%22%3C%C3.html");
}

TEST(Format, FallsBackToIsoTimes) {
  for (const char* format : {"", "  ", "%Q", "50%", "%Ep", "%n"}) {
    const TimeFormat time(format);
    EXPECT_EQ(time.IsUsable(), std::string_view(format) == "%Ep") << format;
    if (!time.IsUsable()) {
      EXPECT_EQ(time.Text(31536000).size(), 19U) << format;
    }
  }
  EXPECT_EQ(TimeFormat("<%Y>\x01").Text(31536000), "<1971>");
  EXPECT_EQ(TimeFormat("%Y").Text(0), "");
}

TEST(Chart, HasNoRoomForNonsense) {
  EXPECT_EQ(ChartHtml({}), "");
  EXPECT_EQ(SparkHtml({1}, "one"), "");
  EXPECT_EQ(Count(SparkHtml({3, 3, 3}, "flat"), "points=\"0,1 30,1 60,1\""), 1U);
  Chart flat;
  flat.lines.push_back({"main", {{1, 7}, {1, 7}}, ChartLine::Form::kLine});
  EXPECT_EQ(Count(ChartHtml(flat), "nan"), 0U);
  Chart wide;
  wide.lines.push_back({"main", {{0, -2e9}, {1, 2e9}}, ChartLine::Form::kLine});
  EXPECT_LE(Count(ChartHtml(wide), "<line "), 8U);
  Chart longer;
  longer.lines.push_back({"main", {}, ChartLine::Form::kLine});
  for (int i = 0; i < 10000; ++i) longer.lines[0].points.push_back({1.0 * i, 1.0 * (i % 7)});
  EXPECT_LE(Count(ChartHtml(longer), "L"), 160U);
  EXPECT_EQ(Count(ChartHtml(longer), "L1000 "), 1U) << "the last point stays";
}

/// The color that a cell of `cells` gets; empty for none.
std::string ColorOf(const SiteSettings& settings, const std::vector<std::uint32_t>& cells,
                    std::uint32_t cell) {
  const std::string style = Hilites(settings, cells).Style(cell);
  return style.substr(0, std::min(style.find(';'), style.size()));
}

TEST(Hilites, AreTheHighestLevelThatACellReaches) {
  SiteSettings settings;
  settings.hiliteMinimum = 4;
  settings.hiliteLevels = {{50, {0, 0, 0x50}}, {100, {0, 1, 0}}, {90, {0, 0, 0x90}}};
  const std::vector<std::uint32_t> cells = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  EXPECT_EQ(ColorOf(settings, cells, 9), "background:#000100");
  EXPECT_EQ(ColorOf(settings, cells, 8), "background:#000090");
  EXPECT_EQ(ColorOf(settings, cells, 7), "background:#000050");
  EXPECT_EQ(ColorOf(settings, cells, 4), "background:#000050");
  EXPECT_EQ(ColorOf(settings, cells, 3), "");
  settings.hiliteMinimum = 0;
  EXPECT_EQ(ColorOf(settings, {0, 0, 0}, 0), "") << "nobody killed anybody";
}

}  // namespace
}  // namespace morvane::test
