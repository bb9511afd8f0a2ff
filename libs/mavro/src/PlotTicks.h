#pragma once

#include <functional>
#include <string>
#include <vector>

#include "PlotSeries.h"

namespace mavro {

// A place on an axis and its label.
struct PlotTick {
  double value = 0;
  std::string label;
  friend bool operator==(const PlotTick&, const PlotTick&) = default;
};

// True for a number that has a place in a plot: neither infinite nor "not a number".
bool HasPlace(double value);

// The nearest range that can be drawn: its ends are in order and at most 1e300, and it is wide
// enough for its numbers to differ. A range with an end that has no place becomes 0 to 1.
PlotRange DrawableRange(const PlotRange& range);

// The range of an axis that shows values from `least` to `largest`, with a little air at both ends.
PlotRange RangeAround(double least, double largest);

// The smallest of 1, 2 and 5 times a power of ten that divides `span` into at most `most` steps.
double TickStep(double span, int most);

// The multiples of the step in a drawable range, at most `most` + 1, each with a label. Labels show
// as many digits as the step needs, so that they differ.
std::vector<PlotTick> TicksOf(const PlotRange& range, int most);

// As many ticks as have room on an axis of `length` pixels: labels never overlap and have a gap
// between them. `size` measures a label along the axis. Labels that would stand out are moved into
// the axis from `before` pixels before to `after` pixels after it.
struct TickRoom {
  int length = 0;
  int before = 0;
  int after = 0;
  int gap = 0;  // the smallest distance of two labels
};
using LabelSize = std::function<int(const std::string&)>;
std::vector<PlotTick> FitTicks(const PlotRange& range, const TickRoom& room, const LabelSize& size);

// The first pixel of a label of this size whose tick is at `tick`.
int LabelStart(int tick, int size, const TickRoom& room);
// The pixel of a value on an axis of `length` pixels, from the range's lower end.
int TickPixel(const PlotRange& range, int length, double value);

}  // namespace mavro
