#include "frame/DebugWindow.h"

#include <algorithm>

#include "base/ControlBytes.h"
#include "build/Builder.h"
#include "debug/BreakEditor.h"
#include "debug/DebugDlg.h"
#include "debug/Debugger.h"
#include "debug/ProgParamsDlg.h"
#include "frame/MainForm.h"
#include "frame/StrangerQuestion.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cInputHeight = 26;
constexpr int cInputLabelWidth = 110;
constexpr int cInputMargin = 2;
constexpr int cLabelLeft = 6;
constexpr int cLabelTop = 6;  // so that it is in the middle

// The window of a value under the mouse.
constexpr size_t cTipColumns = 100;
constexpr size_t cTipRows = 20;

// Breaks and cuts a value, so that it fits a screen.
std::string TipText(const std::string& text) {
  std::string shown;
  size_t rows = 1;
  size_t columns = 0;
  for (const char c : MarkControlBytes(text)) {
    const bool isInside = (static_cast<unsigned char>(c) & 0xC0) == 0x80;  // of a letter
    if (c == '\n' || (columns >= cTipColumns && !isInside)) {
      if (rows++ == cTipRows) return shown + "\n...";
      shown += '\n';
      columns = 0;
    }
    if (c == '\n' || c == '\r') continue;
    shown += c;
    if (!isInside) ++columns;
  }
  return shown;
}

}  // namespace

DebugWindow::DebugWindow(MainForm& itsForm) : form(itsForm) {}

void DebugWindow::Begin() {
  theDebugger.Bind(theProject, theBuilder, form, *this);
  for (int i = 0; i < Watches::cLists; ++i) form.watches[i].Bind(&theDebugger, i);
  form.onActivate.Add_H(this, &DebugWindow::OnActivated);
  form.bottomTabs.onChange.Add_H(this, &DebugWindow::OnBottomPage);
  form.resultList.list.onClickRow.Add_H(this, &DebugWindow::OnStackRow);
  form.resultList.list.onChoose.Add_H(this, &DebugWindow::OnStackRow);
  inputBar.dock = mavro::Dock::cBootom;
  inputBar.height = cInputHeight + 2 * cInputMargin;
  inputBar.visible = false;
  inputLabel.text = "Program input:";
  input.accessibleName = "Program input";
  inputBar.Add(&inputLabel);
  inputBar.Add(&input);
  inputBar.onResize.Add_H(this, &DebugWindow::OnInputResized);
  input.onKeyDown.Add_H(this, &DebugWindow::OnInputKey);
  form.outputPage.Add(&inputBar);
}

void DebugWindow::End() {
  theDebugger.Unbind();
  for (WatchList& list : form.watches) list.Bind(nullptr, 0);
}

void DebugWindow::OnActivated(mavro::NotifyArgs& args) {
  isActive = args.value != 0;
}

// Most often under the very name: the disk is only asked if it isn't.
CppEditor* DebugWindow::EditorOf(const std::string& file) const {
  for (int i = 0; i < form.editTabs.TabCount(); ++i)
    if (CppEditor& editor = *form.editTabs.GetTab(i)->editor; editor.fileName == file)
      return &editor;
  return form.editTabs.Activate(file, false);
}

void DebugWindow::TabOpened(const std::string& path) {
  theDebugger.FileOpened(path);
  ShowBreakLooks(path);
}

// The session forgets the handles. The tab may stay, under another name.
void DebugWindow::TabClosing(const std::string& path) {
  std::vector<int> handles;
  for (const Breakpoint& entry : theDebugger.breakpoints.entries)
    if (entry.file == path && entry.handle > 0) handles.push_back(entry.handle);
  theDebugger.FileClosing(path);
  if (CppEditor* editor = handles.empty() ? nullptr : EditorOf(path))
    for (const int handle : handles) editor->RemoveSign(handle);
}

