#include "app/tabs.h"

#include <QAction>
#include <QTabWidget>

#include "app/frmMain.h"
#include "ui/controls.h"

namespace app {

// The controls on a tab stand in a file of their own, layout_*.cpp.
LayoutRows MainLayout();
LayoutRows LogsLayout();
LayoutRows GameLayout();
LayoutRows HtmlLayout();
LayoutRows KillTablesLayout();
LayoutRows TemplatesLayout();
LayoutRows UserVarsLayout();
LayoutRows AboutLayout();

namespace {

using ui::Control;

QTabWidget& TabControl(frmMain& window) { return Control<QTabWidget>(window, "SSTab1"); }

/// Moves the check mark among the View items of the tabs.
void ClearViewChecks(frmMain& window, const Tab& checked) {
  for (const Tab& tab : Tabs()) Control<QAction>(window, tab.viewItem).setChecked(false);
  Control<QAction>(window, checked.viewItem).setChecked(true);
}

void BringToFront(frmMain& window, int tab) {
  TabControl(window).setCurrentIndex(tab);
  ClearViewChecks(window, Tabs()[static_cast<std::size_t>(tab)]);
}

void mnuVuewMain_Click(const Context& context) { BringToFront(context.main, 0); }
void mnuViewLogs_Click(const Context& context) { BringToFront(context.main, 1); }
void mnuViewGame_Click(const Context& context) { BringToFront(context.main, 2); }
void mnuViewHTML_Click(const Context& context) { BringToFront(context.main, 3); }
void mnuViewKillTables_Click(const Context& context) { BringToFront(context.main, 4); }
void mnuViewTemplates_Click(const Context& context) { BringToFront(context.main, 5); }
void mnuViewUserVars_Click(const Context& context) { BringToFront(context.main, 6); }
void mnuViewAbout_Click(const Context& context) { BringToFront(context.main, 7); }

}  // namespace

std::span<const Tab> Tabs() {
  static const Tab kTabs[] = {
      {"&Main", MainLayout(), "Main Settings.", "mnuVuewMain", "&Main", mnuVuewMain_Click},
      {"&Q3A Logs", LogsLayout(), "Quake 3 Arena Logs", "mnuViewLogs", "Q3A &Logs",
       mnuViewLogs_Click},
      {"&Game", GameLayout(), "Qualifying Game Settings", "mnuViewGame", "&Game",
       mnuViewGame_Click},
      {"HTM&L", HtmlLayout(), "HTML Settings", "mnuViewHTML", "&HTML", mnuViewHTML_Click},
      {"&Kill Tables", KillTablesLayout(), "Kill Table Settings", "mnuViewKillTables",
       "&Kill Tables", mnuViewKillTables_Click},
      {"&Templates", TemplatesLayout(), "Template Lists", "mnuViewTemplates", "&Templates",
       mnuViewTemplates_Click},
      {"&User Vars", UserVarsLayout(), "User Defined Variables", "mnuViewUserVars",
       "&User Variables", mnuViewUserVars_Click},
      {"&About", AboutLayout(), "Quillon's Vantorel", "mnuViewAbout", "&About", mnuViewAbout_Click},
  };
  return kTabs;
}

void BuildTabs(QWidget& area) {
  int index = 0;
  for (const Tab& tab : Tabs()) {
    const std::string page = "SSTab1(" + std::to_string(index++) + ")";
    const ui::ControlRow row(ui::ControlKind::kTabPage, page.c_str(), "SSTab1", {0, 0, 7050, 5400},
                             tab.caption);
    ui::BuildControls(area, {&row, 1});
    ui::BuildControls(area, tab.rows);
  }
}

void SSTab1_Click(const Context& context) {
  const int index = TabControl(context.main).currentIndex();
  if (index < 0) return;
  const Tab& tab = Tabs()[static_cast<std::size_t>(index)];
  context.main.SetStatus(tab.status);
  ClearViewChecks(context.main, tab);
}

}  // namespace app
