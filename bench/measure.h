#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace bench {

/// What something took, in seconds: on the clock, and of the processor by this process, which tells
/// more where others use the machine, too.
struct Cost {
  double clock = 0;
  double processor = 0;
};

/// A moment on both.
inline Cost Now() {
  timespec used{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  const auto clock = std::chrono::steady_clock::now().time_since_epoch();
  return {std::chrono::duration<double>(clock).count(),
          static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9};
}

inline Cost operator-(const Cost& end, const Cost& begin) {
  return {end.clock - begin.clock, end.processor - begin.processor};
}

template <class Work>
Cost CostOf(const Work& work) {
  const Cost begin = Now();
  work();
  return Now() - begin;
}

/// The median of each figure; of nothing, nothing.
inline Cost Median(const std::vector<Cost>& costs) {
  if (costs.empty()) return {};
  const auto middle = [&](double Cost::*figure) {
    std::vector<double> figures(costs.size());
    std::ranges::transform(costs, figures.begin(), [&](const Cost& cost) { return cost.*figure; });
    const auto half = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
    std::ranges::nth_element(figures, half);
    return *half;
  };
  return {middle(&Cost::clock), middle(&Cost::processor)};
}

/// Prints a row of the table of bench/run.sh.
inline void PrintRow(const std::string& what, const std::string& against,
                     const std::string& measured, const std::string& aim) {
  std::printf("| %s | %s | %s | %s |\n", what.c_str(), against.c_str(), measured.c_str(),
              aim.c_str());
}

/// A number of up to two digits behind the point.
inline std::string Fixed(double number, int digits = 2) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", digits, number);
  return text;
}

}  // namespace bench
