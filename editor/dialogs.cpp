#include "editor/dialogs.h"

namespace editor {

std::optional<int> ColorDialog::Show(const QString& title) {
  const std::optional<int> chosen = desktop_.ChooseColor(&owner_, color_, title);
  if (chosen) color_ = *chosen;
  return chosen;
}

std::optional<QString> FileDialog::Show() {
  std::optional<QString> chosen = desktop_.ChooseFile(&owner_, request_);
  if (chosen) request_.fileName = *chosen;
  return chosen;
}

Dialogs::Dialogs(ui::Desktop& desktop, QWidget& window)
    : CColorDialog(desktop, window), CDialog(desktop, window), CLogDialog(desktop, window) {
  CLogDialog.SetTitle("Select Quake 3 Arena Log File");
  CLogDialog.SetFilter("Log Files (*.log) |*.log|All Files (*.*)|*.*");
  CLogDialog.SetDefaultExtension("*.log");
}

}  // namespace editor
