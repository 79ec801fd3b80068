#pragma once

#include <cerrno>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace platform {

/// What the system's last failed call left in errno.
inline std::error_code LastError() { return {errno, std::generic_category()}; }

/// An open file descriptor that closes itself; -1: none.
class Descriptor {
 public:
  explicit Descriptor(int value = -1) : value_(value) {}
  Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Descriptor() {
    if (value_ >= 0) close(value_);
  }

  int Get() const { return value_; }
  /// Closes now, so that a failing close is heard of. Of none nothing is to be heard.
  std::error_code Close() {
    const int value = std::exchange(value_, -1);
    return value < 0 || close(value) == 0 ? std::error_code() : LastError();
  }

 private:
  int value_;
};

}  // namespace platform
