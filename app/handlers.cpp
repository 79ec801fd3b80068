#include "app/handlers.h"

#include <stdexcept>
#include <string>

#include <QAbstractButton>
#include <QCheckBox>
#include <QTabWidget>

#include "app/engine_actions.h"
#include "app/file_actions.h"
#include "app/frmMain.h"
#include "app/tabs.h"
#include "editor/colors.h"
#include "editor/list_editors.h"
#include "editor/pickers.h"
#include "editor/switches.h"

namespace app {
namespace {

/// What runs when a control is used. A member of a control array is told by its index.
struct HandlerRow {
  const char* control;  // `cmdNameColor` stands for all of `cmdNameColor(0)`, `cmdNameColor(1)`...
  Handler handler;
};

// Buttons run their handler when they are pressed, check boxes when their value changes, the tab
// control when another tab comes to the front.
const HandlerRow kHandlers[] = {
    // The strip of buttons
    {"cmdSave", cmdSave_Click},
    {"cmdDefaults", cmdDefaults_Click},
    {"cmdMakeStats", cmdMakeStats_Click},
    {"cmdClose", cmdClose_Click},

    // Tabs
    {"SSTab1", SSTab1_Click},

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
  } else if (auto* tabs = qobject_cast<QTabWidget*>(&object)) {
    QObject::connect(tabs, &QTabWidget::currentChanged, &window, run);
  }
}

/// Whether a control has this name, or is a member of the control array of this name.
bool IsNamed(const QString& control, QLatin1String name) {
  return control.startsWith(name) && (control.size() == name.size() || control[name.size()] == '(');
}

}  // namespace

void ConnectHandlers(frmMain& window) {
  const QList<QObject*> objects = window.findChildren<QObject*>();
  for (const HandlerRow& row : kHandlers) {
    bool found = false;
    for (QObject* object : objects) {
      if (!IsNamed(object->objectName(), QLatin1String(row.control))) continue;
      Connect(window, *object, row);
      found = true;
    }
    if (!found) throw std::logic_error(std::string("A handler without a control: ") + row.control);
  }
}

}  // namespace app
