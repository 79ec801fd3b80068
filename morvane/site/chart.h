#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// A line of a chart: its points from left to right.
struct ChartLine {
  struct Point {
    double x = 0;
    double y = 0;
  };
  std::string style;  ///< class of the style sheet; needs no escaping
  std::vector<Point> points;
  enum class Form { kLine, kSteps, kDots } form = Form::kLine;
};

/// A chart before it is drawn.
struct Chart {
  /// What a screen reader says in its place: a text that tells what is to be seen.
  std::string text;
  std::vector<ChartLine> lines;
  /// Along the foot, from the left edge to the right one, evenly spread. HTML.
  std::vector<std::string> foot;
};

/// The chart as HTML with inline SVG, as wide as its place; the colors come from the style sheet.
/// Empty where no line has a point.
std::string ChartHtml(const Chart& chart);

/// A curve of a word's size without axes. `text`: for a screen reader. Empty for fewer than two
/// values.
std::string SparkHtml(const std::vector<double>& values, std::string_view text);

}  // namespace morvane
