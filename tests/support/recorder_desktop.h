#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "ui/desktop.h"

namespace support {

/// A desktop that notes what it is asked and answers from queues. Without a scripted answer it
/// behaves like a user who closes every dialog. Only StartProgram does what it says.
class RecorderDesktop : public ui::Desktop {
 public:
  struct Message {
    QString text;
    ui::MessageStyle style;
    QString title;
  };

  std::vector<Message> messages;
  std::vector<int> offeredColors;
  std::vector<QString> colorTitles;
  std::vector<ui::OpenFileRequest> fileRequests;
  std::vector<std::string> started;   // command texts of StartProgram
  std::vector<std::string> detached;  // command texts of StartDetached
  std::vector<QString> urls;

  std::deque<ui::Answer> answers;
  std::deque<std::optional<int>> colors;
  std::deque<std::optional<QString>> files;
  std::string detachedFailure;  // what StartDetached answers

  std::function<void()> duringMessage;  // runs while a message box is open

  /// Forgets what it was asked so far.
  void Forget();

  ui::Answer ShowMessage(QWidget* owner, const QString& text, ui::MessageStyle style,
                         const QString& title) override;
  std::optional<int> ChooseColor(QWidget* owner, int color, const QString& title) override;
  std::optional<QString> ChooseFile(QWidget* owner, const ui::OpenFileRequest& request) override;
  platform::StartResult StartProgram(const platform::CommandLine& command) override;
  void ProgramEnded(int /*processId*/, unsigned /*exitCode*/) override {}
  std::string StartDetached(const platform::CommandLine& command) override;
  void OpenUrl(const QString& url) override;
};

}  // namespace support
