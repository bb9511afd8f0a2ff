// A plot of a million points from the change of its data to the painted window, in process time,
// beside a plain loop over the same numbers. Limit: 50 ms for a curve or a cloud. A curve that goes
// from side to side with each point has no columns to be reduced to; it is shown for comparison,
// without a limit.

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "Application.h"
#include "Entry.h"
#include "Form.h"
#include "PlotXY.h"
#include "Shortest.h"
#include "SysImpl.h"

namespace {

constexpr int cRounds = 9;
constexpr double cLimit = 50;  // ms
constexpr int cWidth = 1000, cHeight = 700;

struct Kind {
  const char* name;
  mavro::PlotStyle style;
  double (*x)(int i, int count);
  double (*y)(int i, int count);
  bool hasLimit;
};

std::mt19937 random(1);

double Counted(int i, int) {
  return i;
}
double Any(int, int) {
  return std::uniform_real_distribution<double>(-1, 1)(random);
}
double Wave(int i, int count) {
  return std::sin(20.0 * i / count);
}
double TurnX(int i, int count) {
  return std::cos(200.0 * i / count) * i / count;
}
double TurnY(int i, int count) {
  return std::sin(200.0 * i / count) * i / count;
}

const Kind cKinds[] = {
    {"wave", mavro::PlotStyle::cLines, Counted, Wave, true},
    {"noise", mavro::PlotStyle::cLines, Counted, Any, true},
    {"spiral", mavro::PlotStyle::cLines, TurnX, TurnY, true},
    {"cloud of dots", mavro::PlotStyle::cPoints, Any, Any, true},
    {"wave, zoomed", mavro::PlotStyle::cBoth, Counted, Wave, true},
    {"from side to side", mavro::PlotStyle::cLines, Any, Any, false},
};

// The shortest of several runs, in milliseconds of this process.
double ProcessTime(const std::function<void()>& job, int rounds = cRounds) {
  double shortest = 1e9;
  for (int i = 0; i < rounds; ++i) {
    const std::clock_t start = std::clock();
    job();
    shortest = std::min(shortest, 1e3 * double(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return shortest;
}

mavro::PlotSeries Made(const Kind& kind, int count) {
  mavro::PlotSeries series{kind.name, kind.style, mavro::Color(), {}, {}};
  for (int i = 0; i < count; ++i) {
    series.x.push_back(kind.x(i, count));
    series.y.push_back(kind.y(i, count));
  }
  return series;
}

double PlainLoop(const mavro::PlotSeries& series) {
  double sum = 0;
  const double passed = ProcessTime([&] {
    for (size_t i = 0; i < series.y.size(); ++i)
      sum += std::max(series.x[i], series.y[i]) * (series.x[i] < series.y[i]);
  });
  bench::Check(std::isfinite(sum), "plot_bench", "the plain loop");
  return passed;
}

bool Measure(const Kind& kind, int count, mavro::PlotXY& plot) {
  const mavro::PlotSeries series = Made(kind, count);
  plot.Clear();
  plot.ShowAll();
  plot.AddSeries(series);
  if (std::string(kind.name).ends_with("zoomed")) plot.Zoom({0, count / 100.0}, {-1, 1});
  const auto paint = [&] {
    plot.Redraw();
    plot.Update();
    QCoreApplication::processEvents();
  };
  paint();
  const double ours = ProcessTime(paint, kind.hasLimit ? cRounds : 1);
  const double loop = PlainLoop(series);
  const bool ok = !kind.hasLimit || count < 1000000 || ours <= cLimit;
  std::printf("%-18s %8d points %8.1f ms   plain loop %6.2f ms   ratio %6.1f%s\n", kind.name, count,
              ours, loop, ours / std::max(loop, 0.01),
              !kind.hasLimit ? "   (no limit)"
              : ok           ? ""
                             : "   TOO LONG");
  return ok;
}

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  Form form;
  PlotXY plot;
  form.SetBounds(0, 0, cWidth, cHeight);
  plot.dock = Dock::cFill;
  plot.title = "Bench";
  form.Add(&plot);
  form.CreateControl();
  SetStateTree(&form, cAboutToShow);
  form.impl->Show(true);
  QCoreApplication::processEvents();
  bool ok = true;
  for (const Kind& kind : cKinds)
    for (const int count : {10000, 100000, 1000000}) ok &= Measure(kind, count, plot);
  std::printf("limit %.0f ms: %s\n", cLimit, ok ? "OK" : "FAIL");
  return ok ? 0 : 1;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
