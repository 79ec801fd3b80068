#include "ui/console_window.h"

#include <string>
#include <utility>

#include <QFontMetrics>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

#include "ui/fonts.h"

namespace ui {
namespace {

constexpr int kAppearMilliseconds = 500;
constexpr int kRefreshMilliseconds = 50;
constexpr std::size_t kBytesPerEvent = 65536;    // the other windows' events come between
constexpr std::size_t kBytesAtTheEnd = 1048576;  // a child of the program may write for ever
constexpr int kColumns = 80;
constexpr int kLines = 25;
constexpr FontSpec kScreenFont{FontFace::kCourier, 9.75, QFont::Normal};
constexpr QRgb kPaper = qRgb(0x1E, 0x1C, 0x1A);
constexpr QRgb kInk = qRgb(0xEF, 0xED, 0xE8);

void LookLikeAScreen(QPlainTextEdit& screen) {
  screen.setObjectName("Screen");
  screen.setReadOnly(true);
  screen.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  screen.setUndoRedoEnabled(false);
  screen.setMaximumBlockCount(ConsoleText::kMaxLines);
  screen.setWordWrapMode(QTextOption::WrapAnywhere);
  QTextOption option = screen.document()->defaultTextOption();
  option.setTextDirection(Qt::LeftToRight);
  screen.document()->setDefaultTextOption(option);
  screen.setFont(MakeFont(kScreenFont));
  screen.setFrameStyle(QFrame::NoFrame);
  QPalette palette = screen.palette();
  palette.setColor(QPalette::Base, kPaper);
  palette.setColor(QPalette::Text, kInk);
  screen.setPalette(palette);
}

QSize SizeOfText(const QPlainTextEdit& screen) {
  const QFontMetrics metrics = screen.fontMetrics();
  const int margins = 2 * qRound(screen.document()->documentMargin());
  return {metrics.horizontalAdvance(QString(kColumns, 'M')) + margins +
              screen.verticalScrollBar()->sizeHint().width(),
          kLines * metrics.lineSpacing() + margins};
}

/// Replaces a document's last line by lines, and leaves a selection before it alone.
void ReplaceLastLine(QTextDocument& document, const QStringList& lines) {
  QTextCursor cursor(&document);
  cursor.movePosition(QTextCursor::End);
  const QString last = cursor.block().text();
  QString text = lines.join('\n');
  if (lines.constFirst().startsWith(last)) {
    text.remove(0, last.size());
  } else {
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
  }
  cursor.insertText(text);
}

}  // namespace

ConsoleWindow::Source::Source(platform::PseudoTerminal pseudoTerminal, ConsoleText& text)
    : terminal(std::move(pseudoTerminal)),
      stream(text),
      notifier(terminal.ReadingEnd(), QSocketNotifier::Read) {}

std::unique_ptr<ConsoleWindow> ConsoleWindow::Create(const QString& title) {
  auto output = platform::PseudoTerminal::Open();
  auto errors = platform::PseudoTerminal::Open();
  if (!output || !errors) return nullptr;
  return std::unique_ptr<ConsoleWindow>(
      new ConsoleWindow(title, std::move(*output), std::move(*errors)));
}

ConsoleWindow::ConsoleWindow(const QString& title, platform::PseudoTerminal output,
                             platform::PseudoTerminal errors)
    : output_(std::move(output), text_), errors_(std::move(errors), text_) {
  setObjectName("Console");
  setWindowTitle(title);
  setAttribute(Qt::WA_QuitOnClose, false);
  LookLikeAScreen(screen_);
  screen_.setAccessibleName(title);
  auto* area = new QVBoxLayout(this);
  area->setContentsMargins(0, 0, 0, 0);
  area->addWidget(&screen_);
  resize(SizeOfText(screen_));

  connect(&output_.notifier, &QSocketNotifier::activated, this,
          [this] { Drain(output_, kBytesPerEvent); });
  connect(&errors_.notifier, &QSocketNotifier::activated, this,
          [this] { DrainErrors(kBytesPerEvent); });
  appearance_.setSingleShot(true);
  connect(&appearance_, &QTimer::timeout, this, &ConsoleWindow::Appear);
  refresh_.setSingleShot(true);
  connect(&refresh_, &QTimer::timeout, this, &ConsoleWindow::ShowChanges);
}

platform::Streams ConsoleWindow::ProgramStreams() const {
  return {output_.terminal.ProgramEnd(), errors_.terminal.ProgramEnd()};
}

void ConsoleWindow::ProgramStarted() {
  output_.terminal.CloseProgramEnd();
  errors_.terminal.CloseProgramEnd();
  appearance_.start(kAppearMilliseconds);
}

void ConsoleWindow::ProgramEnded(unsigned exitCode) {
  appearance_.stop();
  Drain(output_, kBytesAtTheEnd);
  DrainErrors(kBytesAtTheEnd);
  output_.notifier.setEnabled(false);
  errors_.notifier.setEnabled(false);
  over_ = true;
  if (exitCode == 0 && !severe_) close();
}

void ConsoleWindow::closeEvent(QCloseEvent* event) {
  closed_ = true;
  QWidget::closeEvent(event);
}

bool ConsoleWindow::Drain(Source& source, std::size_t limit) {
  std::string bytes;
  if (!source.terminal.Read(bytes, limit)) source.notifier.setEnabled(false);
  if (bytes.empty()) return false;
  if (closed_) return true;
  source.stream.Write(bytes);
  if (isVisible() && !refresh_.isActive()) refresh_.start(kRefreshMilliseconds);
  return true;
}

void ConsoleWindow::DrainErrors(std::size_t limit) {
  if (!Drain(errors_, limit)) return;
  severe_ = true;
  Appear();
}

void ConsoleWindow::Appear() {
  if (closed_ || isVisible()) return;
  ShowChanges();
  show();
  raise();
  activateWindow();
}

void ConsoleWindow::ShowChanges() {
  if (!text_.HasChanges()) return;
  QScrollBar& bar = *screen_.verticalScrollBar();
  const bool follows = bar.value() == bar.maximum();
  ReplaceLastLine(*screen_.document(), text_.TakeChanges());
  if (follows) bar.setValue(bar.maximum());
}

}  // namespace ui
