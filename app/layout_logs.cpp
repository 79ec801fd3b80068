#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(2)", "SSTab1(1)", {50, 425, 6950, 4935}),
    Row(kLabel, "Label14", "Frame1(2)", {240, 240, 6495, 615},
        "Enter a Quake 3 Arena log filename or browse for a file.  To add logs, press ADD.  To "
        "remove logs, select a log in the Logs selection box and press REMOVE.")
        .Wrapped(),
    Row(kLabel, "Label1", "Frame1(2)", {480, 960, 1575, 255}, "Log Filename"),
    Row(kTextBox, "txtLogFilePath", "Frame1(2)", {480, 1200, 4455, 285}).In(ui::kPlainFont),
    Row(kButton, "cmdLogFileBrowse", "Frame1(2)", {4920, 1185, 345, 300}, "...")
        .Tip("Browse for logs")
        .Named("Browse for logs"),
    Row(kButton, "cmdAddLog", "Frame1(2)", {5400, 1155, 975, 375}, "Add")
        .Tip("Add log to parse list"),
    Row(kLabel, "Label15", "Frame1(2)", {480, 1560, 2295, 255}, "Logs"),
    Row(kListBox, "lstLogFiles", "Frame1(2)", {480, 1800, 4815, 2595}).In(ui::kPlainFont),
    Row(kButton, "cmdRemovelog", "Frame1(2)", {5400, 1800, 975, 375}, "Remove")
        .Tip("Remove log from parse list"),
};

}  // namespace

LayoutRows LogsLayout() { return kRows; }

}  // namespace app
