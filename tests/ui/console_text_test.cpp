#include "ui/console_text.h"

#include <gmock/gmock.h>
#include <string>
#include <string_view>

#include "tests/support/editor_test.h"

namespace ui {
namespace {

using testing::SizeIs;

/// The screen after some bytes, given whole and given byte by byte, which has to be the same.
QString Screen(std::string_view bytes) {
  ConsoleText whole;
  ConsoleStream(whole).Write(QByteArrayView(bytes.data(), std::ssize(bytes)));
  ConsoleText pieces;
  ConsoleStream stream(pieces);
  for (const char& byte : bytes) stream.Write(QByteArrayView(&byte, 1));
  const QString screen = whole.TakeChanges().join('|');
  EXPECT_EQ(pieces.TakeChanges().join('|'), screen) << bytes;
  return screen;
}

TEST(ConsoleTextTest, ShowsBytesAsATerminalDoes) {
  const struct {
    std::string bytes;
    const char* screen;
  } cases[] = {
      {"", ""},
      {"a\r\nb\nc", "a|b|c"},
      {" 10 %\r 20 %\r100 %", "100 %"},
      {"long line\rshort\x1B[K", "short"},
      {"abcdef\b\b\x1B[K!", "abcd!"},
      {"abc\b\b\x1B[1Kx", " xc"},
      {"abc\x1B[2Kx", "   x"},
      {"abc\r\x1B[0Kx\b\b\by", "y"},
      {"a\tb\t\tc", "a       b               c"},
      {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80|", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80|"},
      {"a\xFFz\xC3(", "a\xEF\xBF\xBDz\xEF\xBF\xBD("},
      // What does nothing: colors, movements, titles, other sequences, control characters.
      {"\x1B[1;31mred\x1B[0m \x1B[2J\x1B[H\x1B[5Aup\x1B(Bx\x1B\x37y\x1B"
       "cz",
       "red upxyz"},
      {"\x1B]0;title\x07"
       "a\x1B]8;;http://x\x1B\\b\x1BPq#\x1B\\c",
       "abc"},
      {"a\x1B]0;never ended\nb\x1B[12\nc", "a|b|c"},
      {"a\x1B[?25lb\x1B[>1Kc", "abc"},
      {std::string("a\0\x01\x07\x0B\x0C\x0E\x7F", 8) + "\xC2\x80\xC2\x85\xC2\x9B" + "31mb",
       "a31mb"},
      {"a\xE2\x80\xAE\xE2\x80\xAA\xE2\x81\xA6\xE2\x80\x8F\xD8\x9C\xE2\x80\xA8\xE2\x80\xA9z", "az"},
      {"\xEF\xB7\x90\xEF\xBF\xBC", "\xEF\xBF\xBD\xEF\xBF\xBD"},
  };
  for (const auto& [bytes, screen] : cases) EXPECT_EQ(Screen(bytes), screen) << bytes;
}

TEST(ConsoleTextTest, TwoStreamsAreReadApart) {
  ConsoleText text;
  ConsoleStream output(text);
  ConsoleStream errors(text);
  output.Write("\xE2\x82");
  errors.Write("[\x1B[3");
  output.Write("\xAC");
  errors.Write("1m]");
  EXPECT_EQ(text.TakeChanges(), QStringList("[\u20AC]"));
}

TEST(ConsoleTextTest, GivesWhatChanged) {
  ConsoleText text;
  ConsoleStream stream(text);
  stream.Write("a\nb");
  EXPECT_TRUE(text.HasChanges());
  EXPECT_EQ(text.TakeChanges(), QStringList({"a", "b"}));
  EXPECT_FALSE(text.HasChanges());
  stream.Write("c\nd\n");
  EXPECT_EQ(text.TakeChanges(), QStringList({"bc", "d", ""}));
  for (const char* change : {"e", "\r\x1B[K", "\x1B[1K", "\x1B[2K", "\n"}) {
    stream.Write(change);
    EXPECT_TRUE(text.HasChanges()) << change;
    text.TakeChanges();
  }
}

TEST(ConsoleTextTest, IsBounded) {
  ConsoleText text;
  ConsoleStream stream(text);
  for (int line = 0; line < 20000; ++line) stream.Write("x\n");
  stream.Write("last\n");
  const QStringList lines = text.TakeChanges();
  EXPECT_THAT(lines, SizeIs(ConsoleText::kMaxLines + 1));
  EXPECT_EQ(lines[lines.size() - 2], "last");

  stream.Write(QByteArray(5000, 'x'));
  stream.Write(QByteArray(5000, '\t') + "y");
  const QStringList wrapped = text.TakeChanges();
  EXPECT_EQ(wrapped.join("").count('x'), 5000) << "a long line goes on in the next";
  for (const QString& line : wrapped) EXPECT_LE(line.size(), ConsoleText::kMaxColumns);
}

}  // namespace
}  // namespace ui
