#pragma once

#include <mavro>
#include <memory>
#include <string>

#include "base/Shell.h"
#include "browser/ClassTree.h"
#include "code/Completion.h"
#include "config/IdeSession.h"
#include "debug/WatchList.h"
#include "editor/EditTabs.h"
#include "editor/EditorActs.h"
#include "editor/EditorHost.h"
#include "editor/ReferenceList.h"
#include "frame/CommandNeeds.h"
#include "frame/DebugWindow.h"
#include "frame/ProjectTree.h"
#include "frame/StartFiles.h"
#include "frame/StartPage.h"
#include "frame/StartupFile.h"
#include "frame/ToolPanel.h"
#include "frame/ViewCommands.h"
#include "project/ProjectSources.h"

namespace zendry {

class SearchWindow;

// Pages of the bottom pane.
enum BottomPageIndex {
  cOutputPage,
  cErrorPage,
  cFirstWatchPage,
  cLastWatchPage = cFirstWatchPage + 3,
  cResultPage
};

// Panes of the status bar.
enum StatusPane { cTextPane, cCaretPane, cNotePane, cEncodingPane };

// Rows of the main tool bar that code refers to by number. The first three of them show commands of
// the build or, during a debug session, of the debugger.
enum ToolRow { cModeRow = 14, cFirstRunRow = 15, cStopRow = 23, cLeftPanelRow = 30 };

// The main window: holds every panel as a member, connects the panels to the command tables, and
// shows what the core reports. The panels do their work themselves.
class MainForm : public mavro::Form, public Shell, private EditorHost {
 public:
  // The files in `newStartup` are opened once the windows exist; the last file is in front.
  explicit MainForm(std::vector<StartupFile> newStartup = {});
  ~MainForm() override;

  // Places the window and its horizontal splitter.
  void SetPlacement(const Placement& wanted);
  // The placement of both when the window closed.
  const Placement& LastPlacement() const { return placement; }

  // Panels.
  void ClearPane(int index);
  void ShowPage(int index);
  // The same, for a page that the user has asked for: the pane is shown if it was closed.
  void OpenPage(int index);

  // The frame of the window. Ties the stop button to a command; a negative id disables it.
  void SetRunState(int id);
  void SetCaretInfo(int line, int column);
  void SetMacroRecording(bool on) override;
  // Called by the editor tabs when the first tab is opened and when the last one is closed.
  void SetEditorCommandsEnabled(bool on) override;
  // Shows the name of the file in front in the caption, and its caret position.
  void ShowActiveFile();
  // True if the command has a handler and its needs are met now.
  bool CanAct(const mavro::Action* action) const;
  // Grays the commands that can't act now, in menus and tool bars, and enables the others.
  void UpdateCommands();
  // The same in a menu that is about to be shown.
  void UpdateMenu(mavro::Menu& menu) const;
  // Shows in the status bar, once, which settings or session could not be read or written.
  void SayWhatIsNotKept();
  // The user has changed the options: shows them everywhere and writes the settings.
  void TakeOptions();
  // Stores what a normal end stores, and copies of unsaved work; asks no question.
  void KeepUnasked();
  // Shows the position of the editor's caret if its file is in front.
  void ShowCaretOf(const CppEditor& editor) override;

  // Group: calls from the core to the window.
  void AppendOutput(std::string_view text) override;
  void ClearOutput() override;
  void AddErrorRow(const ErrorRow& row) override;
  void AppendToLastErrorRow(std::string_view text) override;
  void ClearErrorRows() override;
  int ErrorRowCount() override;
  void ShowErrorRow(int row) override;
  void GoToNextError() override;
  void GoToPreviousError() override;
  void ShowBottomPage(BottomPage page) override;
  void AddTreeNode(const std::string& path, int id, int type) override;
  void RemoveTreeNode(int id) override;
  void ClearTree() override;
  void SelectTreeRoot() override;
  void SetStatus(const std::string& text, const std::string& detail) override;
  void SetCaption(const std::string& text) override;
  void SetModeSelector(int mode) override;
  int SelectedMode() override;
  void SetStopCommand(int id) override;
  void PumpMessages() override;
  void AnswerWhileRunning() override;
  void SetProgress(const std::string& text, int done, int total) override;
  std::vector<OpenFile> OpenFiles() override;
  std::string ActiveFile() override;
  void OpenFileAt(const std::string& path, int line) override;
  void ActivateFile(const std::string& path) override;
  bool MayReopen(const std::string& path, int line) override;
  bool MayCloseAllFiles() override;
  void CloseAllFiles() override;
  void SaveChangedFiles() override;
  void RemoveErrorMark() override;
  std::vector<EditorText*> OpenTexts() override;
  void TagsChanged() override { classTree.TagsChanged(); }
  bool IsDebuggerRunning() override;
  void ProjectReplaced() override;

