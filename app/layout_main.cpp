#include "app/layout.h"

namespace app {
namespace {

using enum ui::ControlKind;
using Row = ui::ControlRow;

constexpr Row kRows[] = {
    Row(kFrame, "Frame1(0)", "SSTab1(0)", {50, 425, 6950, 4935}),
    Row(kLabel, "Label13(5)", "Frame1(0)", {120, 240, 1215, 255}, "Time Format"),
    Row(kTextBox, "txtTimeFormat", "Frame1(0)", {1560, 225, 855, 285}, "$$$$")
        .Tip("Format of the time display"),
    Row(kCheckBox, "ckLimitKillTables", "Frame1(0)", {4080, 240, 2655, 255},
        "Limit Overall Kill Tables")
        .Tip("Apply limits to the overall kill tables"),
    Row(kLabel, "Label13(0)", "Frame1(0)", {120, 623, 1455, 255}, "Template Path"),
    Row(kTextBox, "txtSrcPath", "Frame1(0)", {1560, 608, 2055, 285}, "$$$$")
        .Tip("Template directory"),
    Row(kButton, "cmdBrowse2", "Frame1(0)", {3600, 600, 345, 300}, "...")
        .Tip("Browse for template directory")
        .Named("Browse for template directory"),
    Row(kLabel, "lblKillLimit1(2)", "Frame1(0)", {4440, 600, 1335, 255}, "Min. Play Time"),
    Row(kTextBox, "txtPlayersMinTime", "Frame1(0)", {5880, 600, 735, 285}, "####")
        .Tip("minimum time played (minutes)"),
    Row(kLabel, "Label13(7)", "Frame1(0)", {120, 983, 1215, 255}, "Output Path"),
    Row(kTextBox, "txtDestPath", "Frame1(0)", {1560, 968, 2055, 285}, "$$$$")
        .Tip("Output directory"),
    Row(kButton, "cmdBrowse3", "Frame1(0)", {3600, 960, 345, 300}, "...")
        .Tip("Browse for output directory")
        .Named("Browse for output directory"),
    Row(kLabel, "lblKillLimit2(1)", "Frame1(0)", {4440, 975, 1335, 255}, "Min. Games"),
    Row(kTextBox, "txtPlayersMinGames", "Frame1(0)", {5880, 960, 735, 285}, "####")
        .Tip("minimum games played"),
    Row(kLabel, "Label13(6)", "Frame1(0)", {120, 1335, 1455, 255}, "Database Path"),
    Row(kTextBox, "txtDbPath", "Frame1(0)", {1560, 1320, 2055, 285}, "$$$$")
        .Tip("database directory"),
    Row(kButton, "cmdBrowse4", "Frame1(0)", {3600, 1312, 345, 300}, "...")
        .Tip("browse for database directory")
        .Named("Browse for database directory"),
    Row(kLabel, "lblKillLimit4", "Frame1(0)", {4440, 1335, 1335, 255}, "Min. Kills"),
    Row(kTextBox, "txtPlayersMinKills", "Frame1(0)", {5880, 1320, 735, 285}, "####")
        .Tip("Minimum kills"),
    Row(kCheckBox, "ckUseCustomRank", "Frame1(0)", {240, 1920, 2295, 255}, "Use Custom Ranking")
        .Tip("use a custom ranking template"),
    Row(kCheckBox, "ckUseDatabase", "Frame1(0)", {4920, 1920, 1575, 255}, "Use Database")
        .Tip("store parsed log data in the database"),
    Row(kLabel, "lblCustRank1", "Frame1(0)", {480, 2160, 1455, 255}, "Custom Rank Start"),
    Row(kTextBox, "txtCustomRankStart", "Frame1(0)", {480, 2400, 1335, 285}, "####"),
    Row(kLabel, "lblCustRank2", "Frame1(0)", {2040, 2160, 2295, 255}, "Custom Rank Template"),
    Row(kTextBox, "txtCustomRankTemplate", "Frame1(0)", {2040, 2400, 3135, 285}, "$$$$")
        .Tip("Template used for custom ranking"),
    Row(kButton, "cmdBrowse5", "Frame1(0)", {5160, 2385, 345, 300}, "...")
        .Tip("Browse for custom ranking template")
        .Named("Browse for custom ranking template"),
    Row(kFrame, "Frame8", "Frame1(0)", {120, 2880, 6735, 1935},
        "Status\\Warning Messages and Logs"),
    Row(kLabel, "Label11", "Frame8", {1800, 240, 1575, 255}, "Put To File")
        .Centered()
        .In(ui::kFrameTitleFont),
    Row(kLabel, "Label12", "Frame8", {3360, 240, 1815, 255}, "Put To Screen")
        .Centered()
        .In(ui::kFrameTitleFont),
    Row(kLabel, "Label6", "Frame8", {240, 480, 1335, 255}, "Log File").In(ui::kFrameTitleFont),
    Row(kLabel, "Label7", "Frame8", {1680, 480, 855, 255}, "Normal").Centered(),
    Row(kLabel, "Label10", "Frame8", {2640, 480, 735, 255}, "Severe").Centered(),
    Row(kLabel, "Label8", "Frame8", {3480, 480, 735, 255}, "Normal").Centered(),
    Row(kLabel, "Label9", "Frame8", {4320, 480, 735, 255}, "Severe").Centered(),
    Row(kLabel, "Label2", "Frame8", {240, 840, 1680, 255}, "Main"),
    Row(kCheckBox, "ckMainFileNorm", "Frame8", {2040, 840, 255, 255})
        .Named("Main, file, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckMainFileSevr", "Frame8", {2880, 840, 255, 255})
        .Named("Main, file, severe")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckMainScrnNorm", "Frame8", {3720, 840, 255, 255})
        .Named("Main, screen, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckMainScrnSevr", "Frame8", {4560, 840, 255, 255})
        .Named("Main, screen, severe")
        .In(ui::kPlainFont),
    Row(kLabel, "Label3", "Frame8", {240, 1080, 1680, 255}, "Log Parser"),
    Row(kCheckBox, "ckLogFileNorm", "Frame8", {2040, 1080, 255, 255})
        .Named("Log Parser, file, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckLogFileSevere", "Frame8", {2880, 1080, 255, 255})
        .Named("Log Parser, file, severe")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckLogScrNorm", "Frame8", {3720, 1080, 255, 255})
        .Named("Log Parser, screen, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckLogScrSevere", "Frame8", {4560, 1080, 255, 255})
        .Named("Log Parser, screen, severe")
        .In(ui::kPlainFont),
    Row(kLabel, "Label4", "Frame8", {240, 1320, 1680, 255}, "Template Parser"),
    Row(kCheckBox, "ckTemplateFileNorm", "Frame8", {2040, 1320, 255, 255})
        .Named("Template Parser, file, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckTemplateFileSevere", "Frame8", {2880, 1320, 255, 255})
        .Named("Template Parser, file, severe")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckTemplateScrNorm", "Frame8", {3720, 1320, 255, 255})
        .Named("Template Parser, screen, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckTemplateScrSevere", "Frame8", {4560, 1320, 255, 255})
        .Named("Template Parser, screen, severe")
        .In(ui::kPlainFont),
    Row(kLabel, "Label5", "Frame8", {240, 1560, 1680, 255}, "Custom Rank Log"),
    Row(kCheckBox, "ckRankFileNorm", "Frame8", {2040, 1560, 255, 255})
        .Named("Custom Rank Log, file, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckRankFileSevere", "Frame8", {2880, 1560, 255, 255})
        .Named("Custom Rank Log, file, severe")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckRankScrNorm", "Frame8", {3720, 1560, 255, 255})
        .Named("Custom Rank Log, screen, normal")
        .In(ui::kPlainFont),
    Row(kCheckBox, "ckRankScrSevere", "Frame8", {4560, 1560, 255, 255})
        .Named("Custom Rank Log, screen, severe")
        .In(ui::kPlainFont),
    Row(kButton, "cmdClearAll", "Frame8", {5280, 600, 1215, 375}, "Clear All"),
    Row(kButton, "cmdCheckAll", "Frame8", {5280, 1080, 1215, 375}, "Check All"),
};

}  // namespace

LayoutRows MainLayout() { return kRows; }

}  // namespace app
