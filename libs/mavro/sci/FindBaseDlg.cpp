#include "FindBaseDlg.h"

#include <algorithm>

#include "FindCommands.h"
#include "SciEditor.h"
#include "TextFinder.h"

namespace mavro {

namespace {

constexpr int cFromEdge = 40;  // of the window

}  // namespace

void FindBaseDlg::Begin(const FindFields& its, const std::string& shown) {
  fields = its;
  its.what->accessibleName = "Find what:";
  for (const std::string& text : theSearch.history) its.what->items.Add(text);
  if (!shown.empty()) theSearch.findText = shown;
  its.what->text = theSearch.findText;
  its.matchCase->checked = theSearch.matchCase;
  its.wholeWord->checked = theSearch.wholeWord;
  its.what->onChange.Add_H(this, &FindBaseDlg::OnTyped);
  its.what->onSelChanged.Add_H(this, &FindBaseDlg::OnChosen);
  its.matchCase->onClick.Add_H(this, &FindBaseDlg::OnSwitched);
  its.wholeWord->onClick.Add_H(this, &FindBaseDlg::OnSwitched);
  focusControl = its.what;
}

void FindBaseDlg::Store() {
  theSearch.findText = fields.what->text;
  theSearch.matchCase = fields.matchCase->checked;
  theSearch.wholeWord = fields.wholeWord->checked;
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

void EditorFindDlg::Begin(const FindFields& its, CheckBox& itsRegExp, CheckBox& itsWrap,
                          const std::string& shown) {
  FindBaseDlg::Begin(its, shown);
  regExpBox = &itsRegExp;
  wrapBox = &itsWrap;
  itsRegExp.checked = theSearch.regExp;
  itsWrap.checked = theSearch.wrap;
  itsRegExp.onClick.Add_H(this, &EditorFindDlg::OnSwitch);
  itsWrap.onClick.Add_H(this, &EditorFindDlg::OnSwitch);
  onShow.Add_H(this, &EditorFindDlg::OnShown);
  onDestroy.Add_H(this, &EditorFindDlg::OnDestroyed);
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
  theSearch.regExp = regExpBox->checked;
  theSearch.wrap = wrapBox->checked;
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
