#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeWidget>

#include "tests/support/editor_test.h"
#include "ui/controls.h"

namespace {

using support::EditorTest;
using ui::Control;

class Captions : public EditorTest {};

/// The part of a control that its containers leave visible.
QSize VisibleSize(const QWidget& control) {
  QRect visible(QPoint(), control.size());
  for (const QWidget* inner = &control; !inner->isWindow(); inner = inner->parentWidget()) {
    visible = visible.translated(inner->pos()) & inner->parentWidget()->rect();
  }
  return visible.size();
}

/// The room that a control's caption needs.
QSize Needed(const QWidget& control) {
  if (const auto* label = qobject_cast<const QLabel*>(&control)) {
    if (label->wordWrap()) return {0, label->heightForWidth(label->width())};
    return label->sizeHint();
  }
  if (qobject_cast<const QCheckBox*>(&control) != nullptr) {
    return {control.sizeHint().width(), control.fontMetrics().height()};
  }
  if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
    constexpr QSize kBorder(8, 4);
    return button->fontMetrics().size(Qt::TextShowMnemonic, button->text()) + kBorder;
  }
  if (const auto* frame = qobject_cast<const QGroupBox*>(&control)) {
    return frame->fontMetrics().size(Qt::TextSingleLine, frame->title()) + QSize(24, 0);
  }
  if (qobject_cast<const QLineEdit*>(&control) != nullptr) {
    constexpr int kBorder = 4;
    return {0, control.fontMetrics().height() + kBorder};
  }
  return {};
}

TEST_F(Captions, FitTheirControls) {
  const app::frmMain& window = OpenWindow();
  int checked = 0;
  auto& tabs = Control<QTabWidget>(window, "SSTab1");
  for (int tab = 0; tab < tabs.count(); ++tab) {
    tabs.setCurrentIndex(tab);
    for (const QWidget* control : window.centralWidget()->findChildren<QWidget*>()) {
      if (!control->isVisible() || control->objectName().startsWith("qt_")) continue;
      const QSize needed = Needed(*control);
      const QSize visible = VisibleSize(*control);
      checked += needed.isEmpty() ? 0 : 1;
      EXPECT_LE(needed.width(), visible.width()) << qPrintable(control->objectName());
      EXPECT_LE(needed.height(), visible.height()) << qPrintable(control->objectName());
    }
  }
  EXPECT_GT(checked, 150);
}

TEST_F(Captions, OfTheTabsFitOneRow) {
  const app::frmMain& window = OpenWindow();
  const QTabBar& bar = *Control<QTabWidget>(window, "SSTab1").tabBar();
  int right = 0;
  for (int tab = 0; tab < bar.count(); ++tab) {
    const int caption = bar.fontMetrics().size(Qt::TextShowMnemonic, bar.tabText(tab)).width();
    EXPECT_EQ(bar.tabRect(tab).left(), right) << tab;
    EXPECT_EQ(bar.tabRect(tab).height(), 23) << tab;
    EXPECT_GE(bar.tabRect(tab).width(), caption + 8) << tab;
    right = bar.tabRect(tab).right() + 1;
  }
  EXPECT_EQ(right, 470);
}

TEST_F(Captions, OfRowsBeginBelowTheirHeaders) {
  WriteFile("morvane.cfg", "[USER VARS]\ntitle=Friday\n[KILL TABLES]\nhilite_levels=1\n");
  const app::frmMain& window = OpenWindow();
  for (const char* name : {"lvwUserVars", "lvwHiliteLevels"}) {
    const auto& view = Control<QTreeWidget>(window, name);
    ASSERT_EQ(view.topLevelItemCount(), 1) << name;
    EXPECT_EQ(view.visualRect(view.model()->index(0, 0)).left(),
              view.header()->sectionViewportPosition(0))
        << name;
  }
}

}  // namespace
