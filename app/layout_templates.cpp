#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(6)", "SSTab1(5)", {50, 425, 6950, 4935}),
    Row(kFrame, "Frame5", "Frame1(6)", {240, 240, 3255, 2175}, "Main Templates"),
    Row(kLabel, "Label34", "Frame5", {120, 360, 1215, 255}, "Template"),
    Row(kTextBox, "txtTemplate", "Frame5", {120, 600, 1695, 285}).Named("Main Template"),
    Row(kButton, "cmdBrsTemplate", "Frame5", {1800, 600, 345, 300}, "...")
        .Named("Browse for main template"),
    Row(kButton, "cmdAddMainTemplate", "Frame5", {2280, 600, 855, 375}, "Add"),
    Row(kListBox, "lstTemplates", "Frame5", {120, 960, 2055, 1035}).Named("Main Templates"),
    Row(kButton, "cmdRemoveMainTemplate", "Frame5", {2280, 1080, 855, 375}, "Remove"),
    Row(kFrame, "Frame6", "Frame1(6)", {3600, 240, 3255, 2175}, "Map Templates"),
    Row(kLabel, "Label35", "Frame6", {120, 360, 1575, 255}, "Template"),
    Row(kTextBox, "txtMapTemplate", "Frame6", {120, 600, 1695, 285}).Named("Map Template"),
    Row(kButton, "cmdBrowseMaps", "Frame6", {1800, 600, 345, 300}, "...")
        .Named("Browse for map template"),
    Row(kButton, "cmdAddMapTemplate", "Frame6", {2280, 600, 855, 375}, "Add"),
    Row(kListBox, "lstMapTemplates", "Frame6", {120, 960, 2055, 1035}).Named("Map Templates"),
    Row(kButton, "cmdRemoveMapTemplate", "Frame6", {2280, 1080, 855, 375}, "Remove"),
    Row(kFrame, "Frame7", "Frame1(6)", {240, 2520, 3255, 2175}, "Game Templates"),
    Row(kLabel, "Label36", "Frame7", {120, 360, 1575, 255}, "Template"),
    Row(kTextBox, "txtGameTemplate", "Frame7", {120, 600, 1695, 285}).Named("Game Template"),
    Row(kButton, "cmdBrsGame", "Frame7", {1800, 600, 345, 300}, "...")
        .Named("Browse for game template"),
    Row(kButton, "cmdAddGameTemplate", "Frame7", {2280, 600, 855, 375}, "Add"),
    Row(kListBox, "lstGameTemplates", "Frame7", {120, 960, 2055, 1035}).Named("Game Templates"),
    Row(kButton, "cmdRemoveGameTemplate", "Frame7", {2280, 1080, 855, 375}, "Remove"),
    Row(kLabel, "Label37", "Frame1(6)", {3840, 2520, 2415, 255}, "Game list Template"),
    Row(kTextBox, "txtGameListTemplate", "Frame1(6)", {3840, 2760, 2655, 285}, "$$$$"),
    Row(kButton, "cmdBrsGameList", "Frame1(6)", {6480, 2760, 345, 300}, "...")
        .Named("Browse for game list template"),
    Row(kLabel, "Label39", "Frame1(6)", {3840, 3120, 1935, 255}, "Player Template"),
    Row(kTextBox, "txtPLayerTemplate", "Frame1(6)", {3840, 3360, 2655, 285}, "$$$$"),
    Row(kButton, "cmdBrwsPlayers", "Frame1(6)", {6480, 3360, 345, 300}, "...")
        .Named("Browse for player template"),
    Row(kLabel, "Label42", "Frame1(6)", {3840, 3720, 2175, 255}, "Last Game Template"),
    Row(kTextBox, "txtLastGameTemplate", "Frame1(6)", {3840, 3960, 2655, 285}, "$$$$"),
    Row(kButton, "cmdBrowseLastGame", "Frame1(6)", {6480, 3960, 345, 300}, "...")
        .Named("Browse for last game template"),
    Row(kLabel, "Label38", "Frame1(6)", {3840, 4320, 2415, 255}, "Game List Loop Template"),
    Row(kTextBox, "txtGameListLoopTemplate", "Frame1(6)", {3840, 4560, 2655, 285}, "$$$$"),
    Row(kButton, "cmdBrowseGameListLoop", "Frame1(6)", {6480, 4560, 345, 300}, "...")
        .Named("Browse for game list loop template"),
};

}  // namespace

LayoutRows TemplatesLayout() { return kRows; }

}  // namespace app
