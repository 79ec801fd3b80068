#pragma once

#include <cstdint>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#define ZLIB_CONST
#include <zlib.h>

#include "morvane/log/log_parser.h"
#include "morvane/report/report.h"
#include "morvane/statistics/game.h"
#include "tests/support/files.h"

namespace morvane::test {

using support::ReadFile;
using support::TempFolder;
using support::WriteFile;

inline const std::string kDashes(60, '-');

/// The lines that open a game, at 0:00.
inline std::string Init(std::string_view map = "q3dm17", int type = 0) {
  return "  0:00 " + kDashes + "\n  0:00 InitGame: \\g_gametype\\" + std::to_string(type) +
         "\\mapname\\" + std::string(map) + "\n";
}

/// A client that comes into a slot.
inline std::string Join(int slot, std::string_view name, int team = 0,
                        std::string_view stamp = "  0:01 ") {
  const std::string number = std::to_string(slot);
  const std::string start(stamp);
  return start + "ClientConnect: " + number + "\n" + start + "ClientUserinfoChanged: " + number +
         " n\\" + std::string(name) + "\\t\\" + std::to_string(team) + "\\model\\sarge\n" + start +
         "ClientBegin: " + number + "\n";
}

/// The same of a bot.
inline std::string JoinBot(int slot, std::string_view name, int team = 0) {
  std::string lines = Join(slot, name, team);
  return lines.insert(lines.find("\\model\\"), "\\skill\\    3.00");
}

/// The line that tells the time, in seconds since 1970.
inline std::string ServerTime(std::int64_t seconds, const std::string& stamp = "  0:00 ") {
  const std::time_t time = seconds;
  std::tm parts = {};
  localtime_r(&time, &parts);
  char text[32];
  std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &parts);
  return stamp + "ServerTime:\t" + text + "\t00:00 (1 JAN 1970)\n";
}

inline std::string Kill(int killer, int victim, std::string_view means = "RAILGUN",
                        std::string_view stamp = "  1:00 ") {
  return std::string(stamp) + "Kill: " + std::to_string(killer) + " " + std::to_string(victim) +
         " 10: x killed y by MOD_" + std::string(means) + "\n";
}

inline std::string Kills(int count, int killer, int victim) {
  std::string text;
  for (int i = 0; i < count; ++i) text += Kill(killer, victim);
  return text;
}

inline const std::string kShutdown = "  5:00 ShutdownGame:\n  5:00 " + kDashes + "\n";

/// A game of two in which the first kills the second `kills` times.
inline std::string Duel(std::string_view winner, std::string_view loser, int kills,
                        std::string_view map = "q3dm17") {
  return Init(map) + Join(0, winner) + Join(1, loser) + Kills(kills, 0, 1) + kShutdown;
}

/// What gzip makes of a text.
inline std::string Packed(std::string_view text) {
  constexpr int kGzip = 16 + MAX_WBITS;
  z_stream stream = {};
  deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzip, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, text.size()), '\0');
  stream.next_in = reinterpret_cast<const Bytef*>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

/// Remembers what is told: a line for each message, as "FILE:LINE: TEXT".
class Told final : public Report {
 public:
  void Write(const Message& message) override {
    std::string& lines = message.severe ? severe : normal;
    if (!message.file.empty()) {
      lines += message.file;
      lines += message.line > 0 ? ":" + std::to_string(message.line) + ": " : ": ";
    }
    lines += message.text + "\n";
  }
  void Progress(std::string_view /*what*/, std::size_t /*done*/, std::size_t /*all*/) override {}

  std::string severe;
  std::string normal;
};

/// The entrant of a name; a failure when there is none.
inline const Entrant& EntrantOf(const Game& game, std::string_view name) {
  for (const Entrant& entrant : game.entrants) {
    if (entrant.name == name) return entrant;
  }
  ADD_FAILURE() << "no entrant " << name;
  static const Entrant kNone;
  return kNone;
}

/// The only game of a log.
inline Game OnlyGame(std::string_view log) {
  ParsedLog parsed = ParseLog(log, true);
  EXPECT_EQ(parsed.games.size(), 1U);
  return parsed.games.empty() ? Game{} : std::move(parsed.games.front());
}

}  // namespace morvane::test
