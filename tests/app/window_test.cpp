#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "tests/support/editor_test.h"
#include "ui/controls.h"

namespace {

using support::Choose;
using support::Click;
using support::StatusText;
using ui::Control;

constexpr const char* kViewItems[] = {"mnuVuewMain",     "mnuViewLogs",       "mnuViewGame",
                                      "mnuViewHTML",     "mnuViewKillTables", "mnuViewTemplates",
                                      "mnuViewUserVars", "mnuViewAbout"};

class WindowTest : public support::EditorTest {
 protected:
  void Store(const char* key, const QString& text) {
    Settings().setValue(QString("WindowPos/") + key, text);
  }
  QString Stored(const char* key) {
    return Settings().value(QString("WindowPos/") + key).toString();
  }
};

/// Size of the area below the menu bar.
QSize AreaSize(const app::frmMain& window) {
  QTest::qWait(0);  // the layout follows with the next events
  return window.size() - QSize(0, window.menuBar()->height());
}

bool StatusBarShown(const app::frmMain& window) {
  const bool shown = Control<QStatusBar>(window, "StatBar").isVisible();
  EXPECT_EQ(Control<QAction>(window, "mnViewStatusBar").isChecked(), shown);
  EXPECT_EQ(AreaSize(window), QSize(588, shown ? 390 : 363));
  return shown;
}

/// The tab whose View item is the only one with a check mark, -1 when there is no such.
int CheckedTab(const app::frmMain& window) {
  int found = -1;
  for (int tab = 0; tab < 8; ++tab) {
    if (!Control<QAction>(window, kViewItems[tab]).isChecked()) continue;
    if (found >= 0) return -1;
    found = tab;
  }
  return found;
}

/// The position at which the window's designed size lies in the middle of the primary screen.
QPoint MiddleOfThePrimaryScreen() {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  const QSize room = screen.size() - QSize(8940 / 15, 6540 / 15);
  return screen.topLeft() + QPoint(room.width(), room.height()) / 2;
}

TEST_F(WindowTest, OpensOnTheAboutTabInTheMiddleOfTheScreen) {
  const app::frmMain& window = OpenWindow();
  EXPECT_EQ(window.windowTitle(), "Quillon's Vantorel v1.0");
  EXPECT_EQ(Control<QLabel>(window, "lblSplashVersion").text(), "Version 1.0");
  EXPECT_EQ(Control<QAction>(window, "mnuHelpAbout").text(), "About Vantorel...");
  EXPECT_EQ(StatusText(window), "Ready.");
  EXPECT_EQ(Control<QTabWidget>(window, "SSTab1").currentIndex(), 7);
  EXPECT_EQ(CheckedTab(window), 7);
  EXPECT_TRUE(StatusBarShown(window));
  EXPECT_EQ(window.pos(), MiddleOfThePrimaryScreen());
  for (const QLineEdit* box : window.findChildren<QLineEdit*>()) {
    EXPECT_FALSE(box->text() == "$$$$" || box->text() == "####") << qPrintable(box->objectName());
  }
}

TEST_F(WindowTest, AppliesTheStoredPosition) {
  struct Case {
    const char* stored;
    int pixels;  // -1: the middle
  };
  for (const Case& test : {Case{"2355", 157}, Case{"157.5", 11}, Case{"1e3", 67}, Case{"0", 0},
                           Case{"left", -1}, Case{"nan", -1}}) {
    Store("Top", test.stored);
    Store("Left", test.stored);
    const app::frmMain& window = OpenWindow();
    const bool middle = test.pixels == -1;
    const QPoint expected = middle ? MiddleOfThePrimaryScreen() : QPoint(test.pixels, test.pixels);
    EXPECT_EQ(window.pos(), expected) << test.stored;
  }
}

TEST_F(WindowTest, AppliesTheStoredStatusBar) {
  for (const char* hidden : {"False", "false", "0"}) {
    Store("ShowStatus", hidden);
    EXPECT_FALSE(StatusBarShown(OpenWindow())) << hidden;
  }
  for (const char* shown : {"True", "-1", "2", "perhaps", ""}) {
    Store("ShowStatus", shown);
    EXPECT_TRUE(StatusBarShown(OpenWindow())) << shown;
  }
}

TEST_F(WindowTest, TogglesTheStatusBarAndKeepsItsText) {
  app::frmMain& window = OpenWindow();
  Choose(window, "mnViewStatusBar");
  EXPECT_FALSE(StatusBarShown(window));
  window.SetStatus("  as it is ");
  Choose(window, "mnViewStatusBar");
  EXPECT_TRUE(StatusBarShown(window));
  EXPECT_EQ(StatusText(window), "  as it is ");
}

TEST_F(WindowTest, HoldsItsSize) {
  app::frmMain& window = OpenWindow();
  window.resize(1000, 900);
  EXPECT_TRUE(StatusBarShown(window));
  window.resize(10, 10);
  window.showMinimized();
  window.showNormal();
  EXPECT_TRUE(StatusBarShown(window));
  EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(WindowTest, StoresItsStateOnExitOnly) {
  app::frmMain& closed = OpenWindow();
  closed.move(30, 40);
  closed.close();
  EXPECT_TRUE(Settings().allKeys().isEmpty());

  for (const bool byMenu : {false, true}) {
    app::frmMain& window = OpenWindow();
    window.move(100, byMenu ? 50 : 60);
    Choose(window, "mnViewStatusBar");
    if (byMenu) {
      Choose(window, "mnuFileExit");
    } else {
      Click(window, "cmdClose");
    }
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(Stored("Top"), byMenu ? "750" : "900");
    EXPECT_EQ(Stored("Left"), "1500");
    EXPECT_EQ(Stored("ShowStatus"), byMenu ? "True" : "False");
  }
  EXPECT_EQ(OpenWindow().pos(), QPoint(100, 50));
}

TEST_F(WindowTest, KeepsTabsAndViewMenuInStep) {
  constexpr const char* kStatus[] = {"Main Settings.",           "Quake 3 Arena Logs",
                                     "Qualifying Game Settings", "HTML Settings",
                                     "Kill Table Settings",      "Template Lists",
                                     "User Defined Variables",   "Quillon's Vantorel"};
  app::frmMain& window = OpenWindow();
  auto& tabs = Control<QTabWidget>(window, "SSTab1");
  for (int tab = 0; tab < 8; ++tab) {
    QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(tab).center());
    EXPECT_EQ(tabs.currentIndex(), tab);
    EXPECT_EQ(CheckedTab(window), tab);
    EXPECT_EQ(StatusText(window), kStatus[tab]);
  }
  for (int tab = 0; tab < 8; ++tab) {
    for (int time = 0; time < 2; ++time) {  // the second time it is in front already
      Choose(window, kViewItems[tab]);
      EXPECT_EQ(tabs.currentIndex(), tab);
      EXPECT_EQ(CheckedTab(window), tab);
      EXPECT_EQ(StatusText(window), kStatus[tab]);
    }
  }
  EXPECT_TRUE(StatusBarShown(window));
}

}  // namespace
