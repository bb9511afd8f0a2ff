#pragma once

#include "FileText.h"
#include "PaintBox.h"
#include "PlotSeries.h"

namespace mavro {

// A plot of series of numbers, with axes, a grid and a legend. A drag of the left button zooms to
// the rectangle; a drag in one direction only zooms this axis. The wheel zooms at the mouse, the
// keys + and - in the middle, the arrows move the part shown. Escape or a double click shows all
// again. Ctrl+C copies the picture. A handler that marks a mouse event as handled keeps it from the
// plot.
//
// The drawing is renewed at the next painting, however many calls changed the plot before. Handlers
// of onDraw may draw over the finished plot in the back buffer.
class PlotXY : public PaintBox {
 public:
  class Impl;
  PlotXY();

  // Adds a series and returns its index. Indices of other functions must exist; they are counted
  // from 0.
  int AddSeries(PlotSeries series);
  int AddSeries(const std::string& name, PlotStyle style = PlotStyle::cLines,
                Color color = Color());
  // Replaces the points of a series. The lists have the same length, or `x` is empty.
  void SetPoints(int series, std::vector<double> x, std::vector<double> y);
  // Appends one point.
  void AddPoint(int series, double x, double y);
  void RemoveSeries(int series);
  void Clear();
  int SeriesCount() const;
  const PlotSeries& Series(int series) const;
  // The colour that a series is drawn with on the present background.
  Color SeriesColor(int series) const;

  // The part of the axes that is shown.
  PlotRange XRange() const;
  PlotRange YRange() const;
  // Shows this part. Ends in the wrong order are exchanged; a range with an end that is not a
  // number or infinite changes nothing. A range that is too narrow for the numbers is widened.
  void Zoom(const PlotRange& x, const PlotRange& y);
  // Shows all points, also those that are added later.
  void ShowAll();
  bool IsZoomed() const;

  // The area inside the axes, in client coordinates; empty without a window, or if the control is
  // too small for a plot.
  Rect PlotArea();
  // The values at a place in client coordinates; the axes' lower ends while the area is empty.
  double XAt(int left);
  double YAt(int top);

  // The plot in another size, in units of length; also without a window. Empty if no bitmap can
  // have this size.
  Bitmap ToBitmap(int newWidth, int newHeight, double pixelRatio = 1);
  // The plot as it is shown: written as a PNG file, or as the picture to paste.
  FileResult SavePicture(const std::string& path);
  void CopyPicture();

  WriteProperty<std::string> title, xTitle, yTitle;  // no text, no room for it
  WriteProperty<bool> showLegend, showGrid;

  // The part shown has been changed by the user, by Zoom or by ShowAll: value 1 while zoomed.
  NotifyEvent onZoom;

 private:
  Impl& TheImpl() const;
  void OnDraw(NotifyArgs& args);
  void OnPaint(PaintArgs& args);
};

}  // namespace mavro
