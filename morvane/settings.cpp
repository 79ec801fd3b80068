#include "morvane/settings.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string_view>

#include "config/colors.h"
#include "config/rgb.h"
#include "config/settings.h"
#include "config/settings_file.h"
#include "config/user_vars.h"
#include "platform/paths.h"
#include "text/text.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 4> kOptionKeys = {
    "use_main_log", "use_logparser_log", "use_templateparser_log", "use_customrank_log"};

/// Reads and converts values: each setting as its row in the table says.
class Reader {
 public:
  explicit Reader(const config::SettingsFile& ini) : ini_(ini) {}

  std::string Text(std::string_view key) const {
    const config::Setting& setting = config::SettingOf(key);
    return ini_.ReadIni(setting.section, setting.key);
  }
  double Number(std::string_view key) const { return text::NumberOf(Text(key)); }
  int Whole(std::string_view key) const { return text::WholeNumberOf(Text(key)); }
  bool Flag(std::string_view key) const {
    const bool unlessZero = config::SettingOf(key).encoding == config::Encoding::kFlagUnlessZero;
    return unlessZero ? Number(key) != 0 : Number(key) == 1;
  }
  int Options(std::string_view key) const { return std::clamp(Whole(key), 0, 15); }
  /// An absolute path; a relative one is taken from the file's directory. Empty for no text.
  std::string Path(std::string_view key) const { return Absolute(Text(key)); }
  std::string Absolute(std::string_view text) const {
    if (text.empty()) return {};
    return (fs::path(ini_.ProgramDirectory()) / platform::SystemPath(text))
        .lexically_normal()
        .string();
  }
  config::Rgb Color(std::string_view key) const {
    const bool named = config::SettingOf(key).encoding == config::Encoding::kColor;
    return config::RgbOf(
        config::ColorValue(named ? config::NamedColor(Text(key)) : config::HtmlToColor(Text(key))));
  }
  /// The entries of a list that say something.
  std::vector<config::Entry> Entries(std::string_view key) const {
    const config::Setting& list = config::SettingOf(key);
    std::vector<config::Entry> entries =
        config::ReadEntries(ini_, list.section, list.countKey, list.key, list.secondKey);
    std::erase_if(entries, [](const config::Entry& entry) { return entry.first.empty(); });
    return entries;
  }
  std::vector<std::string> Templates(std::string_view key) const {
    std::vector<std::string> names;
    for (config::Entry& entry : Entries(key)) names.push_back(std::move(entry.first));
    return names;
  }

 private:
  const config::SettingsFile& ini_;
};

void ReadMain(const Reader& reader, Settings& settings) {
  settings.limits.limitOverallKillTables = reader.Flag("limit_overall_killtables");
  settings.limits.playersMinTime = reader.Whole("players_min_time");
  settings.limits.playersMinGames = reader.Whole("players_min_games");
  settings.limits.playersMinKills = reader.Whole("players_min_kills");
  settings.site.timeFormat = reader.Text("time_format");
  settings.ranking.use = reader.Flag("use_cust_rank");
  settings.ranking.start = reader.Number("cust_rank_start");
  settings.ranking.file = reader.Text("cust_rank_template");
  settings.site.sourcePath = reader.Path("src_path");
  settings.site.outputPath = reader.Path("dest_path");
  settings.sources.databasePath = reader.Path("db_path");
  settings.sources.useDatabase = reader.Flag("use_db");
  for (std::size_t log = 0; log < kOptionKeys.size(); ++log) {
    settings.messageOptions[log] = reader.Options(kOptionKeys[log]);
  }
}

void ReadLogs(const Reader& reader, Settings& settings) {
  for (const config::Entry& entry : reader.Entries("logpath")) {
    settings.sources.logs.push_back(
        {entry.first, reader.Absolute(entry.first), text::WholeNumberOf(entry.second)});
  }
}

void ReadGame(const Reader& reader, Settings& settings) {
  settings.limits.minPlayers = reader.Whole("min_players");
  settings.limits.minTime = reader.Whole("min_time");
  settings.limits.minKills = reader.Whole("min_kills");
  settings.limits.gameComplete = reader.Flag("game_complete");
  settings.limits.gameLastPlaced = reader.Whole("game_last_placed");
}

void ReadHtml(const Reader& reader, Settings& settings) {
  settings.site.textColor = reader.Color("text_color");
  settings.site.linkColor = reader.Color("link_color");
  settings.site.visitedLinkColor = reader.Color("vlink_color");
  settings.site.activeLinkColor = reader.Color("alink_color");
  settings.site.backgroundColor = reader.Color("bg_color");
  settings.site.backgroundImage = reader.Path("bg_image");
  settings.site.fileExtension = reader.Text("file_ext");
  if (!settings.site.fileExtension.starts_with('.')) settings.site.fileExtension.insert(0, 1, '.');
  if (settings.site.fileExtension == ".") {
    settings.site.fileExtension = config::SettingOf("file_ext").defaultValue;
  }
  for (std::size_t i = 0; i < settings.site.nameColors.size(); ++i) {
    settings.site.nameColors[i] = reader.Color("name" + std::to_string(i));
  }
}

void ReadKillTables(const Reader& reader, Settings& settings) {
  settings.site.hiliteMinimum = reader.Number("hilite_minhilite");
  for (const config::Entry& entry : reader.Entries("hilite_level")) {
    const std::optional<config::Rgb> color = config::ParseColor(entry.second);
    if (color) settings.site.hiliteLevels.push_back({text::NumberOf(entry.first), *color});
  }
  for (std::size_t i = 0; i < settings.site.columnColors.size(); ++i) {
    settings.site.columnColors[i] = reader.Color("column" + std::to_string(i));
  }
}

void ReadTemplates(const Reader& reader, Settings& settings) {
  settings.site.mainTemplates = reader.Templates("main_template");
  settings.site.mapTemplates = reader.Templates("map_template");
  settings.site.gameTemplates = reader.Templates("game_template");
  settings.site.gameListTemplate = reader.Text("gamelist_template");
  settings.site.gameListLoopTemplate = reader.Text("gamelist_loop_template");
  settings.site.lastGameTemplate = reader.Text("lastgame_template");
  settings.site.playerTemplate = reader.Text("player_template");
}

}  // namespace

Settings ReadSettings(const config::SettingsFile& ini) {
  const Reader reader(ini);
  Settings settings;
  ReadMain(reader, settings);
  ReadLogs(reader, settings);
  ReadGame(reader, settings);
  ReadHtml(reader, settings);
  ReadKillTables(reader, settings);
  ReadTemplates(reader, settings);
  settings.ranking.folders = {settings.site.sourcePath, ini.ProgramDirectory()};
  for (config::Entry& variable : config::LoadUserVars(ini)) {
    const auto isSame = [&](const auto& known) { return known.first == variable.first; };
    if (std::none_of(settings.site.userVariables.begin(), settings.site.userVariables.end(),
                     isSame)) {
      settings.site.userVariables.emplace_back(std::move(variable.first),
                                               std::move(variable.second));
    }
  }
  return settings;
}

}  // namespace morvane
