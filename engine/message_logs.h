#pragma once

#include <string>

#include "ui/desktop.h"

class QWidget;

namespace engine {

/// Runs before the View menu shows: a log's item is enabled when the log exists in the program
/// directory; the submenu and "Delete Logs" follow the log parser's log alone.
void mnuView_Click(QWidget& window, const std::string& programDirectory);

// The View items of the message logs: each opens its log in the text viewer.
void mnuViewLogCustRank_Click(ui::Desktop& desktop, QWidget* owner,
                              const std::string& programDirectory);
void mnuViewLogMain_Click(ui::Desktop& desktop, QWidget* owner,
                          const std::string& programDirectory);
void mnuViewLogLogParser_Click(ui::Desktop& desktop, QWidget* owner,
                               const std::string& programDirectory);
void mnuViewLogTemplateParser_Click(ui::Desktop& desktop, QWidget* owner,
                                    const std::string& programDirectory);

/// Asks whether all message logs are to be deleted and deletes them. One that cannot be deleted is
/// told to the user, and the next one follows. The result is false when the user did not want it.
bool DeleteMessageLogs(ui::Desktop& desktop, QWidget* owner, const std::string& programDirectory);

}  // namespace engine
