#include "search/FindInFilesDlg.h"

namespace zendry {

FindInFilesDlg::FindInFilesDlg(Mode newMode, SearchTarget& newTarget, const std::string& shown)
    : mode(newMode), target(newTarget) {
  Initialize();
  Begin({&findWhat, &matchCase, &wholeWord, &note}, shown);
  with.text = mavro::theSearch.replaceText;
  selection.accessibleName = "Selection:";
  selection.selectedIndex = target;
  if (mode == Mode::cFind) LeaveOutReplacement();
}

void FindInFilesDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 570, 209);
	this->text = "Repace in project";
	this->onDestroy.Add_H(this, &This::OnDestroyed);
	//!<Label>
	findLabel.SetBounds(15, 19, 90, 18);
	findLabel.text = "Find what:";
	this->Add(&findLabel);
	//!<ComboBox>
	findWhat.SetBounds(110, 15, 330, 24);
	this->Add(&findWhat);
	//!<Label>
	withLabel.SetBounds(15, 55, 90, 18);
	withLabel.text = "Re&place:";
	this->Add(&withLabel);
	//!<Edit>
	with.SetBounds(110, 51, 330, 24);
	this->Add(&with);
	//!<Label>
	selectionLabel.SetBounds(15, 91, 90, 18);
	selectionLabel.text = "Selection:";
	this->Add(&selectionLabel);
	//!<ComboBox>
	selection.SetBounds(110, 87, 330, 24);
	selection.items.Add("Current file");
	selection.items.Add("Current project");
	selection.items.Add("Loaded library tags");
	selection.chooseOnly = true;
	this->Add(&selection);
	//!<CheckBox>
	matchCase.SetBounds(110, 123, 150, 22);
	matchCase.text = "Match &case";
	this->Add(&matchCase);
	//!<CheckBox>
	wholeWord.SetBounds(110, 147, 150, 22);
	wholeWord.text = "&Whole word";
	this->Add(&wholeWord);
	//!<Button>
	search.SetBounds(455, 15, 100, 30);
	search.text = "Replace";
	search.kind = Button::cOk;
	search.onClick.Add_H(this, &This::OnSearch);
	this->Add(&search);
	//!<Button>
	close.SetBounds(455, 52, 100, 30);
	close.text = "Close";
	close.kind = Button::cCancel;
	this->Add(&close);
	//!<Label>
	note.SetBounds(15, 179, 540, 18);
	this->Add(&note);
	//!end
  // clang-format on
}

// What is below the field moves up.
void FindInFilesDlg::LeaveOutReplacement() {
  text = "Find In Project";
  search.text = "&Find";
  const int row = selection.top - with.top;
  Remove(&withLabel);
  Remove(&with);
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{
           &selectionLabel, &selection, &matchCase, &wholeWord, &note})
    control->top = control->top - row;
  height = height - row;
}

bool FindInFilesDlg::Ask() {
  return Run(true) == cOk;
}

void FindInFilesDlg::Store() {
  FindBaseDlg::Store();
  if (mode == Mode::cReplace) mavro::theSearch.replaceText = with.text;
  if (selection.selectedIndex >= 0)
    target = static_cast<SearchTarget>(static_cast<int>(selection.selectedIndex));
}

void FindInFilesDlg::OnSearch(mavro::NotifyArgs&) {
  Store();
  mavro::theSearch.Remember();
  if (!mavro::theSearch.findText.empty()) return;
  StayOpen();
  Say("There is no text to look for");
}

void FindInFilesDlg::OnDestroyed(mavro::NotifyArgs&) {
  Store();
}

}  // namespace zendry
