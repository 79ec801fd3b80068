#pragma once

#include <string>

namespace support {

/// A call to the system that fails, or at which the process is killed.
struct Fault {
  enum Kind { kOpen, kWrite, kFlush, kRename, kRemove, kClose, kAny };
  static constexpr int kKill = 0;

  Kind kind = kAny;
  int number = 0;      ///< which of its kind, from 1
  int error = kKill;   ///< what errno says; kKill: the process is killed, half a write being done
  std::string folder;  ///< only calls on files below this path count
};

/// From here on the calls of this process and those forked off it are counted, and the one that
/// `fault` asks for fails. One at a time.
void Arm(const Fault& fault);

/// How many calls were counted.
int CountedCalls();

}  // namespace support
