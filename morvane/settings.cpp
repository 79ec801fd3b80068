#include "morvane/settings.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string_view>

#include "config/colors.h"
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

/// Reads and converts values, section by section.
class Reader {
 public:
  explicit Reader(const config::SettingsFile& ini) : ini_(ini) {}

  std::string Text(std::string_view section, std::string_view key) const {
    return ini_.ReadIni(section, key);
  }
  double Number(std::string_view section, std::string_view key) const {
    return text::NumberOf(Text(section, key));
  }
  int Whole(std::string_view section, std::string_view key) const {
    return text::WholeNumberOf(Text(section, key));
  }
  /// An absolute path; a relative one is taken from the file's directory. Empty for no text.
  std::string Path(std::string_view section, std::string_view key) const {
    return Absolute(Text(section, key));
  }
  std::string Absolute(std::string_view text) const {
    if (text.empty()) return {};
    return (fs::path(ini_.ProgramDirectory()) / platform::SystemPath(text))
        .lexically_normal()
        .string();
  }
  std::string NamedColor(std::string_view key) const {
    return Html(config::NamedColor(Text("HTML", key)));
  }
  std::string ColumnColor(std::string_view key) const {
    return Html(config::HtmlToColor(Text("KILL TABLES", key)));
  }
  /// The entries of a list that say something.
  std::vector<config::Entry> Entries(std::string_view section, std::string_view countKey,
                                     std::string_view key, std::string_view second = {}) const {
    std::vector<config::Entry> entries = config::ReadEntries(ini_, section, countKey, key, second);
    std::erase_if(entries, [](const config::Entry& entry) { return entry.first.empty(); });
    return entries;
  }
  std::vector<std::string> Templates(std::string_view countKey, std::string_view key) const {
    std::vector<std::string> names;
    for (config::Entry& entry : Entries("TEMPLATES", countKey, key)) {
      names.push_back(std::move(entry.first));
    }
    return names;
  }

 private:
  static std::string Html(std::string_view intermediate) {
    return config::ColorToHtml(std::to_string(config::ColorValue(intermediate)));
  }

  const config::SettingsFile& ini_;
};

void ReadMain(const Reader& reader, Settings& settings) {
  settings.limits.limitOverallKillTables = reader.Number("Main", "limit_overall_killtables") == 1;
  settings.limits.playersMinTime = reader.Whole("Main", "players_min_time");
  settings.limits.playersMinGames = reader.Whole("Main", "players_min_games");
  settings.limits.playersMinKills = reader.Whole("Main", "players_min_kills");
  settings.site.timeFormat = reader.Text("Main", "time_format");
  settings.ranking.use = reader.Number("Main", "use_cust_rank") == 1;
  settings.ranking.start = reader.Number("Main", "cust_rank_start");
  settings.ranking.file = reader.Text("Main", "cust_rank_template");
  settings.site.sourcePath = reader.Path("Main", "src_path");
  settings.site.outputPath = reader.Path("Main", "dest_path");
  settings.sources.databasePath = reader.Path("Main", "db_path");
  settings.sources.useDatabase = reader.Number("Main", "use_db") == 1;
  for (std::size_t log = 0; log < kOptionKeys.size(); ++log) {
    settings.messageOptions[log] = std::clamp(reader.Whole("Main", kOptionKeys[log]), 0, 15);
  }
}

void ReadLogs(const Reader& reader, Settings& settings) {
  for (const config::Entry& entry :
       reader.Entries("Logs", "number_of_logs", "logpath", "logtype")) {
    settings.sources.logs.push_back(
        {entry.first, reader.Absolute(entry.first), text::WholeNumberOf(entry.second)});
  }
}

void ReadGame(const Reader& reader, Settings& settings) {
  settings.limits.minPlayers = reader.Whole("Game", "min_players");
  settings.limits.minTime = reader.Whole("Game", "min_time");
  settings.limits.minKills = reader.Whole("Game", "min_kills");
  settings.limits.gameComplete = reader.Number("Game", "game_complete") != 0;
  settings.limits.gameLastPlaced = reader.Whole("Game", "game_last_placed");
}

void ReadHtml(const Reader& reader, Settings& settings) {
  settings.site.textColor = reader.NamedColor("text_color");
  settings.site.linkColor = reader.NamedColor("link_color");
  settings.site.visitedLinkColor = reader.NamedColor("vlink_color");
  settings.site.activeLinkColor = reader.NamedColor("alink_color");
  settings.site.backgroundColor = reader.NamedColor("bg_color");
  settings.site.backgroundImage = reader.Path("HTML", "bg_image");
  settings.site.fileExtension = reader.Text("HTML", "file_ext");
  if (!settings.site.fileExtension.starts_with('.')) settings.site.fileExtension.insert(0, 1, '.');
  if (settings.site.fileExtension == ".") settings.site.fileExtension = ".html";
  for (std::size_t i = 0; i < settings.site.nameColors.size(); ++i) {
    settings.site.nameColors[i] = reader.NamedColor("name" + std::to_string(i));
  }
}

void ReadKillTables(const Reader& reader, Settings& settings) {
  settings.site.hiliteMinimum = reader.Number("KILL TABLES", "hilite_minhilite");
  for (config::Entry& entry :
       reader.Entries("KILL TABLES", "hilite_levels", "hilite_level", "hilite_color")) {
    settings.site.hiliteLevels.push_back({text::NumberOf(entry.first), std::move(entry.second)});
  }
  for (std::size_t i = 0; i < settings.site.columnColors.size(); ++i) {
    settings.site.columnColors[i] = reader.ColumnColor("column" + std::to_string(i));
  }
}

void ReadTemplates(const Reader& reader, Settings& settings) {
  settings.site.mainTemplates = reader.Templates("main_templates_number", "main_template");
  settings.site.mapTemplates = reader.Templates("map_templates_number", "map_template");
  settings.site.gameTemplates = reader.Templates("game_templates_number", "game_template");
  settings.site.gameListTemplate = reader.Text("TEMPLATES", "gamelist_template");
  settings.site.gameListLoopTemplate = reader.Text("TEMPLATES", "gamelist_loop_template");
  settings.site.lastGameTemplate = reader.Text("TEMPLATES", "lastgame_template");
  settings.site.playerTemplate = reader.Text("TEMPLATES", "player_template");
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
