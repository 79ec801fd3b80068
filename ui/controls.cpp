#include "ui/controls.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QSvgRenderer>
#include <QTabBar>

#include "config/rgb.h"
#include "ui/layout.h"

namespace ui {

QColor ToQColor(int color) {
  const auto bits = static_cast<unsigned>(color);
  return QColor::fromRgb(static_cast<int>(bits & 0xFFU), static_cast<int>((bits >> 8U) & 0xFFU),
                         static_cast<int>((bits >> 16U) & 0xFFU));
}

int ToColorValue(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

QColor ReadableOn(const QColor& background) {
  const config::Rgb ink = config::InkOn(config::RgbOf(ToColorValue(background)));
  return QColor(ink.red, ink.green, ink.blue);
}

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
  setFocusPolicy(Qt::ClickFocus);
  setProperty("BackColor", 0);
}

bool ColorButton::event(QEvent* event) {
  if (event->type() == QEvent::DynamicPropertyChange) {
    const config::Rgb color = config::RgbOf(property("BackColor").toInt());
    setAccessibleDescription(QString::fromStdString(config::ColorText(color)));
    update();
  }
  return QPushButton::event(event);
}

void ColorButton::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text.clear();
  QStylePainter painter(this);
  painter.drawControl(QStyle::CE_PushButtonBevel, option);

  const QColor face = ToQColor(property("BackColor").toInt());
  const QColor ink = ReadableOn(face);
  const QRect inside = rect().adjusted(3, 3, -3, -3);
  painter.fillRect(inside, face);
  painter.setPen(isEnabled() ? ink : Qt::gray);
  painter.drawText(inside, Qt::AlignCenter, text());
  if (!hasFocus()) return;
  painter.setPen(QPen(ink, 1, Qt::DotLine));
  painter.drawRect(inside.adjusted(1, 1, -2, -2));
}

void Frame::paintEvent(QPaintEvent* /*event*/) {
  constexpr int kTitleLeft = 9;
  constexpr int kTitleGap = 3;
  constexpr double kCornerRadius = 3;
  const QSize titleSize = fontMetrics().size(Qt::TextSingleLine, title());
  const int lineTop = title().isEmpty() ? 0 : titleSize.height() / 2;
  const QRect titleRect(QPoint(kTitleLeft, 0), titleSize);

  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(titleRect, Qt::AlignCenter, title());
  if (!title().isEmpty()) {
    const QRegion gap = titleRect.adjusted(-kTitleGap, 0, kTitleGap, 0);
    painter.setClipRegion(QRegion(rect()) - gap);
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, lineTop + 0.5, -0.5, -0.5), kCornerRadius,
                          kCornerRadius);
}

ArrowRing::ArrowRing(std::vector<QWidget*> ring, QObject* owner)
    : QObject(owner), ring_(std::move(ring)) {
  for (QWidget* control : ring_) control->installEventFilter(this);
}

bool ArrowRing::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if ((key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  const bool next = key->key() == Qt::Key_Right || key->key() == Qt::Key_Down;
  const bool previous = key->key() == Qt::Key_Left || key->key() == Qt::Key_Up;
  if (!next && !previous) return false;
  MoveFocus(static_cast<QWidget*>(watched), next ? 1 : -1);
  return true;
}

void ArrowRing::MoveFocus(QWidget* from, int step) {
  const auto count = static_cast<std::ptrdiff_t>(ring_.size());
  const auto place = std::find(ring_.begin(), ring_.end(), from) - ring_.begin();
  QWidget* target = ring_[static_cast<std::size_t>((place + step + count) % count)];
  target->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

namespace {

/// A tab bar whose tabs fill the strip: the room that the captions leave is shared out evenly.
class SharedTabBar : public QTabBar {
 public:
  using QTabBar::QTabBar;

 protected:
  QSize tabSizeHint(int index) const override {
    int captions = 0;
    for (int tab = 0; tab < count(); ++tab) captions += CaptionWidth(tab);
    const int room = parentWidget()->width() - captions;
    const int before = room * index / count();
    const int share = room * (index + 1) / count() - before;
    return {CaptionWidth(index) + share, TabControl::StripHeight()};
  }
  QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }

 private:
  int CaptionWidth(int tab) const {
    return fontMetrics().size(Qt::TextShowMnemonic, tabText(tab)).width();
  }
};

constexpr int kTabStripTwips = 350;

}  // namespace

TabControl::TabControl(QWidget* parent) : QTabWidget(parent) {
  auto* bar = new SharedTabBar(this);
  bar->setExpanding(false);
  bar->setUsesScrollButtons(false);
  bar->setElideMode(Qt::ElideNone);
  setTabBar(bar);
}

int TabControl::StripHeight() { return Pixels(kTabStripTwips); }

Picture::Picture(QString path, QWidget* parent) : QWidget(parent), path_(std::move(path)) {}

void Picture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QSvgRenderer(path_).render(&painter, rect());
}

}  // namespace ui
