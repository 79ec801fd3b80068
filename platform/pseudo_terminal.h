#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace platform {

/// Whether what this process and its children write is shown on a terminal: standard output or
/// standard error leads to one.
bool HasTerminal();

/// An open file descriptor that is closed with its owner.
class OwnedDescriptor {
 public:
  explicit OwnedDescriptor(int value = -1) : value_(value) {}
  OwnedDescriptor(OwnedDescriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
  OwnedDescriptor& operator=(OwnedDescriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  OwnedDescriptor(const OwnedDescriptor&) = delete;
  OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
  ~OwnedDescriptor() { Close(); }

  int Value() const { return value_; }  // -1: none
  void Close();

 private:
  int value_;
};

/// A terminal of 80 columns and 25 lines without a screen: a program writes to one end of it, and
/// what it writes is read at the other. Neither end reaches a child unless it is handed over.
class PseudoTerminal {
 public:
  /// Nothing when the system has none to give.
  static std::optional<PseudoTerminal> Open();

  /// The end for a program's standard output or standard error. Close it here once the program has
  /// been started: only then is the end of all writers told.
  int ProgramEnd() const { return program_.Value(); }
  void CloseProgramEnd() { program_.Close(); }

  /// The descriptor that becomes readable when the program writes, or when the last writer ends.
  int ReadingEnd() const { return reader_.Value(); }

  /// Adds what was written and not yet read to `bytes`, at most `limit` bytes, and never waits. The
  /// result is false when nobody can write any more and everything has been read.
  bool Read(std::string& bytes, std::size_t limit);

 private:
  PseudoTerminal(OwnedDescriptor reader, OwnedDescriptor program)
      : reader_(std::move(reader)), program_(std::move(program)) {}

  OwnedDescriptor reader_;
  OwnedDescriptor program_;
};

}  // namespace platform
