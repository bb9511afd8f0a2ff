#include <algorithm>
#include <utility>

#include "base/Paths.h"
#include "browser/BrowserActs.h"
#include "build/BuildActs.h"
#include "config/IdeSession.h"
#include "debug/Debugger.h"
#include "frame/MainForm.h"
#include "frame/SearchWindow.h"
#include "project/Project.h"

// The main window: which of its commands can act now.

namespace zendry {

namespace {

bool IsBuildSource(const std::string& path) {
  const int kind = FileKind(path);
  const bool hasProject = theProject.isOpen && !theProject.implicit;
  return (kind == cCppSource || kind == cCSource) && (!hasProject || theProject.FindFile(path));
}

// The same, called with every key press: a name that the project doesn't have is looked up on the
// disk, so the last answer is kept as long as path and project stay the same.
bool IsBuildSourceNow(const std::string& path) {
  struct Asked {
    std::string path, folder, project;
    int lastFileId = 0;
    size_t files = 0;
    bool isImplicit = false;
    bool operator==(const Asked&) const = default;
  };
  static Asked asked;
  static bool answer = false;
  Asked now = {path,
               theProject.folder,
               theProject.name,
               theProject.lastFileId,
               theProject.Files().size(),
               theProject.implicit};
  if (now == asked) return answer;
  asked = std::move(now);
  return answer = IsBuildSource(path);
}

}  // namespace

MetNeeds MainForm::NeedsMetNow() {
  MetNeeds now;
  const auto set = [&now](Needs needs, bool on) { now[static_cast<size_t>(needs)] = on; };
  set(Needs::cProject, theProject.isOpen);
  set(Needs::cProjectOrSource, theProject.isOpen);
  set(Needs::cErrors, errorList.RowCount() > 0 || resultList.RowCount() > 0);
  set(Needs::cReplaceUndo, search->CanUndo());
  set(Needs::cRecentFiles, !theIdeSession.recentFiles.items.empty());
  set(Needs::cRecentProjects, !theIdeSession.recentProjects.items.empty());
  set(Needs::cHiddenLeftPanel, !leftPanel.visible);
  set(Needs::cHiddenBottomPanel, !bottomPanel.visible);
  const mavro::TreeNode* classNode = classTree.Selected();
  set(Needs::cClassNode, classNode && classNode->parent);
  set(Needs::cPlaceBehind, theBrowserActs.CanGoBack());
  set(Needs::cPlaceAhead, theBrowserActs.CanGoForward());
  const DebugState state = debugWindow.ShownState();
  const bool isIdle = state == DebugState::cNotRunning;
  const bool isPaused = state == DebugState::cPaused;
  const auto& watched =
      theDebugger.watches.lists[static_cast<size_t>(debugWindow.CurrentWatchList())];
  set(Needs::cBreakpoints, !theDebugger.breakpoints.entries.empty());
  set(Needs::cWatches, !watched.empty());
  set(Needs::cPaused, isPaused);
  set(Needs::cRunning, state == DebugState::cRunning);
  set(Needs::cSession, !isIdle);
  set(Needs::cStep, isPaused || (isIdle && theProject.isOpen));
  set(Needs::cRunPlain, isIdle && theProject.isOpen);
  const EditTab* tab = editTabs.Active();
  set(Needs::cTabOrProject, tab || theProject.isOpen);
  if (!tab) return now;
  const CppEditor& editor = *tab->editor;
  set(Needs::cTab, true);
  const bool isSelected = !editor.Send(mavro::SCI_GETSELECTIONEMPTY);
  const bool isWritable = !editor.IsReadOnly();
  set(Needs::cSelection, isSelected);
  set(Needs::cWritable, isWritable);
  set(Needs::cWritableSelection, isWritable && isSelected);
  set(Needs::cWritableSource, isWritable && editor.language);
  set(Needs::cSmallText, !editor.IsHuge());
  set(Needs::cFolds, editor.language && !editor.IsHuge());
  set(Needs::cLongLines, editor.LinesNotShown() > 0);
  set(Needs::cUndo, editor.Send(mavro::SCI_CANUNDO));
  set(Needs::cRedo, editor.Send(mavro::SCI_CANREDO));
  set(Needs::cMacro, !editor.inMacroRecord && !editor.macro.empty());
  const bool isSource = IsBuildSourceNow(editor.fileName);
  set(Needs::cBuildSource, isSource);
  set(Needs::cProjectOrSource, theProject.isOpen || isSource);
  const bool isBreakable = !editor.fileName.empty() && editor.language;
  set(Needs::cBreakableLine, isBreakable);
  const bool canStep = isPaused || (isIdle && (theProject.isOpen || isSource));
  set(Needs::cStep, canStep);
  set(Needs::cStepInSource, canStep && isBreakable);
  set(Needs::cRunPlain, isIdle && canStep);
  return now;
}

bool MainForm::CanAct(const mavro::Action* action) const {
  return IsHandled(action) && IsMet(met, NeedsOf(action->id));
}

// Called at every key press: most often nothing has changed.
void MainForm::UpdateCommands() {
  const MetNeeds now = NeedsMetNow();
  const CommandMarks marksNow = theEditorActs.MarksNow();
  const bool isNew = now != met || marksNow != marks;
  met = now;
  marks = marksNow;
  if (!isNew) return;
  for (mavro::Menu* menu : menus.menus) UpdateMenu(*menu);
  UpdateMenu(barMenu.root);
  UpdateBars();
  UpdateViewMarks();
}

// The editor's and the browser's commands all need a tab.
void MainForm::UpdateMenu(mavro::Menu& menu) const {
  const bool allowed = IsMet(met, Needs::cTab) || (&menu != &editMenu && &menu != &browserMenu);
  for (const auto& item : menu.items) {
    if (item->isSubmenu && allowed) {
      UpdateMenu(static_cast<mavro::Menu&>(*item));
    } else if (item->isSubmenu) {
      item->Enable(false);
    } else if (item->action) {
      const bool on = allowed && CanAct(item->action);
      if (item->enabled != on) item->Enable(on);
      const auto marked =
          std::find(std::begin(cMarkedCommands), std::end(cMarkedCommands), item->action->id);
      if (marked == std::end(cMarkedCommands)) continue;
      const bool isOn = marks[static_cast<size_t>(marked - std::begin(cMarkedCommands))];
      if (item->checked != isOn) item->Check(isOn);
    }
  }
}

void MainForm::UpdateBars() {
  for (int row = 0; row < toolBar.RowCount(); ++row) {
    const mavro::ToolBar::Row& shown = toolBar.GetRow(row);
    const bool isPanelRow = row == cLeftPanelRow;
    if (row == cStopRow || (!shown.action && !isPanelRow)) continue;
    const bool on = isPanelRow ? !leftPanel.visible : CanAct(shown.action);
    if (shown.enabled != on) toolBar.Enable(row, on);
  }
  toolPanel.UpdateButtons();
}

void MainForm::UpdateViewMarks() {
  const auto mark = [](mavro::Menu& menu, int commandId, const mavro::Control& part) {
    for (const auto& item : menu.items)
      if (item->action && item->action->id == commandId) item->Check(part.visible);
  };
  for (mavro::Menu* menu : {&viewMenu, &barMenu.root}) {
    mark(*menu, cShowLeftCommand, leftPanel);
    mark(*menu, cShowBottomCommand, bottomPanel);
    mark(*menu, cToggleToolBarCommand, toolBar);
    mark(*menu, cToggleStatusBarCommand, statusBar);
  }
}

// The key of the build command arrives here when none of the key's commands can act.
void MainForm::OnKeyPreview(mavro::NotifyArgs& args) {
  if (args.value != cKeyF7) return;
  SetStatus(theProject.isOpen ? "The file in front is no source of the project: it is not compiled"
                              : "No project and no source is open: there is nothing to build",
            "");
}

}  // namespace zendry
