#include "base/CommandTable.h"
#include "browser/BrowserActs.h"
#include "build/BuildActs.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"
#include "frame/EditorMenus.h"
#include "frame/FileActs.h"
#include "frame/MainForm.h"
#include "frame/PictureStrips.h"
#include "frame/PrjActs.h"
#include "frame/SearchWindow.h"
#include "frame/ToolActs.h"
#include "frmedt/RegionMarks.h"
#include "help/HelpActs.h"
#include "project/Project.h"

// The main window's menus, tool bars and status bar.

namespace zendry {

namespace {

constexpr int cModeWidth = 100;
constexpr int cModeHeight = 30;
constexpr int cPaneBarHeight = 22;
constexpr int cCaretPaneWidth = 140;
constexpr int cNotePaneWidth = 140;
constexpr int cEncodingPaneWidth = 210;

// Rows of the bottom pane's bar.
enum PaneRow { cHideRow, cClearRow };

constexpr int cRunRows = 3;
constexpr int cBuildIds[cRunRows] = {cCompileFileCommand, cMakeCommand, cRebuildCommand};
constexpr int cBuildPictures[cRunRows] = {cCompilePicture, cMakePicture, cRebuildPicture};
constexpr int cDebugIds[cRunRows] = {cStepOverCommand, cStepIntoCommand, cStepOutCommand};
constexpr int cDebugPictures[cRunRows] = {cStepOverPicture, cStepIntoPicture, cStepOutPicture};

// A button of the main tool bar; picture -1 means a separator.
struct BarRow {
  mavro::Action* action = nullptr;
  int picture = -1;
};

void AddBarRows(mavro::ToolBar& bar, std::initializer_list<BarRow> rows) {
  for (const BarRow& row : rows) {
    if (row.picture < 0)
      bar.AddSeparator();
    else
      bar.Add(row.action, row.picture);
  }
}

}  // namespace

void MainForm::AddMenu(mavro::Menu& menu, const char* title, mavro::ActionList& list) {
  menu.SetTitle(title);
  menu.Fill(list);
  menus.Add(&menu);
}

void MainForm::InitMenus() {
  AddMenu(fileMenu, "&File", theFileActs);
  AddMenu(editMenu, "&Edit", theEditorActs);
  AddMenu(browserMenu, "&Browser", theBrowserActs);
  AddMenu(viewMenu, "&View", viewActs);
  AddMenu(buildMenu, "&Build", theBuildActs);
  AddMenu(projectMenu, "&Project", thePrjActs);
  AddMenu(debugMenu, "&Debug", theDebugger);
  AddMenu(toolsMenu, "&Tools", theToolActs);
  AddMenu(helpMenu, "&Help", theHelpActs);
  menuBar = &menus;
  InitBarMenu();
}

// The popup menu of the bars has the parts of the window that can be closed by a click.
void MainForm::InitBarMenu() {
  barActs.SetTarget(this, &MainForm::OnView);
  barActs.Add(cShowLeftCommand, "Left Pane");
  barActs.AddRow(viewActs.Find(cShowBottomCommand));
  barActs.Add(cToggleToolBarCommand, "&Tool Bar");
  barActs.AddRow(viewActs.Find(cToggleStatusBarCommand));
  barMenu.root.Fill(barActs);
  toolBar.menu = statusBar.menu = &barMenu;
}

void MainForm::InitBars() {
  InitToolBar();
  paneBar.images = cSmallStrip;
  paneBar.height = cPaneBarHeight;
  paneBar.dock = mavro::Dock::cTop;
  paneBar.AddButton(cHidePicture, "Hide the pane", cHideRow);
  paneBar.AddButton(cClearPicture, "Clear the page", cClearRow);
  paneBar.onClick.Add_H(this, &MainForm::OnPaneButton);
  statusBar.dock = mavro::Dock::cBootom;
  statusBar.AddPane(0, "Ready");
  statusBar.AddPane(cCaretPaneWidth, "Ln 0   Col 0");
  statusBar.AddPane(cNotePaneWidth, "");
  statusBar.AddPane(cEncodingPaneWidth, "");
}

void MainForm::InitToolBar() {
  buildMode.items.Add("Release");
  buildMode.items.Add("Debug");
  buildMode.chooseOnly = true;
  buildMode.selectedIndex = cRelease;
  buildMode.SetSize(cModeWidth, cModeHeight);
  buildMode.hint = "Build mode";
  stopAction.target = this;
  stopAction.handler = static_cast<mavro::ActionHandler>(&MainForm::OnStop);

  toolBar.images = cToolStrip;
  toolBar.dock = mavro::Dock::cTop;
  AddBarRows(toolBar, {{},
                       {theFileActs.actNew, cNewPicture},
                       {theFileActs.actOpenProject, cOpenProjectPicture},
                       {theFileActs.actOpen, cOpenPicture},
                       {theFileActs.actSave, cSavePicture},
                       {theFileActs.actSaveAll, cSaveAllPicture},
                       {},
                       {theEditorActs.Find(cCutCommand), cCutPicture},
                       {theEditorActs.Find(cCopyCommand), cCopyPicture},
                       {theEditorActs.Find(cPasteCommand), cPastePicture},
                       {},
                       {theEditorActs.Find(cRecordMacroCommand), cRecordPicture},
                       {theEditorActs.Find(cPlayMacroCommand), cPlayPicture},
                       {theToolActs.Find(cOpenDesignerCommand), cDesignerPicture}});
  toolBar.AddControl(&buildMode);
  for (int i = 0; i < cRunRows; ++i)
    toolBar.Add(theBuildActs.Find(cBuildIds[i]), cBuildPictures[i]);
  AddBarRows(toolBar, {{theDebugger.Find(cRunCommand), cRunPicture},
                       {},
                       {theDebugger.Find(cViewStackCommand), cStackPicture},
                       {theDebugger.Find(cBreakpointCommand), cBreakpointPicture},
                       {theDebugger.Find(cAddWatchCommand), cWatchPicture},
                       {&stopAction, cStopPicture},
                       {theFileActs.actCloseAll, cCloseAllPicture},
                       {},
                       {theEditorActs.Find(cUndoCommand), cUndoPicture},
                       {theEditorActs.Find(cRedoCommand), cRedoPicture},
                       {theEditorActs.Find(cFindCommand), cFindPicture},
                       {}});
  toolBar.AddButton(cSidePanePicture, "Show the left pane", cShowLeftCommand);
  toolBar.onClick.Add_H(this, &MainForm::OnToolButton);
}

void MainForm::OnToolButton(mavro::NotifyArgs& args) {
  if (args.value == cShowLeftCommand) OnView(cShowLeftCommand);
}

void MainForm::OnPaneButton(mavro::NotifyArgs& args) {
  if (args.value == cHideRow)
    ShowPart(bottomPanel, false);
  else
    ClearPane(bottomTabs.selectedIndex);
}

void MainForm::OnStop(int id) {
  if (id == cStopSearchCommand)
    search->commands.RequestStop();
  else if (id == cStopBuildCommand)
    theBuildActs.OnCommand(id);
  else
    theDebugger.OnCommand(id);
}

void MainForm::SetRunState(int id) {
  toolBar.Enable(cStopRow, id >= 0);
  if (id >= 0) stopAction.id = id;
  const bool debugging = id == cStopDebugCommand;
  for (int i = 0; i < cRunRows; ++i) {
    mavro::Action* action =
        debugging ? theDebugger.Find(cDebugIds[i]) : theBuildActs.Find(cBuildIds[i]);
    toolBar.SetAction(cFirstRunRow + i, action, debugging ? cDebugPictures[i] : cBuildPictures[i]);
  }
  UpdateBars();
}

void MainForm::SetEditorCommandsEnabled(bool on) {
  if (editorCommands == on) return;
  editorCommands = on;
  buildMode.enabled = on;
  UpdateCommands();
}

void MainForm::SetMacroRecording(bool on) {
  isMacroRecording = on;
  UpdateCommands();
  ShowNote();
}

void MainForm::ShowNote() {
  const char* note = isMacroRecording ? "Macro recording" : "";
  statusBar.SetPane(cNotePane, whyNoCopy.empty() ? note : "No rescue copy");
}

void MainForm::SetCaretInfo(int line, int column) {
  statusBar.SetPane(cCaretPane, "Ln " + std::to_string(line) + "   Col " + std::to_string(column));
}

void MainForm::ShowCaretOf(const CppEditor& editor) {
  const EditTab* tab = editTabs.Active();
  if (!tab || tab->editor.get() != &editor) return;
  SetCaretInfo(editor.ShownLine(), editor.CaretColumn() + 1);
  statusBar.SetPane(cEncodingPane, editor.TextNote());
  // Called in the middle of a painting: nothing may be painted at once.
  if (const std::string note = RegionMarks::Update(editor); !note.empty())
    statusBar.SetPane(cTextPane, note);
  UpdateCommands();
}

void MainForm::ShowActiveFile() {
  const EditTab* tab = editTabs.Active();
  const bool isNameless = tab && tab->editor->fileName.empty();
  const std::string shown = !tab ? "Zendry" : isNameless ? tab->caption : tab->editor->fileName;
  if (theProject.isOpen && !theProject.name.empty())
    theProject.SetCaption(shown);
  else
    SetCaption(tab ? shown + " - Zendry" : shown);
  if (tab)
    ShowCaretOf(*tab->editor);
  else
    SetCaretInfo(0, 0);
  if (!tab) statusBar.SetPane(cEncodingPane, "");
  UpdateStartPage();
  UpdateCommands();
}

}  // namespace zendry
