#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "morvane/log/log_parser.h"

namespace morvane {

/// A stretch of one of several logs.
struct Stretch {
  std::size_t log = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// Cuts logs into stretches of about `bytes`, each but a log's first beginning with a game.
std::vector<Stretch> CutLogs(const std::vector<std::string_view>& logs, std::size_t bytes);

/// Says of what was read from a stretch where it stands in the log: from byte `begin` on.
void MoveTo(ParsedLog& stretch, std::size_t begin);

/// Joins a log and the stretch that follows it directly.
void Append(ParsedLog& log, ParsedLog&& next);

/// Reads several logs at the same time on `threads` threads (0: as many as the machine has cores).
/// `done` is called, from any of them, when a stretch has been read. In the order of the logs.
/// Games in which nobody played are left out, see DropEmptyGames.
std::vector<ParsedLog> ParseLogs(const std::vector<std::string_view>& logs, bool keepEvents,
                                 const std::function<void(const Stretch&)>& done,
                                 unsigned threads = 0);

}  // namespace morvane
