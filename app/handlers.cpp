#include "app/handlers.h"

#include <functional>
#include <string>
#include <type_traits>

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

/// What runs when a control is used. A member of a control array is given by its index.
struct HandlerRow {
  const char* control;  // `cmdNameColor` stands for all of `cmdNameColor(0)`, `cmdNameColor(1)`...
  void (*handler)(frmMain& window, int index);
};

/// A handler as the table has it, from one that takes the window and, where it needs them, the
/// window's dialogs and the index, or from one that takes the desktop, the window as owner of what
/// it shows, and the program directory.
template <auto handler>
void Run(frmMain& window, [[maybe_unused]] int index) {
  using Handler = decltype(handler);
  if constexpr (std::is_invocable_v<Handler, QWidget&, editor::Dialogs&, int>) {
    handler(window, window.Dialogs(), index);
  } else if constexpr (std::is_invocable_v<Handler, QWidget&, editor::Dialogs&>) {
    handler(window, window.Dialogs());
  } else if constexpr (std::is_invocable_v<Handler, QWidget&, const std::string&>) {
    handler(window, window.Ini().ProgramDirectory());
  } else if constexpr (std::is_invocable_v<Handler, ui::Desktop&>) {
    handler(window.Desktop());
  } else if constexpr (std::is_invocable_v<Handler, ui::Desktop&, QWidget*>) {
    handler(window.Desktop(), &window);
  } else if constexpr (std::is_invocable_v<Handler, ui::Desktop&, QWidget*, const std::string&>) {
    handler(window.Desktop(), &window, window.Ini().ProgramDirectory());
  } else {
    std::invoke(handler, window);
  }
}

/// The same for a handler of the Edit menu.
template <void (editor::EditMenu::*handler)()>
void RunEdit(frmMain& window, int /*index*/) {
  (window.EditMenu().*handler)();
}

