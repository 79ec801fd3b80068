#include "ui/style.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

#include "ui/controls.h"
#include "ui/fonts.h"

namespace ui {
namespace {

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
