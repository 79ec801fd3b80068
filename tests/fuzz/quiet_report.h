#pragma once

#include "morvane/report/report.h"

namespace fuzz {

/// Hears what the engine says, and counts it.
class QuietReport : public morvane::Report {
 public:
  void Write(const morvane::Message& message) override { severe += message.severe ? 1 : 0; }
  void Progress(std::string_view, std::size_t, std::size_t) override {}

  std::size_t severe = 0;
};

}  // namespace fuzz
