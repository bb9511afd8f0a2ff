// SPDX-License-Identifier: MIT-0
#include "plotform.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "formula.h"

namespace {

constexpr int cPoints = 5000;

std::string Short(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

// True if the text is a number and nothing else.
bool IsNumber(const std::string& text, double& number) {
  char* end = nullptr;
  number = std::strtod(text.c_str(), &end);
  return !text.empty() && *end == '\0' && std::isfinite(number);
}

}  // namespace

PlotForm::PlotForm() {
  Initialize();
  AddCurve(formula.text);
}

void PlotForm::Place(Control& control, int left, int width, const std::string& caption) {
  const bool isLabel = dynamic_cast<Label*>(&control) != nullptr;
  control.SetBounds(left, isLabel ? 14 : 8, width, isLabel ? 20 : 28);
  if (!caption.empty()) control.text = caption;
  line.Add(&control);
}

void PlotForm::Initialize() {
  text = "Plotter";
  SetBounds(100, 100, 760, 520);
  line.dock = Dock::cTop;
  line.height = 44;
  Place(formulaLabel, 8, 28, "&y =");
  Place(formula, 40, 228, "sin(x) + sin(3*x)/3");
  Place(fromLabel, 280, 40, "&from");
  Place(from, 322, 64, "-10");
  Place(toLabel, 396, 20, "&to");
  Place(to, 418, 64, "10");
  Place(plot, 494, 80, "&Plot");
  Place(clear, 580, 80, "&Clear");
  Place(save, 666, 86, "&Save...");
  for (Edit* field : {&formula, &from, &to}) field->onKeyDown.Add_H(this, &This::KeyInField);
  plot.onClick.Add_H(this, &This::Plot);
  clear.onClick.Add_H(this, &This::Clear);
  save.onClick.Add_H(this, &This::Save);
  Add(&line);
  status.dock = Dock::cBootom;
  status.AddPane(0, "Drag in the plot to zoom, double click to see all again");
  status.AddPane(240, "");
  Add(&status);
  curves.dock = Dock::cFill;
  curves.xTitle = "x";
  curves.yTitle = "y";
  curves.onZoom.Add_H(this, &This::Zoomed);
  curves.onMouseMove.Add_H(this, &This::ShowPlace);
  Add(&curves);
}

bool PlotForm::ReadRange() {
  double newFirst = 0, newLast = 0;
  if (!IsNumber(from.text, newFirst) || !IsNumber(to.text, newLast) || newFirst >= newLast) {
    status.SetPane(0, "\"from\" and \"to\" are numbers, the smaller one first");
    return false;
  }
  first = newFirst;
  last = newLast;
  return true;
}

PlotSeries PlotForm::Curve(const std::string& caption, const Formula& parsed) {
  PlotSeries series;
  series.name = caption;
  for (int i = 0; i < cPoints; ++i) {
    const double x = first + (last - first) * i / (cPoints - 1);
    series.x.push_back(x);
    series.y.push_back(parsed.At(x));
  }
  return series;
}

bool PlotForm::AddCurve(const std::string& wanted) {
  Formula parsed;
  if (!parsed.Parse(wanted)) {
    status.SetPane(0, parsed.Error());
    return false;
  }
  curves.AddSeries(Curve(wanted, parsed));
  status.SetPane(0, "Curves: " + std::to_string(curves.SeriesCount()));
  return true;
}

void PlotForm::KeyInField(KeyArgs& args) {
  args.handled = args.key == Key::cEnter;
  NotifyArgs pressed{&plot, 0};
  if (args.handled) Plot(pressed);
}

void PlotForm::Plot(NotifyArgs&) {
  if (ReadRange()) AddCurve(formula.text);
  formula.Focus();
}

void PlotForm::Clear(NotifyArgs&) {
  curves.Clear();
  curves.ShowAll();
  status.SetPane(0, "");
}

void PlotForm::Save(NotifyArgs&) {
  FileDialog dialog("PNG pictures|*.png", FileDialog::cSave);
  dialog.defaultExtension = "png";
  if (!dialog.Run()) return;
  const FileResult result = curves.SavePicture(dialog.fileName);
  if (result.Ok())
    status.SetPane(0, "Saved as " + dialog.fileName);
  else
    Information(result.Words());
}

void PlotForm::Zoomed(NotifyArgs& args) {
  status.SetPane(0, args.value ? "Escape or a double click shows all again" : "");
}

void PlotForm::ShowPlace(MouseArgs& args) {
  status.SetPane(1, "x " + Short(curves.XAt(args.x)) + "   y " + Short(curves.YAt(args.y)));
}
