#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include "editor/load_settings.h"
#include "tests/engine/engine_test.h"
#include "tests/support/dialog_answers.h"
#include "ui/controls.h"

namespace {

using app::Activity;
using ui::Control;

/// A button or a menu item, and all that can be seen of what it does.
struct Case {
  std::string control;
  std::string effect;
  bool saves = false;      // covered by a save that goes on
  bool startsRun = false;  // ignored while anything goes on
};

/// Adds the buttons whose face is a color: each of them asks for one.
std::vector<Case> WithColors(std::vector<Case> cases) {
  std::vector<std::string> buttons = {"cmdTextColor", "cmdLinkColor", "cmdVLinkColor",
                                      "cmdALinkColor", "cmdBGColor"};
  for (int i = 0; i < 3; ++i) buttons.push_back("cmdColumnColor(" + std::to_string(i) + ")");
  for (int i = 0; i < 10; ++i) buttons.push_back("cmdNameColor(" + std::to_string(i) + ")");
  for (const std::string& button : buttons) {
    cases.push_back({button, "chooses color, " + button + "=1193046"});
  }
  return cases;
}

const std::vector<Case> kCases = WithColors({
    {"mnuFileOpen", ""},
    {"cmdSave", "says Configuration Saved.", true},
    {"mnuFileSave", "says Configuration Saved.", true},
    {"cmdDefaults", "asks Restore Defaults, changes many fields, says Defaults Restored."},
    {"mnuFileDefaults", "asks Restore Defaults, changes many fields, says Defaults Restored."},
    {"mnuFilePrint", "starts notepad.exe /p morvane.cfg, says Configuration Saved.", true},
    {"cmdMakeStats", "says Statistics Generated.", true, true},
    {"mnuFileGenerate", "says Statistics Generated.", true, true},
    {"cmdClose", "window=closed"},
    {"mnuFileExit", "window=closed"},
    {"mnuEditCut", "clipboard=b, selection=, txtSrcPath=ac"},
    {"mnuEditCopy", "clipboard=b"},
    {"mnuEditPaste", "selection=, txtSrcPath=aoldc"},
    {"mnuEditSelectAll", "selection=abc"},
    {"mnViewStatusBar", "height=363"},
    {"mnuVuewMain", "says Main Settings."},
    {"mnuViewLogs", "says Quake 3 Arena Logs"},
    {"mnuViewGame", "says Qualifying Game Settings"},
    {"mnuViewHTML", "says HTML Settings"},
    {"mnuViewKillTables", "says Kill Table Settings"},
    {"mnuViewTemplates", "says Template Lists"},
    {"mnuViewUserVars", "says User Defined Variables"},
    {"mnuViewAbout", "says Quillon's Vantorel"},
    {"mnuViewLogCustRank", "starts notepad.exe custrank.log.txt"},
    {"mnuViewLogMain", "starts notepad.exe morvane.log.txt"},
    {"mnuViewLogLogParser", "starts notepad.exe logparser.log.txt"},
    {"mnuViewLogTemplateParser", "starts notepad.exe templateparser.log.txt"},
    {"mnuViewLogsDelete", "asks Message Logs, says Message Logs Deleted."},
    {"mnuHelpQuickStart", "starts notepad.exe quickstart.txt"},
    {"mnuHelpUpdate", "opens http://www.quillon.example/tallydesk/update.asp?ver=1.00"},
    {"mnuHelpFeedback", "opens http://www.quillon.example/tallydesk/feedback.asp?from=vantrel3"},
    {"mnuHelpBugs", "opens http://www.quillon.example/bugs/default.asp?from=vantrel3"},
    {"mnuHelpQuillon", "opens http://www.quillon.example/default.asp?from=vantrel3"},
    {"mnuHelpMorvaneHome", "opens http://www.morvane.example/morvane"},
    {"mnuHelpAbout", "shows frmAbout"},
    {"ckUseCustomRank",
     "checks=1, disabled=cmdBrowse5 lblCustRank1 lblCustRank2 txtCustomRankStart "
     "txtCustomRankTemplate"},
    {"cmdCheckAll", "checks=17"},
    {"cmdClearAll", "checks=1"},
    {"cmdAddLog", "lstLogFiles=2, txtLogFilePath="},
    {"cmdRemovelog", "lstLogFiles=0"},
    {"cmdAddMainTemplate", "lstTemplates=2, txtTemplate="},
    {"cmdRemoveMainTemplate", "lstTemplates=0"},
    {"cmdAddMapTemplate", "lstMapTemplates=2, txtMapTemplate="},
    {"cmdRemoveMapTemplate", "lstMapTemplates=0"},
    {"cmdAddGameTemplate", "lstGameTemplates=2, txtGameTemplate="},
    {"cmdRemoveGameTemplate", "lstGameTemplates=0"},
    {"cmdAddUserVar", "lvwUserVars=2, txtValue=, txtVariable="},
    {"cmdRemoveUserVar", "lvwUserVars=0"},
    {"Command4", "chooses color, lvwHiliteLevels=2, txtMinHiliteLevel="},
    {"cmdRemoveHiLiteLevel", "lvwHiliteLevels=0"},
    {"cmdBrowse2", "shows frmBrowseFolders, txtSrcPath=/"},
    {"cmdBrowse3", "shows frmBrowseFolders, txtDestPath=/"},
    {"cmdBrowse4", "shows frmBrowseFolders, txtDbPath=/"},
    {"cmdBrowse5", "chooses file Template Files (*.htmlt), txtCustomRankTemplate=/chosen"},
    {"cmdLogFileBrowse", "chooses file Log Files (*.log) , txtLogFilePath=/chosen"},
    {"cmdBkgndImageBrowse", "chooses file JPEG Files (*.jpg), txtBkgndImage=/chosen"},
    {"cmdBrsTemplate", "chooses file Template Files (*.htmlt), txtTemplate=/chosen"},
    {"cmdBrowseMaps", "chooses file Template Files (*.htmlt), txtMapTemplate=/chosen"},
    {"cmdBrsGame", "chooses file Template Files (*.htmlt), txtGameTemplate=/chosen"},
    {"cmdBrsGameList", "chooses file Template Files (*.htmlt), txtGameListTemplate=/chosen"},
    {"cmdBrwsPlayers", "chooses file Template Files (*.htmlt), txtPLayerTemplate=/chosen"},
    {"cmdBrowseLastGame", "chooses file Template Files (*.htmlt), txtLastGameTemplate=/chosen"},
    {"cmdBrowseGameListLoop",
     "chooses file Template Files (*.htmlt), txtGameListLoopTemplate=/chosen"},
    {"cmdColorPreview", "shows frmColorPreview"},
    {"cmdKillPreview", "shows frmColorPreview"},
});

/// What stands in the window's fields and on the clipboard, by name.
std::map<QString, QString> Values(const app::frmMain& window) {
  std::map<QString, QString> values;
  for (const QLineEdit* box : window.findChildren<QLineEdit*>()) {
    values[box->objectName()] = box->text();
  }
  for (const QListWidget* list : window.findChildren<QListWidget*>()) {
    values[list->objectName()] = QString::number(list->count());
  }
  for (const QTreeWidget* list : window.findChildren<QTreeWidget*>()) {
    values[list->objectName()] = QString::number(list->topLevelItemCount());
  }
  int checks = 0;
  for (const QCheckBox* box : window.findChildren<QCheckBox*>()) checks += box->isChecked() ? 1 : 0;
  values["checks"] = QString::number(checks);
  for (const QPushButton* button : window.findChildren<QPushButton*>()) {
    const QVariant color = button->property("BackColor");
    if (color.isValid()) values[button->objectName()] = color.toString();
  }
  const auto& box = Control<QLineEdit>(window, "txtSrcPath");
  if (box.isVisible()) values["selection"] = box.selectedText();
  QStringList disabled;
  for (const QWidget* control : window.centralWidget()->findChildren<QWidget*>()) {
    const bool isNamed = !control->objectName().startsWith("qt_");
    if (isNamed && !control->isEnabled()) disabled += control->objectName();
  }
  disabled.sort();
  values["disabled"] = disabled.join(' ');
  values["clipboard"] = QApplication::clipboard()->text();
  values["window"] = window.isVisible() ? "open" : "closed";
  values["height"] = QString::number(window.centralWidget()->minimumHeight());
  return values;
}

QStringList Changes(const std::map<QString, QString>& before,
                    const std::map<QString, QString>& after) {
  QStringList changes;
  for (const auto& [name, value] : after) {
    const auto former = before.find(name);
    if (former != before.end() && former->second != value) changes += name + "=" + value;
  }
  return changes;
}

class HandlersTest : public engine::EngineTest {
 protected:
  void Prepare(app::frmMain& window);
  void BringToFront(app::frmMain& window, const QString& control);
  std::string EffectOf(app::frmMain& window, const QString& control);

