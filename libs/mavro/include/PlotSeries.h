#pragma once

#include <string>
#include <vector>

#include "Color.h"

namespace mavro {

// A part of an axis, from the lower to the upper end.
struct PlotRange {
  double min = 0, max = 1;
  double Span() const { return max - min; }
  friend bool operator==(const PlotRange&, const PlotRange&) = default;
};

// How the points of a series are shown: joined by lines, each as a dot, or both.
enum class PlotStyle : int { cLines, cPoints, cBoth };

// The points of one curve and their look. A point whose x or y is not a number or infinite is a
// gap: nothing is drawn there, and the line is interrupted.
struct PlotSeries {
  std::string name;  // for the legend, which leaves a series without a name out
  PlotStyle style = PlotStyle::cLines;
  Color color;            // the default colour means the next one that fits the background
  std::vector<double> x;  // as many as `y`; or empty, which means 0, 1, 2 and so on
  std::vector<double> y;

  // The x of the point at an index of `y`.
  double X(size_t i) const { return x.empty() ? static_cast<double>(i) : x[i]; }
};

}  // namespace mavro
