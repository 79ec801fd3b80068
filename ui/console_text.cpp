#include "ui/console_text.h"

#include <algorithm>

#include <QChar>

namespace ui {
namespace {

constexpr char32_t kEscape = 0x1B;
constexpr char32_t kBell = 0x07;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kObjectReplacement = 0xFFFC;
constexpr char32_t kNonJoiner = 0x200C;
constexpr char32_t kJoiner = 0x200D;
constexpr std::size_t kTabColumns = 8;
constexpr std::size_t kMaxParameters = 16;  // none that does something is longer

/// Controls, among them those of writing direction, and the separators of lines that are not the
/// program's own.
bool DoesNothing(char32_t character) {
  switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return true;
    case QChar::Other_Format:
      return character != kNonJoiner && character != kJoiner;
    default:
      return false;
  }
}

bool IsBetween(char32_t character, char32_t first, char32_t last) {
  return character >= first && character <= last;
}

/// How many bytes at the end begin a character that the bytes do not complete.
qsizetype CutAtTheEnd(const QByteArray& bytes) {
  const qsizetype furthest = std::min<qsizetype>(3, bytes.size());
  for (qsizetype count = 1; count <= furthest; ++count) {
    const auto byte = static_cast<unsigned char>(bytes[bytes.size() - count]);
    const bool continues = byte >= 0x80 && byte < 0xC0;
    if (continues) continue;
    const qsizetype length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
    return length > count ? count : 0;
  }
  return 0;
}

QString ToText(const std::u32string& line) {
  return QString::fromUcs4(line.data(), static_cast<qsizetype>(line.size()));
}

}  // namespace

void ConsoleText::Put(char32_t character) {
  if (column_ >= kMaxColumns) EndLine();
  if (column_ >= line_.size()) line_.resize(column_ + 1, U' ');
  line_[column_++] = character;
  changed_ = true;
}

void ConsoleText::Tab() {
  column_ = std::min((column_ / kTabColumns + 1) * kTabColumns, kMaxColumns - 1);
}

void ConsoleText::EndLine() {
  ended_.push_back(ToText(line_));
  if (ended_.size() > kMaxLines) ended_.pop_front();
  line_.clear();
  column_ = 0;
  changed_ = true;
}

void ConsoleText::EraseToEnd() {
  if (column_ < line_.size()) line_.resize(column_);
  changed_ = true;
}

void ConsoleText::EraseToStart() {
  const std::size_t count = std::min(column_ + 1, line_.size());
  std::fill_n(line_.begin(), count, U' ');
  changed_ = true;
}

void ConsoleText::EraseLine() {
  line_.clear();
  changed_ = true;
}

QStringList ConsoleText::TakeChanges() {
  QStringList lines(ended_.begin(), ended_.end());
  lines << ToText(line_);
  ended_.clear();
  changed_ = false;
  return lines;
}

// A QStringDecoder would keep the state by itself, but loses the character after one that was cut
// and never completed.
void ConsoleStream::Write(QByteArrayView bytes) {
  cut_.append(bytes);
  const qsizetype whole = cut_.size() - CutAtTheEnd(cut_);
  for (const uint character : QString::fromUtf8(cut_.constData(), whole).toUcs4()) Take(character);
  cut_.remove(0, whole);
}

void ConsoleStream::Take(char32_t character) {
  // The end of a line ends every sequence: one that was never finished hides no more than its line.
  if (character == U'\n') state_ = State::kText;
  switch (state_) {
    case State::kText:
      return TakeText(character);
    case State::kEscape:
      return TakeEscape(character);
    case State::kSequence:
      return TakeSequence(character);
    case State::kString:
    case State::kStringEscape:
      return TakeString(character);
  }
}

void ConsoleStream::TakeText(char32_t character) {
  switch (character) {
    case U'\n':
      return text_.EndLine();
    case U'\r':
      return text_.ReturnCarriage();
    case U'\b':
      return text_.StepBack();
    case U'\t':
      return text_.Tab();
    case kEscape:
      state_ = State::kEscape;
      return;
    default:
      break;
  }
  if (DoesNothing(character)) return;
  const bool isText = character != kObjectReplacement && !QChar::isNonCharacter(character);
  text_.Put(isText ? character : kReplacement);
}

void ConsoleStream::TakeEscape(char32_t character) {
  if (character == U'[') {
    parameters_.clear();
    state_ = State::kSequence;
  } else if (std::u32string_view(U"]PX^_").find(character) != std::u32string_view::npos) {
    state_ = State::kString;
  } else if (character != kEscape && !IsBetween(character, U' ', U'/')) {
    state_ = State::kText;
  }
}

void ConsoleStream::TakeSequence(char32_t character) {
  if (character == kEscape) {
    state_ = State::kEscape;
  } else if (IsBetween(character, U' ', U'?')) {
    if (parameters_.size() < kMaxParameters) parameters_ += character;
  } else {
    if (character == U'K') Erase();
    state_ = State::kText;
  }
}

void ConsoleStream::TakeString(char32_t character) {
  const bool ends = character == kBell || (state_ == State::kStringEscape && character == U'\\');
  if (ends) {
    state_ = State::kText;
  } else {
    state_ = character == kEscape ? State::kStringEscape : State::kString;
  }
}

void ConsoleStream::Erase() {
  if (parameters_.empty() || parameters_ == U"0") text_.EraseToEnd();
  if (parameters_ == U"1") text_.EraseToStart();
  if (parameters_ == U"2") text_.EraseLine();
}

}  // namespace ui
