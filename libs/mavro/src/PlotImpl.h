#pragma once

#include <optional>
#include <string>
#include <vector>

#include "PaintBoxImpl.h"
#include "PlotReduce.h"
#include "PlotTicks.h"
#include "PlotXY.h"

namespace mavro {

// A series and what is known about its points.
struct KeptSeries {
  PlotSeries series;
  PlotExtent extent;
};

// All that the picture of a plot depends on.
struct PlotLook {
  const std::vector<KeptSeries>& series;
  PlotRange x, y;     // drawable
  Color ground, ink;  // plain
  std::string title, xTitle, yTitle;
  bool hasLegend = true;
  bool hasGrid = true;
};

// The place of one series in the legend: a short line in its colour, then the name.
struct LegendEntry {
  int left = 0, top = 0;
  size_t series = 0;
  std::string name;  // as much of it as has room
};

// Where the parts of a plot are, in a picture of a given size.
struct PlotPlan {
  Rect area;  // inside the axes; empty if there is no room for a plot
  TickRoom xRoom, yRoom;
  std::vector<PlotTick> xTicks, yTicks;
  std::vector<LegendEntry> legend;
};

// Measures texts with the font of `graphics`.
PlotPlan PlanPlot(const Graphics& graphics, const PlotLook& look, int width, int height);
void DrawPlot(Graphics& graphics, const PlotLook& look, const PlotPlan& plan, int width,
              int height);
// The colour of a series on a ground: its own, or the one of its index.
Color ColorOfSeries(const PlotSeries& series, size_t index, Color ground);

class PlotXY::Impl : public PaintBox::Impl {
 public:
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  PlotLook Look() const;
  // The plan for the client area; an empty one without a window.
  PlotPlan Plan();
  void Draw();
  // The band of a drag and the mark of the focus, over the drawing.
  void DrawMarks(Graphics& graphics);
  Bitmap ToBitmap(int width, int height, double ratio);
  Bitmap Shown();

  // The series or the look has changed.
  void Changed();
  void TitleChanged();
  // Shows a part, or with no part all points; tells onZoom if that changes what is shown.
  void ShowPart(std::optional<PlotRange> x, std::optional<PlotRange> y);
  KeptSeries& At(int series);

  std::vector<KeptSeries> series;
  std::optional<PlotRange> zoomX, zoomY;  // none: all points
  std::string title, xTitle, yTitle;
  bool showLegend = true;
  bool showGrid = true;

 protected:
  bool OnOwnKey(int virtualKey) override;

 private:
  PlotRange AllOf(PlotRange PlotExtent::*axis) const;
  bool Press(Point at);
  void DragTo(Point at);
  void Release();
  bool CancelDrag();
  // The band of the drag: the whole area across an axis that is not zoomed by it.
  Rect Band() const;
  bool Wheel(Point at, double degrees);
  bool ZoomAt(double xShare, double yShare, double factor);
  void Pan(double xShare, double yShare);

  bool isDragging = false;
  Point dragStart, dragEnd;
  Rect dragArea;  // the area inside the axes when the drag began
};

}  // namespace mavro
