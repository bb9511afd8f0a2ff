#include "FindTextDlg.h"

#include "FindCommands.h"
#include "SciEditor.h"

namespace mavro {

FindTextDlg::FindTextDlg(SciEditor& itsEditor) : EditorFindDlg(itsEditor) {
  Initialize();
  Begin({&findWhat, &matchCase, &wholeWord, &note}, regExp, wrap, SelectionInLine(editor));
  direction.itemIndex = theSearch.backward ? 0 : 1;
  PlaceOverEditor();
}

void FindTextDlg::Initialize() {
  // clang-format off
	//!init
	this->SetBounds(0, 0, 570, 196);
	this->text = "Find";
	//!<Label>
	findLabel.SetBounds(15, 19, 90, 18);
	findLabel.text = "Find what:";
	this->Add(&findLabel);
	//!<ComboBox>
	findWhat.SetBounds(110, 15, 330, 24);
	this->Add(&findWhat);
	//!<CheckBox>
	matchCase.SetBounds(110, 50, 150, 22);
	matchCase.text = "Match &case";
	this->Add(&matchCase);
	//!<CheckBox>
	wholeWord.SetBounds(110, 74, 150, 22);
	wholeWord.text = "&Whole word";
	this->Add(&wholeWord);
	//!<CheckBox>
	regExp.SetBounds(270, 50, 170, 22);
	regExp.text = "Regular e&xpression";
	this->Add(&regExp);
	//!<CheckBox>
	wrap.SetBounds(270, 74, 170, 22);
	wrap.text = "Wr&ap around";
	this->Add(&wrap);
	//!<RadioGroup>
	direction.SetBounds(110, 98, 160, 64);
	direction.text = "Direction";
	direction.items.Add("&Up");
	direction.items.Add("&Down");
	this->Add(&direction);
	//!<Button>
	find.SetBounds(455, 15, 100, 30);
	find.text = "&Find";
	find.kind = Button::cOk;
	find.onClick.Add_H(this, &This::OnFind);
	this->Add(&find);
	//!<Button>
	close.SetBounds(455, 52, 100, 30);
	close.text = "Close";
	close.kind = Button::cCancel;
	this->Add(&close);
	//!<Label>
	note.SetBounds(15, 166, 540, 18);
	this->Add(&note);
	//!end
  // clang-format on
}

void FindTextDlg::Store() {
  EditorFindDlg::Store();
  theSearch.backward = direction.itemIndex == 0;
}

void FindTextDlg::OnFind(NotifyArgs&) {
  StayOpen();
  if (Accept()) FindAndShow();
}

void AskAndFind(SciEditor& editor) {
  if (editor.LineCount() == 0) return;
  FindTextDlg dialog(editor);
  dialog.Run(true);
}

}  // namespace mavro
