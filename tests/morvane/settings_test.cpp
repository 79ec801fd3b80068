// Every setting of the file arrives where the engine keeps it.
#include "morvane/settings.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "config/rgb.h"
#include "config/settings.h"
#include "config/settings_file.h"
#include "tests/morvane/test_support.h"

namespace morvane::test {
namespace {

using config::ColorText;
using config::Encoding;
using config::Setting;

std::string Flag(bool flag) { return flag ? "1" : "0"; }
std::string Whole(double number) { return std::to_string(static_cast<int>(number)); }
std::string First(const std::vector<std::string>& list) { return list.empty() ? "" : list[0]; }

using Place = std::function<std::string(const Settings&)>;

/// Where the engine keeps the setting of each key, as a text.
std::map<std::string, Place, std::less<>> Places() {
  std::map<std::string, Place, std::less<>> places = {
      {"limit_overall_killtables",
       [](const Settings& s) { return Flag(s.limits.limitOverallKillTables); }},
      {"players_min_time", [](const Settings& s) { return Whole(s.limits.playersMinTime); }},
      {"players_min_games", [](const Settings& s) { return Whole(s.limits.playersMinGames); }},
      {"players_min_kills", [](const Settings& s) { return Whole(s.limits.playersMinKills); }},
      {"time_format", [](const Settings& s) { return s.site.timeFormat; }},
      {"use_cust_rank", [](const Settings& s) { return Flag(s.ranking.use); }},
      {"cust_rank_start", [](const Settings& s) { return Whole(s.ranking.start); }},
      {"cust_rank_template", [](const Settings& s) { return s.ranking.file; }},
      {"src_path", [](const Settings& s) { return s.site.sourcePath; }},
      {"dest_path", [](const Settings& s) { return s.site.outputPath; }},
      {"db_path", [](const Settings& s) { return s.sources.databasePath; }},
      {"use_db", [](const Settings& s) { return Flag(s.sources.useDatabase); }},
      {"use_main_log", [](const Settings& s) { return Whole(s.messageOptions[0]); }},
      {"use_logparser_log", [](const Settings& s) { return Whole(s.messageOptions[1]); }},
      {"use_templateparser_log", [](const Settings& s) { return Whole(s.messageOptions[2]); }},
      {"use_customrank_log", [](const Settings& s) { return Whole(s.messageOptions[3]); }},
      {"logpath",
       [](const Settings& s) {
         return s.sources.logs.at(0).name + "," + std::to_string(s.sources.logs.at(0).type);
       }},
      {"min_players", [](const Settings& s) { return Whole(s.limits.minPlayers); }},
      {"min_time", [](const Settings& s) { return Whole(s.limits.minTime); }},
      {"min_kills", [](const Settings& s) { return Whole(s.limits.minKills); }},
      {"game_complete", [](const Settings& s) { return Flag(s.limits.gameComplete); }},
      {"game_last_placed", [](const Settings& s) { return Whole(s.limits.gameLastPlaced); }},
      {"text_color", [](const Settings& s) { return ColorText(s.site.textColor); }},
      {"link_color", [](const Settings& s) { return ColorText(s.site.linkColor); }},
      {"vlink_color", [](const Settings& s) { return ColorText(s.site.visitedLinkColor); }},
      {"alink_color", [](const Settings& s) { return ColorText(s.site.activeLinkColor); }},
      {"bg_color", [](const Settings& s) { return ColorText(s.site.backgroundColor); }},
      {"bg_image", [](const Settings& s) { return s.site.backgroundImage; }},
      {"file_ext", [](const Settings& s) { return s.site.fileExtension; }},
      {"hilite_minhilite", [](const Settings& s) { return Whole(s.site.hiliteMinimum); }},
      {"hilite_level",
       [](const Settings& s) {
         return Whole(s.site.hiliteLevels.at(0).percentile) + "," +
                ColorText(s.site.hiliteLevels.at(0).color);
       }},
      {"main_template", [](const Settings& s) { return First(s.site.mainTemplates); }},
      {"map_template", [](const Settings& s) { return First(s.site.mapTemplates); }},
      {"game_template", [](const Settings& s) { return First(s.site.gameTemplates); }},
      {"gamelist_template", [](const Settings& s) { return s.site.gameListTemplate; }},
      {"gamelist_loop_template", [](const Settings& s) { return s.site.gameListLoopTemplate; }},
      {"lastgame_template", [](const Settings& s) { return s.site.lastGameTemplate; }},
      {"player_template", [](const Settings& s) { return s.site.playerTemplate; }},
      {"", [](const Settings& s) {
         return s.site.userVariables.at(0).first + "=" + s.site.userVariables.at(0).second;
       }}};
  for (std::size_t i = 0; i < 10; ++i) {
    places["name" + std::to_string(i)] = [i](const Settings& s) {
      return ColorText(s.site.nameColors[i]);
    };
  }
  for (std::size_t i = 0; i < 3; ++i) {
    places["column" + std::to_string(i)] = [i](const Settings& s) {
      return ColorText(s.site.columnColors[i]);
    };
  }
  return places;
}

/// Writes a value of the setting's own, made from `number`; what the engine is to keep of it.
std::string Write(config::SettingsFile& file, const Setting& setting, int number) {
  const std::string text = std::to_string(number);
  const std::string color = ColorText(config::RgbOf(number << 8));
  const auto write = [&](const std::string& value) {
    file.WriteIni(setting.section, setting.key, value);
    return value;
  };
  const std::string first = std::string(setting.key) + "0";
  switch (setting.encoding) {
    case Encoding::kText:
      return write(text);
    case Encoding::kPath:
    case Encoding::kBackgroundImage:
      return write("/path" + text);
    case Encoding::kFileExtension:
      return write("." + text);
    case Encoding::kMessageOptions:
      return write(std::to_string(number % 16));
    case Encoding::kColor:
    case Encoding::kColorWithoutNames:
      return write(color);
    case Encoding::kCount:
    case Encoding::kFlag:
    case Encoding::kFlagUnlessZero:
      return write("1");
    case Encoding::kUserVariables:
      file.WriteIni(setting.section, "variable", text);
      return "variable=" + text;
    case Encoding::kEntries:
      break;
  }
  file.WriteIni(setting.section, first, text);
  if (setting.secondKey.empty()) return text;
  const std::string second = setting.secondConstant.empty() ? color : text;
  file.WriteIni(setting.section, std::string(setting.secondKey) + "0", second);
  return text + "," + second;
}

TEST(Settings, EachIsKeptWhereItBelongs) {
  const TempFolder folder;
  config::SettingsFile file(folder.Path().string());
  const auto places = Places();
  std::map<std::string_view, std::string> written;
  std::vector<std::string_view> flags;
  int number = 97;
  for (const Setting& setting : config::Settings()) {
    const std::string value = Write(file, setting, number++);
    const bool isFlag =
        setting.encoding == Encoding::kFlag || setting.encoding == Encoding::kFlagUnlessZero;
    if (isFlag) flags.push_back(setting.key);
    if (!isFlag && setting.encoding != Encoding::kCount) written[setting.key] = value;
  }
  EXPECT_EQ(places.size(), written.size() + flags.size());
  const Settings settings = ReadSettings(file);
  for (const auto& [key, value] : written) {
    ASSERT_TRUE(places.contains(key)) << key;
    EXPECT_EQ(places.find(key)->second(settings), value) << key;
  }
  // Flags have no value of their own: each is set alone.
  for (const std::string_view set : flags) {
    for (const std::string_view flag : flags) {
      file.WriteIni(config::SettingOf(flag).section, flag, flag == set ? "1" : "0");
    }
    const Settings one = ReadSettings(file);
    for (const std::string_view flag : flags) {
      EXPECT_EQ(places.find(flag)->second(one), Flag(flag == set)) << flag << " beside " << set;
    }
  }
}

TEST(Settings, AHighlightWithoutAColorIsNone) {
  const TempFolder folder;
  WriteFile(folder.Path() / "morvane.cfg",
            "[KILL TABLES]\nhilite_levels=2\nhilite_level0=90\nhilite_color0=\"><script>\n"
            "hilite_level1=50\nhilite_color1=#0aF\n");
  const Settings settings = ReadSettings(config::SettingsFile(folder.Path().string()));
  ASSERT_EQ(settings.site.hiliteLevels.size(), 1U);
  EXPECT_EQ(settings.site.hiliteLevels[0].percentile, 50);
  EXPECT_EQ(ColorText(settings.site.hiliteLevels[0].color), "#00AAFF");
}

}  // namespace
}  // namespace morvane::test
