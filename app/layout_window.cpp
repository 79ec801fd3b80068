#include "app/layout.h"

namespace app {
namespace {

using enum platform::ControlKind;
using platform::ControlRow;

constexpr ControlRow kRows[] = {
    {kPanel, "Picture2", "", {1680, 0, 7125, 5455}},
    ControlRow{kTabs, "SSTab1", "Picture2", {0, 0, 7050, 5400}}.Named("Settings"),
    {kTabPage, "SSTab1(0)", "SSTab1", {0, 0, 7050, 5400}, "&Main"},
    {kTabPage, "SSTab1(1)", "SSTab1", {0, 0, 7050, 5400}, "&Q3A Logs"},
    {kTabPage, "SSTab1(2)", "SSTab1", {0, 0, 7050, 5400}, "&Game"},
    {kTabPage, "SSTab1(3)", "SSTab1", {0, 0, 7050, 5400}, "HTM&L"},
    {kTabPage, "SSTab1(4)", "SSTab1", {0, 0, 7050, 5400}, "&Kill Tables"},
    {kTabPage, "SSTab1(5)", "SSTab1", {0, 0, 7050, 5400}, "&Templates"},
    {kTabPage, "SSTab1(6)", "SSTab1", {0, 0, 7050, 5400}, "&User Vars"},
    {kTabPage, "SSTab1(7)", "SSTab1", {0, 0, 7050, 5400}, "&About"},
    {kFrame, "Frame1(0)", "SSTab1(0)", {50, 425, 6950, 4935}},
    {kFrame, "Frame1(2)", "SSTab1(1)", {50, 425, 6950, 4935}},
    {kFrame, "Frame1(3)", "SSTab1(2)", {50, 425, 6950, 4935}},
    {kFrame, "Frame1(4)", "SSTab1(3)", {50, 425, 6950, 4935}},
    {kFrame, "Frame1(5)", "SSTab1(4)", {50, 425, 6950, 4935}},
    {kFrame, "Frame1(6)", "SSTab1(5)", {50, 425, 6950, 4935}},
    {kFrame, "Frame1(7)", "SSTab1(6)", {50, 425, 6950, 4935}},
    ControlRow{kPanel, "Picture1", "", {0, 0, 1635, 5455}}.Paper(0xFF000000),
    {kPicture, "Image2", "Picture1", {240, 240, 1095, 1410}, ":/pictures/strip.svg"},
    {kButton, "cmdMakeStats", "Picture1", {0, 3960, 1575, 360}, "&Create Stats"},
    {kButton, "cmdDefaults", "Picture1", {0, 4320, 1575, 360}, "&Defaults"},
    {kButton, "cmdSave", "Picture1", {0, 4680, 1575, 360}, "&Save"},
    {kButton, "cmdClose", "Picture1", {0, 5040, 1575, 360}, "E&xit"},
    {kStatusBar, "StatBar", "", {0, 5475, 8820, 375}},
    {kLabel, "StatBarPanel1", "StatBar", {0, 30, 1610, 330}},
    ControlRow{kLabel, "StatBarPanel2", "StatBar", {1650, 30, 7155, 330}}.Named("Status"),
};

}  // namespace

LayoutRows WindowLayout() { return kRows; }

}  // namespace app
