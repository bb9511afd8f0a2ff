// SPDX-License-Identifier: MIT-0
#include "plotpage.h"

#include <cmath>

namespace {

constexpr int cMostSteps = 600;

// The number of the half wave at a place.
int HalfWave(double x) {
  return static_cast<int>(std::floor(3 * x / 3.14159265358979323846));
}

}  // namespace

PlotPage::PlotPage(Log log) : GalleryPage("Plots", std::move(log)) {
  PlacePlot();
  PlaceBox();
}

void PlotPage::PlacePlot() {
  plot.title = "Damped waves";
  plot.xTitle = "time";
  plot.AddSeries("wave");
  plot.AddSeries("its limit", PlotStyle::cLines);
  plot.AddSeries("peaks", PlotStyle::cPoints);
  plot.borderStyle = BorderStyle::cFrame;
  plot.onZoom.Add_H(this, &This::Zoomed);
  Place(plot, 12, 8, 494, 220);
  for (int i = 0; i < cMostSteps / 3; ++i) {
    NotifyArgs step{&plot, 0};
    Grow(step);
  }
  clock.onTimer.Add_H(this, &This::Grow);
  clock.Start(100);
  copy.text = "Copy plot";
  copy.icon = Icons::icoCopy;
  copy.onClick.Add_H(this, &This::Copy);
  Place(copy, 396, 240, 110, 34);
}

void PlotPage::PlaceBox() {
  box.backColor = Color::cWindow;
  box.borderStyle = BorderStyle::cFrame;
  box.cursor = Cursor::cCross;
  box.onDraw.Add_H(this, &This::DrawBox);
  box.onPaint.Add_H(this, &This::PaintHint);
  box.onMouseDown.Add_H(this, &This::Scribble);
  box.onMouseMove.Add_H(this, &This::Scribble);
  box.onDblClick.Add_H(this, &This::ClearBox);
  Place(box, 12, 236, 372, 98);
}

// One more point of each curve; the peaks are where the wave turns.
void PlotPage::Grow(NotifyArgs&) {
  if (steps >= cMostSteps) return clock.Stop();
  const double x = steps++ / 30.0;
  const double limit = std::exp(-x / 6);
  plot.AddPoint(0, x, limit * std::cos(3 * x));
  plot.AddPoint(1, x, limit);
  if (HalfWave(x) != HalfWave(x - 1 / 30.0)) plot.AddPoint(2, x, limit * std::cos(3 * x));
}

void PlotPage::Zoomed(NotifyArgs& args) {
  Say(args.value ? "plot: a part" : "plot: all");
}

void PlotPage::Copy(NotifyArgs&) {
  plot.CopyPicture();
  Say("plot: copied");
}

// A new drawing: the window has another size or other colours.
void PlotPage::DrawBox(NotifyArgs&) {
  box.BackBuffer().FillRect({0, 0, box.width, box.height}, Color::cWindow);
  isEmpty = true;
}

void PlotPage::PaintHint(PaintArgs& args) {
  if (!isEmpty) return;
  args.graphics->SetTextColor(Color::cWindowText);
  args.graphics->TextOut(8, 6, "Draw here; a double click clears");
}

void PlotPage::Scribble(MouseArgs& args) {
  if (args.button != MouseArgs::cLeft) return;
  if (args.kind == MouseArgs::cMove) {
    Graphics& graphics = box.BackBuffer();
    graphics.SetPen(Pen(Color(0x3080D0), 2));
    graphics.MoveTo(last.x, last.y);
    graphics.LineTo(args.x, args.y);
    isEmpty = false;
    box.Invalidate();
  }
  last = {args.x, args.y};
}

void PlotPage::ClearBox(NotifyArgs&) {
  box.Redraw();
  Say("paint box: cleared");
}