 private:
  void Press(app::frmMain& window, const QString& control);
  QStringList AskedOfTheDesktop();
};

/// Brings an open window into a state in which every control has something to do.
void HandlersTest::Prepare(app::frmMain& window) {
  std::filesystem::current_path("/");
  WriteFile("morvane.cfg",
            "[Main]\nsrc_path=abc\nuse_cust_rank=1\nuse_main_log=1\n[Logs]\nnumber_of_logs="
            "1\nlogpath0=a\n"
            "[Kill Tables]\nhilite_levels=1\nhilite_level0=9\nhilite_color0=#000000\n[Templates]\n"
            "main_templates_number=1\nmain_template0=a\nmap_templates_number=1\nmap_template0=a\n"
            "game_templates_number=1\ngame_template0=a\n[User Vars]\nname=value\n");
  for (const char* log : {"custrank", "logparser", "morvane", "templateparser"}) {
    WriteFile(std::string(log) + ".log.txt", "");
  }
  editor::LoadSettings(window, window.Ini().Load());
  if (!Control<QAction>(window, "mnViewStatusBar").isChecked()) window.ToggleStatusBar();
  window.show();
  window.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  for (const char* entry : {"txtLogFilePath", "txtTemplate", "txtMapTemplate", "txtGameTemplate",
                            "txtMinHiliteLevel", "txtVariable", "txtValue"}) {
    Control<QLineEdit>(window, entry).setText("x");
  }
  for (QListWidget* list : window.findChildren<QListWidget*>()) list->setCurrentRow(0);
  for (QTreeWidget* list : window.findChildren<QTreeWidget*>()) {
    list->setCurrentItem(list->topLevelItem(0));
  }
  QApplication::clipboard()->setText("old");
}

/// Shows the tab that a control lies on, and selects a part of a text where it is a menu item.
void HandlersTest::BringToFront(app::frmMain& window, const QString& control) {
  auto& tabs = Control<QTabWidget>(window, "SSTab1");
  const auto* widget = window.findChild<QWidget*>(control);
  for (int tab = 0; tab < tabs.count(); ++tab) {
    if (tabs.widget(tab)->isAncestorOf(widget)) tabs.setCurrentIndex(tab);
  }
  if (widget != nullptr) return;
  tabs.setCurrentIndex(0);
  auto& box = Control<QLineEdit>(window, "txtSrcPath");
  box.setFocus();
  box.setSelection(1, 1);
  tabs.setCurrentIndex(control == "mnuVuewMain" ? 1 : 0);
}

void HandlersTest::Press(app::frmMain& window, const QString& control) {
  if (window.findChild<QWidget*>(control) != nullptr) {
    support::Click(window, control);
  } else {
    support::Choose(window, control);
  }
}

QStringList HandlersTest::AskedOfTheDesktop() {
  QStringList asked;
  for (const auto& message : desktop.messages) asked += "asks " + message.title;
  for (const auto& request : desktop.fileRequests)
    asked += "chooses file " + request.filter.section('|', 0, 0);
  if (!desktop.offeredColors.empty()) asked += "chooses color";
  for (const std::string& text : desktop.detached) {
    const QString command = QString::fromStdString(text);
    asked += "starts " + command.section(' ', 0, -2) + " " + command.section('\\', -1).chopped(1);
  }
  for (const QString& url : desktop.urls) asked += "opens " + url;
  return asked;
}

/// Presses a control and tells what came of it.
std::string HandlersTest::EffectOf(app::frmMain& window, const QString& control) {
  desktop.Forget();
  desktop.answers = {ui::Answer::kYes};
  desktop.colors = {0x123456};
  desktop.files = {"/chosen"};
  QStringList effect;
  support::DialogAnswers dialogs;
  dialogs.Otherwise([&effect](QWidget& dialog) {
    effect += "shows " + dialog.objectName();
    if (auto* const ok = dialog.findChild<QPushButton*>("cmdOK")) ok->click();
    dialog.close();
  });
  BringToFront(window, control);
  window.SetStatus("");
  const std::map<QString, QString> before = Values(window);
  Press(window, control);
  effect += AskedOfTheDesktop();
  const QStringList changes = Changes(before, Values(window));
  constexpr int kMany = 10;
  effect += changes.size() < kMany ? changes : QStringList("changes many fields");
  const QString status = support::StatusText(window);
  if (!status.isEmpty()) effect += "says " + status;
  return effect.join(", ").toStdString();
}

TEST_F(HandlersTest, EveryButtonAndMenuItemStandsInTheTable) {
  const app::frmMain& window = OpenWindow();
  QStringList missing;
  for (const QPushButton* button : window.centralWidget()->findChildren<QPushButton*>()) {
    missing += button->objectName();
  }
  for (const QAction* item : window.findChildren<QAction*>()) {
    if (!item->isSeparator()) missing += item->objectName();
  }
  for (const Case& test : kCases) missing.removeAll(QString::fromStdString(test.control));
  missing.removeAll("");
  EXPECT_TRUE(missing.isEmpty()) << qPrintable(missing.join(' '));
}

TEST_F(HandlersTest, EachDoesItsWork) {
  WriteEngine("exit 0");
  app::frmMain& window = OpenWindow();
  for (const Case& test : kCases) {
    Prepare(window);
    EXPECT_EQ(EffectOf(window, QString::fromStdString(test.control)), test.effect) << test.control;
  }
}

TEST_F(HandlersTest, EachDoesItsWorkWhileTheEngineRuns) {
  WriteEngine(WaitForTest());
  app::frmMain& window = OpenWindow();
  std::size_t pressed = 0;
  During(window, Activity::kRunning, [&] {
    for (const Case& test : kCases) {
      Prepare(window);
      const std::string effect = test.startsRun ? "says Generating Statistics..." : test.effect;
      EXPECT_EQ(EffectOf(window, QString::fromStdString(test.control)), effect) << test.control;
      EXPECT_EQ(window.CurrentActivity(), Activity::kRunning) << test.control;
      EXPECT_TRUE(desktop.started.empty()) << test.control;
      ++pressed;
    }
    LetEngineEnd();
  });
  support::Click(window, "cmdMakeStats");
  EXPECT_EQ(window.CurrentActivity(), Activity::kIdle);
  EXPECT_EQ(pressed, kCases.size());
  EXPECT_EQ(support::StatusText(window), "Statistics Generated.");
}

TEST_F(HandlersTest, EachDoesItsWorkWhileTheSettingsAreSaved) {
  WriteEngine("exit 0");
  app::frmMain& window = OpenWindow();
  for (const Case& test : kCases) {
    Prepare(window);
    std::string effect = "not pressed";
    During(window, Activity::kSaving,
           [&] { effect = EffectOf(window, QString::fromStdString(test.control)); });
    support::Click(window, "cmdSave");
    EXPECT_EQ(effect, test.saves || test.startsRun ? "" : test.effect) << test.control;
    EXPECT_EQ(support::StatusText(window), "Configuration Saved.") << test.control;
    EXPECT_TRUE(desktop.started.empty()) << test.control;
  }
}

}  // namespace
