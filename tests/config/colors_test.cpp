#include "config/colors.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "config/rgb.h"

namespace config {
namespace {

using Pairs = std::initializer_list<std::pair<const char*, const char*>>;

TEST(Colors, ValuesBecomeHtml) {
  for (const auto& [decimal, html] : Pairs{{"12632256", "#C0C0C0"},
                                           {"255", "#FF0000"},
                                           {"16711680", "#0000FF"},
                                           {"0", "#000000"},
                                           {"", "#000000"},
                                           {"red", "#000000"},
                                           {"65280", "#00FF00"},
                                           {"255 apples", "#FF0000"},
                                           {"-2147483633", "#000080"},
                                           {"305419896", "#563412"}}) {
    EXPECT_EQ(ColorToHtml(decimal), html) << decimal;
  }
}

TEST(Colors, HtmlBecomesIntermediateText) {
  for (const auto& [html, text] : Pairs{{"#00ff00", "&H00ff00"},
                                        {"#C0C0C0", "&HC0C0C0"},
                                        {"202020", "&H202020"},
                                        {"#abc", "&H00c0ab"},
                                        {"", "&H000000"},
                                        {"#12345678", "&H563412"},
                                        {"Red", "&H00d0Re"},
                                        {"##123456", "&H4523#1"}}) {
    EXPECT_EQ(HtmlToColor(html), text) << html;
  }
}

TEST(Colors, NamesAndTextsBecomeValues) {
  const std::initializer_list<std::pair<const char*, int>> cases = {
      {"cyan", 0xFFFF00},  {"red", 0x0000FF},  {"white", 0xFFFFFF},     {"black", 0},
      {"green", 0x00FF00}, {"blue", 0xFF0000}, {"magenta", 0xFF00FF},   {"yellow", 0x00FFFF},
      {"#fff", 0x00F0FF},  {"ff", 0x0000FF},   {"#12345678", 0x563412}, {"Red", 0},
      {"#zz00ff", 0},      {"#+12345", 0},     {"#-12345", 0},          {"", 0}};
  for (const auto& [text, value] : cases) EXPECT_EQ(ColorValue(NamedColor(text)), value) << text;
  EXPECT_EQ(ColorValue(HtmlToColor("red")), 0) << "no names without NamedColor";
}

TEST(Colors, EveryValueSurvivesTheFile) {
  for (int value = 0; value <= 0xFFFFFF; value += 251) {
    ASSERT_EQ(ColorValue(HtmlToColor(ColorToHtml(std::to_string(value)))), value);
  }
}

TEST(Rgb, KeepsReadableColorsAndMendsOthers) {
  const Rgb black{0, 0, 0};
  const Rgb blue{0, 0, 255};
  EXPECT_EQ(Readable({255, 0, 0}, black), (Rgb{255, 0, 0}));
  const Rgb shade = Readable(blue, black);
  EXPECT_GE(Contrast(shade, black), 4.5);
  EXPECT_EQ(shade.blue, 255);
  EXPECT_GE(Contrast(Readable({250, 250, 250}, {255, 255, 255}), {255, 255, 255}), 4.5);
  EXPECT_NEAR(Contrast({255, 255, 255}, black), 21, 0.01);
  EXPECT_EQ(ColorText(ParseColor("#0aF").value_or(black)), "#00AAFF");
  for (const char* text : {"", "#12345", "red", "bad\"", "#12345g", "-12345"}) {
    EXPECT_FALSE(ParseColor(text)) << text;
  }
}

}  // namespace
}  // namespace config
