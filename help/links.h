#pragma once

#include <string>

#include <QString>

#include "ui/desktop.h"

class QWidget;

namespace help {

/// The version as the update page expects it: "major.minor" read as a number and rounded to two
/// decimals (1 and 0 give "1.00", 2 and 5 give "2.50", 1 and 125 give "1.13").
QString VersionText(unsigned major, unsigned minor);

// The Help items that open a page in the browser. Nothing is reported.
void mnuHelpUpdate_Click(ui::Desktop& desktop);
void mnuHelpFeedback_Click(ui::Desktop& desktop);
void mnuHelpBugs_Click(ui::Desktop& desktop);
void mnuHelpQuillon_Click(ui::Desktop& desktop);
void mnuHelpMorvaneHome_Click(ui::Desktop& desktop);

/// Opens "quickstart.txt" of the program directory in the text viewer.
void mnuHelpQuickStart_Click(ui::Desktop& desktop, QWidget* owner,
                             const std::string& programDirectory);

}  // namespace help
