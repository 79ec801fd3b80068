#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr QRgb kWhite = 0xFFFFFFFF;
constexpr QRgb kLightGrey = 0xFFE0E0E0;
constexpr ui::FontSpec kTitle{ui::FontFace::kCopperplate, 15.75, QFont::DemiBold};
constexpr ui::FontSpec kSubtitle{ui::FontFace::kCopperplate, 14.25, QFont::DemiBold};

constexpr Row kRows[] = {
    Row(kPicture, "Image1", "SSTab1(7)", {50, 425, 6950, 4935}, ":/pictures/about.svg"),
    Row(kLabel, "Label43", "SSTab1(7)", {240, 1440, 6615, 615}, "Quillon's Vantorel")
        .In(kTitle)
        .Ink(kWhite)
        .AtTop(),
    Row(kLabel, "Label44", "SSTab1(7)", {360, 1680, 3375, 375}, "For Quake 3 Arena")
        .In(kSubtitle)
        .Ink(kLightGrey)
        .AtBottom(),
    Row(kLabel, "lblSplashVersion", "SSTab1(7)", {4680, 1680, 2295, 375}, "Version ")
        .In(kSubtitle)
        .Ink(kLightGrey)
        .AtBottom(),
    Row(kLabel, "Label46", "SSTab1(7)", {1080, 2280, 5775, 255}, "- Parse Quake 3 Arena Log Files")
        .In(ui::kButtonFont)
        .Ink(kWhite),
    Row(kLabel, "Label47", "SSTab1(7)", {1080, 2520, 5775, 255}, "- Generate Numerous Statistics")
        .In(ui::kButtonFont)
        .Ink(kWhite),
    Row(kLabel, "Label48", "SSTab1(7)", {1080, 2760, 5775, 255}, "- Define Custom Ranking Rules")
        .In(ui::kButtonFont)
        .Ink(kWhite),
    Row(kLabel, "Label49", "SSTab1(7)", {1080, 3000, 5775, 255}, "- Create Any File Format")
        .In(ui::kButtonFont)
        .Ink(kWhite),
    Row(kLabel, "Label50", "SSTab1(7)", {1080, 3240, 5775, 255}, "- Create User Defined Variables")
        .In(ui::kButtonFont)
        .Ink(kWhite),
    Row(kLabel, "Label51", "SSTab1(7)", {1080, 3480, 5775, 255},
        "- Template Based - Extremely Flexible")
        .In(ui::kButtonFont)
        .Ink(kWhite),
    Row(kLabel, "Label45", "SSTab1(7)", {120, 5160, 5775, 375},
        "Based on the Morvane Log Parser\\Stats Generator")
        .In(ui::kButtonFont)
        .Ink(kLightGrey)
        .AtTop(),
};

}  // namespace

LayoutRows AboutLayout() { return kRows; }

}  // namespace app
