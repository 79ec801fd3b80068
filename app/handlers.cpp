#include "app/handlers.h"

#include <functional>
#include <stdexcept>
#include <string>

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QTabWidget>

#include "app/engine_actions.h"
#include "app/file_actions.h"
#include "app/frmMain.h"
#include "app/tabs.h"
#include "editor/colors.h"
#include "editor/list_editors.h"
#include "editor/pickers.h"
#include "editor/switches.h"
#include "engine/message_logs.h"
#include "help/frmAbout.h"
#include "help/links.h"

namespace app {
namespace {

/// What runs when a control is used. A member of a control array is told by its index.
struct HandlerRow {
  const char* control;  // `cmdNameColor` stands for all of `cmdNameColor(0)`, `cmdNameColor(1)`...
  std::function<void(const Context&)> handler;
};

// Buttons and menu items run their handler when they are chosen, check boxes when their value
// changes, menus before they show, the tab control when another tab comes to the front.
const HandlerRow kHandlers[] = {
    // File, and the strip of buttons
    {"cmdSave", cmdSave_Click},
    {"mnuFileSave", mnuFileSave_Click},
    {"cmdDefaults", cmdDefaults_Click},
    {"mnuFileDefaults", mnuFileDefaults_Click},
    {"mnuFilePrint", mnuFilePrint_Click},
    {"cmdMakeStats", cmdMakeStats_Click},
    {"mnuFileGenerate", mnuFileGenerate_Click},
    {"cmdClose", cmdClose_Click},
    {"mnuFileExit", mnuFileExit_Click},

    // Edit
    {"mnuEdit", editor::mnuEdit_Click},
    {"mnuEditCut", editor::mnuEditCut_Click},
    {"mnuEditCopy", editor::mnuEditCopy_Click},
    {"mnuEditPaste", editor::mnuEditPaste_Click},
    {"mnuEditSelectAll", editor::mnuEditSelectAll_Click},

    // View
    {"mnuView", engine::mnuView_Click},
    {"mnViewStatusBar", mnViewStatusBar_Click},
    {"mnuVuewMain", mnuVuewMain_Click},
    {"mnuViewLogs", mnuViewLogs_Click},
    {"mnuViewGame", mnuViewGame_Click},
    {"mnuViewHTML", mnuViewHTML_Click},
    {"mnuViewKillTables", mnuViewKillTables_Click},
    {"mnuViewTemplates", mnuViewTemplates_Click},
    {"mnuViewUserVars", mnuViewUserVars_Click},
    {"mnuViewAbout", mnuViewAbout_Click},
    {"SSTab1", SSTab1_Click},
    {"mnuViewLogCustRank", engine::mnuViewLogCustRank_Click},
    {"mnuViewLogMain", engine::mnuViewLogMain_Click},
    {"mnuViewLogLogParser", engine::mnuViewLogLogParser_Click},
    {"mnuViewLogTemplateParser", engine::mnuViewLogTemplateParser_Click},
    {"mnuViewLogsDelete", mnuViewLogsDelete_Click},

    // Help
    {"mnuHelpQuickStart", help::mnuHelpQuickStart_Click},
    {"mnuHelpUpdate", help::mnuHelpUpdate_Click},
    {"mnuHelpFeedback", help::mnuHelpFeedback_Click},
    {"mnuHelpBugs", help::mnuHelpBugs_Click},
    {"mnuHelpQuillon", help::mnuHelpQuillon_Click},
    {"mnuHelpMorvaneHome", help::mnuHelpMorvaneHome_Click},
    {"mnuHelpAbout", help::mnuHelpAbout_Click},

    // Switches
    {"ckUseCustomRank", editor::ckUseCustomRank_Click},
    {"cmdCheckAll", editor::cmdCheckAll_Click},
    {"cmdClearAll", editor::cmdClearAll_Click},

    // List editors
    {"cmdAddLog", editor::cmdAddLog_Click},
    {"cmdRemovelog", editor::cmdRemovelog_Click},
    {"cmdAddMainTemplate", editor::cmdAddMainTemplate_Click},
    {"cmdRemoveMainTemplate", editor::cmdRemoveMainTemplate_Click},
    {"cmdAddMapTemplate", editor::cmdAddMapTemplate_Click},
    {"cmdRemoveMapTemplate", editor::cmdRemoveMapTemplate_Click},
    {"cmdAddGameTemplate", editor::cmdAddGameTemplate_Click},
    {"cmdRemoveGameTemplate", editor::cmdRemoveGameTemplate_Click},
    {"cmdAddUserVar", editor::cmdAddUserVar_Click},
    {"cmdRemoveUserVar", editor::cmdRemoveUserVar_Click},
    {"Command4", editor::Command4_Click},
    {"cmdRemoveHiLiteLevel", editor::cmdRemoveHiLiteLevel_Click},

    // Pickers
    {"cmdBrowse2", editor::cmdBrowse2_Click},
    {"cmdBrowse3", editor::cmdBrowse3_Click},
    {"cmdBrowse4", editor::cmdBrowse4_Click},
    {"cmdBrowse5", editor::cmdBrowse5_Click},
    {"cmdLogFileBrowse", editor::cmdLogFileBrowse_Click},
    {"cmdBkgndImageBrowse", editor::cmdBkgndImageBrowse_Click},
    {"cmdBrsTemplate", editor::cmdBrsTemplate_Click},
    {"cmdBrowseMaps", editor::cmdBrowseMaps_Click},
    {"cmdBrsGame", editor::cmdBrsGame_Click},
    {"cmdBrsGameList", editor::cmdBrsGameList_Click},
    {"cmdBrwsPlayers", editor::cmdBrwsPlayers_Click},
    {"cmdBrowseLastGame", editor::cmdBrowseLastGame_Click},
    {"cmdBrowseGameListLoop", editor::cmdBrowseGameListLoop_Click},

    // Colors
    {"cmdTextColor", editor::cmdTextColor_Click},
    {"cmdLinkColor", editor::cmdLinkColor_Click},
    {"cmdVLinkColor", editor::cmdVLinkColor_Click},
    {"cmdALinkColor", editor::cmdALinkColor_Click},
    {"cmdBGColor", editor::cmdBGColor_Click},
    {"cmdColumnColor", editor::cmdColumnColor_Click},
    {"cmdNameColor", editor::cmdNameColor_Click},
    {"cmdColorPreview", editor::cmdColorPreview_Click},
    {"cmdKillPreview", editor::cmdKillPreview_Click},
};

/// The index of a member of a control array ("cmdNameColor(3)" gives 3), -1 for other controls.
int IndexOf(const QString& objectName) {
  const qsizetype open = objectName.indexOf('(');
  if (open < 0) return -1;
  return objectName.mid(open + 1).chopped(1).toInt();
}

void Connect(frmMain& window, QObject& object, const HandlerRow& row) {
  const auto run = [&window, &row, index = IndexOf(object.objectName())] {
    row.handler(window.ContextFor(index));
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
      Connect(window, *object, row);
      found = true;
    }
    if (!found) throw std::logic_error(std::string("A handler without a control: ") + row.control);
  }
}

}  // namespace app
