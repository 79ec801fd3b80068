#pragma once

#include <span>

#include "app/context.h"
#include "app/layout.h"

namespace app {

/// A tab of the window and its item of the View menu.
struct Tab {
  const char* caption;
  LayoutRows rows;     // the controls on it
  const char* status;  // what the status bar says while it is in front
  const char* viewItem;
  const char* viewCaption;
  Handler viewHandler;  // brings the tab to the front
};

/// The tabs from left to right.
std::span<const Tab> Tabs();

/// Builds the pages of the tab control `SSTab1`, which is there already, with their controls.
void BuildTabs(QWidget& area);

/// Runs whenever another tab has come to the front, by the user or by code: names its content in
/// the status bar and moves the check mark of the View menu to its item.
void SSTab1_Click(const Context& context);

}  // namespace app
