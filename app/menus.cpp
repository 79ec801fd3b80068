#include "app/menus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "ui/controls.h"

namespace app {
namespace {

enum class MenuKind { kMenu, kItem, kCheckItem, kSeparator };
using enum MenuKind;

/// One entry of the menu tree; it stands after the menu that it lies in.
struct MenuRow {
  const char* menu;  // "" for the menu bar
  MenuKind kind;
  const char* name;
  const char* caption = "";
  const char* shortcut = "";
};

constexpr MenuRow kRows[] = {
    {"", kMenu, "mnuFile", "&File"},
    {"mnuFile", kItem, "mnuFileOpen", "&Open Config File", "Ctrl+O"},
    {"mnuFile", kItem, "mnuFileSave", "&Save", "Ctrl+S"},
    {"mnuFile", kSeparator, "sp7"},
    {"mnuFile", kItem, "mnuFilePrint", "&Print", "Ctrl+P"},
    {"mnuFile", kItem, "mnuFileDefaults", "&Restore Defaults", "Ctrl+R"},
    {"mnuFile", kSeparator, "sp8"},
    {"mnuFile", kItem, "mnuFileGenerate", "&Create Stats", "F5"},
    {"mnuFile", kSeparator, "sp6"},
    {"mnuFile", kItem, "mnuFileExit", "E&xit", "Ctrl+Q"},

    {"", kMenu, "mnuEdit", "&Edit"},
    {"mnuEdit", kItem, "mnuEditCut", "Cut", "Ctrl+X"},
    {"mnuEdit", kItem, "mnuEditCopy", "Copy", "Ctrl+C"},
    {"mnuEdit", kItem, "mnuEditPaste", "Paste", "Ctrl+V"},
    {"mnuEdit", kItem, "mnuEditSelectAll", "Select All", "Ctrl+A"},

    {"", kMenu, "mnuView", "&View"},
    {"mnuView", kCheckItem, "mnViewStatusBar", "Status Bar"},
    {"mnuView", kSeparator, "sp10"},
    {"mnuView", kCheckItem, "mnuVuewMain", "&Main"},
    {"mnuView", kCheckItem, "mnuViewLogs", "Q3A &Logs"},
    {"mnuView", kCheckItem, "mnuViewGame", "&Game"},
    {"mnuView", kCheckItem, "mnuViewHTML", "&HTML"},
    {"mnuView", kCheckItem, "mnuViewKillTables", "&Kill Tables"},
    {"mnuView", kCheckItem, "mnuViewTemplates", "&Templates"},
    {"mnuView", kCheckItem, "mnuViewUserVars", "&User Variables"},
    {"mnuView", kCheckItem, "mnuViewAbout", "&About"},
    {"mnuView", kSeparator, "sp2"},
    {"mnuView", kMenu, "mnuViewLog", "Message &Logs"},
    {"mnuViewLog", kItem, "mnuViewLogCustRank", "&Custom Rank"},
    {"mnuViewLog", kItem, "mnuViewLogMain", "&Main"},
    {"mnuViewLog", kItem, "mnuViewLogLogParser", "&Log Parser"},
    {"mnuViewLog", kItem, "mnuViewLogTemplateParser", "&Template Parser"},
    {"mnuViewLog", kSeparator, "s2"},
    {"mnuViewLog", kItem, "mnuViewLogsDelete", "&Delete Logs"},

    {"", kMenu, "mnuHelp", "&Help"},
    {"mnuHelp", kItem, "mnuHelpQuickStart", "&Quick Start Guide"},
    {"mnuHelp", kSeparator, "s1"},
    {"mnuHelp", kItem, "mnuHelpUpdate", "Check For &Updates..."},
    {"mnuHelp", kItem, "mnuHelpFeedback", "Submit &Feedback..."},
    {"mnuHelp", kItem, "mnuHelpBugs", "Post A &Bug Report..."},
    {"mnuHelp", kSeparator, "sp4"},
    {"mnuHelp", kItem, "mnuHelpQuillon", "&Visit  " VANTREL3_MAKER_HOST "..."},
    {"mnuHelp", kSeparator, "sp9"},
    {"mnuHelp", kItem, "mnuHelpMorvaneHome", "Visit Morvane Home..."},
    {"mnuHelp", kSeparator, "sp5"},
    {"mnuHelp", kItem, "mnuHelpAbout", "&About..."},
};

void AddMenu(QMainWindow& window, const MenuRow& row) {
  auto* menu = new QMenu(row.caption, &window);
  menu->setObjectName(row.name);
  if (*row.menu == '\0') {
    window.menuBar()->addMenu(menu);
  } else {
    ui::Control<QMenu>(window, row.menu).addMenu(menu);
  }
}

void AddItem(QMainWindow& window, const MenuRow& row) {
  auto* action = new QAction(row.caption, &window);
  action->setObjectName(row.name);
  action->setSeparator(row.kind == kSeparator);
  action->setCheckable(row.kind == kCheckItem);
  action->setShortcut(QKeySequence(row.shortcut));
  action->setMenuRole(QAction::NoRole);
  ui::Control<QMenu>(window, row.menu).addAction(action);
}

}  // namespace

void BuildMenus(QMainWindow& window) {
  for (const MenuRow& row : kRows) {
    if (row.kind == kMenu) {
      AddMenu(window, row);
    } else {
      AddItem(window, row);
    }
  }
  ui::Control<QAction>(window, "mnuFileOpen").setEnabled(false);
  ui::Control<QAction>(window, "mnuViewAbout").setChecked(true);
}

}  // namespace app
