#include "EditReplaceDlg.h"

#include "FindCommands.h"
#include "SciEditor.h"

namespace mavro {

namespace {

enum Where { cSelection, cWholeFile };

}  // namespace

EditReplaceDlg::EditReplaceDlg(SciEditor& itsEditor) : EditorFindDlg(itsEditor) {
  Initialize();
  Begin({&findWhat, &matchCase, &wholeWord, &note}, regExp, wrap, SelectionInLine(editor));
  with.text = theSearch.replaceText;
  const auto [start, end] = editor.Selection();
  const bool isOverLines = editor.LineOf(start) != editor.LineOf(end);
  where.itemIndex = isOverLines ? cSelection : cWholeFile;
  PlaceOverEditor();
}

void EditReplaceDlg::Initialize() {
  // clang-format off
	//!init
	this->SetBounds(0, 0, 570, 232);
	this->text = "Replace";
	//!<Label>
	findLabel.SetBounds(15, 19, 90, 18);
	findLabel.text = "Find what:";
	this->Add(&findLabel);
	//!<ComboBox>
	findWhat.SetBounds(110, 15, 330, 24);
	this->Add(&findWhat);
	//!<Label>
	withLabel.SetBounds(15, 53, 90, 18);
	withLabel.text = "Re&place:";
	this->Add(&withLabel);
	//!<Edit>
	with.SetBounds(110, 49, 330, 24);
	this->Add(&with);
	//!<CheckBox>
	matchCase.SetBounds(110, 86, 150, 22);
	matchCase.text = "Match &case";
	this->Add(&matchCase);
	//!<CheckBox>
	wholeWord.SetBounds(110, 110, 150, 22);
	wholeWord.text = "&Whole word";
	this->Add(&wholeWord);
	//!<CheckBox>
	regExp.SetBounds(270, 86, 170, 22);
	regExp.text = "Regular e&xpression";
	this->Add(&regExp);
	//!<CheckBox>
	wrap.SetBounds(270, 110, 170, 22);
	wrap.text = "Wr&ap around";
	this->Add(&wrap);
	//!<RadioGroup>
	where.SetBounds(110, 134, 160, 64);
	where.text = "Replace in:";
	where.items.Add("&Selection");
	where.items.Add("Wh&ole file");
	this->Add(&where);
	//!<Button>
	replace.SetBounds(455, 15, 100, 30);
	replace.text = "Repace";
	replace.kind = Button::cOk;
	replace.onClick.Add_H(this, &This::OnReplace);
	this->Add(&replace);
	//!<Button>
	replaceAll.SetBounds(455, 52, 100, 30);
	replaceAll.text = "Replace all";
	replaceAll.onClick.Add_H(this, &This::OnReplaceAll);
	this->Add(&replaceAll);
	//!<Button>
	close.SetBounds(455, 89, 100, 30);
	close.text = "Close";
	close.kind = Button::cCancel;
	this->Add(&close);
	//!<Label>
	note.SetBounds(15, 202, 540, 18);
	this->Add(&note);
	//!end
  // clang-format on
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
