#include "ui/style.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include "ui/controls.h"
#include "ui/fonts.h"

namespace ui {
namespace {

/// The frame of a list as four filled edges. Between the whole scale factors a line drawn by a pen
/// may be rounded to pixels that the list's contents cover, but the edges of filled areas are
/// rounded like those of the contents.
void DrawListFrame(const QStyleOption& option, QPainter& painter) {
  const QColor color = option.palette.color(QPalette::Dark);
  const QRect frame = option.rect;
  const int right = frame.width() - 1;
  const int bottom = frame.height() - 1;
  for (const QRect& edge : {QRect(0, 0, frame.width(), 1), QRect(0, bottom, frame.width(), 1),
                            QRect(0, 0, 1, frame.height()), QRect(right, 0, 1, frame.height())}) {
    painter.fillRect(edge.translated(frame.topLeft()), color);
  }
}

/// Fusion with the tab control's strip of a fixed height and access keys always underlined.
class DesignedStyle : public QProxyStyle {
 public:
  DesignedStyle() : QProxyStyle("Fusion") {}

  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override {
    if (dynamic_cast<const TabControl*>(widget) == nullptr) {
      return QProxyStyle::subElementRect(element, option, widget);
    }
    const int strip = TabControl::StripHeight();
    const int width = widget->width();
    switch (element) {
      case SE_TabWidgetTabBar:
        return {0, 0, width, strip};
      case SE_TabWidgetTabPane:
        return {0, strip - 1, width, widget->height() - strip + 1};
      case SE_TabWidgetTabContents:
        return {0, strip, width, widget->height() - strip};
      default:
        return QProxyStyle::subElementRect(element, option, widget);
    }
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element == PE_Frame && qobject_cast<const QAbstractScrollArea*>(widget) != nullptr) {
      DrawListFrame(*option, *painter);
    } else {
      QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    // The strip's own width is shared out among the captions; see TabControl.
    if (metric == PM_TabBarTabHSpace) return 0;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    if (hint == SH_UnderlineShortcut) return 1;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }
};

QPalette DesignedPalette() {
  const QColor window(0xEF, 0xED, 0xE8);
  const QColor ink(0x1E, 0x1C, 0x1A);
  const QColor faint(0x8C, 0x87, 0x80);
  const QColor accent(0x8F, 0x1D, 0x1D);
  QPalette palette(QColor(0xE4, 0xE1, 0xDB), window);
  palette.setColor(QPalette::WindowText, ink);
  palette.setColor(QPalette::Text, ink);
  palette.setColor(QPalette::ButtonText, ink);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xF7, 0xF5, 0xF2));
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, accent);
  palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFB, 0xE6));
  palette.setColor(QPalette::ToolTipText, ink);
  palette.setColor(QPalette::PlaceholderText, faint);
  palette.setColor(QPalette::Mid, QColor(0xBE, 0xB8, 0xAE));
  palette.setColor(QPalette::Dark, QColor(0xA6, 0xA0, 0x96));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xB8, 0xB3, 0xAB));
  return palette;
}

}  // namespace

void UseDesignedLook() {
  QApplication::setStyle(new DesignedStyle);
  QApplication::setPalette(DesignedPalette());
  QApplication::setFont(MakeFont(kFieldFont));
}

}  // namespace ui
