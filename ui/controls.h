#pragma once

#include <memory>
#include <stdexcept>
#include <vector>

#include <QColor>
#include <QGroupBox>
#include <QImage>
#include <QPushButton>
#include <QString>
#include <QTabWidget>
#include <QWidget>
#include <QtGlobal>

namespace ui {

/// The control (or menu, or action) of a window by its name (`txtSrcPath`, `cmdNameColor(3)`).
/// Windows are built from tables that are known when the program is compiled, so a name without a
/// control of the asked kind is a fault of the program, a std::logic_error that names the control.
template <class T>
T& Control(const QWidget& window, const QString& name) {
  T* control = window.findChild<T*>(name);
  if (control == nullptr) {
    throw std::logic_error("The window has no such control: " + name.toStdString());
  }
  return *control;
}

/// A color value 0x00BBGGRR (red in the lowest byte) as Qt has it, and back.
QColor ToQColor(int color);
int ToColorValue(const QColor& color);

/// Black or white, whichever is easier to read on a color.
QColor ReadableOn(const QColor& background);

/// A button whose face is the color value in its dynamic property `BackColor` (an int, 0x00BBGGRR;
/// black when not set), which assistive tools are told as "#RRGGBB". It is no tab stop; see
/// ArrowRing for the keyboard.
class ColorButton : public QPushButton {
 public:
  explicit ColorButton(QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

/// A frame whose title stands in its upper line.
class Frame : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Lets the arrow keys move the focus around a ring of controls: Right and Down to the next one,
/// Left and Up to the one before. Belongs to `owner`.
class ArrowRing : public QObject {
 public:
  ArrowRing(std::vector<QWidget*> ring, QObject* owner);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MoveFocus(QWidget* from, int step);

  std::vector<QWidget*> ring_;
};

/// A tab control with a strip of a fixed height, whose captions share the width of one row.
class TabControl : public QTabWidget {
 public:
  explicit TabControl(QWidget* parent = nullptr);

  /// Height of the strip in device-independent pixels; the pages begin below it.
  static int StripHeight();
};

/// A page of a tab control. It fills the control below the strip.
class TabPage : public QWidget {
 public:
  using QWidget::QWidget;
};

/// An SVG picture stretched over the control. It is drawn anew each time, which takes some
/// milliseconds; kept as drawn it would be a fiftieth of the editor's memory.
class Picture : public QWidget {
 public:
  /// `path`: an SVG file or resource.
  explicit Picture(QString path, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString path_;
};

}  // namespace ui
