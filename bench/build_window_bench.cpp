// build_window_bench: how long the window waits to be painted, on the offscreen platform, while one
// compiler prints 100 MB and another one works. The window asks for a paint as soon as it is
// painted; the longest time between two paints counts, by the clock and, so that other programs on
// the machine count little, by the work of the window's thread. Also the memory that the text
// takes.

#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <QEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>

#include "Application.h"
#include "Entry.h"
#include "IdeDriver.h"
#include "ScopedVariable.h"
#include "config/BuildSettings.h"

using namespace zendry;

namespace {

constexpr double cMostForPaint = 100;  // ms

// The first source's compiler prints, the other one's works for as long.
constexpr char cCompiler[] = R"(#!/bin/sh
here=${0%/*}
case "$*" in
  *a.cpp*)
    yes 'a line of eighty characters, as a compiler prints that has much to tell, and more.' |
      head -c 100000000
    touch "$here/printed";;
  *b.cpp*) while [ ! -e "$here/printed" ]; do :; done;;
esac
while [ $# -gt 1 ]; do [ "$1" = -o ] && touch "$2"; shift; done
)";

double NowBy(clockid_t clock) {
  timespec time;
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double ResidentMegabytes() {
  std::ifstream file("/proc/self/statm");
  long total = 0, resident = 0;
  file >> total >> resident;
  return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

// The longest time between two paints by one clock.
struct Longest {
  clockid_t clock;
  double last = 0;
  double longest = 0;
  void Start() { last = NowBy(clock); }
  void Note() {
    const double now = NowBy(clock);
    longest = std::max(longest, now - last);
    last = now;
  }
};

struct Paints : QObject {
  QWidget* window = nullptr;
  int count = 0;
  Longest wall{CLOCK_MONOTONIC}, work{CLOCK_THREAD_CPUTIME_ID};

  void Watch(QWidget* widget) {
    window = widget;
    window->installEventFilter(this);
    wall.Start();
    work.Start();
    window->update();
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    ++count;
    wall.Note();
    work.Note();
    QMetaObject::invokeMethod(
        window, [this] { window->update(); }, Qt::QueuedConnection);
    return false;
  }
};

bool Report(const char* what, double value, const char* unit, double limit) {
  const bool isMet = limit == 0 || value <= limit;
  std::printf("%-36s %9.1f %s", what, value, unit);
  if (limit > 0) std::printf(", limit %.0f%s", limit, isMet ? "" : "  MISSED");
  std::printf("\n");
  return isMet;
}

void InstallCompiler(const test::TempFolder& install) {
  const std::string path = install.Write("tools/g++", cCompiler);
  chmod(path.c_str(), 0755);
  for (ToolSet& set : theIdeConfig.toolSets) set.folder = install.Path("tools");
  theBuildSettings.jobs = 2;
}

}  // namespace

int mavro::Application::Main(ArgumentList&) {
  const test::ScopedVariable noDisplay("DISPLAY", "");
  test::TempFolder install;
  test::IdeDriver ide;
  bool isMet = true;
  ide.Run({ide.Project({{"a.cpp", ""}, {"b.cpp", ""}})}, [&] {
    InstallCompiler(install);
    theMainForm->ShowPage(cOutputPage);
    const double before = ResidentMegabytes();
    Paints paints;
    paints.Watch(test::WidgetOf(*theMainForm));
    const double start = NowBy(CLOCK_MONOTONIC);
    theBuildActs.OnCommand(cMakeCommand);
    const double whole = NowBy(CLOCK_MONOTONIC) - start;
    paints.window->removeEventFilter(&paints);
    double loads[1] = {0};
    getloadavg(loads, 1);
    Report("load of the machine", loads[0], "", 0);
    Report("the build", whole / 1000, "s", 0);
    Report("paints", paints.count, "", 0);
    Report("longest without paint, by the clock", paints.wall.longest, "ms", 0);
    isMet = Report("the same, work of the window alone", paints.work.longest, "ms", cMostForPaint);
    Report("memory", ResidentMegabytes() - before, "MB", 0);
  });
  return isMet ? EXIT_SUCCESS : EXIT_FAILURE;
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  return mavro::RunApplication(argc, argv);
}
