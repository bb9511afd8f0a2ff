#include "frame/MainForm.h"

#include <algorithm>

#include "SystemDialogs.h"
#include "base/DiskStamp.h"
#include "base/Paths.h"
#include "base/ReasonFirst.h"
#include "browser/BrowserActs.h"
#include "build/BuildActs.h"
#include "config/EditorSettings.h"
#include "debug/Debugger.h"
#include "editor/EditorActs.h"
#include "editor/EditorViewActs.h"
#include "frame/FileActs.h"
#include "frame/HelpRoute.h"
#include "frame/PictureStrips.h"
#include "frame/PrjActs.h"
#include "frame/SearchWindow.h"
#include "frame/StrangerQuestion.h"
#include "frame/ToolActs.h"
#include "project/Project.h"
#include "rescue/Rescue.h"
#include "rescue/TextRescue.h"
#include "wizards/ClassWizard.h"

// The main window: how it is put together and what its own controls do.

namespace zendry {

MainForm* theMainForm = nullptr;

namespace {

enum ContextId {
  cFormContext = 100,
  cUpperSplitContext = 200,
  cTopContext = 201,
  cBottomContext = 202,
  cLeftSplitContext = 300,
  cLeftContext = 301,
  cRightContext = 302,
  cLeftTabsContext = 3011,
  cEditTabsContext = 32,
  cToolPanelContext = 500
};

constexpr int cLeftPanelWidth = 200;
constexpr int cCloseButtonSize = 20;
constexpr int cPaneBarWidth = 80;
constexpr int cTabsAndBarWidth = 640;
constexpr int cLateTick = 5;  // milliseconds
constexpr int cMostLateTicks = 200;

bool HasLargeFile(const std::vector<StartupFile>& files) {
  return std::any_of(files.begin(), files.end(), [](const StartupFile& file) {
    return file.kind != cProjectFile &&
           ReadDiskStamp(file.path).size >= mavro::SciEditor::cLargeBytes;
  });
}

}  // namespace

MainForm::MainForm(std::vector<StartupFile> newStartup)
    : sources(theProject, *this),
      completion(sources),
      toolPanel(leftTabs),
      classTree(theProject, &editTabs),
      search(std::make_unique<SearchWindow>(*this)),
      startup(std::move(newStartup)) {
  theMainForm = this;
  theProject.SetShell(this);
  theBuilder.Bind(theProject, *this);
  theBuilder.SetGate(MayBuild);
  theBuildActs.Bind(theBuilder, theProject, *this);
  theEditorActs.Bind(&editTabs);
  theToolActs.Bind(&editTabs);
  theBrowserActs.Bind({&editTabs, &classTree, &completion.wizard, &sources,
                       [this] { AddClassMember(editTabs, completion.wizard, sources); }});
  BindHelp(*this);
  text = "Zendry";
  center = false;
  acceptFiles = true;
  contextId = cFormContext;
  viewActs.SetTarget(this, &MainForm::OnView);
  viewActs.Add(cToggleStatusBarCommand, "&Status Bar");
  viewActs.Add(cShowBottomCommand, "Bootom Pane");
  viewActs.AddSeparator();
  for (mavro::Action* row : theEditorViewActs.Rows()) viewActs.AddRow(row);
  InitMenus();
  InitBars();
  InitPanels();
  debugWindow.Begin();
  SetEditorCommandsEnabled(false);
  for (mavro::Menu* menu : menus.menus) UpdateMenu(*menu);
  UpdateMenu(barMenu.root);
  UpdateBars();
  UpdateViewMarks();
}

MainForm::~MainForm() {
  debugWindow.End();
  theBuilder.SetGate(nullptr);
  theEditorActs.Bind(nullptr);
  theToolActs.Bind(nullptr);
  theBrowserActs.Bind({});
  UnbindHelp();
  editTabs.DetachHost();
  theProject.SetShell(nullptr);
  theMainForm = nullptr;
}

void MainForm::InitPanels() {
  hSplit.contextId = cUpperSplitContext;
  vSplit.contextId = cLeftSplitContext;
  topPanel.contextId = cTopContext;
  leftPanel.contextId = cLeftContext;
  rightPanel.contextId = cRightContext;
  bottomPanel.contextId = cBottomContext;
  leftTabs.contextId = cLeftTabsContext;
  editTabs.contextId = cEditTabsContext;
  toolPanel.contextId = cToolPanelContext;

  hSplit.dock = vSplit.dock = leftTabs.dock = editTabs.dock = mavro::Dock::cFill;
  projectTree.dock = classTree.dock = mavro::Dock::cFill;
  toolPanel.dock = mavro::Dock::cTop;

  Add(&toolBar);
  Add(&hSplit);
  Add(&statusBar);
  hSplit.pan1 = &topPanel;
  hSplit.pan2 = &bottomPanel;
  hSplit.orientation = 0;
  topPanel.Add(&vSplit);
  vSplit.pan1 = &leftPanel;
  vSplit.pan2 = &rightPanel;
  vSplit.orientation = 1;
  vSplit.SetPosition(cLeftPanelWidth);

  leftPanel.Add(&toolPanel);
  leftPanel.Add(&leftTabs);
  projectPage.text = "Project";
  projectPage.Add(&projectTree);
  projectTree.accessibleName = projectPage.text;
  classesPage.text = "Classes";
  classesPage.Add(&classTree);
  classTree.accessibleName = classesPage.text;
  leftTabs.Add(&projectPage);
  leftTabs.Add(&classesPage);
  rightPanel.Add(&editTabs);
  startPage.visible = startup.empty() && StartPage::IsWanted();
  if (startPage.visible) {
    startPage.Fill();
    rightPanel.Add(&startPage);  // after the tabs, because it covers them
  }
  rightPanel.onResize.Add_H(this, &MainForm::OnEditorPaneSized);
  InitBottomPanel();

  toolPanel.onClosePanel.Add_H(this, &MainForm::OnCloseLeft);
  buildMode.onSelChanged.Add_H(this, &MainForm::OnBuildMode);
  classTree.onChangeSel.Add_H(this, &MainForm::OnClassNode);
  onCreate.Add_H(this, &MainForm::OnCreated);
  onShow.Add_H(this, &MainForm::OnShown);
  lateStart.onTimer.Add_H(this, &MainForm::OnLateStart);
  onActivate.Add_H(this, &MainForm::OnActivated);
  onKeyPreview.Add_H(this, &MainForm::OnKeyPreview);
  onClose.Add_H(this, &MainForm::OnCloseRequest);
  onDropFiles.Add_H(this, &MainForm::OnDropFiles);
}

void MainForm::InitBottomPanel() {
  bottomTabs.dock = output.dock = mavro::Dock::cFill;
  bottomPanel.Add(&bottomTabs);
  bottomPanel.Add(&paneBar);  // added after the tabs, because it may cover them
  bottomPanel.Add(&closeBottom);
  output.readOnly = true;
  output.monospaced = true;
  TakeOutputFont();
  outputPage.text = "Output";
  outputPage.Add(&output);
  output.accessibleName = outputPage.text;
  bottomTabs.Add(&outputPage);
  bottomTabs.Add(&errorList);
  for (int i = 0; i < 4; ++i) {
    watches[i].text = "Watch-" + std::to_string(i + 1);
    watches[i].list.accessibleName = watches[i].text;
    bottomTabs.Add(&watches[i]);
  }
  bottomTabs.Add(&resultList);
  closeBottom.SetSize(cCloseButtonSize, cCloseButtonSize);
  closeBottom.SetImage(cSmallStrip, cClosePicture);
  closeBottom.hint = "Close the pane";
  closeBottom.onClick.Add_H(this, &MainForm::OnCloseBottom);
  bottomPanel.onResize.Add_H(this, &MainForm::OnBottomResized);
  hSplit.onResize.Add_H(this, &MainForm::OnSplitResized);
}

void MainForm::TakeOutputFont() {
  const FontRec& font = theEditorSettings.fonts[cOutputFont];
  output.font = mavro::Font(font.size, font.style, font.name);
}

// The close button is at the right end of the bar. The bar is beside the tabs if there is room,
// else above them.
void MainForm::OnBottomResized(mavro::NotifyArgs&) {
  const int width = bottomPanel.width;
  const bool beside = width >= cTabsAndBarWidth;
  paneBar.dock = beside ? mavro::Dock::cNone : mavro::Dock::cTop;
  if (beside) paneBar.SetBounds(width - cPaneBarWidth, 0, cPaneBarWidth);
  closeBottom.SetLocation(width - cCloseButtonSize, 0);
  bottomPanel.layoutPending = true;
  mavro::RunPendingLayout(&bottomPanel);
  if (!followsWindow && hSplit.height == splitHeight) bottomHeight = bottomPanel.height;
}

// When the window's height changes, the editor's height changes with it. The bottom pane keeps the
// height that the user gave it with its bar, and gets it back once there is room again.
void MainForm::OnSplitResized(mavro::NotifyArgs&) {
  const bool isFirst = splitHeight == 0;
  splitHeight = hSplit.height;
  if (isFirst) {
    bottomHeight = bottomPanel.height;
    return;
  }
  followsWindow = true;
  hSplit.SetPosition(splitHeight - mavro::SplitBar::cThickness - bottomHeight);
  followsWindow = false;
}

void MainForm::SetPlacement(const Placement& wanted) {
  placement = wanted;
  SetBounds(wanted.left, wanted.top, wanted.width, wanted.height);
  hSplit.SetPosition(wanted.splitter);
  Maximize(wanted.isMaximized);
}

void MainForm::OnCreated(mavro::NotifyArgs&) {
  theProject.SetMode(buildMode.selectedIndex);
  SetRunState(-1);
  if (HasLargeFile(startup))
    lateStart.Start(cLateTick);
  else
    OpenStartupFiles();
  for (WatchList& watch : watches) watch.Prepare();
  SayWhatIsNotKept();
}

// The first part of a large file can be seen while the rest is read if the window is on the screen.
void MainForm::OnLateStart(mavro::NotifyArgs&) {
  const bool isReady = IsOnScreen() && mavro::activeForm == this;
  if (!isReady && ++lateTicks < cMostLateTicks) return;
  lateStart.Stop();
  OpenStartupFiles();
}

// Files opened before the window was shown are ready for typing at once.
void MainForm::OnShown(mavro::NotifyArgs&) {
  if (const EditTab* tab = editTabs.Active())
    focusControl = tab->editor.get();
  else if (startPage.visible)
    focusControl = startPage.FirstRow();
}

// Rescued projects of an earlier run are offered first, so that the saved state is the one that
// opens. A project opens before the sources, which may belong to it. If the project is named last,
// its session decides which file is in front.
void MainForm::OpenStartupFiles() {
  const std::string rescued = OfferRescuedProjects();
  std::vector<StartupFile> files = std::exchange(startup, {});
  if (files.empty() && !rescued.empty()) files.push_back({rescued, cProjectFile});
  const bool isProjectLast = !files.empty() && files.back().kind == cProjectFile;
  std::stable_partition(files.begin(), files.end(),
                        [](const StartupFile& file) { return file.kind == cProjectFile; });
  std::string front;
  for (const StartupFile& file : files) {
    const std::string path = AbsolutePath(file.path);
    if (!startFiles.MayOpen(path, 0)) continue;
    if (file.kind == cProjectFile)
      theFileActs.LoadProject(path);
    else
      editTabs.OpenFile(path);
    if (file.kind == cProjectFile && isProjectLast) front = ActiveFile();
  }
  if (!front.empty()) editTabs.Activate(front, true);
  startFiles.AllLoaded();
  editTabs.OfferRescuedTexts();
  startFiles.WatchShown();
}

// The page has gone once there is something to work on, and doesn't come back.
void MainForm::UpdateStartPage() {
  if (!startPage.visible) return;
  startPage.UpdateRows();
  if (!editTabs.Active() && !theProject.isOpen) return;
  startPage.visible = false;
}

void MainForm::OnEditorPaneSized(mavro::NotifyArgs&) {
  if (startPage.visible) startPage.SetBounds(0, 0, rightPanel.width, rightPanel.height);
}

// A project that is dropped on the tree is opened too.
void MainForm::OnDropFiles(mavro::FilesArgs& args) {
  const bool isForProject =
      args.over == &projectTree && theProject.isOpen &&
      std::none_of(args.paths.begin(), args.paths.end(),
                   [](const std::string& path) { return FileKind(path) == cProjectFile; });
  if (isForProject)
    thePrjActs.AddDropped(args.paths);
  else
    theFileActs.OpenFiles(args.paths);
}

// Deactivation means nothing: the active window may be a message box of this program.
void MainForm::OnActivated(mavro::NotifyArgs& args) {
  if (args.value == 0) return;
  if (state != mavro::cShown || mavro::activeForm != this) return;
  projectTree.ShowMissing();
  editTabs.CheckDisk();
}

void MainForm::SayWhatIsNotKept() {
  const std::string error = theIdeSession.TakeError();
  if (!error.empty()) SetStatus(ReasonFirst(error), "");
}

// A build or a search uses the project: closing the window stops it, and the window stays open.
void MainForm::OnCloseRequest(mavro::NotifyArgs& args) {
  // The file is read in a moment; until then its editor must stay.
  if (editTabs.IsShowingEarly()) {
    args.value = 0;
    return;
  }
  if (search->commands.IsRunning()) {
    search->commands.RequestStop();
    SetStatus("The search is being stopped. Close the window again when it has ended.", "");
    args.value = 0;
    return;
  }
  if (Builder::IsBuilding()) {
    theBuilder.RequestStop();
    SetStatus("The build is being stopped. Close the window again when it has ended.", "");
    args.value = 0;
    return;
  }
  if (!theFileActs.CloseProjectForEnd()) {
    args.value = 0;
    return;
  }
  theDebugger.Stop();
  TakePlacement();
  theIdeSession.Save(placement);
  const std::string error = theIdeSession.TakeError();
  if (!error.empty()) mavro::Information(error);  // no status line is left to show it
}

// The bottom pane has the same height in a maximised window as in one of normal size.
void MainForm::TakePlacement() {
  const mavro::Rect at = NormalBounds();
  const int grown = IsMaximized() ? Bounds().height - at.height : 0;
  placement = {at.left, at.top, at.width, at.height, hSplit.Position() - grown, IsMaximized()};
}

void MainForm::TakeOptions() {
  TakeOutputFont();
  editTabs.ApplySettings();
  TakePlacement();
  theIdeSession.Save(placement);
  SayWhatIsNotKept();
  UpdateCommands();
}

void MainForm::KeepUnasked() {
  theProject.KeepSession();
  TakePlacement();
  theIdeSession.Save(placement);
  startFiles.EndsByItself();
  TextRescue::KeepAll();
  KeepRescueCopy(theProject);
}

void MainForm::OnView(int id) {
  switch (id) {
    case cShowLeftCommand:
      return ShowPart(leftPanel, true);
    case cShowBottomCommand:
      return ShowPart(bottomPanel, true);
    case cToggleToolBarCommand:
      return ShowPart(toolBar, !toolBar.visible);
    case cToggleStatusBarCommand:
      return ShowPart(statusBar, !statusBar.visible);
    default:
      return;
  }
}

void MainForm::ShowPart(mavro::Control& part, bool on) {
  part.visible = on;
  layoutPending = true;
  mavro::RunPendingLayout(this);
  mavro::RunPendingLayout(part.parent);  // if it is deeper in the window
  UpdateCommands();
  UpdateViewMarks();
}

void MainForm::OnClassNode(mavro::NotifyArgs&) {
  UpdateCommands();
}

void MainForm::OnCloseBottom(mavro::NotifyArgs&) {
  ShowPart(bottomPanel, false);
}

void MainForm::OnCloseLeft(mavro::NotifyArgs&) {
  ShowPart(leftPanel, false);
}

void MainForm::ClearPane(int index) {
  if (index == cOutputPage)
    output.Clear();
  else if (index == cErrorPage)
    errorList.Clear();
  else if (index >= cFirstWatchPage && index <= cLastWatchPage)
    watches[index - cFirstWatchPage].Clear();
  else if (index == cResultPage)
    resultList.Clear();
  UpdateCommands();
}

void MainForm::ShowPage(int index) {
  bottomTabs.selectedIndex = index;
}

void MainForm::OpenPage(int index) {
  if (!bottomPanel.visible) ShowPart(bottomPanel, true);
  ShowPage(index);
}

void MainForm::OnBuildMode(mavro::ItemArgs&) {
  if (theDebugger.IsRunning())
    mavro::Information("Stop debugger first!");
  else if (!IsRefusedByBuild())
    theProject.SetMode(buildMode.selectedIndex);
  SetModeSelector(theProject.mode);
}

}  // namespace zendry
