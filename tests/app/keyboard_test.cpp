#include <set>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "tests/support/editor_test.h"
#include "ui/controls.h"

namespace {

using ui::ColorButton;
using ui::Control;

class KeyboardTest : public support::EditorTest {
 protected:
  /// The controls that a key leads to, from the focused one once around.
  static std::set<QString> Visited(Qt::Key key) {
    std::set<QString> names;
    while (names.insert(QApplication::focusWidget()->objectName()).second) {
      QTest::keyClick(QApplication::focusWidget(), key);
    }
    return names;
  }
};

bool TakesInput(const QWidget& control) {
  return control.isVisible() && control.isEnabled() && !control.objectName().isEmpty() &&
         !control.objectName().startsWith("qt_") && control.focusPolicy() != Qt::NoFocus &&
         qobject_cast<const QTabWidget*>(&control) == nullptr;
}

TEST_F(KeyboardTest, TabAndArrowKeysReachEveryControl) {
  WriteFile("morvane.cfg", "[Main]\nuse_cust_rank=1\n");
  app::frmMain& window = OpenWindow();
  auto& tabs = Control<QTabWidget>(window, "SSTab1");
  for (int tab = 0; tab < tabs.count(); ++tab) {
    tabs.setCurrentIndex(tab);
    tabs.setFocus();
    const std::set<QString> byTab = Visited(Qt::Key_Tab);
    std::set<QString> byArrows;
    for (const char* preview : {"cmdColorPreview", "cmdKillPreview"}) {
      if (!Control<QWidget>(window, preview).isVisible()) continue;
      for (const Qt::Key arrow : {Qt::Key_Right, Qt::Key_Up}) {
        Control<QWidget>(window, preview).setFocus();
        byArrows.merge(Visited(arrow));
      }
    }
    for (const QWidget* control : window.centralWidget()->findChildren<QWidget*>()) {
      if (!TakesInput(*control)) continue;
      const bool isColor = dynamic_cast<const ColorButton*>(control) != nullptr;
      EXPECT_EQ(byTab.contains(control->objectName()), !isColor)
          << qPrintable(control->objectName());
      if (isColor) {
        EXPECT_TRUE(byArrows.contains(control->objectName())) << qPrintable(control->objectName());
      }
    }
  }
}

TEST_F(KeyboardTest, TabOrderIsReadingOrder) {
  WriteFile("morvane.cfg", "[Main]\nuse_cust_rank=1\n");
  app::frmMain& window = OpenWindow();
  Control<QTabWidget>(window, "SSTab1").setCurrentIndex(0);
  Control<QTabWidget>(window, "SSTab1").tabBar()->setFocus();
  for (const char* next :
       {"txtTimeFormat", "ckLimitKillTables", "txtSrcPath", "cmdBrowse2", "txtPlayersMinTime",
        "txtDestPath", "cmdBrowse3", "txtPlayersMinGames", "txtDbPath", "cmdBrowse4",
        "txtPlayersMinKills", "ckUseCustomRank", "ckUseDatabase", "txtCustomRankStart",
        "txtCustomRankTemplate", "cmdBrowse5", "ckMainFileNorm", "ckMainFileSevr"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
  }
  Control<QWidget>(window, "cmdCheckAll").setFocus();
  for (const char* next : {"cmdMakeStats", "cmdDefaults", "cmdSave", "cmdClose"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), next) << "the strip follows the page";
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), Control<QTabWidget>(window, "SSTab1").tabBar());
}

TEST_F(KeyboardTest, AccessKeysSelectTheTabs) {
  app::frmMain& window = OpenWindow();
  auto& tabs = Control<QTabWidget>(window, "SSTab1");
  constexpr Qt::Key kKeys[] = {Qt::Key_M, Qt::Key_Q, Qt::Key_G, Qt::Key_L,
                               Qt::Key_K, Qt::Key_T, Qt::Key_U, Qt::Key_A};
  for (int tab = 0; tab < 8; ++tab) {
    QTest::keyClick(QApplication::focusWidget(), kKeys[tab], Qt::AltModifier);
    EXPECT_EQ(tabs.currentIndex(), tab);
  }
}

TEST_F(KeyboardTest, AccessKeysAndShortcutsWorkFromAnywhere) {
  app::frmMain& window = OpenWindow();
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* control;
    bool acts;
  } cases[] = {{Qt::Key_C, Qt::AltModifier, "cmdMakeStats", true},
               {Qt::Key_D, Qt::AltModifier, "cmdDefaults", true},
               {Qt::Key_S, Qt::AltModifier, "cmdSave", true},
               {Qt::Key_X, Qt::AltModifier, "cmdClose", true},
               {Qt::Key_F5, Qt::NoModifier, "mnuFileGenerate", true},
               {Qt::Key_S, Qt::ControlModifier, "mnuFileSave", true},
               {Qt::Key_P, Qt::ControlModifier, "mnuFilePrint", true},
               {Qt::Key_R, Qt::ControlModifier, "mnuFileDefaults", true},
               {Qt::Key_Q, Qt::ControlModifier, "mnuFileExit", true},
               {Qt::Key_O, Qt::ControlModifier, "mnuFileOpen", false}};
  Control<QTabWidget>(window, "SSTab1").setCurrentIndex(0);
  int used = 0;
  for (const auto& test : cases) {  // only whether it is used counts here
    if (auto* const button = window.findChild<QPushButton*>(test.control)) {
      button->disconnect();
      QObject::connect(button, &QPushButton::clicked, [&used] { ++used; });
    } else {
      auto& item = Control<QAction>(window, test.control);
      item.disconnect();
      QObject::connect(&item, &QAction::triggered, [&used] { ++used; });
    }
    for (const char* focused : {"txtSrcPath", "ckUseDatabase", "cmdSave"}) {
      Control<QWidget>(window, focused).setFocus();
      used = 0;
      QTest::keyClick(QApplication::focusWidget(), test.key, test.modifiers);
      EXPECT_EQ(QTest::qWaitFor([&] { return used > 0; }, test.acts ? 5000 : 50), test.acts)
          << test.control << " from " << focused;
    }
  }
}

}  // namespace
