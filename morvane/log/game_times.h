#pragma once

#include <cstdint>

#include "morvane/log/log_parser.h"

namespace morvane {

/// Sets the starts of the games. Where the log tells a date ("ServerTime:"), that holds, also for
/// the games around it for as long as the stamps run on. Else the stamps tell how long before
/// `lastChange`, when the log was last changed, a game began; but only since they last began anew:
/// how much time lies before that nobody knows, so that games there were then or earlier. Games
/// without stamps and date have no start.
void SetStarts(ParsedLog& log, std::int64_t lastChange);

}  // namespace morvane
