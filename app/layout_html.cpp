#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(4)", "SSTab1(3)", {50, 425, 6950, 4935}),
    Row(kFrame, "Frame3", "Frame1(4)", {240, 360, 3015, 2415}, "Document Colors"),
    Row(kLabel, "Label23", "Frame3", {240, 408, 1455, 255}, "Text Color: "),
    Row(kColorButton, "cmdTextColor", "Frame3", {2160, 360, 500, 350}),
    Row(kLabel, "Label24", "Frame3", {240, 768, 1455, 255}, "Link Color: "),
    Row(kColorButton, "cmdLinkColor", "Frame3", {2160, 720, 500, 350}),
    Row(kLabel, "Label25", "Frame3", {240, 1128, 1815, 255}, "Visited Link Color: "),
    Row(kColorButton, "cmdVLinkColor", "Frame3", {2160, 1080, 500, 350}),
    Row(kLabel, "Label26", "Frame3", {240, 1488, 1815, 255}, "Active link Color: "),
    Row(kColorButton, "cmdALinkColor", "Frame3", {2160, 1440, 500, 350}),
    Row(kLabel, "Label27", "Frame3", {240, 1848, 1815, 255}, "Background Color: "),
    Row(kColorButton, "cmdBGColor", "Frame3", {2160, 1800, 500, 350}),
    Row(kFrame, "Frame2", "Frame1(4)", {3360, 360, 3375, 1455}, "Fun Name Colors"),
    Row(kColorButton, "cmdNameColor(0)", "Frame2", {240, 360, 500, 350}, "^0")
        .Named("Name Color ^0")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(1)", "Frame2", {840, 360, 500, 350}, "^1")
        .Named("Name Color ^1")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(2)", "Frame2", {1440, 360, 500, 350}, "^2")
        .Named("Name Color ^2")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(3)", "Frame2", {2040, 360, 500, 350}, "^3")
        .Named("Name Color ^3")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(4)", "Frame2", {2640, 360, 500, 350}, "^4")
        .Named("Name Color ^4")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(6)", "Frame2", {240, 840, 500, 350}, "^6")
        .Named("Name Color ^6")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(5)", "Frame2", {840, 840, 500, 350}, "^5")
        .Named("Name Color ^5")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(7)", "Frame2", {1440, 840, 500, 350}, "^7")
        .Named("Name Color ^7")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(8)", "Frame2", {2040, 840, 500, 350}, "^8")
        .Named("Name Color ^8")
        .In(ui::kLabelFont),
    Row(kColorButton, "cmdNameColor(9)", "Frame2", {2640, 840, 500, 350}, "^9")
        .Named("Name Color ^9")
        .In(ui::kLabelFont),
    Row(kLabel, "Label28", "Frame1(4)", {3960, 2295, 1575, 255}, "File Extension"),
    Row(kTextBox, "txtFileExtension", "Frame1(4)", {5520, 2280, 735, 285}, "$$$$"),
    Row(kFrame, "Frame9", "Frame1(4)", {240, 2880, 6495, 1095}),
    Row(kLabel, "Label22", "Frame9", {240, 240, 3255, 255}, "Background Image"),
    Row(kTextBox, "txtBkgndImage", "Frame9", {240, 480, 5655, 315}, "$$$$"),
    Row(kButton, "cmdBkgndImageBrowse", "Frame9", {5880, 480, 345, 300}, "...")
        .Named("Browse for background image"),
    Row(kLabel, "Label52", "Frame1(4)", {240, 4080, 4335, 735}, kColorHint).Wrapped(),
    Row(kButton, "cmdColorPreview", "Frame1(4)", {5040, 4320, 1695, 375}, "HTML Preview"),
};

}  // namespace

LayoutRows HtmlLayout() { return kRows; }

}  // namespace app