  // Group: the panels.
  mavro::MenuBar menus;
  mavro::ActionList viewActs;
  mavro::ActionList barActs;  // of the popup menu of tool bar and status bar
  mavro::Menu fileMenu, editMenu, browserMenu, viewMenu, buildMenu, projectMenu, debugMenu,
      toolsMenu, helpMenu;
  mavro::ContextMenu barMenu;
  mavro::ToolBar toolBar;
  mavro::ToolBar paneBar;
  mavro::Button closeBottom;
  mavro::ComboBox buildMode;
  mavro::StatusBar statusBar;
  mavro::Panel topPanel, leftPanel, rightPanel, bottomPanel;
  mavro::TabCtrl leftTabs, bottomTabs;
  mavro::TabPage projectPage, classesPage, outputPage;
  ProjectSources sources;
  Completion completion;
  EditTabs editTabs{*this};
  StartFiles startFiles{*this, *this};
  ToolPanel toolPanel;
  mavro::Memo output;
  WatchList watches[4];
  ReferenceList errorList{"Error", cErrorMark, editTabs};
  ReferenceList resultList{"Result", cNoMark, editTabs};
  StartPage startPage;
  mavro::SplitContainer hSplit;
  mavro::SplitContainer vSplit;
  ClassTree classTree;
  ProjectTree projectTree;
  const std::unique_ptr<SearchWindow> search;
  DebugWindow debugWindow{*this};

 private:
  // Group: calls from the editors to the window.
  void Say(const std::string& text) override;
  void FrontChanged() override;
  void ShowWhyNoCopy(const std::string& reason) override;
  void FileOpened(const std::string& path) override;
  void TabOpened(const std::string& path) override { debugWindow.TabOpened(path); }
  void TabClosing(const std::string& path) override { debugWindow.TabClosing(path); }
  void MarginClicked(const CppEditor& editor, int line) override {
    debugWindow.MarginClicked(editor, line);
  }
  void SaveProject() override;
  void SaveSession() override;
  void AskForNewFile() override;
  mavro::ContextMenu& TextMenu() override;
  mavro::ContextMenu& MarginMenu() override;
  Completion& CodeCompletion() override { return completion; }
  bool WantsValueTips() override;
  void ShowValueTip(const std::string& expression) override;

  void InitMenus();
  void InitBarMenu();
  void InitBars();
  void InitToolBar();
  void InitPanels();
  void InitBottomPanel();
  void AddMenu(mavro::Menu& menu, const char* title, mavro::ActionList& list);

  void OnView(int id);
  void OnStop(int id);
  void OnCreated(mavro::NotifyArgs& args);
  void OnShown(mavro::NotifyArgs& args);
  void OnActivated(mavro::NotifyArgs& args);
  void OnDropFiles(mavro::FilesArgs& args);
  void OnCloseRequest(mavro::NotifyArgs& args);
  void OnBottomResized(mavro::NotifyArgs& args);
  void OnSplitResized(mavro::NotifyArgs& args);
  void OnCloseBottom(mavro::NotifyArgs& args);
  void OnCloseLeft(mavro::NotifyArgs& args);
  void OnPaneButton(mavro::NotifyArgs& args);
  void OnToolButton(mavro::NotifyArgs& args);
  void OnBuildMode(mavro::ItemArgs& args);
  void OnClassNode(mavro::NotifyArgs& args);

  void OnKeyPreview(mavro::NotifyArgs& args);
  MetNeeds NeedsMetNow();
  void UpdateBars();
  void UpdateStartPage();
  void OnEditorPaneSized(mavro::NotifyArgs& args);
  void UpdateViewMarks();
  void OpenStartupFiles();
  void OnLateStart(mavro::NotifyArgs& args);
  void TakePlacement();
  void TakeOutputFont();
  void ShowNote();
  ReferenceList& WalkedList();
  void ShowPart(mavro::Control& part, bool on);

  std::vector<StartupFile> startup;
  mavro::Timer lateStart{this};  // waits for the window before a large file is opened
  int lateTicks = 0;
  Placement placement;
  std::string whyNoCopy;  // the sentence in the status line; empty when there are copies
  bool isMacroRecording = false;
  int splitHeight = 0;         // the last known height of hSplit
  int bottomHeight = 0;        // the wanted height of the bottom pane
  bool followsWindow = false;  // the bar is being moved because the window's height has changed
  mavro::Action stopAction{"Stop", 0, 0, -2, 0, nullptr, nullptr};
  bool editorCommands = true;
  MetNeeds met;
  CommandMarks marks;
};

// The one main window; null before it is created and after it is destroyed.
extern MainForm* theMainForm;

}  // namespace zendry
