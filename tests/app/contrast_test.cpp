// Texts as they are drawn: each can be read on what lies behind it, in every palette.
#include <algorithm>
#include <vector>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include "config/rgb.h"
#include "editor/frmBrowseFolders.h"
#include "help/frmAbout.h"
#include "tests/support/editor_test.h"
#include "ui/controls.h"
#include "ui/style.h"

namespace {

using ui::Control;

constexpr int kScale = 2;  // strokes are wide enough then to have their full color somewhere

QImage Drawn(QWidget& window) {
  QImage picture(window.size() * kScale, QImage::Format_RGB32);
  picture.setDevicePixelRatio(kScale);
  window.render(&picture);
  return picture;
}

config::Rgb RgbAt(const QImage& picture, QPoint at) {
  return config::RgbOf(ui::ToColorValue(picture.pixelColor(at)));
}

/// Makes every text of a window invisible, and nothing else.
void HideTexts(QWidget& window) {
  QList<QWidget*> widgets = window.findChildren<QWidget*>();
  widgets << &window;
  for (QWidget* widget : widgets) {
    QPalette palette = widget->palette();
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
      palette.setColor(role, Qt::transparent);
    }
    widget->setPalette(palette);
  }
}

template <class... Kinds>
bool IsOneOf(const QWidget& widget) {
  return ((qobject_cast<const Kinds*>(&widget) != nullptr) || ...);
}

/// Where a widget itself draws text, each place in one color; none for the user's own colors.
std::vector<QRect> TextPlaces(const QWidget& widget) {
  if (dynamic_cast<const ui::ColorButton*>(&widget) != nullptr) return {};
  if (IsOneOf<QGroupBox>(widget)) return {{0, 0, widget.width(), widget.fontMetrics().height()}};
  if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
    std::vector<QRect> places;
    for (QAction* item : menu->actions()) places.push_back(menu->actionGeometry(item));
    return places;
  }
  const auto* view = qobject_cast<const QAbstractItemView*>(widget.parentWidget());
  if (view != nullptr && view->viewport() == &widget && !IsOneOf<QHeaderView>(*view)) {
    std::vector<QRect> places;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
      places.push_back(view->visualRect(view->model()->index(row, 0)) & widget.rect());
    }
    return places;
  }
  constexpr int kArrow = 20;  // a picture
  if (IsOneOf<QComboBox>(widget)) return {widget.rect().adjusted(0, 0, -kArrow, 0)};
  const bool isHeader = view != nullptr && view->viewport() == &widget;
  const bool draws =
      isHeader || IsOneOf<QLabel, QAbstractButton, QLineEdit, QTabBar, QMenuBar>(widget);
  return draws ? std::vector{widget.rect()} : std::vector<QRect>();
}

/// The contrast of the text in a place, between its ink and the least fitting spot behind a letter.
/// 0: there is no text.
double ContrastIn(const QRect& place, const QImage& with, const QImage& without) {
  config::Rgb ink{};
  double inks = 0;
  std::vector<config::Rgb> papers;
  for (int y = place.top(); y <= place.bottom(); ++y) {
    for (int x = place.left(); x <= place.right(); ++x) {
      if (!with.valid(x, y) || with.pixel(x, y) == without.pixel(x, y)) continue;
      const config::Rgb seen = RgbAt(with, {x, y});
      papers.push_back(RgbAt(without, {x, y}));
      const double contrast = config::Contrast(seen, papers.back());
      if (contrast > inks) {
        inks = contrast;
        ink = seen;
      }
    }
  }
  for (const config::Rgb& paper : papers) inks = std::min(inks, config::Contrast(ink, paper));
  return inks;
}

class Contrast : public support::EditorTest {
 protected:
  ~Contrast() override {
    QApplication::setPalette(QPalette());
    ui::UseDesignedLook();
  }

  /// Checks the texts of a window that stand in both pictures; counts them.
  void Check(QWidget& window, const QImage& with, const QImage& without,
             const std::vector<QWidget*>& visible) {
    for (QWidget* widget : visible) {
      for (QRect place : TextPlaces(*widget)) {
        place.translate(widget->mapTo(&window, QPoint()));
        const double contrast =
            ContrastIn({place.topLeft() * kScale, place.size() * kScale}, with, without);
        if (contrast == 0) continue;
        ++checked;
        EXPECT_GE(contrast, config::kReadableContrast)
            << qPrintable(widget->objectName()) << " in " << qPrintable(window.objectName());
      }
    }
  }

  static std::vector<QWidget*> VisibleIn(QWidget& window) {
    std::vector<QWidget*> visible{&window};
    for (QWidget* widget : window.findChildren<QWidget*>()) {
      if (widget->isVisibleTo(&window) && !TextPlaces(*widget).empty()) visible.push_back(widget);
    }
    return visible;
  }

  void CheckWindow(app::frmMain& window) {
    auto& tabs = Control<QTabWidget>(window, "SSTab1");
    for (auto* view : tabs.findChildren<QAbstractItemView*>()) {
      if (view->model()->rowCount() > 0) view->setCurrentIndex(view->model()->index(0, 0));
    }
    std::vector<QImage> with;
    for (int tab = 0; tab < tabs.count(); ++tab) {
      tabs.setCurrentIndex(tab);
      with.push_back(Drawn(window));
    }
    HideTexts(window);
    for (int tab = 0; tab < tabs.count(); ++tab) {
      tabs.setCurrentIndex(tab);
      Check(window, with[static_cast<std::size_t>(tab)], Drawn(window), VisibleIn(window));
    }
  }

  void CheckAlone(QWidget& window) {
    const QImage with = Drawn(window);
    HideTexts(window);
    Check(window, with, Drawn(window), VisibleIn(window));
  }

  int checked = 0;
};

QPalette Scheme(QRgb window, QRgb base, QRgb text, QRgb highlight, QRgb highlighted) {
  QPalette palette{QColor(window), QColor(window)};
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
  }
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, highlighted);
  return palette;
}

TEST_F(Contrast, OfTextsIsEnoughInEveryPalette) {
  const QPalette palettes[] = {
      QPalette(),                                                 // none of the desktop's
      Scheme(0x31363B, 0x232629, 0xEFF0F1, 0x2A6F97, 0xFFFFFF),   // dark
      Scheme(0x000000, 0x000000, 0xFFFFFF, 0xFFFF00, 0x000000),   // high contrast, dark
      Scheme(0xFFFFFF, 0xFFFFFF, 0x000000, 0x000080, 0xFFFFFF)};  // high contrast, light
  for (const QPalette& palette : palettes) {
    SCOPED_TRACE("window " + palette.color(QPalette::Window).name().toStdString());
    QApplication::setPalette(palette);
    ui::UseDesignedLook();
    checked = 0;
    WriteFile("morvane.cfg",
              "[Logs]\nnumber_of_logs=1\nlogpath0=games.log\n[USER VARS]\ntitle=x\n");
    app::frmMain& window = OpenWindow();
    help::frmAbout about(&window, desktop);
    editor::frmBrowseFolders folders(window, desktop, {"/"}, "/");
    auto& rising = Control<QWidget>(about, "fraBox");
    CheckAlone(rising);  // its letters are cut where it comes into sight
    rising.hide();
    CheckAlone(about);
    CheckAlone(folders);
    for (const char* name : {"mnuFile", "mnuHelp"}) {
      auto& menu = Control<QMenu>(window, name);
      menu.adjustSize();
      CheckAlone(menu);
    }
    CheckWindow(window);
    EXPECT_GT(checked, 170);
  }
}

}  // namespace
