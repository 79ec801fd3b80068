#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include <QString>

#include "platform/command_line.h"
#include "platform/process.h"

class QWidget;

namespace ui {

class ConsoleWindow;

/// Buttons and icon of a message box.
enum class MessageStyle { kOk = 0, kCritical = 16, kYesNoQuestion = 36 };

/// What a message box answers.
enum class Answer { kOk = 1, kYes = 6, kNo = 7 };

/// An open-file dialog: existing files only, no read-only box.
struct OpenFileRequest {
  QString title;             // empty: the desktop's own
  QString filter;            // description and pattern pairs, all separated by "|"
  QString defaultExtension;  // pattern "*.log" style, or empty
  QString fileName;          // preset file name: the one of the dialog's last use, or empty
};

/// Everything that a person or another program answers: message boxes, the standard dialogs,
/// programs to start, pages to open. The main window is given one.
class Desktop {
 public:
  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  /// Shows a message box, modal to `owner` (none: to the program), and waits for its answer. A
  /// question that is closed without a choice answers kNo; Yes is its default button.
  virtual Answer ShowMessage(QWidget* owner, const QString& text, MessageStyle style,
                             const QString& title) = 0;

  /// The color dialog, titled `title` and open on `color` (0x00BBGGRR). The chosen color in the
  /// same form, nothing when the user cancels.
  virtual std::optional<int> ChooseColor(QWidget* owner, int color, const QString& title) = 0;

  /// The open-file dialog. The full path of the chosen file in the system's notation, nothing when
  /// the user cancels. After a choice the program's current folder is that file's folder.
  virtual std::optional<QString> ChooseFile(QWidget* owner, const OpenFileRequest& request) = 0;

  /// Starts a program as a child whose end can be waited for (see platform/process.h).
  /// It is shown as a normal window that takes the focus: the terminal that this program was
  /// started from or, without one, a console window (see ConsoleWindow).
  virtual platform::StartResult StartProgram(const platform::CommandLine& command) = 0;

  /// To be told when a program of StartProgram has ended, with its exit code.
  virtual void ProgramEnded(int processId, unsigned exitCode) = 0;

  /// Starts a program that lives on its own; nothing of it is left behind when it ends.
  /// "notepad.exe" stands for the desktop's viewer of text files, "notepad.exe /p" for its print
  /// command. The result is empty, or says why the program could not be started.
  virtual std::string StartDetached(const platform::CommandLine& command) = 0;

  /// Hands a URL to the desktop's browser. Nothing is reported.
  virtual void OpenUrl(const QString& url) = 0;
};

/// Opens a text file in the desktop's viewer and does not wait for it. A viewer that cannot be
/// started is told to the user, with the file and the reason.
void ViewTextFile(Desktop& desktop, QWidget* owner, const std::string& file);

/// The desktop that the user sits at.
class RealDesktop : public Desktop {
 public:
  RealDesktop();
  ~RealDesktop() override;
  Answer ShowMessage(QWidget* owner, const QString& text, MessageStyle style,
                     const QString& title) override;
  std::optional<int> ChooseColor(QWidget* owner, int color, const QString& title) override;
  std::optional<QString> ChooseFile(QWidget* owner, const OpenFileRequest& request) override;
  platform::StartResult StartProgram(const platform::CommandLine& command) override;
  void ProgramEnded(int processId, unsigned exitCode) override;
  std::string StartDetached(const platform::CommandLine& command) override;
  void OpenUrl(const QString& url) override;

 private:
  /// The windows of programs that run, and of those that ended and left something to read.
  std::map<int, std::unique_ptr<ConsoleWindow>> consoles_;  // by process id
};

}  // namespace ui
