#include "morvane/log/log_line.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

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

std::vector<std::string> LinesOf(std::string_view log) {
  LineReader reader(log);
  std::vector<std::string> lines;
  std::string_view line;
  while (reader.Next(line)) lines.emplace_back(line);
  return lines;
}

TEST(LineReader, EndsLinesAtLfAndCrLf) {
  EXPECT_EQ(LinesOf("a\r\nb\n\nc"), (std::vector<std::string>{"a", "b", "", "c"}));
  EXPECT_TRUE(LinesOf("").empty());
}

TEST(LineReader, CutsAClippedLineBeforeTheStampGluedToIt) {
  const std::string clipped = "  0:00 InitGame: \\" + std::string(1005, 'x');
  const std::string glued = "  0:01 ClientConnect: 2";
  EXPECT_EQ(LinesOf(clipped + glued + "\nlast"),
            (std::vector<std::string>{clipped, glued, "last"}));
  // A stamp in a line of usual length is somebody's talk.
  const std::string talk = "  0:02 say: x:   0:01 ClientConnect: 2";
  EXPECT_EQ(LinesOf(talk), std::vector<std::string>{talk});
}

TEST(LineReader, KnowsWhereALineStandsInItsLog) {
  const std::string clipped = "  0:00 InitGame: \\" + std::string(1005, 'x');
  LineReader reader(std::string_view("ab\n"));
  std::string_view line;
  ASSERT_TRUE(reader.Next(line));
  EXPECT_TRUE(reader.HadLineEnd());
  const std::string log = "ab\n" + clipped + "  0:01 Exit:\nrest";
  LineReader second(log);
  std::vector<std::size_t> starts;
  std::vector<std::size_t> numbers;
  while (second.Next(line)) {
    starts.push_back(second.LineStart());
    numbers.push_back(second.LineNumber());
  }
  EXPECT_EQ(starts, (std::vector<std::size_t>{0, 3, 3 + clipped.size(), log.size() - 4}));
  EXPECT_EQ(numbers, (std::vector<std::size_t>{1, 2, 2, 3}));
  EXPECT_FALSE(second.HadLineEnd());
}

TEST(EndsInSeparator, NeedsSixtyDashes) {
  EXPECT_TRUE(EndsInSeparator(std::string(60, '-')));
  EXPECT_TRUE(EndsInSeparator(" 26  0:00 " + std::string(60, '-')));
  EXPECT_FALSE(EndsInSeparator(std::string(59, '-')));
  EXPECT_FALSE(EndsInSeparator(std::string(60, '-') + " "));
}

}  // namespace
}  // namespace morvane
