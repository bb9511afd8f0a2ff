#include "search/FindInFilesDlg.h"

namespace zendry {

namespace {

constexpr int cRow = 36;
constexpr int cFieldHeight = 24;
constexpr int cLabelHeight = 18;

}  // namespace

FindInFilesDlg::FindInFilesDlg(Mode newMode, SearchTarget& newTarget, const std::string& shown)
    : FindBaseDlg(shown), mode(newMode), target(newTarget) {
  const bool replaces = mode == Mode::cReplace;
  text = replaces ? "Repace in project" : "Find In Project";
  int top = 15;
  const auto place = [&top](mavro::Label& label, mavro::Control& field) {
    label.SetBounds(cMargin, top + 4, cFieldLeft - cMargin - 5, cLabelHeight);
    field.SetBounds(cFieldLeft, top, cFieldWidth, cFieldHeight);
    top += cRow;
  };
  top += cRow;
  if (replaces) {
    withLabel.text = "Re&place:";
    with.text = mavro::theSearch.replaceText;
    place(withLabel, with);
  }
  selectionLabel.text = "Selection:";
  selection.accessibleName = "Selection:";
  for (const char* choice : {"Current file", "Current project", "Loaded library tags"})
    selection.items.Add(choice);
  selection.chooseOnly = true;
  selection.selectedIndex = target;
  place(selectionLabel, selection);
  Place(15, top, top + 56);
  search.kind = mavro::Button::cOk;
  search.text = replaces ? "Replace" : "&Find";
  PlaceButton(search, 15);
  close.kind = mavro::Button::cCancel;
  close.text = "Close";
  PlaceButton(close, 52);
  SetSize(cDialogWidth, top + 56 + cLabelHeight + 12);
  Add(&findLabel);
  Add(&findWhat);
  if (replaces) Add(&withLabel);
  if (replaces) Add(&with);
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{
           &selectionLabel, &selection, &matchCase, &wholeWord, &search, &close, &note})
    Add(control);
  search.onClick.Add_H(this, &FindInFilesDlg::OnSearch);
  onDestroy.Add_H(this, &FindInFilesDlg::OnDestroyed);
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
