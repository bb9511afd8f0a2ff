// SPDX-License-Identifier: MIT-0
#include "editform.h"

#include <algorithm>

#include "findform.h"
#include "textfile.h"

EditForm::Commands::Commands(EditForm* form) {
  SetTarget(form, &EditForm::Command);
  Add(cNew, "&New", cControlKey | 'N', Icons::icoNew);
  Add(cOpen, "&Open...", cControlKey | 'O', Icons::icoOpen);
  Add(cSave, "&Save", cControlKey | 'S', Icons::icoSave);
  Add(cSaveAs, "Save &as...", 0, Icons::icoSaveAll);
  AddSeparator();
  Add(cFind, "&Find...", cControlKey | 'F', Icons::icoFind);
  Add(cFindNext, "Find ne&xt", cControlKey | 'G', Icons::icoForward);
  AddSeparator();
  Add(cQuit, "&Quit", cControlKey | 'Q', Icons::icoQuit);
}

EditForm::EditForm() {
  Initialize();
}

void EditForm::Initialize() {
  SetBounds(100, 100, 640, 480);
  menu.SetTitle("&File");
  menu.Fill(commands);
  bar.Add(&menu);
  menuBar = &bar;
  tools.dock = Dock::cTop;
  tools.images = Icons::cStrip;
  for (const auto& action : commands.Actions()) tools.Add(action.get(), -1);
  Add(&tools);
  status.dock = Dock::cBootom;
  status.AddPane(0, "Line 1, column 1");
  Add(&status);
  memo.monospaced = true;
  memo.dock = Dock::cFill;
  memo.onChange.Add_H(this, &This::Changed);
  memo.onCaretMoved.Add_H(this, &This::CaretMoved);
  Add(&memo);
  onClose.Add_H(this, &This::Closing);
  focusControl = &memo;
  ShowName();
}

void EditForm::Command(int id) {
  switch (id) {
    case cNew:
      return New();
    case cOpen:
      return AskAndOpen();
    case cSave:
    case cSaveAs:
      Save(id == cSaveAs);
      return;
    case cFind:
      return AskAndFind();
    case cFindNext:
      return FindNext();
    case cQuit:
      return Close();
  }
}

void EditForm::New() {
  if (!MayLose()) return;
  memo.Clear();
  fileName.clear();
  isChanged = false;
  ShowName();
}

void EditForm::AskAndOpen() {
  FileDialog dialog;
  if (MayLose() && dialog.Run()) Open(dialog.fileName);
}

void EditForm::Open(const std::string& path) {
  std::string content;
  if (!ReadTextFile(path, content)) return Information(path + " can't be read");
  memo.text = content;
  fileName = path;
  isChanged = false;
  ShowName();
}

bool EditForm::Save(bool underAnotherName) {
  std::string path = fileName;
  if (underAnotherName || path.empty()) {
    FileDialog dialog("All Files|*.*", FileDialog::cSave);
    dialog.fileName = path;
    if (!dialog.Run()) return false;
    path = dialog.fileName;
  }
  if (!WriteTextFile(path, memo.text)) {
    Information(path + " can't be written");
    return false;
  }
  fileName = path;
  isChanged = false;
  ShowName();
  return true;
}

void EditForm::AskAndFind() {
  FindForm form(lastFound);
  if (form.Run(true) != cOk) return;
  lastFound = form.Wanted();
  FindNext();
}

// Looks from the line after the caret's on, so that each step goes further.
void EditForm::FindNext() {
  const std::string content = memo.text;
  size_t start = 0;
  for (int line = 0; line < memo.CaretLine() && start != std::string::npos; ++line) {
    start = content.find('\n', start);
    if (start != std::string::npos) ++start;
  }
  const size_t found = FindInText(content, lastFound, start);
  if (found == std::string::npos) return Information("\"" + lastFound + "\" was not found");
  const auto end = content.begin() + static_cast<std::ptrdiff_t>(found);
  const int line = 1 + static_cast<int>(std::count(content.begin(), end, '\n'));
  memo.GoToLine(line);
  memo.MarkLine(line);
}

bool EditForm::MayLose() {
  if (!isChanged) return true;
  bool cancelled = false;
  const bool save = Confirm("The text has changed!\nSave it?", &cancelled);
  return !cancelled && (!save || Save(false));
}

void EditForm::ShowName() {
  text = (isChanged ? "*" : "") + (fileName.empty() ? "Noname" : fileName) + " - Editor";
}

void EditForm::Changed(NotifyArgs&) {
  memo.MarkLine(0);
  isChanged = true;
  ShowName();
}

void EditForm::CaretMoved(NotifyArgs&) {
  status.SetPane(0, "Line " + std::to_string(memo.CaretLine()) + ", column " +
                        std::to_string(memo.CaretColumn()));
}

// A value of 0 keeps the window open.
void EditForm::Closing(NotifyArgs& args) {
  if (!MayLose()) args.value = 0;
}
