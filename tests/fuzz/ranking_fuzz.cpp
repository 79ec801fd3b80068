// The rules of a ranking (the first part) and the text of players.txt (the second): played over one
// game.

#include <cmath>
#include <string>

#include "morvane/log/log_parser.h"
#include "morvane/statistics/player_names.h"
#include "morvane/statistics/ranking.h"
#include "morvane/statistics/statistics.h"
#include "tests/fuzz/quiet_report.h"
#include "tests/fuzz/target.h"

namespace {

constexpr const char* kLog =
    "  0:00 InitGame: \\g_gametype\\0\\mapname\\q3dm17\n"
    "  0:01 ClientUserinfoChanged: 0 n\\Ann\\t\\0\n  0:01 ClientBegin: 0\n"
    "  0:01 ClientUserinfoChanged: 1 n\\Bob\\t\\0\n  0:01 ClientBegin: 1\n"
    "  0:02 Kill: 0 1 10: Ann killed Bob by MOD_RAILGUN\n"
    "  0:03 Kill: 1 1 7: Bob killed Bob by MOD_ROCKET_SPLASH\n"
    "  0:04 Kill: 1022 0 19: <world> killed Ann by MOD_FALLING\n"
    "  0:05 Kill: 1 0 10: Bob killed Ann by MOD_RAILGUN\n"
    "  0:06 Exit: Fraglimit hit.\n  0:06 score: 3  ping: 1  client: 0 Ann\n  0:06 ShutdownGame:\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const morvane::ParsedLog log = morvane::ParseLog(kLog, true);
  std::vector<std::string_view> parts = fuzz::Split(fuzz::Text(bytes, size), fuzz::kPart);
  parts.resize(2);
  fuzz::QuietReport report;
  morvane::Ranking ranking(parts[0], "rules", 1000, report);
  const morvane::PlayerNames names(parts[1], "players.txt", report);
  const morvane::Statistics statistics =
      morvane::MakeStatistics({}, log.games, log.vocabulary, names, &ranking);
  fuzz::Require(statistics.players.size() <= 2, "nobody is made up");
  for (const morvane::Player& player : statistics.players) {
    fuzz::Require(std::isfinite(player.rating) && !player.name.empty(),
                  "a player has a rating and a name");
  }
  return 0;
}
