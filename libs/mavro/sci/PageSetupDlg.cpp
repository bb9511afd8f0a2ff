#include "PageSetupDlg.h"

#include <cmath>
#include <string>

namespace mavro {

namespace {

constexpr int cMargin = 15;
constexpr int cRow = 34;
constexpr int cFirstRow = 15;
constexpr int cFieldHeight = 26;
constexpr int cTextDown = 6;  // a label beside its field, so that both texts have one line
constexpr int cColumn = 210;
constexpr int cLabelWidth = 100;
constexpr int cFieldWidth = 70;
constexpr int cSwitchHeight = 24;
constexpr int cWidth = 430;
constexpr double cMillimetre = 100;  // hundredths of a millimetre
constexpr double cInchHundredth = 25.4;

struct SwitchRow {
  const char* caption;
  bool PageSetup::*isOn;
};
constexpr SwitchRow cSwitches[] = {
    {"&Landscape", &PageSetup::isLandscape},
    {"&Header: file and page", &PageSetup::hasHeader},
    {"&Footer: the file's path", &PageSetup::hasFooter},
    {"Line &numbers", &PageSetup::hasNumbers},
    {"F&olded parts as shown", &PageSetup::isAsFolded},
    {"&Colours", &PageSetup::hasColours},
};

struct MarginRow {
  const char* caption;
  int PageSetup::*length;
};
constexpr MarginRow cMargins[] = {
    {"L&eft:", &PageSetup::left},
    {"&Right:", &PageSetup::right},
    {"&Top:", &PageSetup::top},
    {"&Bottom:", &PageSetup::bottom},
};

}  // namespace

PageSetupDlg::PageSetupDlg(const PageSetup& shown)
    : setup(Usable(shown)), isMetric(IsMetricHere()) {
  text = "Page set-up";
  resizable = false;
  paperLabel.text = "&Paper:";
  paperLabel.SetBounds(cMargin, cFirstRow + cTextDown, cLabelWidth, 18);
  paper.chooseOnly = true;
  paper.SetBounds(cMargin + cLabelWidth, cFirstRow, 100, cFieldHeight);
  for (size_t i = 0; i < std::size(cPapers); ++i) {
    paper.items.Add(cPapers[i].name);
    if (setup.paper == cPapers[i].name) paper.selectedIndex = static_cast<int>(i);
  }
  Add(&paperLabel);
  Add(&paper);
  const double unit = isMetric ? cMillimetre : cInchHundredth;
  marginsLabel.text = isMetric ? "Margins, in millimetres" : "Margins, in hundredths of an inch";
  marginsLabel.SetBounds(cMargin, cFirstRow + cRow + 6, cWidth - 2 * cMargin, 18);
  Add(&marginsLabel);
  for (size_t i = 0; i < margins.size(); ++i) {
    margins[i].field.min = 0;
    margins[i].field.max = static_cast<int>(cMostMargin / unit);
    margins[i].field.value = static_cast<int>(std::lround(setup.*cMargins[i].length / unit));
    PlaceNumber(margins[i], cMargins[i].caption, static_cast<int>(2 + i / 2), i % 2);
  }
  size.field.min = 0;
  size.field.max = cMostPrintSize;
  size.field.value = setup.size;
  size.field.hint = "0: as large as on the screen";
  PlaceNumber(size, "Letters, po&ints:", 4, 0);
  PlaceSwitches();
  focusControl = &paper;
  onDestroy.Add_H(this, &PageSetupDlg::OnDestroyed);
}

void PageSetupDlg::PlaceNumber(Number& number, const char* caption, int row, int column) {
  const int x = cMargin + column * cColumn, y = cFirstRow + row * cRow;
  number.label.text = caption;
  number.label.SetBounds(x, y + cTextDown, cLabelWidth, 18);
  number.field.SetBounds(x + cLabelWidth, y, cFieldWidth, cFieldHeight);
  Add(&number.label);
  Add(&number.field);
}

void PageSetupDlg::PlaceSwitches() {
  const int top = cFirstRow + 5 * cRow + 6;
  for (size_t i = 0; i < switches.size(); ++i) {
    CheckBox& box = switches[i].box;
    switches[i].isOn = cSwitches[i].isOn;
    box.text = cSwitches[i].caption;
    box.checked = setup.*cSwitches[i].isOn;
    const int column = i % 2, row = static_cast<int>(i / 2);
    box.SetBounds(cMargin + column * cColumn, top + row * (cSwitchHeight + 4), cColumn - 10,
                  cSwitchHeight);
    Add(&box);
  }
  const int below = top + 3 * (cSwitchHeight + 4) + 14;
  ok.kind = Button::cOk;
  cancel.kind = Button::cCancel;
  ok.SetBounds(cWidth - cMargin - 2 * 84 - 10, below, 84, 30);
  cancel.SetBounds(cWidth - cMargin - 84, below, 84, 30);
  Add(&ok);
  Add(&cancel);
  SetSize(cWidth, below + 30 + cMargin);
}

// A margin that the user has not changed keeps the part of its unit that the field doesn't show.
void PageSetupDlg::OnDestroyed(NotifyArgs&) {
  if (result != cOk) return;
  const double unit = isMetric ? cMillimetre : cInchHundredth;
  for (size_t i = 0; i < margins.size(); ++i) {
    int& length = setup.*cMargins[i].length;
    const int typed = margins[i].field.value;
    if (typed != std::lround(length / unit)) length = static_cast<int>(std::lround(typed * unit));
  }
  setup.size = size.field.value;
  const int row = paper.selectedIndex;
  if (row >= 0) setup.paper = cPapers[row].name;
  for (const Switch& each : switches) setup.*each.isOn = each.box.checked;
  setup = Usable(setup);
}

bool AskPageSetup() {
  PageSetupDlg dialog(thePageSetup);
  if (dialog.Run(true) != Form::cOk || dialog.Chosen() == thePageSetup) return false;
  thePageSetup = dialog.Chosen();
  return true;
}

}  // namespace mavro
