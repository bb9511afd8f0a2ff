#pragma once

#include <limits>
#include <vector>

#include "PlotSeries.h"

namespace mavro {

// A place on the raster of a plot, in device pixels from the top left.
struct PlotPoint {
  double x = 0, y = 0;
  friend bool operator==(const PlotPoint&, const PlotPoint&) = default;
};

// A straight piece of a curve.
struct PlotStroke {
  PlotPoint from, to;
  friend bool operator==(const PlotStroke&, const PlotStroke&) = default;
};

// The drawable ranges shown on a raster of this size.
struct PlotView {
  PlotRange x, y;
  int width = 0, height = 0;
};

// The values of a series at a glance.
struct PlotExtent {
  bool any = false;    // there is a point with a place
  bool sorted = true;  // no x is smaller than one before it, and all have a place
  double lastX = -std::numeric_limits<double>::infinity();  // of the last point
  PlotRange x{0, 0}, y{0, 0};                               // of the points with a place

  // Takes one more point into account.
  void Add(double newX, double newY);
};
PlotExtent ExtentOf(const PlotSeries& series);

// The points of a series that can matter for a view: of a sorted series those inside, and their
// neighbours; else all. The result is the first index and the index after the last.
struct PlotPart {
  size_t begin = 0, end = 0;
  friend bool operator==(const PlotPart&, const PlotPart&) = default;
};
PlotPart PartInView(const PlotSeries& series, bool sorted, const PlotView& view);

// The curve of a series as strokes of its raster. Points that follow each other in one column of
// pixels become one stroke that reaches the lowest and the highest of them, so that no extreme is
// lost, and a curve of any length has few strokes.
std::vector<PlotStroke> Reduced(const PlotSeries& series, const PlotPart& part,
                                const PlotView& view);

// Strokes that are longer in sum than `most` pixels cover the whole raster many times. Of these
// only so many are kept that the sum is reached, spread over all; of the others the ends remain,
// so that no extreme is lost. A stroke counts at most `longest`.
std::vector<PlotStroke> Thinned(std::vector<PlotStroke> strokes, double most, double longest);

// The places of the dots of a series: of all points in one pixel the first.
std::vector<PlotPoint> Dots(const PlotSeries& series, const PlotPart& part, const PlotView& view);

}  // namespace mavro
