#pragma once

#include <QDialog>

namespace editor {

/// The preview of the page and kill-table colors: a modal snapshot of the color buttons of the
/// main window at the moment when it is made.
class frmColorPreview : public QDialog {
 public:
  explicit frmColorPreview(QWidget& window);

 private:
  void cdClose_Click() { accept(); }
};

}  // namespace editor
