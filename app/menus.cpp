#include "app/menus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "app/engine_actions.h"
#include "app/file_actions.h"
#include "app/frmMain.h"
#include "app/tabs.h"
#include "engine/message_logs.h"
#include "help/frmAbout.h"
#include "help/links.h"
#include "ui/controls.h"

namespace app {
namespace {

enum class MenuKind { kMenu, kItem, kCheckItem, kTabItems, kSeparator };
using enum MenuKind;

/// One entry of the menu tree; it stands after the menu that it lies in.
struct MenuRow {
  const char* menu;  // "" for the menu bar
  MenuKind kind;
  const char* name;
  const char* caption = "";
  Handler handler = {};  // runs when an item is chosen, and before a menu shows
  const char* shortcut = "";
};

void mnViewStatusBar_Click(const Context& context) { context.main.ToggleStatusBar(); }

const MenuRow kRows[] = {
    {"", kMenu, "mnuFile", "&File"},
    {"mnuFile", kItem, "mnuFileOpen", "&Open Config File", {}, "Ctrl+O"},
    {"mnuFile", kItem, "mnuFileSave", "&Save", mnuFileSave_Click, "Ctrl+S"},
    {"mnuFile", kSeparator, "sp7"},
    {"mnuFile", kItem, "mnuFilePrint", "&Print", mnuFilePrint_Click, "Ctrl+P"},
    {"mnuFile", kItem, "mnuFileDefaults", "&Restore Defaults", mnuFileDefaults_Click, "Ctrl+R"},
    {"mnuFile", kSeparator, "sp8"},
    {"mnuFile", kItem, "mnuFileGenerate", "&Create Stats", mnuFileGenerate_Click, "F5"},
    {"mnuFile", kSeparator, "sp6"},
    {"mnuFile", kItem, "mnuFileExit", "E&xit", mnuFileExit_Click, "Ctrl+Q"},

    {"", kMenu, "mnuEdit", "&Edit", editor::mnuEdit_Click},
    {"mnuEdit", kItem, "mnuEditCut", "Cut", editor::mnuEditCut_Click, "Ctrl+X"},
    {"mnuEdit", kItem, "mnuEditCopy", "Copy", editor::mnuEditCopy_Click, "Ctrl+C"},
    {"mnuEdit", kItem, "mnuEditPaste", "Paste", editor::mnuEditPaste_Click, "Ctrl+V"},
    {"mnuEdit", kItem, "mnuEditSelectAll", "Select All", editor::mnuEditSelectAll_Click, "Ctrl+A"},

    {"", kMenu, "mnuView", "&View", engine::mnuView_Click},
    {"mnuView", kCheckItem, "mnViewStatusBar", "Status Bar", mnViewStatusBar_Click},
    {"mnuView", kSeparator, "sp10"},
    {"mnuView", kTabItems, ""},
    {"mnuView", kSeparator, "sp2"},
    {"mnuView", kMenu, "mnuViewLog", "Message &Logs"},
    {"mnuViewLog", kItem, "mnuViewLogCustRank", "&Custom Rank", engine::mnuViewLogCustRank_Click},
    {"mnuViewLog", kItem, "mnuViewLogMain", "&Main", engine::mnuViewLogMain_Click},
    {"mnuViewLog", kItem, "mnuViewLogLogParser", "&Log Parser", engine::mnuViewLogLogParser_Click},
    {"mnuViewLog", kItem, "mnuViewLogTemplateParser", "&Template Parser",
     engine::mnuViewLogTemplateParser_Click},
    {"mnuViewLog", kSeparator, "s2"},
    {"mnuViewLog", kItem, "mnuViewLogsDelete", "&Delete Logs", mnuViewLogsDelete_Click},

    {"", kMenu, "mnuHelp", "&Help"},
    {"mnuHelp", kItem, "mnuHelpQuickStart", "&Quick Start Guide", help::mnuHelpQuickStart_Click},
    {"mnuHelp", kSeparator, "s1"},
    {"mnuHelp", kItem, "mnuHelpUpdate", "Check For &Updates...", help::mnuHelpUpdate_Click},
    {"mnuHelp", kItem, "mnuHelpFeedback", "Submit &Feedback...", help::mnuHelpFeedback_Click},
    {"mnuHelp", kItem, "mnuHelpBugs", "Post A &Bug Report...", help::mnuHelpBugs_Click},
    {"mnuHelp", kSeparator, "sp4"},
    {"mnuHelp", kItem, "mnuHelpQuillon", "&Visit  " VANTREL3_MAKER_HOST "...",
     help::mnuHelpQuillon_Click},
    {"mnuHelp", kSeparator, "sp9"},
    {"mnuHelp", kItem, "mnuHelpMorvaneHome", "Visit Morvane Home...",
     help::mnuHelpMorvaneHome_Click},
    {"mnuHelp", kSeparator, "sp5"},
    {"mnuHelp", kItem, "mnuHelpAbout", "&About...", help::mnuHelpAbout_Click},
};

template <class Object, class Signal>
void Connect(frmMain& window, Object& object, Signal signal, const Handler& handler) {
  if (!handler) return;
  QObject::connect(&object, signal, &window, [&window, handler] { handler(window.ContextFor()); });
}

void AddMenu(frmMain& window, const MenuRow& row) {
  auto* menu = new QMenu(row.caption, &window);
  menu->setObjectName(row.name);
  Connect(window, *menu, &QMenu::aboutToShow, row.handler);
  if (*row.menu == '\0') {
    window.menuBar()->addMenu(menu);
  } else {
    ui::Control<QMenu>(window, row.menu).addMenu(menu);
  }
}

void AddItem(frmMain& window, const MenuRow& row) {
  auto* action = new QAction(row.caption, &window);
  action->setObjectName(row.name);
  action->setSeparator(row.kind == kSeparator);
  action->setCheckable(row.kind == kCheckItem);
  action->setShortcut(QKeySequence(row.shortcut));
  action->setMenuRole(QAction::NoRole);
  if (row.kind == kCheckItem) {
    // Qt has flipped the check already; only the handler decides about it.
    QObject::connect(action, &QAction::triggered, action,
                     [action](bool checked) { action->setChecked(!checked); });
  }
  Connect(window, *action, &QAction::triggered, row.handler);
  ui::Control<QMenu>(window, row.menu).addAction(action);
}

void AddTabItems(frmMain& window, const char* menu) {
  for (const Tab& tab : Tabs()) {
    AddItem(window, {menu, kCheckItem, tab.viewItem, tab.viewCaption, tab.viewHandler});
  }
}

}  // namespace

void BuildMenus(frmMain& window) {
  for (const MenuRow& row : kRows) {
    if (row.kind == kMenu) {
      AddMenu(window, row);
    } else if (row.kind == kTabItems) {
      AddTabItems(window, row.menu);
    } else {
      AddItem(window, row);
    }
  }
  ui::Control<QAction>(window, "mnuFileOpen").setEnabled(false);
  ui::Control<QAction>(window, "mnuViewAbout").setChecked(true);
}

}  // namespace app
