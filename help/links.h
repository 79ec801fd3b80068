#pragma once

#include <QString>

#include "ui/context.h"

namespace help {

/// The version as the update page expects it: "major.minor" read as a number and rounded to two
/// decimals (1 and 0 give "1.00", 2 and 5 give "2.50", 1 and 125 give "1.13").
QString VersionText(unsigned major, unsigned minor);

// The Help items that open a page in the browser. Nothing is reported.
void mnuHelpUpdate_Click(const ui::Context& context);
void mnuHelpFeedback_Click(const ui::Context& context);
void mnuHelpBugs_Click(const ui::Context& context);
void mnuHelpQuillon_Click(const ui::Context& context);
void mnuHelpMorvaneHome_Click(const ui::Context& context);

/// Opens "quickstart.txt" of the program directory in the text viewer.
void mnuHelpQuickStart_Click(const ui::Context& context);

}  // namespace help
