#pragma once

#include <QDialog>

#include "ui/context.h"
#include "ui/desktop.h"

namespace help {

/// The About dialog: product name, version, and a text that scrolls upward without end. It has no
/// title bar; its buttons are the way out.
class frmAbout : public QDialog {
 public:
  frmAbout(QWidget* owner, ui::Desktop& desktop);

 protected:
  /// Escape does nothing; all other keys are a dialog's.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Form_Load();
  void tmrMain_Timer();
  void cmdOK_Click();
  void cmdSysInfo_Click();
  void MoveTextTo(int top);
  void CenterOn(const QRect& place);

  ui::Desktop& desktop_;
  int textTop_ = 0;  // top of the scrolling text within its viewport, in twips
};

/// Shows the About dialog, modal and centred over the main window, and returns when it has been
/// closed.
void mnuHelpAbout_Click(const ui::Context& context);

}  // namespace help
