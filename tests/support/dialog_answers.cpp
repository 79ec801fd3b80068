#include "tests/support/dialog_answers.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>

namespace support {

DialogAnswers::DialogAnswers() { qApp->installEventFilter(this); }

DialogAnswers::~DialogAnswers() {
  EXPECT_TRUE(actions_.empty()) << actions_.size() << " dialogs did not open";
}

bool DialogAnswers::eventFilter(QObject* watched, QEvent* event) {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (event->type() != QEvent::Show || widget == nullptr) return false;
  if (!widget->isWindow() || !widget->isModal()) return false;
  // The dialog's own event loop has to run first.
  QTimer::singleShot(0, widget, [this, widget] { Answer(*widget); });
  return false;
}

void DialogAnswers::Answer(QWidget& dialog) {
  const QPointer<QWidget> shown = &dialog;
  if (actions_.empty() && otherwise_) {
    otherwise_(dialog);
  } else if (actions_.empty()) {
    ADD_FAILURE() << "A dialog nobody expected: " << dialog.windowTitle().toStdString();
  } else {
    const Action action = std::move(actions_.front());
    actions_.pop_front();
    action(dialog);
  }
  // The test goes on, whatever happened, instead of waiting for ever.
  if (shown != nullptr && shown->isVisible()) shown->close();
}

}  // namespace support
