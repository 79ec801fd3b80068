#pragma once

#include <string>
#include <sys/types.h>
#include <system_error>

namespace platform {

/// Failures that the system has no number for.
class FileErrors : public std::error_category {
 public:
  static std::error_code NotRegular() { return Make(kNotRegular); }
  static std::error_code InUse() { return Make(kInUse); }

  const char* name() const noexcept override { return "file"; }
  std::string message(int number) const override {
    return number == kInUse ? "Another run of the program is at work there" : "Not a regular file";
  }

 private:
  enum Number { kNotRegular = 1, kInUse };

  static std::error_code Make(Number number) {
    static const FileErrors category;
    return {number, category};
  }
};

/// Why something that exists, of this st_mode, cannot be used as a file; nothing when it can.
std::error_code RefuseKind(mode_t mode);

}  // namespace platform
