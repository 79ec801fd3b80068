// The window in the hands of one who presses anything: controls, menus, keys, texts, dialogs that
// are answered at random, also in the midst of saves and runs of the engine.
//
// VANTREL3_PRESSES=seed,seeds,presses presses others than the usual ones, and names each seed.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "config/settings.h"
#include "config/user_vars.h"
#include "editor/fields.h"
#include "platform/paths.h"
#include "tests/engine/engine_test.h"
#include "tests/support/dialog_answers.h"
#include "text/text.h"
#include "ui/controls.h"

namespace {

using ui::Control;
using Lines = std::vector<std::string>;

/// A value as it can be read back: no blanks around it, a path in the settings' notation.
std::string AsRead(const config::Setting& setting, std::string value) {
  if (setting.encoding == config::Encoding::kPath) {
    std::replace(value.begin(), value.end(), '/', '\\');
  }
  return std::string(text::TrimBlanks(value));
}

/// The user variables as they can be read back, without regard to case and order.
void AddVariables(const std::vector<config::Entry>& variables, Lines& lines) {
  config::SettingsFile file("/nowhere");
  config::WriteUserVars(file, variables);
  std::set<std::string> readBack;
  for (const auto& [name, value] : config::LoadUserVars(file)) {
    readBack.insert("variable " + text::FoldCase(name) + "=" + value);
  }
  lines.insert(lines.end(), readBack.begin(), readBack.end());
}

/// All that a window holds, as it can be read back from its file.
Lines Fields(const QWidget& window) {
  Lines lines;
  for (const config::Setting& setting : config::Settings()) {
    const std::string key(setting.key);
    if (setting.encoding == config::Encoding::kUserVariables) {
      AddVariables(editor::EntriesOf(window, setting), lines);
    } else if (setting.encoding == config::Encoding::kEntries) {
      for (const config::Entry& entry : editor::EntriesOf(window, setting)) {
        lines.push_back(key + "=" + AsRead(setting, entry.first) + "|" +
                        AsRead(setting, entry.second));
      }
    } else {
      lines.push_back(key + "=" + AsRead(setting, editor::ValueOf(window, setting)));
    }
  }
  return lines;
}

class RandomPresses : public engine::EngineTest {
 public:
  /// A disk that keeps every save would cost minutes.
  static void SetUpTestSuite() {
    if (std::filesystem::exists("/dev/shm")) setenv("TMPDIR", "/dev/shm", 0);
  }

 protected:
  /// Presses; every now and then the file has to hold what the window does.
  void Use(unsigned seed, int presses) {
    random_.seed(seed);
    BeginAnew();
    support::DialogAnswers dialogs;
    dialogs.Otherwise([this](QWidget& dialog) { AnswerDialog(dialog); });
    QTimer between;  // presses while the window waits for something
    QObject::connect(&between, &QTimer::timeout, [this] { PressInside(); });
    between.start(10);
    for (int i = 0; i < presses && !HasFailure(); ++i) {
      PressAtRandom();
      if (!window_->isVisible()) window_ = &OpenWindow();
      if (i % 25 == 24) SaveAndCompare();
    }
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  }

  std::size_t runs_ = 0;  // of the engine

 private:
  std::size_t Pick(std::size_t below) { return random_() % below; }
  template <class T>
  const T& Any(const std::vector<T>& list) {
    return list[Pick(list.size())];
  }

  void BeginAnew() {
    std::filesystem::current_path(Directory());
    WriteFile("morvane.cfg", Pick(2) == 0 ? "" : "[Main]\r\nuse_cust_rank=1\r\nother=1\r\n; c\r\n");
    WriteFile("picture.png", "no picture");
    WriteEngine(
        "case $$ in *[05]) kill -9 $$;; *[16]) echo oops >&2; exit 3;; esac\n"
        "cat \"$here/morvane.cfg\" > \"$here/logparser.log.txt\"");
    window_ = &OpenWindow();
  }

  /// The desktop's next answers.
  void Prepare() {
    runs_ += desktop.started.size();
    desktop.Forget();
    desktop.answers.clear();
    desktop.colors.clear();
    desktop.files.clear();
    for (int i = 0; i < 3; ++i) {
      desktop.answers.push_back(Pick(2) == 0 ? ui::Answer::kYes : ui::Answer::kNo);
      desktop.colors.emplace_back(static_cast<int>(Pick(0x1000000)));
      desktop.files.emplace_back(Any<QString>({".\\picture.png", "templates\\a.htmlt", "x.log"}));
    }
    if (Pick(2) == 0) desktop.files.front().reset();
    desktop.duringMessage = [this] { PressInside(); };
  }

  /// No press may make folders outside the test's own.
  void KeepInside() {
    auto& output = Control<QLineEdit>(*window_, "txtDestPath");
    const std::string path = output.text().trimmed().toStdString();
    const bool leads = platform::SystemPath(path).is_absolute() || path.find("..") != path.npos;
    if (leads) output.setText("output");
  }

