
#include "text/text.h"

#include <gtest/gtest.h>
#include <string>

#include "text/characters.h"

namespace text {
namespace {

TEST(Text, NumbersAsPeopleWriteThem) {
  const std::initializer_list<std::pair<const char*, int>> cases = {
      {"", 0},       {"yes", 0},
      {"1", 1},      {"01", 1},
      {" +2 ", 2},   {"-3", -3},
      {"2.5", 2},    {"3.5", 4},
      {"1e3", 1000}, {"nan", 0},
      {"inf", 0},    {"5 apples", 0},
      {"+-5", 0},    {"99999999999", 2147483647}};
  for (const auto& [given, number] : cases) EXPECT_EQ(WholeNumberOf(given), number) << given;
}

// What DecodeText and FirstCharacters make of odd bytes is tested with the settings file, UTF-16
// with the registry; here the edges of UTF-8 itself.
TEST(Characters, OnlyWholeAndShortestFormsAreUtf8) {
  const struct {
    const char* bytes;
    std::size_t length;
  } cases[] = {{"", 0},
               {"a", 1},
               {"\xC2\x80", 2},
               {"\xC1\xBF", 0},
               {"\xC3", 0},
               {"\xE0\xA0\x80", 3},
               {"\xE0\x9F\xBF", 0},
               {"\xED\x9F\xBF", 3},
               {"\xED\xA0\x80", 0},
               {"\xF0\x90\x80\x80", 4},
               {"\xF0\x8F\xBF\xBF", 0},
               {"\xF4\x8F\xBF\xBF", 4},
               {"\xF4\x90\x80\x80", 0},
               {"\xF5\x80\x80\x80", 0},
               {"\x80", 0}};
  for (const auto& [bytes, length] : cases) EXPECT_EQ(Utf8Length(bytes), length) << bytes;
}

TEST(Characters, AppendingAndMeasuringAgree) {
  for (const char32_t code :
       {U'\0', U'\x7F', U'\x80', U'\x7FF', U'\x800', U'\xFFFD', U'\x10000', U'\x10FFFF'}) {
    std::string bytes;
    AppendUtf8(bytes, code);
    EXPECT_EQ(Utf8Length(bytes), bytes.size()) << static_cast<unsigned>(code);
  }
}

}  // namespace
}  // namespace text
