#include "config/settings.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "text/text.h"

namespace config {
namespace {

constexpr std::string_view kMain = "Main";
constexpr std::string_view kLogs = "Logs";
constexpr std::string_view kGame = "Game";
constexpr std::string_view kHtml = "HTML";
constexpr std::string_view kKillTables = "KILL TABLES";
constexpr std::string_view kTemplates = "TEMPLATES";

constexpr DefaultEntry kDefaultLogs[] = {{"games.log"}};

constexpr DefaultEntry kDefaultHighlights[] = {
    {"100", "#00ff00"}, {"90", "#d0d000"}, {"75", "#d07000"}, {"50", "#804020"}};

constexpr DefaultEntry kDefaultMainTemplates[] = {
    {"stats"},        {"playerKDS"}, {"allkilltable"},   {"otherkilltables"}, {"playerlist"},
    {"playerFSES"},   {"playerGWP"}, {"morekilltables"}, {"playerpergame"},   {"playerperhour"},
    {"playerpermin"}, {"maplist"},   {"playerrank"}};

constexpr DefaultEntry kDefaultMapTemplates[] = {
    {"map"}, {"mapplayer"}, {"mapktable"}, {"maprank"}};

constexpr DefaultEntry kDefaultGameTemplates[] = {{"game"}, {"gameplayer"}, {"gamektable"}};

constexpr Setting Messages(std::string_view key, std::string_view defaultValue,
                           std::array<std::string_view, 4> options) {
  return {.section = kMain,
          .key = key,
          .encoding = Encoding::kMessageOptions,
          .field = {},
          .defaultValue = defaultValue,
          .options = options};
}

constexpr Setting Count(std::string_view section, std::string_view key, std::string_view field) {
  return {.section = section, .key = key, .encoding = Encoding::kCount, .field = field};
}

constexpr Setting Entries(std::string_view section, std::string_view key, std::string_view field,
                          std::string_view countKey, std::span<const DefaultEntry> defaults) {
  return {.section = section,
          .key = key,
          .encoding = Encoding::kEntries,
          .field = field,
          .countKey = countKey,
          .defaultEntries = defaults};
}

constexpr Setting WithSecondKey(Setting entries, std::string_view key,
                                std::string_view constant = {}) {
  entries.secondKey = key;
  entries.secondConstant = constant;
  return entries;
}

constexpr Setting kSettings[] = {
    {kMain, "limit_overall_killtables", Encoding::kFlag, "ckLimitKillTables", "1"},
    {kMain, "players_min_time", Encoding::kText, "txtPlayersMinTime", "900"},
    {kMain, "players_min_games", Encoding::kText, "txtPlayersMinGames", "2"},
    {kMain, "players_min_kills", Encoding::kText, "txtPlayersMinKills", "2"},
    {kMain, "time_format", Encoding::kText, "txtTimeFormat", "%X %x"},
    {kMain, "use_cust_rank", Encoding::kFlag, "ckUseCustomRank", "0"},
    {kMain, "cust_rank_start", Encoding::kText, "txtCustomRankStart", "1000"},
    {kMain, "cust_rank_template", Encoding::kText, "txtCustomRankTemplate", "custrank.htmlt"},
    {kMain, "src_path", Encoding::kPath, "txtSrcPath", ".\\templates"},
    {kMain, "dest_path", Encoding::kPath, "txtDestPath", ".\\output"},
    {kMain, "db_path", Encoding::kPath, "txtDbPath", ".\\database"},
    {kMain, "use_db", Encoding::kFlag, "ckUseDatabase", "0"},
    Messages("use_main_log", "15",
             {"ckMainFileNorm", "ckMainScrnNorm", "ckMainFileSevr", "ckMainScrnSevr"}),
    Messages("use_logparser_log", "13",
             {"ckLogFileNorm", "ckLogScrNorm", "ckLogFileSevere", "ckLogScrSevere"}),
    Messages(
        "use_templateparser_log", "13",
        {"ckTemplateFileNorm", "ckTemplateScrNorm", "ckTemplateFileSevere", "ckTemplateScrSevere"}),
    Messages("use_customrank_log", "5",
             {"ckRankFileNorm", "ckRankScrNorm", "ckRankFileSevere", "ckRankScrSevere"}),

    Count(kLogs, "number_of_logs", "lstLogFiles"),
    WithSecondKey(Entries(kLogs, "logpath", "lstLogFiles", "number_of_logs", kDefaultLogs),
                  "logtype", "1000"),

    {kGame, "min_players", Encoding::kText, "txtMinPlayers", "2"},
    {kGame, "min_time", Encoding::kText, "txtMinTime", "21"},
    {kGame, "min_kills", Encoding::kText, "txtMinKills", "10"},
    {kGame, "game_complete", Encoding::kFlagUnlessZero, "ckGameCompleted", "0"},
    {kGame, "game_last_placed", Encoding::kText, "txtLastPlace", "3"},

    {kHtml, "text_color", Encoding::kColor, "cmdTextColor", "#C0C0C0"},
    {kHtml, "link_color", Encoding::kColor, "cmdLinkColor", "#0000FF"},
    {kHtml, "vlink_color", Encoding::kColor, "cmdVLinkColor", "#FF0000"},
    {kHtml, "alink_color", Encoding::kColor, "cmdALinkColor", "#00FF00"},
    {kHtml, "bg_color", Encoding::kColor, "cmdBGColor", "#000000"},
    {kHtml, "bg_image", Encoding::kBackgroundImage, "txtBkgndImage", ""},
    {kHtml, "file_ext", Encoding::kFileExtension, "txtFileExtension", ".html"},
    {kHtml, "name0", Encoding::kColor, "cmdNameColor(0)", "#FFFFFF"},
    {kHtml, "name1", Encoding::kColor, "cmdNameColor(1)", "#FF0000"},
    {kHtml, "name2", Encoding::kColor, "cmdNameColor(2)", "#00FF00"},
    {kHtml, "name3", Encoding::kColor, "cmdNameColor(3)", "#FFFF00"},
    {kHtml, "name4", Encoding::kColor, "cmdNameColor(4)", "#0000FF"},
    {kHtml, "name5", Encoding::kColor, "cmdNameColor(5)", "#00FFFF"},
    {kHtml, "name6", Encoding::kColor, "cmdNameColor(6)", "#FF00FF"},
    {kHtml, "name7", Encoding::kColor, "cmdNameColor(7)", "#FFFFFF"},
    {kHtml, "name8", Encoding::kColor, "cmdNameColor(8)", "#FFFFFF"},
    {kHtml, "name9", Encoding::kColor, "cmdNameColor(9)", "#FFFFFF"},

    Count(kKillTables, "hilite_levels", "lvwHiliteLevels"),
    {kKillTables, "hilite_minhilite", Encoding::kText, "txtMinHiLiteValue", "4"},
    WithSecondKey(Entries(kKillTables, "hilite_level", "lvwHiliteLevels", "hilite_levels",
                          kDefaultHighlights),
                  "hilite_color"),
    {kKillTables, "column0", Encoding::kColorWithoutNames, "cmdColumnColor(0)", "#202020"},
    {kKillTables, "column1", Encoding::kColorWithoutNames, "cmdColumnColor(1)", "#404040"},
    {kKillTables, "column2", Encoding::kColorWithoutNames, "cmdColumnColor(2)", "#606060"},

    Count(kTemplates, "main_templates_number", "lstTemplates"),
    Entries(kTemplates, "main_template", "lstTemplates", "main_templates_number",
            kDefaultMainTemplates),
    Count(kTemplates, "map_templates_number", "lstMapTemplates"),
    Entries(kTemplates, "map_template", "lstMapTemplates", "map_templates_number",
            kDefaultMapTemplates),
    Count(kTemplates, "game_templates_number", "lstGameTemplates"),
    Entries(kTemplates, "game_template", "lstGameTemplates", "game_templates_number",
            kDefaultGameTemplates),
    {kTemplates, "gamelist_template", Encoding::kText, "txtGameListTemplate", "gamelist"},
    {kTemplates, "gamelist_loop_template", Encoding::kText, "txtGameListLoopTemplate",
     "gamelistloop"},
    {kTemplates, "lastgame_template", Encoding::kText, "txtLastGameTemplate", "lastgame"},
    {kTemplates, "player_template", Encoding::kText, "txtPLayerTemplate", "player"},

    {kUserVars, "", Encoding::kUserVariables, "lvwUserVars"},
};

constexpr int kMostCounted = 32767;

}  // namespace

std::span<const Setting> Settings() { return kSettings; }

const Setting& SettingOf(std::string_view key) {
  const auto* const row =
      std::ranges::find_if(kSettings, [&](const Setting& setting) { return setting.key == key; });
  if (row == std::end(kSettings)) throw std::out_of_range("no setting " + std::string(key));
  return *row;
}

std::vector<Entry> ReadEntries(const SettingsFile& file, std::string_view section,
                               std::string_view countKey, std::string_view key,
                               std::string_view secondKey) {
  const int count = text::WholeNumberOf(file.ReadIni(section, countKey));
  std::vector<Entry> entries;
  for (int i = 0; i < count; ++i) {
    const std::string index = std::to_string(i);
    const std::string name = std::string(key) + index;
    if (count > kMostCounted && !file.HasKey(section, name)) break;
    Entry& entry = entries.emplace_back(Entry{file.ReadIni(section, name), {}});
    if (!secondKey.empty()) entry.second = file.ReadIni(section, std::string(secondKey) + index);
  }
  return entries;
}

void ClearSections(SettingsFile& file, const std::function<void()>& pumpEvents) {
  for (const std::string_view section :
       {kMain, kHtml, kLogs, kGame, kKillTables, kTemplates, kUserVars}) {
    pumpEvents();
    file.ClearSection(section);
    pumpEvents();
  }
}

}  // namespace config
