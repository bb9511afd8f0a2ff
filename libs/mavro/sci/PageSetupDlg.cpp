#include "PageSetupDlg.h"

#include <cmath>
#include <string>

namespace mavro {

namespace {

constexpr double cMillimetre = 100;  // hundredths of a millimetre
constexpr double cInchHundredth = 25.4;

}  // namespace

PageSetupDlg::PageSetupDlg(const PageSetup& shown)
    : setup(Usable(shown)),
      isMetric(IsMetricHere()),
      margins({{{&leftMargin, &PageSetup::left},
                {&rightMargin, &PageSetup::right},
                {&topMargin, &PageSetup::top},
                {&bottomMargin, &PageSetup::bottom}}}),
      switches({{{&landscape, &PageSetup::isLandscape},
                 {&pageHeader, &PageSetup::hasHeader},
                 {&pageFooter, &PageSetup::hasFooter},
                 {&lineNumbers, &PageSetup::hasNumbers},
                 {&asFolded, &PageSetup::isAsFolded},
                 {&colours, &PageSetup::hasColours}}}) {
  Initialize();
  Show();
  focusControl = &paper;
}

void PageSetupDlg::Initialize() {
  // clang-format off
	//!init
	this->SetBounds(0, 0, 430, 334);
	this->text = "Page set-up";
	this->resizable = false;
	this->onDestroy.Add_H(this, &This::OnDestroyed);
	//!<Label>
	paperLabel.SetBounds(15, 21, 100, 18);
	paperLabel.text = "&Paper:";
	this->Add(&paperLabel);
	//!<ComboBox>
	paper.SetBounds(115, 15, 100, 26);
	paper.chooseOnly = true;
	this->Add(&paper);
	//!<Label>
	marginsLabel.SetBounds(15, 55, 400, 18);
	marginsLabel.text = "Margins, in millimetres";
	this->Add(&marginsLabel);
	//!<Label>
	leftLabel.SetBounds(15, 89, 100, 18);
	leftLabel.text = "L&eft:";
	this->Add(&leftLabel);
	//!<SpinEdit>
	leftMargin.SetBounds(115, 83, 70, 26);
	this->Add(&leftMargin);
	//!<Label>
	rightLabel.SetBounds(225, 89, 100, 18);
	rightLabel.text = "&Right:";
	this->Add(&rightLabel);
	//!<SpinEdit>
	rightMargin.SetBounds(325, 83, 70, 26);
	this->Add(&rightMargin);
	//!<Label>
	topLabel.SetBounds(15, 123, 100, 18);
	topLabel.text = "&Top:";
	this->Add(&topLabel);
	//!<SpinEdit>
	topMargin.SetBounds(115, 117, 70, 26);
	this->Add(&topMargin);
	//!<Label>
	bottomLabel.SetBounds(225, 123, 100, 18);
	bottomLabel.text = "&Bottom:";
	this->Add(&bottomLabel);
	//!<SpinEdit>
	bottomMargin.SetBounds(325, 117, 70, 26);
	this->Add(&bottomMargin);
	//!<Label>
	sizeLabel.SetBounds(15, 157, 100, 18);
	sizeLabel.text = "Letters, po&ints:";
	this->Add(&sizeLabel);
	//!<SpinEdit>
	letterSize.SetBounds(115, 151, 70, 26);
	letterSize.toolTip = "0: as large as on the screen";
	this->Add(&letterSize);
	//!<CheckBox>
	landscape.SetBounds(15, 191, 200, 24);
	landscape.text = "&Landscape";
	this->Add(&landscape);
	//!<CheckBox>
	pageHeader.SetBounds(225, 191, 200, 24);
	pageHeader.text = "&Header: file and page";
	this->Add(&pageHeader);
	//!<CheckBox>
	pageFooter.SetBounds(15, 219, 200, 24);
	pageFooter.text = "&Footer: the file's path";
	this->Add(&pageFooter);
	//!<CheckBox>
	lineNumbers.SetBounds(225, 219, 200, 24);
	lineNumbers.text = "Line &numbers";
	this->Add(&lineNumbers);
	//!<CheckBox>
	asFolded.SetBounds(15, 247, 200, 24);
	asFolded.text = "F&olded parts as shown";
	this->Add(&asFolded);
	//!<CheckBox>
	colours.SetBounds(225, 247, 200, 24);
	colours.text = "&Colours";
	this->Add(&colours);
	//!<Button>
	okButton.SetBounds(237, 289, 84, 30);
	okButton.kind = Button::cOk;
	this->Add(&okButton);
	//!<Button>
	cancel.SetBounds(331, 289, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

// Papers and limits are the same as those of the setup itself; the unit is that of the user's
// country.
void PageSetupDlg::Show() {
  for (size_t i = 0; i < std::size(cPapers); ++i) {
    paper.items.Add(cPapers[i].name);
    if (setup.paper == cPapers[i].name) paper.selectedIndex = static_cast<int>(i);
  }
  if (!isMetric) marginsLabel.text = "Margins, in hundredths of an inch";
  const double unit = isMetric ? cMillimetre : cInchHundredth;
  for (const Margin& each : margins) {
    each.field->max = static_cast<int>(cMostMargin / unit);
    each.field->value = static_cast<int>(std::lround(setup.*each.length / unit));
  }
  letterSize.max = cMostPrintSize;
  letterSize.value = setup.size;
  for (const Switch& each : switches) each.box->checked = setup.*each.isOn;
}

// A margin that the user has not changed keeps the part of its unit that the field doesn't show.
void PageSetupDlg::OnDestroyed(NotifyArgs&) {
  if (result != cOk) return;
  const double unit = isMetric ? cMillimetre : cInchHundredth;
  for (const Margin& each : margins) {
    int& length = setup.*each.length;
    const int typed = each.field->value;
    if (typed != std::lround(length / unit)) length = static_cast<int>(std::lround(typed * unit));
  }
  setup.size = letterSize.value;
  const int row = paper.selectedIndex;
  if (row >= 0) setup.paper = cPapers[row].name;
  for (const Switch& each : switches) setup.*each.isOn = each.box->checked;
  setup = Usable(setup);
}

bool AskPageSetup() {
  PageSetupDlg dialog(thePageSetup);
  if (dialog.Run(true) != Form::cOk || dialog.Chosen() == thePageSetup) return false;
  thePageSetup = dialog.Chosen();
  return true;
}

}  // namespace mavro
