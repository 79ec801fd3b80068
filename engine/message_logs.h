#pragma once

#include "ui/context.h"

namespace engine {

/// Runs before the View menu shows: a log's item is enabled when the log exists in the program
/// directory; the submenu and "Delete Logs" follow the log parser's log alone.
void mnuView_Click(const ui::Context& context);

// The View items of the message logs: each opens its log in the text viewer.
void mnuViewLogCustRank_Click(const ui::Context& context);
void mnuViewLogMain_Click(const ui::Context& context);
void mnuViewLogLogParser_Click(const ui::Context& context);
void mnuViewLogTemplateParser_Click(const ui::Context& context);

/// Asks whether all message logs are to be deleted and deletes them. One that cannot be deleted is
/// told to the user, and the next one follows. The result is false when the user did not want it.
bool DeleteMessageLogs(const ui::Context& context);

}  // namespace engine
