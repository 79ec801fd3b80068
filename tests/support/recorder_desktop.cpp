#include "tests/support/recorder_desktop.h"

#include <utility>

namespace support {
namespace {

/// A command as one text: program, switches and the file in double quotes, separated by blanks.
std::string TextOf(const platform::CommandLine& command) {
  std::string text = command.program;
  for (const std::string& option : command.switches) text += " " + option;
  if (!command.file.empty()) text += " \"" + command.file + "\"";
  return text;
}

template <class T>
T Next(std::deque<T>& queue, T otherwise) {
  if (queue.empty()) return otherwise;
  const T next = queue.front();
  queue.pop_front();
  return next;
}

}  // namespace

void RecorderDesktop::Forget() {
  messages.clear();
  offeredColors.clear();
  colorTitles.clear();
  fileRequests.clear();
  started.clear();
  detached.clear();
  urls.clear();
}

ui::Answer RecorderDesktop::ShowMessage(QWidget* /*owner*/, const QString& text,
                                        ui::MessageStyle style, const QString& title) {
  messages.push_back({text, style, title});
  if (duringMessage) duringMessage();
  const bool question = style == ui::MessageStyle::kYesNoQuestion;
  return Next(answers, question ? ui::Answer::kNo : ui::Answer::kOk);
}

std::optional<int> RecorderDesktop::ChooseColor(QWidget* /*owner*/, int color,
                                                const QString& title) {
  colorTitles.push_back(title);
  offeredColors.push_back(color);
  return Next(colors, std::optional<int>());
}

std::optional<QString> RecorderDesktop::ChooseFile(QWidget* /*owner*/,
                                                   const ui::OpenFileRequest& request) {
  fileRequests.push_back(request);
  return Next(files, std::optional<QString>());
}

platform::StartResult RecorderDesktop::StartProgram(const platform::CommandLine& command) {
  started.push_back(TextOf(command));
  return platform::StartProcess(command.Arguments());
}

std::string RecorderDesktop::StartDetached(const platform::CommandLine& command) {
  detached.push_back(TextOf(command));
  return detachedFailure;
}

void RecorderDesktop::OpenUrl(const QString& url) { urls.push_back(url); }

}  // namespace support
