#include "app/layout.h"

namespace app {
namespace {

using enum platform::ControlKind;
using platform::ControlRow;

constexpr ControlRow kRows[] = {
    ControlRow{kLabel,
               "Label14",
               "Frame1(2)",
               {240, 240, 6495, 615},
               "Enter a Quake 3 Arena log filename or browse for a file.  To add logs, press ADD.  "
               "To remove logs, select a log in the Logs selection box and press REMOVE."}
        .Wrapped(),
    {kLabel, "Label1", "Frame1(2)", {480, 960, 1575, 255}, "Log Filename"},
    ControlRow{kTextBox, "txtLogFilePath", "Frame1(2)", {480, 1200, 4455, 285}}.In(
        platform::kPlainFont),
    ControlRow{
        kButton, "cmdLogFileBrowse", "Frame1(2)", {4920, 1185, 345, 300}, "...", "Browse for logs"}
        .Named("Browse for logs"),
    {kButton, "cmdAddLog", "Frame1(2)", {5400, 1155, 975, 375}, "Add", "Add log to parse list"},
    {kLabel, "Label15", "Frame1(2)", {480, 1560, 2295, 255}, "Logs"},
    ControlRow{kListBox, "lstLogFiles", "Frame1(2)", {480, 1800, 4815, 2595}}.In(
        platform::kPlainFont),
    {kButton,
     "cmdRemovelog",
     "Frame1(2)",
     {5400, 1800, 975, 375},
     "Remove",
     "Remove log from parse list"},
};

}  // namespace

LayoutRows LogsLayout() { return kRows; }

}  // namespace app
