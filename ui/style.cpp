#include "ui/style.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include "config/rgb.h"
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

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// The outline of a control in a dark palette. Fusion makes outlines darker than the window, so
/// there they would be lost, and on black the controls with them.
void DrawOutline(const QStyleOption& option, QPainter& painter) {
  constexpr double kCornerRadius = 2;
  const bool focused = option.state.testFlag(QStyle::State_HasFocus);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(option.palette.color(focused ? QPalette::Highlight : QPalette::Dark));
  painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), kCornerRadius,
                          kCornerRadius);
  painter.restore();
}

/// Fusion with the tab control's strip of a fixed height, access keys always underlined, and
/// outlines that are seen in dark palettes.
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
      if (IsOutlined(element) && IsDark(QApplication::palette())) DrawOutline(*option, *painter);
    }
  }

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    QProxyStyle::drawControl(element, option, painter, widget);
    const bool selected = option->state.testFlag(State_Selected);
    if (element != CE_TabBarTabShape || !selected) return;
    if (!IsDark(QApplication::palette())) return;
    constexpr int kMark = 2;
    const QRect& tab = option->rect;
    painter->fillRect(tab.left() + kMark, tab.top(), tab.width() - 2 * kMark, kMark,
                      option->palette.color(QPalette::Highlight));
  }

  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                     const QWidget* widget) const override {
    // What a menu bar asks for in case it is too long, which this window's never is. It would have
    // the start read all plugins of image formats.
    if (icon == SP_ToolBarHorizontalExtensionButton) return {};
    return QProxyStyle::standardIcon(icon, option, widget);
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

 private:
  static bool IsOutlined(PrimitiveElement element) {
    return element == PE_FrameLineEdit || element == PE_PanelButtonCommand ||
           element == PE_IndicatorCheckBox || element == PE_PanelMenu;
  }
};

/// A color between two: `share` of `ink`, the rest `paper`.
QColor Mixed(const QColor& paper, const QColor& ink, double share) {
  const auto rgb = [](const QColor& color) { return config::RgbOf(ToColorValue(color)); };
  const config::Rgb mixed = config::Mix(rgb(paper), rgb(ink), share);
  return {mixed.red, mixed.green, mixed.blue};
}

/// Sets the color of what is disabled: `share` of the usual one, pale and still to be read.
void FadeDisabled(QPalette& palette, double share) {
  const QColor faint =
      Mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), share);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::PlaceholderText, faint);
}

QPalette DesignedPalette() {
  const QColor window(0xEF, 0xED, 0xE8);
  const QColor ink(0x1E, 0x1C, 0x1A);
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
  palette.setColor(QPalette::Mid, QColor(0xBE, 0xB8, 0xAE));
  palette.setColor(QPalette::Dark, QColor(0xA6, 0xA0, 0x96));
  FadeDisabled(palette, 0.65);
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xB8, 0xB3, 0xAB));
  return palette;
}

/// Whether the desktop has colors of its own, for instance dark ones or those of high contrast.
bool DesktopHasColors() {
  const QPalette palette = QApplication::palette();
  return IsDark(palette) || palette != QApplication::style()->standardPalette();
}

/// The desktop's palette with what desktops leave to the toolkit, which is at a loss with dark
/// ones: lines and disabled texts. Whatever is not set here follows the desktop.
QPalette DesktopPalette() {
  QPalette palette = QApplication::palette();
  const QColor ink = palette.color(QPalette::WindowText);
  const QColor paper = palette.color(QPalette::Window);
  palette.setColor(QPalette::Mid, Mixed(paper, ink, 0.3));
  palette.setColor(QPalette::Dark, Mixed(paper, ink, 0.5));
  FadeDisabled(palette, 0.8);
  return palette;
}

}  // namespace

void UseDesignedLook() {
  QApplication::setStyle(new DesignedStyle);
  QApplication::setPalette(DesktopHasColors() ? DesktopPalette() : DesignedPalette());
  QApplication::setFont(MakeFont(kFieldFont));
}

}  // namespace ui
