#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace morvane {

/// The kinds of messages, each with a file of its own.
enum class Log { kMain, kParser, kTemplates, kRanking };

/// A message of the engine. `file` and `line` name the input that a person should mend.
struct Message {
  Log log = Log::kMain;
  bool severe = false;
  std::string text;
  std::string file;      ///< empty: none
  std::size_t line = 0;  ///< from 1; 0: the whole file
};

/// Who is told what happens in a run. May be used from several threads.
class Report {
 public:
  Report() = default;
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  virtual ~Report() = default;

  virtual void Write(const Message& message) = 0;
  /// How far a long run is: `done` of `all`.
  virtual void Progress(std::string_view what, std::size_t done, std::size_t all) = 0;

  void Normal(Log log, std::string text, std::string file = {}, std::size_t line = 0) {
    Write({log, false, std::move(text), std::move(file), line});
  }
  void Severe(Log log, std::string text, std::string file = {}, std::size_t line = 0) {
    Write({log, true, std::move(text), std::move(file), line});
  }
};

}  // namespace morvane
