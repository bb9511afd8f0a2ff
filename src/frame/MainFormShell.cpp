#include <chrono>

#include "base/ControlBytes.h"
#include "debug/Debugger.h"
#include "frame/EditorMenus.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/NewFileDlg.h"
#include "project/Project.h"

// The main window: the interface for the core and the editors.

namespace zendry {

void MainForm::AppendOutput(std::string_view added) {
  output.Append(MarkControlBytes(added));
}

void MainForm::ClearOutput() {
  output.Clear();
}

void MainForm::AddErrorRow(const ErrorRow& row) {
  errorList.AddRow(row.file, row.line, row.text, row.column);
  if (!IsMet(met, Needs::cErrors)) UpdateCommands();
}

void MainForm::AppendToLastErrorRow(std::string_view added) {
  errorList.AppendToLast(added);
}

void MainForm::ClearErrorRows() {
  errorList.Clear();
  UpdateCommands();
}

int MainForm::ErrorRowCount() {
  return errorList.RowCount();
}

void MainForm::ShowErrorRow(int row) {
  ShowBottomPage(BottomPage::cError);
  errorList.ShowRow(row);
}

// The results of a search as long as their page is in front.
ReferenceList& MainForm::WalkedList() {
  const bool hasResults = bottomTabs.selectedIndex == cResultPage && resultList.RowCount() > 0;
  return hasResults ? resultList : errorList;
}

void MainForm::GoToNextError() {
  WalkedList().GoNext();
}

void MainForm::GoToPreviousError() {
  WalkedList().GoPrev();
}

void MainForm::ShowBottomPage(BottomPage page) {
  ShowPage(static_cast<int>(page));
}

void MainForm::AddTreeNode(const std::string& path, int nodeId, int type) {
  projectTree.AddNode(path, nodeId, type);
  classTree.TagsChanged();
}

void MainForm::RemoveTreeNode(int nodeId) {
  projectTree.RemoveFileNode(nodeId);
  classTree.TagsChanged();
}

void MainForm::ClearTree() {
  projectTree.Clear();
  classTree.TagsChanged();
}

void MainForm::SelectTreeRoot() {
  projectTree.SelectRoot();
}

// Long loads report their progress; the line is not painted more often than it can be read.
void MainForm::SetStatus(const std::string& status, const std::string& detail) {
  using Clock = std::chrono::steady_clock;
  constexpr auto cPaintEvery = std::chrono::milliseconds(100);
  static Clock::time_point lastPaint = Clock::now();
  const std::string shown = detail.empty() ? status : status + " " + detail;
  statusBar.SetPane(cTextPane, !shown.empty() ? shown : whyNoCopy.empty() ? "Ready" : whyNoCopy);
  if (shown.empty() || Clock::now() - lastPaint < cPaintEvery) return;
  statusBar.Update();
  lastPaint = Clock::now();
}

void MainForm::SetCaption(const std::string& caption) {
  text = caption;
}

void MainForm::SetModeSelector(int mode) {
  buildMode.selectedIndex = mode == cDebug ? cDebug : cRelease;
}

int MainForm::SelectedMode() {
  return buildMode.selectedIndex;
}

void MainForm::SetStopCommand(int command) {
  SetRunState(command);
}

void MainForm::PumpMessages() {
  mavro::theApplication.ProcessMessages();
}

void MainForm::AnswerWhileRunning() {
  PumpMessages();
}

void MainForm::SetProgress(const std::string& progress, int done, int total) {
  if (total > 0) statusBar.SetPane(cTextPane, progress);
  statusBar.SetPaneBar(cTextPane, total > 0 ? done * 100 / total : -1);
}

std::vector<OpenFile> MainForm::OpenFiles() {
  std::vector<OpenFile> files;
  for (int i = 0; i < editTabs.TabCount(); ++i) {
    const CppEditor& editor = *editTabs.GetTab(i)->editor;
    if (!editor.fileName.empty()) files.push_back({editor.fileName, editor.ShownLine()});
  }
  startFiles.AddLeftClosed(files);
  return files;
}

std::string MainForm::ActiveFile() {
  const EditTab* tab = editTabs.Active();
  return tab ? tab->editor->fileName : "";
}

void MainForm::OpenFileAt(const std::string& path, int line) {
  CppEditor* editor = editTabs.OpenFile(path, EditTabs::OnFailure::cSay);
  if (editor && line > 0) editor->ShowLine(line);
}

void MainForm::ActivateFile(const std::string& path) {
  editTabs.Activate(path, true);
}

bool MainForm::MayReopen(const std::string& path, int line) {
  return startFiles.MayOpen(path, line);
}

bool MainForm::MayCloseAllFiles() {
  return editTabs.MayCloseAll();
}

void MainForm::CloseAllFiles() {
  editTabs.DropAll();
  startFiles.ForgetAll();
}

void MainForm::SaveChangedFiles() {
  editTabs.SaveChanged(CppEditor::SavedBy::cProgram);
}

void MainForm::RemoveErrorMark() {
  editTabs.RemoveMark(cErrorMark);
}

// Plain text has no tags.
std::vector<EditorText*> MainForm::OpenTexts() {
  std::vector<EditorText*> texts;
  for (int i = 0; i < editTabs.TabCount(); ++i) {
    CppEditor& editor = *editTabs.GetTab(i)->editor;
    if (editor.language) texts.push_back(&editor.LiveText());
  }
  return texts;
}

bool MainForm::IsDebuggerRunning() {
  return theDebugger.IsRunning();
}

void MainForm::ProjectReplaced() {
  theDebugger.Reset();
}

void MainForm::Say(const std::string& said) {
  SetStatus(said, "");
}

// Other messages may replace the sentence; the short note beside it stays.
void MainForm::ShowWhyNoCopy(const std::string& reason) {
  const std::string sentence = reason.empty() ? "" : "Unsaved text has no copy: " + reason;
  if (sentence == whyNoCopy) return;
  whyNoCopy = sentence;
  ShowNote();
  SetStatus("", "");
}

void MainForm::FrontChanged() {
  ShowActiveFile();
}

void MainForm::FileOpened(const std::string& path) {
  projectTree.ShowMissing(path);
  startFiles.Opened(path);
}

void MainForm::SaveProject() {
  theFileActs.SaveProject();
}

void MainForm::SaveSession() {
  theFileActs.SaveSession();
}

void MainForm::AskForNewFile() {
  zendry::AskForNewFile();
}

mavro::ContextMenu& MainForm::TextMenu() {
  mavro::ContextMenu& menu = theDebugger.IsRunning() ? EditorDebugMenu() : EditorTextMenu();
  UpdateMenu(menu.root);
  return menu;
}

mavro::ContextMenu& MainForm::MarginMenu() {
  mavro::ContextMenu& menu = theDebugger.IsRunning() ? EditorDebugMenu() : EditorMarginMenu();
  UpdateMenu(menu.root);
  return menu;
}

bool MainForm::WantsValueTips() {
  return debugWindow.WantsValueTips();
}

void MainForm::ShowValueTip(const std::string& expression) {
  theDebugger.PrintTip(expression);
}

}  // namespace zendry
