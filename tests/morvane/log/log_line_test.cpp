#include "morvane/log/log_line.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#include "morvane/log/line_reader.h"

namespace morvane {
namespace {

TEST(CutLine, ReadsEveryFormOfStamp) {
  const struct {
    std::string line;
    std::int64_t tenths;  // -1000: no stamp
    std::string text;
  } kCases[] = {
      {"  0:00 Item: 2 x", 0, "Item: 2 x"},
      {" 26:09 Item: 2 x", 15690, "Item: 2 x"},
      {"999:59 Kill: 1", 599990, "Kill: 1"},
      {"1000:00Kill: 1 2 3", 600000, "Kill: 1 2 3"},
      {"1000:05 Kill: 1 2 3", 600050, "Kill: 1 2 3"},
      {"11163:1Exit: Timelimit hit.", 6697900, "Exit: Timelimit hit."},
      {"100000:Exit:", 60000000, "Exit:"},
      {"86.5 ClientConnect: 0", 865, "ClientConnect: 0"},
      {"103./ Item: 0 x", 1029, "Item: 0 x"},
      {"94., ClientDisconnect: 0", 936, "ClientDisconnect: 0"},
      {"58.+ Item: 0 x", 575, "Item: 0 x"},
      {"0.0 InitGame: \\a\\b", 0, "InitGame: \\a\\b"},
      {"0./ Item: 0 x", -1, "Item: 0 x"},
      {" 26  0:00 ----", -1000, " 26  0:00 ----"},
      {" 26:1", -1000, " 26:1"},
      {"127.0.0.1 connected", -1000, "127.0.0.1 connected"},
      {"Kill: 1 2 3", -1000, "Kill: 1 2 3"},
      {std::string("\0\0\0  0:07 Item: 2 x", 19), 70, "Item: 2 x"},
      {"", -1000, ""},
      {"12:", -1000, "12:"},
  };
  for (const auto& test : kCases) {
    const LogLine line = CutLine(test.line);
    EXPECT_EQ(line.stamped ? line.tenths : -1000, test.tenths) << test.line;
    EXPECT_EQ(line.text, test.text) << test.line;
  }
}

/// The lines of a log as "START NUMBER LENGTH", and "..." where the last has no end.
std::string LinesOf(const std::string& log) {
  LineReader reader(log);
  std::string text;
  for (std::string_view line; reader.Next(line);) {
    text += std::to_string(reader.LineStart()) + " " + std::to_string(reader.LineNumber()) + " " +
            std::to_string(line.size()) + ", ";
  }
  return text + (reader.HadLineEnd() ? "" : "...");
}

TEST(LineReader, KnowsWhereLinesStandAndCutsAClippedOneBeforeTheStampGluedToIt) {
  const std::string clipped = "  0:00 InitGame: \\" + std::string(982, 'x');
  EXPECT_EQ(LinesOf("a\r\nbb\n\nccc"), "0 1 1, 3 2 2, 6 3 0, 7 4 3, ...");
  EXPECT_EQ(LinesOf("ab\n" + clipped + "  0:01 Exit:\n"), "0 1 2, 3 2 1000, 1003 2 12, ");
  EXPECT_EQ(LinesOf("  0:02 say: x:   0:01 Exit:\n"), "0 1 27, ") << "somebody's talk";
}

TEST(LineReader, FindsLinesOfAnyLength) {
  std::string log;
  std::string expected;
  for (std::size_t size = 0; size < 200; size += size < 130 ? 1 : 13) {
    expected += std::to_string(log.size()) + " " + std::to_string(size + 1) + " ";
    log += std::string(size, size % 2 == 0 ? '\x0B' : '\x8A') + "x\n";
  }
  std::string found;
  LineReader reader(log);
  for (std::string_view line; reader.Next(line);) {
    found += std::to_string(reader.LineStart()) + " " + std::to_string(line.size()) + " ";
  }
  EXPECT_EQ(found, expected);
}

TEST(LineCutter, ReadsAStampLikeCutLine) {
  LineCutter cutter;
  for (const std::string_view line : std::initializer_list<std::string_view>{
           "  0:10 a", "  0:59 b", "  0:60 c", "  0:1x d", "  0:1 e", "  0:10x f", "  0:10",
           "  0:", " 10:00 g", " 10:01 h", "110:02 i", "1110:02 j", "0:10 k", "0:1112 l",
           "10:1112 m", "  0.1 n",
           std::string_view("\0"
                            "10:59 o",
                            8),
           std::string_view("\0"
                            "10:58 p",
                            8),
           "10:58 q"}) {
    const LogLine expected = CutLine(line);
    const LogLine cut = cutter.Cut(line);
    EXPECT_EQ(cut.text, expected.text) << line;
    EXPECT_EQ(cut.tenths, expected.tenths) << line;
    EXPECT_EQ(cut.stamped, expected.stamped) << line;
  }
}

TEST(EndsInSeparator, NeedsSixtyDashes) {
  EXPECT_TRUE(EndsInSeparator(std::string(60, '-')));
  EXPECT_TRUE(EndsInSeparator(" 26  0:00 " + std::string(60, '-')));
  EXPECT_FALSE(EndsInSeparator(std::string(59, '-')));
  EXPECT_FALSE(EndsInSeparator(std::string(60, '-') + " "));
}

}  // namespace
}  // namespace morvane
