#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(7)", "SSTab1(6)", {50, 425, 6950, 4935}),
    Row(kLabel, "Label40", "Frame1(7)", {480, 240, 1455, 255}, "Variable"),
    Row(kTextBox, "txtVariable", "Frame1(7)", {480, 480, 1815, 285}),
    Row(kLabel, "Label41", "Frame1(7)", {2400, 240, 1455, 255}, "Value"),
    Row(kTextBox, "txtValue", "Frame1(7)", {2400, 480, 1815, 285}),
    Row(kButton, "cmdAddUserVar", "Frame1(7)", {4320, 360, 975, 375}, "Add"),
    Row(kButton, "cmdRemoveUserVar", "Frame1(7)", {5400, 360, 975, 375}, "Remove"),
    Row(kListView, "lvwUserVars", "Frame1(7)", {480, 840, 5895, 3615}, "Variable|Value")
        .Named("User Variables"),
};

}  // namespace

LayoutRows UserVarsLayout() { return kRows; }

}  // namespace app
