#pragma once

#include <cstddef>
#include <string_view>

namespace morvane {

/// Whether a log goes on in the middle of a game, or of a line, where another one ends. `rest` is
/// what is unfinished there: from the "InitGame:" of its open game on, or a line without an end.
/// `log` is the other log, whose first game begins at `firstGame`. A clock that went back tells
/// that time has passed between them, and games.
bool GoesOn(std::string_view rest, std::string_view log, std::size_t firstGame);

/// Whether the first line of a log is the end of the line that `rest` breaks off in. It takes a
/// whole line to tell.
bool IsLineBroken(std::string_view rest, std::string_view log);

}  // namespace morvane
