#include <algorithm>

#include "Edit.h"
#include "EditImpl.h"

namespace mavro {

void Memo::Impl::Create() {
  Edit::Impl::Create();
  Window()->SetMaxLines(TheMemo().maxLines);
  if (TheMemo().monospaced) Window()->SetMonospaced();
  if (wantedLine > 1) Window()->GoToLine(wantedLine);
  Window()->MarkLine(markedLine);
}

void Memo::Impl::PrepareStyle() {
  Edit::Impl::PrepareStyle();
  style |= ES_MULTILINE;
}

// Enter belongs to the text: the form's default button is not pressed.
Param Memo::Impl::OnNotify(NotifyHeader*) {
  return 0;
}

void Memo::Impl::OnEditCommand(int code) {
  if (code == EN_CARETMOVED)
    FireNotify(TheMemo().onCaretMoved);
  else
    Edit::Impl::OnEditCommand(code);
}

void Memo::Impl::Append(std::string_view added) {
  if (!hwnd) {
    text += added;
    return;
  }
  Window()->SetMaxLines(TheMemo().maxLines);
  Window()->Append(added);
}

void Memo::Impl::GoToLine(int line) {
  if (hwnd)
    Window()->GoToLine(line);
  else
    wantedLine = line;
}

void Memo::Impl::MarkLine(int line) {
  markedLine = line;
  if (hwnd) Window()->MarkLine(line);
}

int Memo::Impl::CaretLine() const {
  return hwnd ? Window()->CaretLine() : wantedLine;
}

int Memo::Impl::CaretColumn() const {
  return hwnd ? Window()->CaretColumn() : 1;
}

int Memo::Impl::LineCount() const {
  if (hwnd) return Window()->LineCount();
  return 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

Memo::Memo() : Edit(new Impl) {}

void Memo::Append(std::string_view added) {
  static_cast<Impl*>(impl)->Append(added);
}
void Memo::Clear() {
  text = "";
}
void Memo::GoToLine(int line) {
  static_cast<Impl*>(impl)->GoToLine(line);
}
int Memo::CaretLine() const {
  return static_cast<Impl*>(impl)->CaretLine();
}
int Memo::CaretColumn() const {
  return static_cast<Impl*>(impl)->CaretColumn();
}
int Memo::LineCount() const {
  return static_cast<Impl*>(impl)->LineCount();
}
void Memo::MarkLine(int line) {
  static_cast<Impl*>(impl)->MarkLine(line);
}

}  // namespace mavro
