#include "app/tabs.h"

#include <iterator>

#include <QTabWidget>

#include "app/frmMain.h"
#include "ui/controls.h"

namespace app {
namespace {

using ui::Control;

struct TabRow {
  const char* viewItem;
  const char* status;
};

// By tab index.
constexpr TabRow kTabs[] = {
    {"mnuVuewMain", "Main Settings."},
    {"mnuViewLogs", "Quake 3 Arena Logs"},
    {"mnuViewGame", "Qualifying Game Settings"},
    {"mnuViewHTML", "HTML Settings"},
    {"mnuViewKillTables", "Kill Table Settings"},
    {"mnuViewTemplates", "Template Lists"},
    {"mnuViewUserVars", "User Defined Variables"},
    {"mnuViewAbout", "Quillon's Vantorel"},
};

QAction& ViewItem(frmMain& window, int tab) {
  return Control<QAction>(window, kTabs[tab].viewItem);
}

void BringToFront(frmMain& window, int tab) {
  Control<QTabWidget>(window, "SSTab1").setCurrentIndex(tab);
  ClearViewChecks(window, ViewItem(window, tab));
}

}  // namespace

void mnViewStatusBar_Click(const Context& context) { context.main.ToggleStatusBar(); }

void SSTab1_Click(const Context& context) {
  frmMain& window = context.main;
  const int tab = Control<QTabWidget>(window, "SSTab1").currentIndex();
  if (tab < 0 || tab >= static_cast<int>(std::size(kTabs))) return;
  window.SetStatus(kTabs[tab].status);
  ClearViewChecks(window, ViewItem(window, tab));
}

void ClearViewChecks(frmMain& window, QAction& item) {
  for (const TabRow& row : kTabs) Control<QAction>(window, row.viewItem).setChecked(false);
  item.setChecked(true);
}

void mnuVuewMain_Click(const Context& context) { BringToFront(context.main, 0); }
void mnuViewLogs_Click(const Context& context) { BringToFront(context.main, 1); }
void mnuViewGame_Click(const Context& context) { BringToFront(context.main, 2); }
void mnuViewHTML_Click(const Context& context) { BringToFront(context.main, 3); }
void mnuViewKillTables_Click(const Context& context) { BringToFront(context.main, 4); }
void mnuViewTemplates_Click(const Context& context) { BringToFront(context.main, 5); }
void mnuViewUserVars_Click(const Context& context) { BringToFront(context.main, 6); }
void mnuViewAbout_Click(const Context& context) { BringToFront(context.main, 7); }

}  // namespace app
