#include "EditReplaceDlg.h"

#include "FindCommands.h"
#include "SciEditor.h"

namespace mavro {

namespace {

enum Where { cSelection, cWholeFile };

}  // namespace

EditReplaceDlg::EditReplaceDlg(SciEditor& itsEditor)
    : EditorFindDlg(itsEditor, SelectionInLine(itsEditor)) {
  text = "Replace";
  SetSize(cDialogWidth, 232);
  Place(15, 86, 202);
  PlaceSwitches(86);
  withLabel.text = "Re&place:";
  withLabel.SetBounds(cMargin, 53, cFieldLeft - cMargin - 5, 18);
  with.text = theSearch.replaceText;
  with.SetBounds(cFieldLeft, 49, cFieldWidth, 24);
  const auto [start, end] = editor.Selection();
  const bool isOverLines = editor.LineOf(start) != editor.LineOf(end);
  where.text = "Replace in:";
  where.items.Add("&Selection");
  where.items.Add("Wh&ole file");
  where.itemIndex = isOverLines ? cSelection : cWholeFile;
  where.SetBounds(cFieldLeft, 134, 160, 64);
  replace.kind = Button::cOk;
  replace.text = "Repace";
  PlaceButton(replace, 15);
  replace.onClick.Add_H(this, &EditReplaceDlg::OnReplace);
  replaceAll.text = "Replace all";
  PlaceButton(replaceAll, 52);
  replaceAll.onClick.Add_H(this, &EditReplaceDlg::OnReplaceAll);
  close.kind = Button::cCancel;
  close.text = "Close";
  PlaceButton(close, 89);
  for (Control* control : std::initializer_list<Control*>{
           &findLabel, &findWhat, &withLabel, &with, &matchCase, &wholeWord, &regExp, &wrap, &where,
           &replace, &replaceAll, &close, &note})
    Add(control);
  PlaceOverEditor();
}

void EditReplaceDlg::Store() {
  EditorFindDlg::Store();
  theSearch.replaceText = with.text;
}

void EditReplaceDlg::OnReplace(NotifyArgs&) {
  StayOpen();
  if (!Accept()) return;
  ReplaceOne(editor);
  KeepBelow();
  if (theSearch.found)
    ShowHits();
  else
    Say(theSearch.whyNot);
}

void EditReplaceDlg::OnReplaceAll(NotifyArgs&) {
  if (!Accept()) return;
  const int count = ReplaceAll(
      editor, where.itemIndex == cSelection ? ReplaceIn::cSelection : ReplaceIn::cWholeFile);
  theSearch.found = false;
  if (count < 0) return ShowHits();
  ShowHits(std::to_string(count) + " replaced. Left: ");
}

void AskAndReplace(SciEditor& editor) {
  if (editor.LineCount() == 0) return;
  EditReplaceDlg dialog(editor);
  dialog.Run(true);
}

}  // namespace mavro