// Buttons and menu items run their handler when they are chosen, check boxes when their value
// changes, menus before they show, the tab control when another tab comes to the front.
const HandlerRow kHandlers[] = {
    // File, and the strip of buttons
    {"cmdSave", Run<cmdSave_Click>},
    {"mnuFileSave", Run<mnuFileSave_Click>},
    {"cmdDefaults", Run<cmdDefaults_Click>},
    {"mnuFileDefaults", Run<mnuFileDefaults_Click>},
    {"mnuFilePrint", Run<mnuFilePrint_Click>},
    {"cmdMakeStats", Run<cmdMakeStats_Click>},
    {"mnuFileGenerate", Run<mnuFileGenerate_Click>},
    {"cmdClose", Run<&frmMain::cmdClose_Click>},
    {"mnuFileExit", Run<&frmMain::cmdClose_Click>},

    // Edit
    {"mnuEdit", RunEdit<&editor::EditMenu::mnuEdit_Click>},
    {"mnuEditCut", RunEdit<&editor::EditMenu::mnuEditCut_Click>},
    {"mnuEditCopy", RunEdit<&editor::EditMenu::mnuEditCopy_Click>},
    {"mnuEditPaste", RunEdit<&editor::EditMenu::mnuEditPaste_Click>},
    {"mnuEditSelectAll", RunEdit<&editor::EditMenu::mnuEditSelectAll_Click>},

    // View
    {"mnuView", Run<engine::mnuView_Click>},
    {"mnViewStatusBar", Run<&frmMain::ToggleStatusBar>},
    {"mnuVuewMain", Run<mnuVuewMain_Click>},
    {"mnuViewLogs", Run<mnuViewLogs_Click>},
    {"mnuViewGame", Run<mnuViewGame_Click>},
    {"mnuViewHTML", Run<mnuViewHTML_Click>},
    {"mnuViewKillTables", Run<mnuViewKillTables_Click>},
    {"mnuViewTemplates", Run<mnuViewTemplates_Click>},
    {"mnuViewUserVars", Run<mnuViewUserVars_Click>},
    {"mnuViewAbout", Run<mnuViewAbout_Click>},
    {"SSTab1", Run<SSTab1_Click>},
    {"mnuViewLogCustRank", Run<engine::mnuViewLogCustRank_Click>},
    {"mnuViewLogMain", Run<engine::mnuViewLogMain_Click>},
    {"mnuViewLogLogParser", Run<engine::mnuViewLogLogParser_Click>},
    {"mnuViewLogTemplateParser", Run<engine::mnuViewLogTemplateParser_Click>},
    {"mnuViewLogsDelete", Run<mnuViewLogsDelete_Click>},

    // Help
    {"mnuHelpQuickStart", Run<help::mnuHelpQuickStart_Click>},
    {"mnuHelpUpdate", Run<help::mnuHelpUpdate_Click>},
    {"mnuHelpFeedback", Run<help::mnuHelpFeedback_Click>},
    {"mnuHelpBugs", Run<help::mnuHelpBugs_Click>},
    {"mnuHelpQuillon", Run<help::mnuHelpQuillon_Click>},
    {"mnuHelpMorvaneHome", Run<help::mnuHelpMorvaneHome_Click>},
    {"mnuHelpAbout", Run<help::mnuHelpAbout_Click>},

    // Switches
    {"ckUseCustomRank", Run<editor::UpdateCustomRank>},
    {"cmdCheckAll", Run<editor::cmdCheckAll_Click>},
    {"cmdClearAll", Run<editor::cmdClearAll_Click>},

    // List editors
    {"cmdAddLog", Run<editor::cmdAddLog_Click>},
    {"cmdRemovelog", Run<editor::cmdRemovelog_Click>},
    {"cmdAddMainTemplate", Run<editor::cmdAddMainTemplate_Click>},
    {"cmdRemoveMainTemplate", Run<editor::cmdRemoveMainTemplate_Click>},
    {"cmdAddMapTemplate", Run<editor::cmdAddMapTemplate_Click>},
    {"cmdRemoveMapTemplate", Run<editor::cmdRemoveMapTemplate_Click>},
    {"cmdAddGameTemplate", Run<editor::cmdAddGameTemplate_Click>},
    {"cmdRemoveGameTemplate", Run<editor::cmdRemoveGameTemplate_Click>},
    {"cmdAddUserVar", Run<editor::cmdAddUserVar_Click>},
    {"cmdRemoveUserVar", Run<editor::cmdRemoveUserVar_Click>},
    {"Command4", Run<editor::Command4_Click>},
    {"cmdRemoveHiLiteLevel", Run<editor::cmdRemoveHiLiteLevel_Click>},

    // Pickers
    {"cmdBrowse2", Run<editor::cmdBrowse2_Click>},
    {"cmdBrowse3", Run<editor::cmdBrowse3_Click>},
    {"cmdBrowse4", Run<editor::cmdBrowse4_Click>},
    {"cmdBrowse5", Run<editor::cmdBrowse5_Click>},
    {"cmdLogFileBrowse", Run<editor::cmdLogFileBrowse_Click>},
    {"cmdBkgndImageBrowse", Run<editor::cmdBkgndImageBrowse_Click>},
    {"cmdBrsTemplate", Run<editor::cmdBrsTemplate_Click>},
    {"cmdBrowseMaps", Run<editor::cmdBrowseMaps_Click>},
    {"cmdBrsGame", Run<editor::cmdBrsGame_Click>},
    {"cmdBrsGameList", Run<editor::cmdBrsGameList_Click>},
    {"cmdBrwsPlayers", Run<editor::cmdBrwsPlayers_Click>},
    {"cmdBrowseLastGame", Run<editor::cmdBrowseLastGame_Click>},
    {"cmdBrowseGameListLoop", Run<editor::cmdBrowseGameListLoop_Click>},

    // Colours
    {"cmdTextColor", Run<editor::cmdTextColor_Click>},
    {"cmdLinkColor", Run<editor::cmdLinkColor_Click>},
    {"cmdVLinkColor", Run<editor::cmdVLinkColor_Click>},
    {"cmdALinkColor", Run<editor::cmdALinkColor_Click>},
    {"cmdBGColor", Run<editor::cmdBGColor_Click>},
    {"cmdColumnColor", Run<editor::cmdColumnColor_Click>},
    {"cmdNameColor", Run<editor::cmdNameColor_Click>},
    {"cmdColorPreview", Run<editor::cmdColorPreview_Click>},
    {"cmdKillPreview", Run<editor::cmdKillPreview_Click>},
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
