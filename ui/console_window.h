#pragma once

#include <memory>

#include <QPlainTextEdit>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <QWidget>

#include "platform/process.h"
#include "platform/pseudo_terminal.h"
#include "ui/console_text.h"

namespace ui {

/// The window in which a program without a terminal shows what it writes. It appears when the
/// program has run for half a second or writes to its standard error, and closes by itself when the
/// program ends with 0 and wrote nothing there. It can be closed at any time, which the program
/// does not notice, and the end of this program never waits for it.
class ConsoleWindow : public QWidget {
 public:
  /// A window that is not shown yet, titled `title`. None when the system has no terminals to give.
  static std::unique_ptr<ConsoleWindow> Create(const QString& title);

  /// Where the program is to write.
  platform::Streams ProgramStreams() const;

  /// To be called when the program has been started, and when it has ended.
  void ProgramStarted();
  void ProgramEnded(unsigned exitCode);

  /// Whether the program has ended and the window has been closed or was never shown.
  bool IsOver() const { return over_ && !isVisible(); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  /// One of the program's two streams.
  struct Source {
    platform::PseudoTerminal terminal;
    ConsoleStream stream;
    QSocketNotifier notifier;

    Source(platform::PseudoTerminal pseudoTerminal, ConsoleText& text);
  };

  ConsoleWindow(const QString& title, platform::PseudoTerminal output,
                platform::PseudoTerminal errors);

  /// Reads from a source, at most `limit` bytes; whether it gave any.
  bool Drain(Source& source, std::size_t limit);
  void DrainErrors(std::size_t limit);
  void Appear();
  void ShowChanges();

  ConsoleText text_;
  Source output_;
  Source errors_;
  QPlainTextEdit screen_;
  QTimer appearance_;
  QTimer refresh_;
  bool severe_ = false;  // something came on standard error
  bool closed_ = false;  // what still comes is read and forgotten
  bool over_ = false;
};

}  // namespace ui
