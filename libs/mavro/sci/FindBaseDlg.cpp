#include "FindBaseDlg.h"

#include <algorithm>

#include "FindCommands.h"
#include "SciEditor.h"
#include "TextFinder.h"

namespace mavro {

namespace {

constexpr int cFieldHeight = 24;
constexpr int cLabelHeight = 18;
constexpr int cButtonHeight = 30;
constexpr int cSwitchHeight = 22;
constexpr int cSwitchGap = 24;
constexpr int cFromEdge = 40;  // of the window

}  // namespace

FindBaseDlg::FindBaseDlg(const std::string& shown) {
  resizable = false;
  findLabel.text = "Find what:";
  findWhat.accessibleName = "Find what:";
  for (const std::string& text : theSearch.history) findWhat.items.Add(text);
  if (!shown.empty()) theSearch.findText = shown;
  findWhat.text = theSearch.findText;
  matchCase.text = "Match &case";
  matchCase.checked = theSearch.matchCase;
  wholeWord.text = "&Whole word";
  wholeWord.checked = theSearch.wholeWord;
  findWhat.onChange.Add_H(this, &FindBaseDlg::OnTyped);
  findWhat.onSelChanged.Add_H(this, &FindBaseDlg::OnChosen);
  matchCase.onClick.Add_H(this, &FindBaseDlg::OnSwitched);
  wholeWord.onClick.Add_H(this, &FindBaseDlg::OnSwitched);
  focusControl = &findWhat;
}

void FindBaseDlg::Place(int top, int switchTop, int noteTop) {
  findLabel.SetBounds(cMargin, top + 4, cFieldLeft - cMargin - 5, cLabelHeight);
  findWhat.SetBounds(cFieldLeft, top, cFieldWidth, cFieldHeight);
  matchCase.SetBounds(cFieldLeft, switchTop, 150, cSwitchHeight);
  wholeWord.SetBounds(cFieldLeft, switchTop + cSwitchGap, 150, cSwitchHeight);
  note.SetBounds(cMargin, noteTop, cDialogWidth - 2 * cMargin, cLabelHeight);
}

void FindBaseDlg::PlaceButton(Button& button, int top) {
  button.SetBounds(cButtonLeft, top, cButtonWidth, cButtonHeight);
}

void FindBaseDlg::Store() {
  theSearch.findText = findWhat.text;
  theSearch.matchCase = matchCase.checked;
  theSearch.wholeWord = wholeWord.checked;
}

void FindBaseDlg::Changed() {
  Store();
  OnTermChanged();
}

void FindBaseDlg::OnTyped(NotifyArgs&) {
  Changed();
}

void FindBaseDlg::OnChosen(ItemArgs&) {
  Changed();
}

void FindBaseDlg::OnSwitched(NotifyArgs&) {
  Changed();
}

EditorFindDlg::EditorFindDlg(SciEditor& itsEditor, const std::string& shown)
    : FindBaseDlg(shown), editor(itsEditor) {
  regExp.text = "Regular e&xpression";
  regExp.checked = theSearch.regExp;
  wrap.text = "Wr&ap around";
  wrap.checked = theSearch.wrap;
  regExp.onClick.Add_H(this, &EditorFindDlg::OnSwitch);
  wrap.onClick.Add_H(this, &EditorFindDlg::OnSwitch);
  onShow.Add_H(this, &EditorFindDlg::OnShown);
  onDestroy.Add_H(this, &EditorFindDlg::OnDestroyed);
}

void EditorFindDlg::PlaceSwitches(int top) {
  regExp.SetBounds(cFieldLeft + 160, top, 170, cSwitchHeight);
  wrap.SetBounds(cFieldLeft + 160, top + cSwitchGap, 170, cSwitchHeight);
}

void EditorFindDlg::PlaceOverEditor() {
  const Form* window = editor.GetForm();
  if (!window) return;
  const Rect at = window->Bounds();
  center = false;
  SetLocation(std::max(at.left + at.width - width - cFromEdge, 0),
              std::max(at.top, 0) + 2 * cFromEdge);
}

void EditorFindDlg::Store() {
  FindBaseDlg::Store();
  theSearch.regExp = regExp.checked;
  theSearch.wrap = wrap.checked;
}

void EditorFindDlg::OnSwitch(NotifyArgs&) {
  Store();
  OnTermChanged();
}

void EditorFindDlg::OnTermChanged() {
  theSearch.found = false;
  ShowHits();
}

void EditorFindDlg::OnShown(NotifyArgs&) {
  if (!theSearch.findText.empty()) ShowHits();
}

void EditorFindDlg::OnDestroyed(NotifyArgs&) {
  Store();
  editor.UnmarkHits();
}

void EditorFindDlg::ShowHits(const std::string& before) {
  const TextFinder finder(theSearch.Term());
  if (finder.IsEmpty() || !finder.Error().empty()) {
    editor.UnmarkHits();
    Say(finder.IsEmpty() ? before : "Not an expression: " + finder.Error());
    return;
  }
  const int count = editor.MarkHits(finder);
  std::string said = count == 0 ? "No hit" : count == 1 ? "1 hit" : std::to_string(count) + " hits";
  if (count >= SciEditor::cMostHits) said = "More than " + said;
  if (count < 0) said = "This expression takes too long in a line of this text";
  Say(before + said);
}

bool EditorFindDlg::Accept() {
  Store();
  theSearch.Remember();
  const TextFinder finder(theSearch.Term());
  if (finder.IsEmpty()) Say("There is no text to look for");
  if (!finder.Error().empty()) Say("Not an expression: " + finder.Error());
  return !finder.IsEmpty() && finder.Error().empty();
}

void EditorFindDlg::FindAndShow() {
  FindNext(editor, FindWayOfDialog());
  KeepBelow();
  if (theSearch.found)
    ShowHits();
  else
    Say(theSearch.whyNot);
}

// The dialog is over the upper half of the text.
void EditorFindDlg::KeepBelow() {
  const auto line = static_cast<std::uintptr_t>(editor.CaretLine());
  const std::intptr_t shown = editor.Send(SCI_VISIBLEFROMDOCLINE, line);
  const std::intptr_t rows = editor.Send(SCI_LINESONSCREEN);
  const std::intptr_t top = editor.Send(SCI_GETFIRSTVISIBLELINE);
  if (shown - top >= rows / 2) return;
  editor.Send(SCI_SETFIRSTVISIBLELINE,
              static_cast<std::uintptr_t>(std::max<std::intptr_t>(shown - rows * 2 / 3, 0)));
}

}  // namespace mavro
