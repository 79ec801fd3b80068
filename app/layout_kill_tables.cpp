#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(5)", "SSTab1(4)", {50, 425, 6950, 4935}),
    Row(kFrame, "Frame11", "Frame1(5)", {240, 240, 4335, 2295}, "Customize Highlight Levels"),
    Row(kLabel, "Label32", "Frame11", {960, 420, 1695, 255}, "Rank Percentile"),
    Row(kTextBox, "txtMinHiliteLevel", "Frame11", {2640, 405, 615, 285}),
    Row(kButton, "Command4", "Frame11", {3360, 360, 855, 375}, "Add"),
    Row(kListView, "lvwHiliteLevels", "Frame11", {120, 840, 3135, 1215}, "Minimum Level|Color Code")
        .Named("Highlight Levels"),
    Row(kButton, "cmdRemoveHiLiteLevel", "Frame11", {3360, 840, 855, 375}, "Remove"),
    Row(kFrame, "Frame4", "Frame1(5)", {4800, 240, 1935, 2655}, "Column Colors"),
    Row(kLabel, "Label29", "Frame4", {240, 360, 1455, 255}, "Column 1").Centered(),
    Row(kColorButton, "cmdColumnColor(0)", "Frame4", {720, 600, 500, 350}).Named("Column 1 Color"),
    Row(kLabel, "Label30", "Frame4", {240, 960, 1455, 255}, "Column 2").Centered(),
    Row(kColorButton, "cmdColumnColor(1)", "Frame4", {720, 1200, 500, 350}).Named("Column 2 Color"),
    Row(kLabel, "Label31", "Frame4", {240, 1560, 1455, 255}, "Column 3").Centered(),
    Row(kColorButton, "cmdColumnColor(2)", "Frame4", {720, 1800, 500, 350}).Named("Column 3 Color"),
    Row(kLabel, "Label33", "Frame1(5)", {240, 2760, 2295, 255}, "Minimum Highlight Value"),
    Row(kTextBox, "txtMinHiLiteValue", "Frame1(5)", {2520, 2760, 615, 285}, "####"),
    Row(kLabel, "Label53", "Frame1(5)", {240, 4080, 4335, 735}, kColorHint).Wrapped(),
    Row(kButton, "cmdKillPreview", "Frame1(5)", {5040, 4320, 1695, 375}, "HTML Preview"),
};

}  // namespace

LayoutRows KillTablesLayout() { return kRows; }

}  // namespace app
