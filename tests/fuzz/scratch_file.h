#pragma once

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>

#include "tests/fuzz/target.h"

namespace fuzz {

/// A file of a folder of its own, in memory where the system has such a file system: for readers
/// that take a path. It is gone with the program.
class ScratchFile {
 public:
  explicit ScratchFile(const std::string& name) {
    folder_ = std::filesystem::exists("/dev/shm") ? "/dev/shm/fuzz_XXXXXX" : "/tmp/fuzz_XXXXXX";
    Require(mkdtemp(folder_.data()) != nullptr, "a folder can be made");
    path_ = folder_ + "/" + name;
    descriptor_ = open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile() {
    close(descriptor_);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  const std::string& Folder() const { return folder_; }
  const std::string& Path() const { return path_; }

  void Write(std::string_view bytes) const {
    Require(ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, bytes.data(), bytes.size(), 0) ==
                                                  static_cast<ssize_t>(bytes.size()),
            "the file can be written");
  }

 private:
  std::string folder_;
  std::string path_;
  int descriptor_ = -1;
};

}  // namespace fuzz
