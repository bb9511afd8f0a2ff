#include "PlotReduce.h"

#include <algorithm>
#include <cmath>

#include "PlotTicks.h"

namespace mavro {

namespace {

constexpr double cFar = 1e12;  // pixels; beyond, too few digits are left for the raster

// From values to pixels, for one axis. The vertical axis counts from its upper end.
struct Scale {
  double zero, factor;
  double operator()(double value) const { return std::clamp((value - zero) * factor, -cFar, cFar); }
};

Scale Across(const PlotView& view) {
  return {view.x.min, view.width / view.x.Span()};
}

Scale Down(const PlotView& view) {
  return {view.y.max, -view.height / view.y.Span()};
}

// Points that follow each other in one column of pixels.
struct Run {
  int column = 0;
  size_t count = 0;
  PlotPoint first, last;
  double top = 0, bottom = 0;

  void Start(int itsColumn, PlotPoint point) {
    column = itsColumn;
    count = 1;
    first = last = point;
    top = bottom = point.y;
  }
  void Extend(PlotPoint point) {
    ++count;
    last = point;
    top = std::min(top, point.y);
    bottom = std::max(bottom, point.y);
  }
  // One that goes up or down only is seen from its ends; others need a stroke over their column.
  bool NeedsColumn() const {
    return std::min(first.y, last.y) != top || std::max(first.y, last.y) != bottom;
  }
};

// Turns runs into strokes. Columns outside of the raster are -1 and `width`.
class Strokes {
 public:
  explicit Strokes(int itsWidth) : width(itsWidth) {}

  void Add(const Run& run) {
    if (run.count == 0) return;
    if (hasBefore && !Touch(before, run) && before.last != run.first)
      strokes.push_back({before.last, run.first});
    if (IsInside(run) && run.NeedsColumn()) {
      const double x = run.column + 0.5;
      strokes.push_back({{x, run.top}, {x, run.bottom}});
    } else if (IsInside(run) && run.count > 1) {
      strokes.push_back({run.first, run.last});
    }
    // A point with gaps around it is a stroke without a length; Gap() knows only then.
    isAlone = !hasBefore && run.count == 1;
    before = run;
    hasBefore = true;
  }
  void Gap() {
    if (hasBefore && isAlone) strokes.push_back({before.first, before.first});
    hasBefore = isAlone = false;
  }

  std::vector<PlotStroke> strokes;

 private:
  bool IsInside(const Run& run) const { return run.column >= 0 && run.column < width; }
  // The strokes of neighbouring columns hide the line between them.
  bool Touch(const Run& a, const Run& b) const {
    return IsInside(a) && IsInside(b) && a.NeedsColumn() && b.NeedsColumn() &&
           std::abs(a.column - b.column) == 1 && a.top <= b.bottom && b.top <= a.bottom;
  }

  const int width;
  Run before;
  bool hasBefore = false;
  bool isAlone = false;
};

int ColumnOf(double x, int width) {
  if (x < 0) return -1;
  return x < width ? static_cast<int>(x) : width;
}

}  // namespace

void PlotExtent::Add(double newX, double newY) {
  sorted = sorted && HasPlace(newX) && newX >= lastX;
  lastX = newX;
  if (!HasPlace(newX) || !HasPlace(newY)) return;
  if (!any) {
    x = {newX, newX};
    y = {newY, newY};
  }
  any = true;
  x = {std::min(x.min, newX), std::max(x.max, newX)};
  y = {std::min(y.min, newY), std::max(y.max, newY)};
}

PlotExtent ExtentOf(const PlotSeries& series) {
  PlotExtent extent;
  for (size_t i = 0; i < series.y.size(); ++i) extent.Add(series.X(i), series.y[i]);
  return extent;
}

PlotPart PartInView(const PlotSeries& series, bool sorted, const PlotView& view) {
  const size_t count = series.y.size();
  if (!sorted || count == 0) return {0, count};
  // The first index from which a condition on x holds.
  const auto firstWhere = [&](auto condition) {
    size_t low = 0, high = count;
    while (low < high) {
      const size_t middle = low + (high - low) / 2;
      if (condition(series.X(middle)))
        high = middle;
      else
        low = middle + 1;
    }
    return low;
  };
  const size_t begin = firstWhere([&](double x) { return x >= view.x.min; });
  const size_t end = firstWhere([&](double x) { return x > view.x.max; });
  return {begin > 0 ? begin - 1 : 0, std::min(end + 1, count)};
}

std::vector<PlotStroke> Reduced(const PlotSeries& series, const PlotPart& part,
                                const PlotView& view) {
  const Scale across = Across(view), down = Down(view);
  Strokes made(view.width);
  Run run;
  for (size_t i = part.begin; i < part.end; ++i) {
    const double x = series.X(i), y = series.y[i];
    if (!HasPlace(x) || !HasPlace(y)) {
      made.Add(run);
      made.Gap();
      run.count = 0;
      continue;
    }
    const PlotPoint point{across(x), down(y)};
    const int column = ColumnOf(point.x, view.width);
    if (run.count > 0 && run.column == column) {
      run.Extend(point);
    } else {
      made.Add(run);
      run.Start(column, point);
    }
  }
  made.Add(run);
  made.Gap();
  return std::move(made.strokes);
}

std::vector<PlotStroke> Thinned(std::vector<PlotStroke> strokes, double most, double longest) {
  double sum = 0;
  for (const PlotStroke& stroke : strokes)
    sum += std::min(std::abs(stroke.to.x - stroke.from.x) + std::abs(stroke.to.y - stroke.from.y),
                    longest);
  if (sum <= most) return strokes;
  const auto step = static_cast<size_t>(std::ceil(sum / most));
  std::vector<PlotStroke> kept;
  kept.reserve(strokes.size() * 2);
  for (size_t i = 0; i < strokes.size(); ++i) {
    const PlotStroke& stroke = strokes[i];
    if (i % step == 0) {
      kept.push_back(stroke);
    } else {
      kept.push_back({stroke.from, stroke.from});
      kept.push_back({stroke.to, stroke.to});
    }
  }
  return kept;
}

std::vector<PlotPoint> Dots(const PlotSeries& series, const PlotPart& part, const PlotView& view) {
  const Scale across = Across(view), down = Down(view);
  std::vector<bool> taken(static_cast<size_t>(view.width) * static_cast<size_t>(view.height));
  std::vector<PlotPoint> dots;
  for (size_t i = part.begin; i < part.end; ++i) {
    const double x = series.X(i), y = series.y[i];
    if (!HasPlace(x) || !HasPlace(y)) continue;
    const PlotPoint point{across(x), down(y)};
    // The ends of the ranges belong to the last pixels.
    if (point.x < 0 || point.y < 0 || point.x > view.width || point.y > view.height) continue;
    const size_t column = static_cast<size_t>(std::min<double>(point.x, view.width - 1));
    const size_t row = static_cast<size_t>(std::min<double>(point.y, view.height - 1));
    auto&& isTaken = taken[row * static_cast<size_t>(view.width) + column];
    if (isTaken) continue;
    isTaken = true;
    dots.push_back(point);
  }
  return dots;
}

}  // namespace mavro
