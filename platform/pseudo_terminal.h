#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "platform/descriptor.h"

namespace platform {

/// Whether what this process and its children write is shown on a terminal: standard output or
/// standard error leads to one.
bool HasTerminal();

/// A terminal of 80 columns and 25 lines without a screen: a program writes to one end of it, and
/// what it writes is read at the other. Neither end reaches a child unless it is handed over.
class PseudoTerminal {
 public:
  /// Nothing when the system has none to give.
  static std::optional<PseudoTerminal> Open();

  /// The end for a program's standard output or standard error. Close it here once the program has
  /// been started: only then is the end of all writers told.
  int ProgramEnd() const { return program_.Get(); }
  void CloseProgramEnd() { program_.Close(); }

  /// The descriptor that becomes readable when the program writes, or when the last writer ends.
  int ReadingEnd() const { return reader_.Get(); }

  /// Adds what was written and not yet read to `bytes`, at most `limit` bytes, and never waits. The
  /// result is false when nobody can write any more and everything has been read.
  bool Read(std::string& bytes, std::size_t limit);

 private:
  PseudoTerminal(Descriptor reader, Descriptor program)
      : reader_(std::move(reader)), program_(std::move(program)) {}

  Descriptor reader_;
  Descriptor program_;
};

}  // namespace platform
