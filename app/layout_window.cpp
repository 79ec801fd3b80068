#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kPanel, "Picture2", "", {1680, 0, 7125, 5455}),
    Row(kTabs, "SSTab1", "Picture2", {0, 0, 7050, 5400}).Named("Settings"),
    Row(kStatusBar, "StatBar", "", {0, 5475, 8820, 375}),
    Row(kLabel, "StatBarPanel1", "StatBar", {0, 30, 1610, 345}).Sunken(),
    Row(kLabel, "StatBarPanel2", "StatBar", {1650, 30, 7155, 345}).Sunken(),
};

constexpr Row kStripRows[] = {
    Row(kPanel, "Picture1", "", {0, 0, 1635, 5455}).Paper(0xFF000000),
    Row(kPicture, "Image2", "Picture1", {240, 240, 1095, 1410}, ":/pictures/strip.svg"),
    Row(kButton, "cmdMakeStats", "Picture1", {0, 3960, 1575, 360}, "&Create Stats"),
    Row(kButton, "cmdDefaults", "Picture1", {0, 4320, 1575, 360}, "&Defaults"),
    Row(kButton, "cmdSave", "Picture1", {0, 4680, 1575, 360}, "&Save"),
    Row(kButton, "cmdClose", "Picture1", {0, 5040, 1575, 360}, "E&xit"),
};

}  // namespace

LayoutRows WindowLayout() { return kRows; }

LayoutRows StripLayout() { return kStripRows; }

}  // namespace app
