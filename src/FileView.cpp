#include "FileView.h"

#include <algorithm>

#include "FileText.h"
#include "MainForm.h"

namespace zendry {

FileView::FileView() {
  readOnly = true;
  monospaced = true;
  onCaretMoved.Add_H(this, &FileView::OnCaretMoved);
}

bool FileView::Load(const std::string& newPath) {
  std::optional<std::string> content = mavro::ReadFileText(newPath);
  if (!content) return false;
  path = newPath;
  text = *content;
  dirty = false;
  return true;
}

bool FileView::Save() {
  if (!mavro::SaveFileText(path, text.Get()).Ok()) return false;
  dirty = false;
  return true;
}

void FileView::GoToLine(int line) {
  Memo::GoToLine(std::clamp(line, 1, std::max(1, LineCount())));
}

void FileView::SetMark(EditorMark mark, int line) {
  shownMark = mark;
  MarkLine(line);
}

void FileView::RemoveMark(EditorMark mark) {
  if (shownMark == mark) SetMark(cNoMark, 0);
}

void FileView::OnCaretMoved(mavro::NotifyArgs&) {
  if (theMainForm) theMainForm->ShowCaretOf(*this);
}

}  // namespace zendry
