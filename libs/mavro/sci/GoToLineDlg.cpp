#include "GoToLineDlg.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "SciEditor.h"

namespace mavro {

GoToLineDlg::GoToLineDlg(int shownLine) {
  text = "Go to";
  resizable = false;
  SetSize(290, 96);
  label.text = "Go to line:";
  label.SetBounds(15, 19, 90, 18);
  number.text = std::to_string(shownLine);
  number.SetBounds(110, 15, 165, 24);
  goTo.kind = Button::cOk;
  goTo.text = "&Go to";
  goTo.SetBounds(97, 54, 84, 30);
  cancel.kind = Button::cCancel;
  cancel.SetBounds(191, 54, 84, 30);
  for (Control* control : std::initializer_list<Control*>{&label, &number, &goTo, &cancel})
    Add(control);
  focusControl = &number;
  onCreate.Add_H(this, &GoToLineDlg::OnCreated);
  onDestroy.Add_H(this, &GoToLineDlg::OnDestroyed);
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
