#include "PageSetup.h"

#include <langinfo.h>

#include <algorithm>
#include <utility>

namespace mavro {

namespace {

constexpr int cLeastRoom = 2000;  // for text, both ways

void ClampPair(int& one, int& other, int length) {
  one = std::clamp(one, 0, cMostMargin);
  other = std::clamp(other, 0, cMostMargin);
  if (one + other <= length - cLeastRoom) return;
  one = std::min(one, (length - cLeastRoom) / 2);
  other = std::min(other, (length - cLeastRoom) / 2);
}

}  // namespace

PageSetup thePageSetup;

PaperSize SheetOf(const PageSetup& setup) {
  PaperSize sheet = cPapers[0];
  for (const PaperSize& paper : cPapers)
    if (setup.paper == paper.name) sheet = paper;
  if (setup.isLandscape) std::swap(sheet.width, sheet.height);
  return sheet;
}

PageSetup Usable(PageSetup setup) {
  const PaperSize sheet = SheetOf(setup);
  setup.paper = sheet.name;
  ClampPair(setup.left, setup.right, sheet.width);
  ClampPair(setup.top, setup.bottom, sheet.height);
  setup.size = std::clamp(setup.size, 0, cMostPrintSize);
  return setup;
}

bool IsMetricHere() {
  // The first byte of the locale's field: 1 metric, 2 inches.
  const char* kind = nl_langinfo(_NL_MEASUREMENT_MEASUREMENT);
  return !kind || *kind != 2;
}

}  // namespace mavro
