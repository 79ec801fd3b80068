#include "app/layout.h"

namespace app {
namespace {

using enum platform::ControlKind;
using platform::ControlRow;

constexpr ControlRow kRows[] = {
    {kLabel, "Label13(5)", "Frame1(0)", {120, 240, 1215, 255}, "Time Format"},
    {kTextBox,
     "txtTimeFormat",
     "Frame1(0)",
     {1560, 225, 855, 285},
     "$$$$",
     "Format of the time display"},
    {kCheckBox,
     "ckLimitKillTables",
     "Frame1(0)",
     {4080, 240, 2655, 255},
     "Limit Overall Kill Tables",
     "Apply limits to the overall kill tables"},
    {kLabel, "Label13(0)", "Frame1(0)", {120, 623, 1455, 255}, "Template Path"},
    {kTextBox, "txtSrcPath", "Frame1(0)", {1560, 608, 2055, 285}, "$$$$", "Template directory"},
    ControlRow{kButton,
               "cmdBrowse2",
               "Frame1(0)",
               {3600, 600, 345, 300},
               "...",
               "Browse for template directory"}
        .Named("Browse for template directory"),
    {kLabel, "lblKillLimit1(2)", "Frame1(0)", {4440, 600, 1335, 255}, "Min. Play Time"},
    {kTextBox,
     "txtPlayersMinTime",
     "Frame1(0)",
     {5880, 600, 735, 285},
     "####",
     "minimum time played (minutes)"},
    {kLabel, "Label13(7)", "Frame1(0)", {120, 983, 1215, 255}, "Output Path"},
    {kTextBox, "txtDestPath", "Frame1(0)", {1560, 968, 2055, 285}, "$$$$", "Output directory"},
    ControlRow{kButton,
               "cmdBrowse3",
               "Frame1(0)",
               {3600, 960, 345, 300},
               "...",
               "Browse for output directory"}
        .Named("Browse for output directory"),
    {kLabel, "lblKillLimit2(1)", "Frame1(0)", {4440, 975, 1335, 255}, "Min. Games"},
    {kTextBox,
     "txtPlayersMinGames",
     "Frame1(0)",
     {5880, 960, 735, 285},
     "####",
     "minimum games played"},
    {kLabel, "Label13(6)", "Frame1(0)", {120, 1335, 1455, 255}, "Database Path"},
    {kTextBox, "txtDbPath", "Frame1(0)", {1560, 1320, 2055, 285}, "$$$$", "database directory"},
    ControlRow{kButton,
               "cmdBrowse4",
               "Frame1(0)",
               {3600, 1312, 345, 300},
               "...",
               "browse for database directory"}
        .Named("Browse for database directory"),
    {kLabel, "lblKillLimit4", "Frame1(0)", {4440, 1335, 1335, 255}, "Min. Kills"},
    {kTextBox, "txtPlayersMinKills", "Frame1(0)", {5880, 1320, 735, 285}, "####", "Minimum kills"},
    {kCheckBox,
     "ckUseCustomRank",
     "Frame1(0)",
     {240, 1920, 2295, 255},
     "Use Custom Ranking",
     "use a custom ranking template"},
    {kCheckBox,
     "ckUseDatabase",
     "Frame1(0)",
     {4920, 1920, 1575, 255},
     "Use Database",
     "store parsed log data in the database"},
    {kLabel, "lblCustRank1", "Frame1(0)", {480, 2160, 1455, 255}, "Custom Rank Start"},
    {kTextBox, "txtCustomRankStart", "Frame1(0)", {480, 2400, 1335, 285}, "####"},
    {kLabel, "lblCustRank2", "Frame1(0)", {2040, 2160, 2295, 255}, "Custom Rank Template"},
    {kTextBox,
     "txtCustomRankTemplate",
     "Frame1(0)",
     {2040, 2400, 3135, 285},
     "$$$$",
     "Template used for custom ranking"},
    ControlRow{kButton,
               "cmdBrowse5",
               "Frame1(0)",
               {5160, 2385, 345, 300},
               "...",
               "Browse for custom ranking template"}
        .Named("Browse for custom ranking template"),
    {kFrame, "Frame8", "Frame1(0)", {120, 2880, 6735, 1935}, "Status\\Warning Messages and Logs"},
    ControlRow{kLabel, "Label11", "Frame8", {1800, 240, 1575, 255}, "Put To File"}.Centered().In(
        platform::kFrameTitleFont),
    ControlRow{kLabel, "Label12", "Frame8", {3360, 240, 1815, 255}, "Put To Screen"}.Centered().In(
        platform::kFrameTitleFont),
    ControlRow{kLabel, "Label6", "Frame8", {240, 480, 1335, 255}, "Log File"}.In(
        platform::kFrameTitleFont),
    ControlRow{kLabel, "Label7", "Frame8", {1680, 480, 855, 255}, "Normal"}.Centered(),
    ControlRow{kLabel, "Label10", "Frame8", {2640, 480, 735, 255}, "Severe"}.Centered(),
    ControlRow{kLabel, "Label8", "Frame8", {3480, 480, 735, 255}, "Normal"}.Centered(),
    ControlRow{kLabel, "Label9", "Frame8", {4320, 480, 735, 255}, "Severe"}.Centered(),
    {kLabel, "Label2", "Frame8", {240, 840, 1680, 255}, "Main"},
    ControlRow{kCheckBox, "ckMainFileNorm", "Frame8", {2040, 840, 255, 255}}
        .Named("Main, file, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckMainFileSevr", "Frame8", {2880, 840, 255, 255}}
        .Named("Main, file, severe")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckMainScrnNorm", "Frame8", {3720, 840, 255, 255}}
        .Named("Main, screen, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckMainScrnSevr", "Frame8", {4560, 840, 255, 255}}
        .Named("Main, screen, severe")
        .In(platform::kPlainFont),
    {kLabel, "Label3", "Frame8", {240, 1080, 1680, 255}, "Log Parser"},
    ControlRow{kCheckBox, "ckLogFileNorm", "Frame8", {2040, 1080, 255, 255}}
        .Named("Log Parser, file, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckLogFileSevere", "Frame8", {2880, 1080, 255, 255}}
        .Named("Log Parser, file, severe")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckLogScrNorm", "Frame8", {3720, 1080, 255, 255}}
        .Named("Log Parser, screen, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckLogScrSevere", "Frame8", {4560, 1080, 255, 255}}
        .Named("Log Parser, screen, severe")
        .In(platform::kPlainFont),
    {kLabel, "Label4", "Frame8", {240, 1320, 1680, 255}, "Template Parser"},
    ControlRow{kCheckBox, "ckTemplateFileNorm", "Frame8", {2040, 1320, 255, 255}}
        .Named("Template Parser, file, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckTemplateFileSevere", "Frame8", {2880, 1320, 255, 255}}
        .Named("Template Parser, file, severe")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckTemplateScrNorm", "Frame8", {3720, 1320, 255, 255}}
        .Named("Template Parser, screen, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckTemplateScrSevere", "Frame8", {4560, 1320, 255, 255}}
        .Named("Template Parser, screen, severe")
        .In(platform::kPlainFont),
    {kLabel, "Label5", "Frame8", {240, 1560, 1680, 255}, "Custom Rank Log"},
    ControlRow{kCheckBox, "ckRankFileNorm", "Frame8", {2040, 1560, 255, 255}}
        .Named("Custom Rank Log, file, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckRankFileSevere", "Frame8", {2880, 1560, 255, 255}}
        .Named("Custom Rank Log, file, severe")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckRankScrNorm", "Frame8", {3720, 1560, 255, 255}}
        .Named("Custom Rank Log, screen, normal")
        .In(platform::kPlainFont),
    ControlRow{kCheckBox, "ckRankScrSevere", "Frame8", {4560, 1560, 255, 255}}
        .Named("Custom Rank Log, screen, severe")
        .In(platform::kPlainFont),
    {kButton, "cmdClearAll", "Frame8", {5280, 600, 1215, 375}, "Clear All"},
    {kButton, "cmdCheckAll", "Frame8", {5280, 1080, 1215, 375}, "Check All"},
};

}  // namespace

LayoutRows MainLayout() { return kRows; }

}  // namespace app
