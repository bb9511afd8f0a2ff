#include "GoToLineDlg.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "SciEditor.h"

namespace mavro {

GoToLineDlg::GoToLineDlg(int shownLine) {
  Initialize();
  number.text = std::to_string(shownLine);
  focusControl = &number;
}

void GoToLineDlg::Initialize() {
  // clang-format off
	//!init
	this->SetBounds(0, 0, 290, 96);
	this->text = "Go to";
	this->resizable = false;
	this->onCreate.Add_H(this, &This::OnCreated);
	this->onDestroy.Add_H(this, &This::OnDestroyed);
	//!<Label>
	label.SetBounds(15, 19, 90, 18);
	label.text = "Go to line:";
	this->Add(&label);
	//!<Edit>
	number.SetBounds(110, 15, 165, 24);
	this->Add(&number);
	//!<Button>
	goTo.SetBounds(97, 54, 84, 30);
	goTo.text = "&Go to";
	goTo.kind = Button::cOk;
	this->Add(&goTo);
	//!<Button>
	cancel.SetBounds(191, 54, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

void GoToLineDlg::OnCreated(NotifyArgs&) {
  number.SelectAll();
}

void GoToLineDlg::OnDestroyed(NotifyArgs&) {
  const long typed = std::strtol(number.text.Get().c_str(), nullptr, 10);
  line = static_cast<int>(std::clamp<long>(typed, 0, std::numeric_limits<int>::max()));
}

void AskGoToLine(SciEditor& editor) {
  if (editor.LineCount() == 0) return;
  GoToLineDlg dialog(editor.CaretLine() + 1);
  if (dialog.Run(true) != Form::cOk) return;
  if (dialog.Line() > 0) editor.goToLine(dialog.Line() - 1);
}

}  // namespace mavro
