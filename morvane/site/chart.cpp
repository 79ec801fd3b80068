#include "morvane/site/chart.h"

#include <algorithm>
#include <cmath>

#include "morvane/site/format.h"
#include "morvane/site/page_text.h"
#include "morvane/statistics/names.h"

namespace morvane {
namespace {

// Points stand in whole thousandths of the plot, which the browser stretches to its place.
constexpr double kPlot = 1000;
constexpr std::size_t kMostPoints = 150;

/// The values that a chart spans, in round numbers, with lines at every `step`.
struct Scale {
  double low = 0;
  double high = 1;
  double step = 1;

  long At(double value) const { return std::lround((high - value) / (high - low) * kPlot); }
};

/// A round number of which about three fit into the span.
double RoundStep(double span) {
  const double power = std::pow(10, std::floor(std::log10(span / 3)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (span / (factor * power) <= 4) return std::max(factor * power, 1.0);
  }
  return std::max(10 * power, 1.0);
}

Scale ScaleOf(double low, double high) {
  const double step = RoundStep(std::max(high - low, 1.0));
  Scale scale{std::floor(low / step) * step, std::ceil(high / step) * step, step};
  if (scale.high <= scale.low) scale.high = scale.low + step;
  return scale;
}

struct Bounds {
  ChartLine::Point least;
  ChartLine::Point most;
};

Bounds BoundsOf(const std::vector<ChartLine>& lines) {
  Bounds bounds;
  bool any = false;
  for (const ChartLine& line : lines) {
    for (const ChartLine::Point& point : line.points) {
      if (!any) bounds = {point, point};
      any = true;
      bounds.least = {std::min(bounds.least.x, point.x), std::min(bounds.least.y, point.y)};
      bounds.most = {std::max(bounds.most.x, point.x), std::max(bounds.most.y, point.y)};
    }
  }
  return bounds;
}

/// No more points than can be told apart; the last one stays.
std::vector<ChartLine::Point> Thinned(const std::vector<ChartLine::Point>& points) {
  const std::size_t every = (points.size() + kMostPoints - 1) / kMostPoints;
  if (every <= 1) return points;
  std::vector<ChartLine::Point> thinned;
  for (std::size_t i = (points.size() - 1) % every; i < points.size(); i += every) {
    thinned.push_back(points[i]);
  }
  return thinned;
}

std::string PathOf(const ChartLine& line, const Bounds& bounds, const Scale& scale) {
  const double width = std::max(bounds.most.x - bounds.least.x, 1.0);
  std::string path;
  bool first = true;
  const bool isDots = line.form == ChartLine::Form::kDots;
  for (const ChartLine::Point& point : isDots ? line.points : Thinned(line.points)) {
    const long x = std::lround((point.x - bounds.least.x) / width * kPlot);
    const std::string y = std::to_string(scale.At(point.y));
    const std::string at = std::to_string(x) + " " + y;
    if (isDots) {
      path += "M" + at + "h0";
    } else if (first) {
      path += "M" + at;
    } else if (line.form == ChartLine::Form::kSteps) {
      path += "H" + std::to_string(x) + "V" + y;
    } else {
      path += "L" + at;
    }
    first = false;
  }
  return path;
}

}  // namespace

std::string ChartHtml(const Chart& chart) {
  const bool any =
      std::ranges::any_of(chart.lines, [](const ChartLine& line) { return !line.points.empty(); });
  if (!any) return {};
  const Bounds bounds = BoundsOf(chart.lines);
  const Scale scale = ScaleOf(bounds.least.y, bounds.most.y);
  std::string html =
      "<div class=\"chart\"><svg role=\"img\" aria-label=\"" + EscapeHtml(chart.text) + "\">";
  const long steps = std::lround((scale.high - scale.low) / scale.step);
  for (long i = 0; i <= steps; ++i) {
    const double value = scale.low + static_cast<double>(i) * scale.step;
    const std::string y = Fixed(static_cast<double>(scale.At(value)) / 10, 1) + "%";
    html.append("<line x2=\"100%\" y1=\"").append(y).append("\" y2=\"").append(y);
    html.append("\"/><text y=\"").append(y).append("\" dy=\"-3\">").append(Fixed(value, 0));
    html += "</text>";
  }
  html += "<svg viewBox=\"0 0 1000 1000\" preserveAspectRatio=\"none\">";
  for (const ChartLine& line : chart.lines) {
    const char* form = line.form == ChartLine::Form::kDots ? "dots " : "";
    html += "<path class=\"" + std::string(form) + line.style + "\" d=\"" +
            PathOf(line, bounds, scale) + "\"/>";
  }
  html += "</svg></svg><p class=\"axis\" aria-hidden=\"true\">";
  for (const std::string& text : chart.foot) html += "<span>" + text + "</span>";
  return html + "</p></div>";
}

std::string SparkHtml(const std::vector<double>& values, std::string_view text) {
  if (values.size() < 2) return {};
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  const double height = std::max(*high - *low, 1e-9);
  const double width = static_cast<double>(values.size()) - 1;
  std::string points;
  for (std::size_t i = 0; i < values.size(); ++i) {
    points += (i == 0 ? "" : " ") +
              std::to_string(std::lround(static_cast<double>(i) / width * 60)) + "," +
              std::to_string(std::lround((*high - values[i]) / height * 16) + 1);
  }
  return "<svg class=\"spark\" role=\"img\" viewBox=\"0 0 60 18\" aria-label=\"" +
         EscapeHtml(text) + "\"><polyline points=\"" + points + "\"/></svg>";
}

}  // namespace morvane
