#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/log/log_file.h"
#include "morvane/log/log_parser.h"
#include "morvane/log/log_text.h"
#include "morvane/report/report.h"
#include "morvane/store/database.h"
#include "morvane/store/game_mark.h"

namespace morvane {

/// A log that the user names, open, and what is known and read of it.
struct OpenLog {
  enum class Kind {
    kNew,        ///< read from its first byte
    kUnchanged,  ///< all of it is in the database
    kGrown,      ///< read on from `begin`
    kTwin        ///< another log of the run holds the same
  };

  LogFile file;
  bool isLink = false;          ///< a symbolic link
  mutable std::string problem;  ///< why it cannot be read; empty for one that can
  mutable LogText text;
  Kind kind = Kind::kNew;
  std::uint64_t digest = 0;  ///< of all its bytes; 0: not asked for
  StoredLog stored;          ///< what the database has or gets of it
  std::size_t begin = 0;     ///< what lies before is known
  std::size_t linesBefore = 0;
  ParsedLog parsed;             ///< of what follows `begin`
  std::vector<GameMark> marks;  ///< of `parsed.games`, where they are asked for
  Unfinished unfinished;

  /// Its text. That of a packed log that is known is unpacked only when it is asked for; it is
  /// empty where that fails, see `problem`.
  std::string_view Bytes() const;
  /// Of its text, in bytes, unpacked or not.
  std::size_t Size() const;
  /// Where the first game that was read begins, in bytes; the log's size without one.
  std::size_t FirstGame() const;
};

/// The games at the start of a log that began in the log before it.
struct FrontGames {
  std::string carried;  ///< their lines in the log before
  ParsedLog parsed;
  std::vector<GameMark> marks;
  std::size_t replaced = 0;  ///< games read of the log itself that are pieces of these: 0 or 1
};

/// Opens logs; what cannot be read is left out with a message. Packed ones are unpacked, but for
/// those of which `isKnown` says that nothing of them will be read.
std::vector<OpenLog> OpenLogs(const std::vector<LogFile>& files,
                              const std::function<bool(const OpenLog&)>& isKnown, Report& report);

/// Reads what follows OpenLog::begin in each of `logs`, on all cores. `wantMarks`: fill
/// OpenLog::marks.
void ReadLogs(const std::vector<OpenLog*>& logs, bool wantMarks, Report& report);

/// The games with which a log, read from its first byte, goes on where another one is unfinished.
FrontGames ReadFront(const OpenLog& log, std::string carried, bool wantMarks);

/// Puts them before those that were read of the log.
void PutInFront(OpenLog& log, FrontGames front);

/// Fills OpenLog::unfinished and what a database is to know of the log.
void Settle(OpenLog& log);

/// Says what was found in a log.
void Tell(const OpenLog& log, Report& report);

/// "1 game", "2 games".
std::string Count(std::size_t count, const std::string& one);

}  // namespace morvane
