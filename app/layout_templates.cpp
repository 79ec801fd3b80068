#include "app/layout.h"

namespace app {
namespace {

using enum platform::ControlKind;
using platform::ControlRow;

constexpr ControlRow kRows[] = {
    {kFrame, "Frame5", "Frame1(6)", {240, 240, 3255, 2175}, "Main Templates"},
    {kLabel, "Label34", "Frame5", {120, 360, 1215, 255}, "Template"},
    ControlRow{kTextBox, "txtTemplate", "Frame5", {120, 600, 1695, 285}}.Named("Main Template"),
    ControlRow{kButton, "cmdBrsTemplate", "Frame5", {1800, 600, 345, 300}, "..."}.Named(
        "Browse for main template"),
    {kButton, "cmdAddMainTemplate", "Frame5", {2280, 600, 855, 375}, "Add"},
    ControlRow{kListBox, "lstTemplates", "Frame5", {120, 960, 2055, 1035}}.Named("Main Templates"),
    {kButton, "cmdRemoveMainTemplate", "Frame5", {2280, 1080, 855, 375}, "Remove"},
    {kFrame, "Frame6", "Frame1(6)", {3600, 240, 3255, 2175}, "Map Templates"},
    {kLabel, "Label35", "Frame6", {120, 360, 1575, 255}, "Template"},
    ControlRow{kTextBox, "txtMapTemplate", "Frame6", {120, 600, 1695, 285}}.Named("Map Template"),
    ControlRow{kButton, "cmdBrowseMaps", "Frame6", {1800, 600, 345, 300}, "..."}.Named(
        "Browse for map template"),
    {kButton, "cmdAddMapTemplate", "Frame6", {2280, 600, 855, 375}, "Add"},
    ControlRow{kListBox, "lstMapTemplates", "Frame6", {120, 960, 2055, 1035}}.Named(
        "Map Templates"),
    {kButton, "cmdRemoveMapTemplate", "Frame6", {2280, 1080, 855, 375}, "Remove"},
    {kFrame, "Frame7", "Frame1(6)", {240, 2520, 3255, 2175}, "Game Templates"},
    {kLabel, "Label36", "Frame7", {120, 360, 1575, 255}, "Template"},
    ControlRow{kTextBox, "txtGameTemplate", "Frame7", {120, 600, 1695, 285}}.Named("Game Template"),
    ControlRow{kButton, "cmdBrsGame", "Frame7", {1800, 600, 345, 300}, "..."}.Named(
        "Browse for game template"),
    {kButton, "cmdAddGameTemplate", "Frame7", {2280, 600, 855, 375}, "Add"},
    ControlRow{kListBox, "lstGameTemplates", "Frame7", {120, 960, 2055, 1035}}.Named(
        "Game Templates"),
    {kButton, "cmdRemoveGameTemplate", "Frame7", {2280, 1080, 855, 375}, "Remove"},
    {kLabel, "Label37", "Frame1(6)", {3840, 2520, 2415, 255}, "Game list Template"},
    {kTextBox, "txtGameListTemplate", "Frame1(6)", {3840, 2760, 2655, 285}, "$$$$"},
    ControlRow{kButton, "cmdBrsGameList", "Frame1(6)", {6480, 2760, 345, 300}, "..."}.Named(
        "Browse for game list template"),
    {kLabel, "Label39", "Frame1(6)", {3840, 3120, 1935, 255}, "Player Template"},
    {kTextBox, "txtPLayerTemplate", "Frame1(6)", {3840, 3360, 2655, 285}, "$$$$"},
    ControlRow{kButton, "cmdBrwsPlayers", "Frame1(6)", {6480, 3360, 345, 300}, "..."}.Named(
        "Browse for player template"),
    {kLabel, "Label42", "Frame1(6)", {3840, 3720, 2175, 255}, "Last Game Template"},
    {kTextBox, "txtLastGameTemplate", "Frame1(6)", {3840, 3960, 2655, 285}, "$$$$"},
    ControlRow{kButton, "cmdBrowseLastGame", "Frame1(6)", {6480, 3960, 345, 300}, "..."}.Named(
        "Browse for last game template"),
    {kLabel, "Label38", "Frame1(6)", {3840, 4320, 2415, 255}, "Game List Loop Template"},
    {kTextBox, "txtGameListLoopTemplate", "Frame1(6)", {3840, 4560, 2655, 285}, "$$$$"},
    ControlRow{kButton, "cmdBrowseGameListLoop", "Frame1(6)", {6480, 4560, 345, 300}, "..."}.Named(
        "Browse for game list loop template"),
};

}  // namespace

LayoutRows TemplatesLayout() { return kRows; }

}  // namespace app
