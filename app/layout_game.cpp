#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(3)", "SSTab1(2)", {50, 425, 6950, 4935}),
    Row(kFrame, "Frame10", "Frame1(3)", {480, 600, 6015, 3855}),
    Row(kLabel, "Label16", "Frame10", {960, 240, 4695, 495},
        "In order to be counted in the game statistics, the following criteria must be met:")
        .Wrapped(),
    Row(kCheckBox, "ckGameCompleted", "Frame10", {1320, 840, 2655, 255}, "Game must be completed"),
    Row(kLabel, "Label17", "Frame10", {1440, 1335, 1335, 255}, "Last Place: "),
    Row(kTextBox, "txtLastPlace", "Frame10", {3120, 1320, 615, 285}, "####").Centered(),
    Row(kLabel, "Label18", "Frame10", {1440, 1815, 1575, 255}, "Minimum Players: "),
    Row(kTextBox, "txtMinPlayers", "Frame10", {3120, 1800, 615, 285}, "####").Centered(),
    Row(kLabel, "Label20", "Frame10", {1440, 2280, 1335, 255}, "Minimum Time: "),
    Row(kTextBox, "txtMinTime", "Frame10", {3120, 2265, 615, 285}, "####")
        .Named("Minimum Time, seconds")
        .Centered(),
    Row(kLabel, "Label21", "Frame10", {3840, 2280, 855, 255}, "seconds"),
    Row(kLabel, "Label19", "Frame10", {1440, 2775, 1335, 255}, "Minimum Kills: "),
    Row(kTextBox, "txtMinKills", "Frame10", {3120, 2760, 615, 285}, "####").Centered(),
};

}  // namespace

LayoutRows GameLayout() { return kRows; }

}  // namespace app
