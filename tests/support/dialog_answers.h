#pragma once

#include <deque>
#include <functional>

#include <QObject>
#include <QWidget>

namespace support {

/// Answers the real modal windows that open while it lives: each gets the next action, once it is
/// shown. An action has to close its window. A window without an action is closed and fails the
/// test (see Otherwise), and so does an action without a window.
class DialogAnswers : public QObject {
 public:
  using Action = std::function<void(QWidget& dialog)>;

  DialogAnswers();
  ~DialogAnswers() override;

  void Then(Action action) { actions_.push_back(std::move(action)); }

  /// What becomes of windows without an action of their own.
  void Otherwise(Action action) { otherwise_ = std::move(action); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Answer(QWidget& dialog);

  std::deque<Action> actions_;
  Action otherwise_;
};

}  // namespace support
