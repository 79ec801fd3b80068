#pragma once

#include <array>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "morvane/report/report.h"

namespace morvane {

/// The four message logs and the screen.
class Messages final : public Report {
 public:
  /// Bits of a log's options.
  enum Options { kNormalFile = 1, kNormalScreen = 2, kSevereFile = 4, kSevereScreen = 8 };

  /// Begins the four files anew in `directory`: morvane.log.txt, logparser.log.txt,
  /// templateparser.log.txt and custrank.log.txt. One that cannot be written is told once and done
  /// without: what is severe goes to the screen in its stead. A screen that is gone costs nothing.
  /// `options` by Log, see Options.
  Messages(const std::string& directory, const std::array<int, 4>& options);
  ~Messages() override;

  /// The paths of the four files.
  static std::vector<std::string> Files(const std::string& directory);

  void Write(const Message& message) override;

  /// Shows how far a long run is; only on a terminal, where normal messages of the main log go to
  /// the screen, and from the second second of the run on. `done` of `all`.
  void Progress(std::string_view what, std::size_t done, std::size_t all) override;

 private:
  struct File {
    std::string path;
    int descriptor = -1;  // -1: done without
  };

  bool PutIntoFile(File& file, const std::string& line);
  void GiveUp(File& file, const std::string& reason);
  void ClearProgress();

  std::mutex mutex_;
  std::array<int, 4> options_;
  std::array<File, 4> files_{};
  double start_ = 0;
  double shown_ = 0;
  bool progressOn_ = false;
};

}  // namespace morvane
