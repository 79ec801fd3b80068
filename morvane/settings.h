#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace config {
class SettingsFile;
}

namespace morvane {

/// The kinds of messages; the order is that of Settings::messageOptions.
enum class Log { kMain, kParser, kTemplates, kRanking };

/// The only type of log there is: the server log of the game.
inline constexpr int kServerLog = 1000;

struct LogFile {
  std::string name;  ///< as the settings name it, for messages
  std::string path;  ///< absolute
  int type = kServerLog;
};

struct HiliteLevel {
  double percentile = 0;  ///< 0 to 100
  std::string color;      ///< as the user gave it: hostile to HTML like any text
};

/// Everything that morvane.cfg says, converted. Paths are absolute, with the system's separators.
/// Colours are "#" and six hexadecimal digits.
struct Settings {
  std::string directory;  ///< the engine's own directory

  std::vector<LogFile> logs;

  int minPlayers = 0;
  int minTime = 0;  ///< seconds
  int minKills = 0;
  bool gameComplete = false;
  int gameLastPlaced = 0;

  int playersMinTime = 0;  ///< minutes
  int playersMinGames = 0;
  int playersMinKills = 0;
  bool limitOverallKillTables = false;

  std::string timeFormat;
  bool useCustRank = false;
  double custRankStart = 0;
  std::string custRankTemplate;  ///< as given: a name in sourcePath or a path
  std::string sourcePath;
  std::string outputPath;
  std::string databasePath;
  bool useDatabase = false;
  std::array<int, 4> messageOptions{};  ///< 0 to 15, see Log and messages.h

  std::string textColor;
  std::string linkColor;
  std::string visitedLinkColor;
  std::string activeLinkColor;
  std::string backgroundColor;
  std::string backgroundImage;  ///< absolute; empty: none
  std::string fileExtension;    ///< begins with "."
  std::array<std::string, 10> nameColors;
  std::array<std::string, 3> columnColors;

  double hiliteMinimum = 0;
  std::vector<HiliteLevel> hiliteLevels;  ///< in the order of the settings

  std::vector<std::string> mainTemplates;
  std::vector<std::string> mapTemplates;
  std::vector<std::string> gameTemplates;
  std::string gameListTemplate;
  std::string gameListLoopTemplate;
  std::string lastGameTemplate;
  std::string playerTemplate;

  std::vector<std::pair<std::string, std::string>> userVariables;  ///< each name once
};

/// The settings of `ini`, relative paths taken from the directory of the file. Missing keys and
/// texts that are no number are empty texts, no entries and zeros.
Settings ReadSettings(const config::SettingsFile& ini);

}  // namespace morvane