void DebugWindow::MarginClicked(const CppEditor& editor, int line) {
  if (editor.fileName.empty()) return Say("A breakpoint needs a file: save this text first");
  if (!editor.language) return Say("No breakpoint: they are for C and C++ only");
  theDebugger.Toggle(editor.fileName, line);
}

bool DebugWindow::WantsValueTips() const {
  return theDebugger.IsRunning() && theIdeSession.debuggerTips;
}

// A file that is only stepped through is none of the recent files of the user. Raising a window
// that is active already would only cost time at each step, and a dialog of ours stays in front.
bool DebugWindow::ShowExecution(const std::string& file, int line) {
  CppEditor* editor = form.editTabs.Activate(file, true);
  if (!editor) editor = form.editTabs.NewTab(file);
  if (!editor) return false;
  editor->ShowLine(line + 1);
  editor->SetMark(cExecutionMark, line + 1);
  if (!isActive && mavro::activeForm == &form) form.Show();
  return true;
}

void DebugWindow::RemoveExecution(const std::string& file) {
  const EditTab* front = form.editTabs.Active();
  CppEditor* editor = !file.empty() ? EditorOf(file) : front ? front->editor.get() : nullptr;
  if (editor) editor->RemoveMark(cExecutionMark);
}

int DebugWindow::AddBreakMark(const std::string& file, int line) {
  CppEditor* editor = EditorOf(file);
  return editor ? editor->AddBreakMark(line) : -1;
}

void DebugWindow::RemoveBreakMark(const std::string& file, int handle) {
  if (CppEditor* editor = EditorOf(file)) editor->RemoveSign(handle);
}

int DebugWindow::BreakMarkLine(const std::string& file, int handle) {
  CppEditor* editor = EditorOf(file);
  return editor ? editor->SignLine(handle) : cFileClosed;
}

std::optional<CaretPlace> DebugWindow::Caret() {
  const EditTab* tab = form.editTabs.Active();
  if (!tab || tab->editor->fileName.empty()) return {};
  return CaretPlace{tab->editor->fileName, tab->editor->CaretLine()};
}

std::string DebugWindow::ExpressionAtCaret() {
  const EditTab* tab = form.editTabs.Active();
  return tab ? tab->editor->ExpressionAtCaret() : "";
}

int DebugWindow::CurrentWatchList() {
  const int page = form.bottomTabs.selectedIndex;
  return page >= cFirstWatchPage && page <= cLastWatchPage ? page - cFirstWatchPage : 0;
}

void DebugWindow::ShowWatches(int list) {
  form.watches[list].ShowAll();
  form.UpdateCommands();
}

void DebugWindow::ShowWatchValue(int list, int row) {
  form.watches[list].ShowValue(row);
}

void DebugWindow::SelectWatchPage(int list) {
  const int first = cFirstWatchPage;
  form.OpenPage(first + list);
}

// A breakpoint that waits for its library, or that gdb has refused, has another mark.
void DebugWindow::ShowBreakLooks(const std::string& ofFile) {
  for (const Breakpoint& entry : theDebugger.breakpoints.entries) {
    const bool isWanted = entry.handle > 0 && (ofFile.empty() || entry.file == ofFile);
    CppEditor* editor = isWanted ? EditorOf(entry.file) : nullptr;
    const bool isIdle = entry.isPending || !entry.refusal.empty();
    if (editor)
      editor->ShowBreakMark(entry.handle,
                            isIdle ? CppEditor::BreakLook::cIdle : CppEditor::BreakLook::cActive);
  }
}

void DebugWindow::BreakpointsChanged() {
  ShowBreakLooks("");
  if (breakEditor) breakEditor->Fill();
  form.UpdateCommands();
}

void DebugWindow::ClearStack() {
  form.resultList.Clear();
  stackFill = form.resultList.Clearings();
  stackLevels.clear();
}

void DebugWindow::AddStackRow(const GdbFrame& frame) {
  const std::string path = frame.place.file.empty() ? "" : theProject.GetFullPath(frame.place.file);
  form.resultList.AddRow(path.empty() ? "" : theProject.MakeRelative(path), frame.place.line,
                         frame.text);
  stackLevels.push_back(frame.place.level);
}

