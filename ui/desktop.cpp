#include "ui/desktop.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QColor>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>

#include "platform/paths.h"
#include "platform/text_viewer.h"
#include "ui/controls.h"
#include "ui/failure.h"
#include "ui/layout.h"

namespace ui {
namespace {

QString SystemText(const QString& path) {
  return QString::fromStdString(platform::SystemPath(path.toStdString()).string());
}

/// The dialog's name filters for "description|pattern|description|pattern". The pattern stands in
/// brackets at the end and is hidden there, so that the user reads the description as it is.
QStringList NameFilters(const QString& filter) {
  const QStringList parts = filter.split('|');
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    QStringList patterns = parts[at + 1].trimmed().split(';', Qt::SkipEmptyParts);
    // "*.*" means every file, with or without a dot in its name.
    std::replace(patterns.begin(), patterns.end(), QStringLiteral("*.*"), QStringLiteral("*"));
    filters << QStringLiteral("%1 (%2)").arg(parts[at].trimmed(), patterns.join(' '));
  }
  return filters;
}

/// Qt adds the default extension to every name without a dot, also to that of a file which exists
/// under just this name. Here the name as given goes first.
class OpenFileDialog : public QFileDialog {
 public:
  OpenFileDialog(QWidget* owner, const QString& title, QString defaultExtension)
      : QFileDialog(owner, title, QDir::currentPath()),
        defaultExtension_(std::move(defaultExtension)) {
    setFileMode(QFileDialog::ExistingFile);
    setOption(QFileDialog::HideNameFilterDetails);
  }

 protected:
  void accept() override {
    setDefaultSuffix({});
    const QStringList files = selectedFiles();
    const bool exists = !files.isEmpty() && QFileInfo::exists(files.constFirst());
    if (!exists) setDefaultSuffix(defaultExtension_);
    QFileDialog::accept();
  }

 private:
  QString defaultExtension_;
};

void SelectFile(QFileDialog& dialog, const QString& fileName) {
  if (fileName.isEmpty()) return;
  const QFileInfo file(SystemText(fileName));
  if (file.dir().exists()) dialog.setDirectory(file.absolutePath());
  dialog.selectFile(file.fileName());
}

bool HasSwitch(const platform::CommandLine& command, const std::string& text) {
  return std::find(command.switches.begin(), command.switches.end(), text) !=
         command.switches.end();
}

/// The argument list of a command that is started as it stands.
std::vector<std::string> PlainArguments(const platform::CommandLine& command) {
  const std::string& program = command.program;
  std::vector<std::string> arguments = {
      platform::HasSeparator(program) ? platform::SystemPath(program).string() : program};
  arguments.insert(arguments.end(), command.switches.begin(), command.switches.end());
  if (!command.file.empty()) arguments.push_back(platform::SystemPath(command.file).string());
  return arguments;
}

}  // namespace

void ViewTextFile(Desktop& desktop, QWidget* owner, const std::string& file) {
  const std::string reason = desktop.StartDetached({platform::kNotepad, {}, file});
  if (reason.empty()) return;
  TellFailure(
      desktop, owner,
      {.what = "No text viewer could be started for this file:", .path = file, .reason = reason});
}

Answer RealDesktop::ShowMessage(QWidget* owner, const QString& text, MessageStyle style,
                                const QString& title) {
  QMessageBox box(owner);
  GiveDialogFrame(box);
  box.setWindowTitle(title);
  box.setTextFormat(Qt::PlainText);
  box.setText(text);
  if (style == MessageStyle::kYesNoQuestion) {
    box.setIcon(QMessageBox::Question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? Answer::kYes : Answer::kNo;
  }
  if (style == MessageStyle::kCritical) box.setIcon(QMessageBox::Critical);
  box.setStandardButtons(QMessageBox::Ok);
  box.exec();
  return Answer::kOk;
}

std::optional<int> RealDesktop::ChooseColor(QWidget* owner, int color, const QString& title) {
  QColorDialog dialog(ToQColor(color), owner);
  dialog.setWindowTitle(title);
  GiveDialogFrame(dialog);
  dialog.setOption(QColorDialog::DontUseNativeDialog);  // some hide the custom colors
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return ToColorValue(dialog.selectedColor());
}

std::optional<QString> RealDesktop::ChooseFile(QWidget* owner, const OpenFileRequest& request) {
  OpenFileDialog dialog(owner, request.title, QFileInfo(request.defaultExtension).suffix());
  dialog.setNameFilters(NameFilters(request.filter));
  SelectFile(dialog, request.fileName);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const QFileInfo file(dialog.selectedFiles().constFirst());
  QDir::setCurrent(file.absolutePath());
  return file.absoluteFilePath();
}

platform::StartResult RealDesktop::StartProgram(const platform::CommandLine& command) {
  return platform::StartProcess(PlainArguments(command));
}

std::string RealDesktop::StartDetached(const platform::CommandLine& command) {
  if (command.program != platform::kNotepad)
    return platform::StartDetachedProcess(PlainArguments(command));
  const std::string file = platform::SystemPath(command.file).string();
  return HasSwitch(command, platform::kPrintSwitch) ? platform::StartDetachedProcess({"lp", file})
                                                    : platform::OpenInTextViewer(file);
}

void RealDesktop::OpenUrl(const QString& url) {
  platform::StartDetachedProcess({"xdg-open", url.toStdString()});
}

}  // namespace ui
