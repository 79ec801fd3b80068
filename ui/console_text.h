#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

namespace ui {

/// What a program wrote, as a terminal shows it: lines, the last of which is still being written.
/// Only the last line can change.
class ConsoleText {
 public:
  static constexpr std::size_t kMaxLines = 5000;    // older ones are dropped
  static constexpr std::size_t kMaxColumns = 2000;  // a longer line goes on in the next one

  /// Puts a character at the place for writing, over what stands there.
  void Put(char32_t character);

  /// To the start of the line, one column back, to the next multiple of 8 columns, and to the start
  /// of a new line.
  void ReturnCarriage() { column_ = 0; }
  void StepBack() { column_ -= column_ > 0 ? 1 : 0; }
  void Tab();
  void EndLine();

  /// Blanks the line after the place for writing, before and at it, or all of it.
  void EraseToEnd();
  void EraseToStart();
  void EraseLine();

  /// What changed since the last call: the text of the lines from the one that was last then (at
  /// the first call: from the first) to the one that is last now. Where more lines than kMaxLines
  /// were ended, the oldest are missing.
  QStringList TakeChanges();

  bool HasChanges() const { return changed_; }

 private:
  std::u32string line_;        // the last line
  std::size_t column_ = 0;     // the place for writing in it
  std::deque<QString> ended_;  // lines ended since the last TakeChanges
  bool changed_ = false;
};

/// One stream of bytes to a text. It takes UTF-8; a byte that is none shows as U+FFFD. Carriage
/// return, backspace, tab, line feed and the sequence that erases in a line (CSI K) do what they do
/// on a terminal; every other control character, control sequence and control of writing direction
/// does nothing.
class ConsoleStream {
 public:
  explicit ConsoleStream(ConsoleText& text) : text_(text) {}

  /// Characters and sequences may be cut anywhere between two calls.
  void Write(QByteArrayView bytes);

 private:
  enum class State { kText, kEscape, kSequence, kString, kStringEscape };

  void Take(char32_t character);
  void TakeText(char32_t character);
  void TakeEscape(char32_t character);
  void TakeSequence(char32_t character);
  void TakeString(char32_t character);
  void Erase();

  ConsoleText& text_;
  QByteArray cut_;  // the first bytes of a character whose others are still to come
  State state_ = State::kText;
  std::u32string parameters_;  // of a control sequence
};

}  // namespace ui
