#include "app/handlers.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QTabWidget>

#include "app/frmMain.h"
#include "app/tabs.h"

namespace app {
namespace {

/// What runs when a control is used. A member of a control array is given by its index.
struct HandlerRow {
  const char* control;  // `cmdNameColor` stands for all of `cmdNameColor(0)`, `cmdNameColor(1)`...
  void (*handler)(frmMain& window, int index);
};

// Buttons and menu items run their handler when they are chosen, check boxes when their value
// changes, menus before they show, the tab control when another tab comes to the front.
const HandlerRow kHandlers[] = {
    // File, and the strip of buttons
    {"cmdClose", [](frmMain& window, int) { window.cmdClose_Click(); }},
    {"mnuFileExit", [](frmMain& window, int) { window.cmdClose_Click(); }},

    // View
    {"mnViewStatusBar", [](frmMain& window, int) { window.ToggleStatusBar(); }},
    {"mnuVuewMain", [](frmMain& window, int) { mnuVuewMain_Click(window); }},
    {"mnuViewLogs", [](frmMain& window, int) { mnuViewLogs_Click(window); }},
    {"mnuViewGame", [](frmMain& window, int) { mnuViewGame_Click(window); }},
    {"mnuViewHTML", [](frmMain& window, int) { mnuViewHTML_Click(window); }},
    {"mnuViewKillTables", [](frmMain& window, int) { mnuViewKillTables_Click(window); }},
    {"mnuViewTemplates", [](frmMain& window, int) { mnuViewTemplates_Click(window); }},
    {"mnuViewUserVars", [](frmMain& window, int) { mnuViewUserVars_Click(window); }},
    {"mnuViewAbout", [](frmMain& window, int) { mnuViewAbout_Click(window); }},
    {"SSTab1", [](frmMain& window, int) { SSTab1_Click(window); }},
};

/// The index of a member of a control array ("cmdNameColor(3)" gives 3), -1 for other controls.
int IndexOf(const QString& objectName) {
  const qsizetype open = objectName.indexOf('(');
  if (open < 0) return -1;
  return objectName.mid(open + 1).chopped(1).toInt();
}

void Connect(frmMain& window, QObject& object, void (*handler)(frmMain&, int)) {
  const auto run = [&window, handler, index = IndexOf(object.objectName())] {
    handler(window, index);
  };
  if (auto* box = qobject_cast<QCheckBox*>(&object)) {
    QObject::connect(box, &QCheckBox::toggled, &window, run);
  } else if (auto* button = qobject_cast<QAbstractButton*>(&object)) {
    QObject::connect(button, &QAbstractButton::clicked, &window, run);
  } else if (auto* menu = qobject_cast<QMenu*>(&object)) {
    QObject::connect(menu, &QMenu::aboutToShow, &window, run);
  } else if (auto* tabs = qobject_cast<QTabWidget*>(&object)) {
    QObject::connect(tabs, &QTabWidget::currentChanged, &window, run);
  } else if (auto* action = qobject_cast<QAction*>(&object)) {
    QObject::connect(action, &QAction::triggered, &window, [run, action](bool checked) {
      // Qt has flipped the check already; only the handler decides about it.
      if (action->isCheckable()) action->setChecked(!checked);
      run();
    });
  }
}

}  // namespace

void ConnectHandlers(frmMain& window) {
  const QList<QObject*> objects = window.findChildren<QObject*>();
  for (const HandlerRow& row : kHandlers) {
    bool found = false;
    for (QObject* object : objects) {
      if (object->objectName().section('(', 0, 0) != QLatin1String(row.control)) continue;
      Connect(window, *object, row.handler);
      found = true;
    }
    if (!found) qFatal("A handler without a control: %s", row.control);
  }
}

}  // namespace app
