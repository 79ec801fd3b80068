#pragma once

#include <array>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>

#include "morvane/settings.h"

namespace morvane {

/// A message of the engine. `file` and `line` name the input that a person should mend.
struct Message {
  Log log = Log::kMain;
  bool severe = false;
  std::string text;
  std::string file;      ///< empty: none
  std::size_t line = 0;  ///< from 1; 0: the whole file
};

/// The four message logs and the screen. May be used from several threads.
class Messages {
 public:
  /// Bits of a log's options.
  enum Options { kNormalFile = 1, kNormalScreen = 2, kSevereFile = 4, kSevereScreen = 8 };

  /// Begins the four files anew in `directory`: morvane.log.txt, logparser.log.txt,
  /// templateparser.log.txt and custrank.log.txt. One that cannot be written is done without.
  /// `options` by Log, see Options.
  Messages(const std::string& directory, const std::array<int, 4>& options);
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  ~Messages();

  void Normal(Log log, std::string text, std::string file = {}, std::size_t line = 0);
  void Severe(Log log, std::string text, std::string file = {}, std::size_t line = 0);
  void Write(const Message& message);

  /// Shows how far a long run is; only on a terminal, where normal messages of the main log go to
  /// the screen, and from the second second of the run on. `done` of `all`.
  void Progress(std::string_view what, std::size_t done, std::size_t all);

 private:
  void ClearProgress();

  std::mutex mutex_;
  std::array<int, 4> options_;
  std::array<std::FILE*, 4> files_{};
  double start_ = 0;
  double shown_ = 0;
  bool progressOn_ = false;
};

}  // namespace morvane
