// Settings whose effect is more than a value on a page (those: whole_pages_test.cpp).
#include <gtest/gtest.h>
#include <regex>

#include "config/rgb.h"
#include "morvane/statistics/names.h"
#include "tests/morvane/site_fixture.h"

namespace morvane::test {
namespace {

TEST(PageSettings, TitleIsShownAndBackgroundImageCopied) {
  SiteRun site;
  site.Log(CaseLog());
  WriteFile(site.Folder() / "my pictures" / "star field.png", "bytes");
  site.Set("USER VARS", "title", "A & B");
  site.Set("HTML", "bg_image", ".\\my pictures\\star field.png");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_GT(Count(site.Page("stats.html"), "A &amp; B"), 0U);
  EXPECT_EQ(ReadFile(site.Output() / "images" / "star field.png"), "bytes");
  EXPECT_EQ(Count(site.Page("style.css"), "url(\"images/star%20field.png\")"), 1U);
}

TEST(PageSettings, UnusableTimeFormatIsANormalMessageAndIso) {
  SiteRun site;
  site.Log(CaseLog());
  site.Set("Main", "time_format", "%Q");
  ASSERT_EQ(site.Run(), 0);
  EXPECT_EQ(Count(site.Messages("morvane.log.txt"), "normal the time format \"%Q\""), 1U);
  EXPECT_TRUE(std::regex_search(site.Page("game_1.html"),
                                std::regex(R"(started ≤&nbsp;\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")));
}

/// The colors that names are drawn in and on, over every page.
TEST(PageSettings, NamesCanBeReadOnEverySurface) {
  const std::regex surface("--(?:background|panel|stripe): (#[0-9A-F]{6});");
  const std::regex name(
      "<bdi(?: style=\"background:(#[0-9A-F]{6});color:(#[0-9A-F]{6})\")?>(.*?)</bdi>");
  const std::regex piece("style=\"color:(#[0-9A-F]{6})\"");
  for (const auto& [text, background] : {std::pair{"#C0C0C0", "#000000"},
                                         {"#202020", "#FFFFFF"},
                                         {"#FFFFFF", "#777777"},
                                         {"#FFE0A0", "#203060"}}) {
    SiteRun site;
    site.Set("HTML", "text_color", text);
    site.Set("HTML", "bg_color", background);
    site.Log(OneGame(
        {"^1a^2b^3c^4d^5e^6f^7g^8h^9i^0j", "^1Red", "^4Blue", "^7White", "x^3y", "^1a^4b"}));
    ASSERT_EQ(site.Run(), 0);
    const std::string style = site.Page("style.css");
    std::vector<config::Rgb> surfaces;
    for (std::sregex_iterator at(style.begin(), style.end(), surface), end; at != end; ++at) {
      surfaces.push_back(config::ParseColor((*at)[1].str()).value());
    }
    ASSERT_GE(surfaces.size(), 3U);
    const std::string page = site.Page("playerrank.html");
    std::size_t pieces = 0;
    for (std::sregex_iterator at(page.begin(), page.end(), name), end; at != end; ++at) {
      const std::string inner = (*at)[3];
      const bool isOnChip = (*at)[1].matched;
      const std::vector<config::Rgb> behind =
          isOnChip ? std::vector{config::ParseColor((*at)[1].str()).value()} : surfaces;
      EXPECT_EQ(Count(inner, "background"), 0U) << "a chip behind a part: " << inner;
      std::vector<std::string> inks;
      if (isOnChip) inks.push_back((*at)[2]);
      for (std::sregex_iterator ink(inner.begin(), inner.end(), piece); ink != end; ++ink) {
        inks.push_back((*ink)[1]);
      }
      pieces += inks.size();
      for (const std::string& ink : inks) {
        for (const config::Rgb& one : behind) {
          EXPECT_GE(Contrast(config::ParseColor(ink).value(), one), 4.5)
              << inner << " on " << background;
        }
      }
    }
    EXPECT_GE(pieces, 15U);
  }
}

}  // namespace
}  // namespace morvane::test