bool DebugWindow::ShowsStack() {
  return form.bottomPanel.visible && form.bottomTabs.selectedIndex == cResultPage &&
         form.resultList.Clearings() == stackFill;
}

void DebugWindow::ShowStackPage() {
  form.OpenPage(cResultPage);
}

// The list itself shows the row's place. Rows that others have put there since are no frames.
void DebugWindow::OnStackRow(mavro::NotifyArgs& args) {
  const auto row = static_cast<size_t>(args.value);
  if (args.value < 0 || form.resultList.Clearings() != stackFill || row >= stackLevels.size())
    return;
  theDebugger.SelectFrame(stackLevels[row]);
}

void DebugWindow::ShowValueTip(const std::string& text) {
  if (const EditTab* tab = form.editTabs.Active()) tab->editor->ShowMouseTip(TipText(text));
}

void DebugWindow::AppendToConsole(const std::string& line) {
  if (console) console->AppendLine(line);
}

void DebugWindow::OnBottomPage(mavro::NotifyArgs&) {
  const int page = form.bottomTabs.selectedIndex;
  if (page >= cFirstWatchPage && page <= cLastWatchPage) theDebugger.RefreshDisplays();
  if (page == cResultPage) theDebugger.FollowStack();
  form.UpdateCommands();
}

// The session tells the state only after a while if the program goes on: most steps are over by
// then, and the bars don't flicker.
void DebugWindow::RunStateChanged() {
  shownState = theDebugger.State();
  const bool takesInput = theDebugger.TakesInput();
  if (takesInput != inputBar.visible) {
    const EditTab* front = form.editTabs.Active();
    if (!takesInput && input.IsFocused() && front) front->editor->Focus();
    inputBar.visible = takesInput;
    form.outputPage.layoutPending = true;
    mavro::RunPendingLayout(&form.outputPage);
  }
  form.UpdateCommands();
}

void DebugWindow::OnInputResized(mavro::NotifyArgs&) {
  inputLabel.SetBounds(cLabelLeft, cLabelTop, cInputLabelWidth - cLabelLeft,
                       cInputHeight - cLabelTop);
  input.SetBounds(cInputLabelWidth, cInputMargin, inputBar.width - cInputLabelWidth - cInputMargin,
                  cInputHeight);
}

void DebugWindow::OnInputKey(mavro::KeyArgs& args) {
  if (args.key != mavro::Key::cEnter) return;
  args.handled = true;
  theDebugger.SendInput(input.text);
  input.text = "";
}

void DebugWindow::Say(const std::string& text) {
  form.SetStatus(MarkControlBytes(text), "");
}

void DebugWindow::OpenDialog(DebugDialog which) {
  switch (which) {
    case DebugDialog::cBreakpoints: {
      theDebugger.ReconcileAll();
      BreakEditor dialog(theDebugger, form.editTabs);
      breakEditor = &dialog;
      dialog.Run(true);
      breakEditor = nullptr;
      return;
    }
    case DebugDialog::cCommander: {
      DebugDlg dialog(theDebugger);
      console = &dialog;
      dialog.Run(true);
      console = nullptr;
      return;
    }
    case DebugDialog::cWatch:
      return AskWatch();
    case DebugDialog::cParameters:
      return AskParameters();
  }
}

void DebugWindow::AskWatch() {
  const int list = CurrentWatchList();
  TextDlg dialog("watch", ExpressionAtCaret());
  if (!dialog.Ask() || dialog.Accepted().empty()) return;
  if (theDebugger.AddExpression(list, dialog.Accepted())) SelectWatchPage(list);
}

void DebugWindow::AskParameters() {
  const OwnDangers own(theProject);
  ProgParamsDlg dialog(theDebugger.Params());
  if (dialog.Ask() && dialog.Accepted() != theDebugger.Params())
    theDebugger.SetParams(dialog.Accepted());
}

}  // namespace zendry
