#pragma once

#include <span>

namespace morvane {

/// The program morvane.exe: does a run, or what its arguments (without the program's own name) ask
/// for, which are only known to `--help` and `--version`. The result is its exit code: that of Run,
/// 0 after an answer, 2 for an argument it does not know. Nothing is thrown.
int RunProgram(std::span<const char* const> arguments) noexcept;

}  // namespace morvane
