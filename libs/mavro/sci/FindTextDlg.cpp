#include "FindTextDlg.h"

#include "FindCommands.h"
#include "SciEditor.h"

namespace mavro {

FindTextDlg::FindTextDlg(SciEditor& itsEditor)
    : EditorFindDlg(itsEditor, SelectionInLine(itsEditor)) {
  text = "Find";
  SetSize(cDialogWidth, 196);
  Place(15, 50, 166);
  PlaceSwitches(50);
  direction.text = "Direction";
  direction.items.Add("&Up");
  direction.items.Add("&Down");
  direction.itemIndex = theSearch.backward ? 0 : 1;
  direction.SetBounds(cFieldLeft, 98, 160, 64);
  find.kind = Button::cOk;
  find.text = "&Find";
  PlaceButton(find, 15);
  find.onClick.Add_H(this, &FindTextDlg::OnFind);
  close.kind = Button::cCancel;
  close.text = "Close";
  PlaceButton(close, 52);
  for (Control* control :
       std::initializer_list<Control*>{&findLabel, &findWhat, &matchCase, &wholeWord, &regExp,
                                       &wrap, &direction, &find, &close, &note})
    Add(control);
  PlaceOverEditor();
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