  void PressAtRandom() {
    ++depth_;
    Prepare();
    KeepInside();
    if (QWidget* popup = QApplication::activePopupWidget()) {
      const int key = Any<int>({Qt::Key_Down, Qt::Key_Up, Qt::Key_Right, Qt::Key_Return,
                                Qt::Key_Escape, Qt::Key_Escape});
      QTest::keyClick(popup, static_cast<Qt::Key>(key));
    } else if (QWidget* dialog = QApplication::activeModalWidget()) {
      PressIn(*dialog);
    } else if (Pick(5) == 0) {
      ChooseItem();
    } else {
      PressIn(*window_);
    }
    KeepInside();
    QApplication::processEvents();
    --depth_;
  }

  /// A press in the midst of another.
  void PressInside() {
    if (depth_ > 0 && depth_ < 3 && !comparing_) PressAtRandom();
  }

  void ChooseItem() {
    std::vector<QAction*> items;
    for (QAction* item : window_->findChildren<QAction*>()) {
      if (item->isEnabled() && !item->isSeparator()) items.push_back(item);
    }
    Any(items)->trigger();
  }

  /// The visible and enabled controls of a kind.
  template <class T>
  static std::vector<T*> ControlsOf(const QWidget& window) {
    std::vector<T*> controls;
    for (T* control : window.findChildren<T*>()) {
      if (control->isVisible() && control->isEnabled()) controls.push_back(control);
    }
    return controls;
  }

  void PressIn(QWidget& window) {
    const std::vector<QWidget*> controls = ControlsOf<QWidget>(window);
    const std::vector<QLineEdit*> boxes = ControlsOf<QLineEdit>(window);
    const std::vector<QAbstractButton*> buttons = ControlsOf<QAbstractButton>(window);
    const std::size_t kind = Pick(8);
    if (kind < 3 && !boxes.empty()) {
      QLineEdit& box = *Any(boxes);
      box.setFocus();
      box.setText(Any<QString>({"", "caf\xC3\xA9", " a b ", "3", "-1e9", "a;b[c]", "<b>&amp;",
                                "x=y", ".\\sub/dir", "[n", "//", "1000000"}));
    } else if (kind < 5 && !buttons.empty()) {
      Any(buttons)->click();
    } else if (kind < 7 && !controls.empty()) {
      QWidget& control = *Any(controls);
      const auto within = [&](int size) { return static_cast<int>(Pick(std::size_t(size) + 1)); };
      QTest::mouseClick(&control, Qt::LeftButton, {},
                        {within(control.width()), within(control.height())});
    } else if (!controls.empty()) {
      PressKey(*Any(controls));
    }
  }

  void PressKey(QWidget& control) {
    const int modifier =
        Any<int>({0, 0, 0, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier});
    const int key =
        Any<int>({Qt::Key_Tab,  Qt::Key_Space, Qt::Key_Return, Qt::Key_Delete,   Qt::Key_Backspace,
                  Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Home,
                  Qt::Key_End,  Qt::Key_F5,    Qt::Key_F10,    Qt::Key_Escape,   Qt::Key_A,
                  Qt::Key_C,    Qt::Key_E,     Qt::Key_F,      Qt::Key_H,        Qt::Key_P,
                  Qt::Key_Q,    Qt::Key_R,     Qt::Key_S,      Qt::Key_T,        Qt::Key_V,
                  Qt::Key_X,    Qt::Key_Z,     Qt::Key_7,      Qt::Key_Semicolon});
    QWidget* focused = QApplication::focusWidget();
    QTest::keyClick(focused != nullptr && Pick(2) == 0 ? focused : &control,
                    static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifier));
  }

  void AnswerDialog(QWidget& dialog) {
    const QPointer<QWidget> open = &dialog;
    ++depth_;
    for (std::size_t presses = Pick(4); presses > 0 && open && open->isVisible(); --presses) {
      PressIn(*open);
      QApplication::processEvents();
    }
    --depth_;
    auto* box = qobject_cast<QDialog*>(open.data());
    if (box != nullptr && Pick(2) == 0) box->accept();
  }

  void SaveAndCompare() {
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    comparing_ = true;
    KeepInside();
    support::Choose(*window_, "mnuFileSave");
    EXPECT_EQ(support::StatusText(*window_), "Configuration Saved.");
    const app::frmMain loaded(window_->Ini(), desktop, Settings());
    EXPECT_EQ(Fields(loaded), Fields(*window_));
    comparing_ = false;
  }

  std::mt19937 random_;
  app::frmMain* window_ = nullptr;
  int depth_ = 0;
  bool comparing_ = false;
};

TEST_F(RandomPresses, BreakNothingAndTheFileHoldsTheFields) {
  unsigned first = 1;
  unsigned seeds = 4;
  int presses = 150;
  const char* const wanted = std::getenv("VANTREL3_PRESSES");
  if (const QStringList numbers = QString(wanted).split(','); numbers.size() == 3) {
    first = numbers[0].toUInt();
    seeds = numbers[1].toUInt();
    presses = numbers[2].toInt();
  }
  for (unsigned seed = first; seed < first + seeds && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    if (wanted != nullptr) std::fprintf(stderr, "seed %u\n", seed);
    Use(seed, presses);
  }
  EXPECT_GT(runs_, 0U);
}

}  // namespace
