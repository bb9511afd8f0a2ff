// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>
#include <string>

class Formula;

// The window of the plotter: a line for the formula and the range of x, the curves, and the place
// under the mouse.
class PlotForm : public Form {
 public:
  typedef PlotForm This;
  PlotForm();

  // Adds the curve of a formula; false if it is none, which the status bar explains.
  bool AddCurve(const std::string& formula);

 private:
  void Initialize();
  void Place(Control& control, int left, int width, const std::string& caption = "");
  // Computes a curve for the range of x that the fields tell.
  PlotSeries Curve(const std::string& text, const Formula& parsed);
  bool ReadRange();

  void KeyInField(KeyArgs& args);
  void Plot(NotifyArgs& args);
  void Clear(NotifyArgs& args);
  void Save(NotifyArgs& args);
  void Zoomed(NotifyArgs& args);
  void ShowPlace(MouseArgs& args);

  Panel line;
  Label formulaLabel, fromLabel, toLabel;
  Edit formula, from, to;
  Button plot, clear, save;
  PlotXY curves;
  StatusBar status;
  double first = -10, last = 10;
};
