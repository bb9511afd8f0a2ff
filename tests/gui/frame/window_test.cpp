#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IdeDriver.h"
#include "browser/BrowserActs.h"
#include "editor/EditorActs.h"
#include "frame/PictureStrips.h"

// The main window: start, menus, bars, panes and its end.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<IdeDriver::File> cTwoFiles = {{"a.cpp", "int a;\n"}, {"src/b.h", "int b;\n"}};

// Stands in for the target of a command as long as it lives, and counts the calls.
struct CommandRecorder : mavro::object {
  explicit CommandRecorder(mavro::Action* recorded) : action(recorded), saved(*recorded) {
    action->target = this;
    action->handler = static_cast<mavro::ActionHandler>(&CommandRecorder::OnCommand);
  }
  ~CommandRecorder() override {
    action->target = saved.target;
    action->handler = saved.handler;
  }
  void OnCommand(int) { ++calls; }

  mavro::Action* action;
  mavro::Action saved;
  int calls = 0;
};

mavro::MenuItem* ItemOf(mavro::Menu& menu, int id) {
  for (const auto& item : menu.items)
    if (item->action && item->action->id == id) return item.get();
  return nullptr;
}

// True if any command below a menu can be chosen.
bool HasEnabledItem(const mavro::Menu& menu) {
  for (const auto& item : menu.items) {
    if (item->isSubmenu && HasEnabledItem(static_cast<const mavro::Menu&>(*item))) return true;
    if (!item->isSubmenu && !item->IsSeparator() && item->enabled) return true;
  }
  return false;
}

std::vector<int> EnabledIds(const mavro::Menu& menu) {
  std::vector<int> ids;
  for (const auto& item : menu.items)
    if (item->action && item->enabled) ids.push_back(item->action->id);
  return ids;
}

// The row of the main tool bar with a picture.
int RowOf(int picture) {
  const mavro::ToolBar& bar = theMainForm->toolBar;
  for (int row = 0; row < bar.RowCount(); ++row)
    if (bar.GetRow(row).image == picture) return row;
  return -1;
}

bool CanClick(int picture) {
  return theMainForm->toolBar.GetRow(RowOf(picture)).enabled;
}

std::vector<int> ClickablePictures() {
  std::vector<int> pictures;
  for (int row = 0; row < theMainForm->toolBar.RowCount(); ++row) {
    const mavro::ToolBar::Row& shown = theMainForm->toolBar.GetRow(row);
    if (shown.image >= 0 && shown.enabled) pictures.push_back(shown.image);
  }
  return pictures;
}

// Clicks the button of a tool bar's row.
void ClickRow(mavro::ToolBar& bar, int row) {
  test::ClickToolRow(bar, row);
}

// Group: start.

TEST(IdeWindow, Start_NothingStored_Is800By560AtTheOrigin) {
  IdeDriver ide;
  ide.Run({}, [&] {
    EXPECT_EQ(theMainForm->Bounds(), (mavro::Rect{0, 0, 800, 560}));
    EXPECT_EQ(theMainForm->hSplit.Position(), 560 * 11 / 16);
    EXPECT_EQ(theMainForm->vSplit.Position(), 200);
    EXPECT_EQ(theMainForm->text.Get(), "Zendry");
    EXPECT_EQ(IdeDriver::Status(cTextPane), "Ready");
    EXPECT_EQ(IdeDriver::Status(cCaretPane), "Ln 0   Col 0");
    EXPECT_EQ(IdeDriver::Status(cNotePane), "");
  });
}

TEST(IdeWindow, Start_SeveralSources_TheLastIsInFrontTheOthersBeforeIt) {
  IdeDriver ide;
  std::vector<std::string> paths;
  for (const char* name : {"c.cpp", "a.c", "b.h"}) paths.push_back(ide.files.Write(name, ""));
  ide.Run(paths, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("c.cpp", "a.c", "b.h"));
    EXPECT_EQ(theMainForm->ActiveFile(), paths.back());
  });
}

TEST(IdeWindow, Start_ProjectAndItsSource_HasTheSourceInFront) {
  IdeDriver ide;
  const std::string project = ide.Project(cTwoFiles);
  ide.Run({project, ide.files.Path("a.cpp")}, [&] {
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
    EXPECT_EQ(theMainForm->text.Get(), "p - " + ide.files.Path("a.cpp"));
  });
}

TEST(IdeWindow, Start_ProjectLast_HasInFrontWhatItsSessionHas) {
  IdeDriver ide;
  const std::string project = ide.Project(cTwoFiles);
  ide.Run({project, ide.files.Path("a.cpp")}, [] {});
  ide.Run({ide.files.Path("src/b.h"), project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.h"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
  });
}

TEST(IdeWindow, Start_MissingSourceAmongOthers_IsSaidAndTheOthersOpen) {
  IdeDriver ide;
  const std::string gone = ide.files.Path("gone.cpp");
  ide.Run({ide.files.Write("a.cpp", ""), gone, ide.files.Write("b.cpp", "")}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp"));
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr(gone)));
  });
}

TEST(IdeWindow, Start_SourceThenProject_OpensBoth) {
  IdeDriver ide;
  const std::string project = ide.Project(cTwoFiles);
  ide.Run({ide.files.Path("a.cpp"), project}, [&] {
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(a.cpp) Header Files(src(b.h)))");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

TEST(IdeWindow, Start_SourceFile_IsShownInATab) {
  IdeDriver ide;
  ide.files.Write("a.cpp", "one\ntwo\n");
  ide.Run({ide.files.Path() + "/x/../a.cpp"}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
  });
}

TEST(IdeWindow, Start_UnknownExtension_OpensNothingWithoutAWord) {
  IdeDriver ide;
  ide.Run({ide.files.Write("x.txt", "text")}, [&] {
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST(IdeWindow, Start_MissingProject_IsSilentAndLeavesItEmpty) {
  IdeDriver ide;
  ide.Run({ide.files.Path("none.zpj")}, [&] {
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_EQ(IdeDriver::Tree(), "");
    EXPECT_NE(IdeDriver::Status(), "Ready");
  });
}

// Group: menus and what is grayed.

TEST(IdeWindow, NoTabs_EditBrowserAndModeAreGrayed_UntilOneOpens) {
  IdeDriver ide;
  const CommandRecorder find(theEditorActs.Find(801));
  const CommandRecorder paste(theEditorActs.Find(cPasteCommand));
  const CommandRecorder symbol(theBrowserActs.Find(1106));
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    EXPECT_FALSE(HasEnabledItem(form.editMenu));
    EXPECT_FALSE(HasEnabledItem(form.browserMenu));
    EXPECT_FALSE(form.buildMode.enabled);
    form.editTabs.OpenFile(ide.files.Write("a.cpp", ""));
    EXPECT_TRUE(HasEnabledItem(form.editMenu));
    EXPECT_TRUE(ItemOf(form.editMenu, cPasteCommand)->enabled);
    EXPECT_FALSE(ItemOf(form.browserMenu, cBackCommand)->enabled) << "nowhere to go back to";
    EXPECT_TRUE(ItemOf(form.browserMenu, cOpenBrowserCommand)->enabled);
    EXPECT_TRUE(ItemOf(form.browserMenu, cFindSymbolCommand)->enabled);
    EXPECT_TRUE(form.buildMode.enabled);
    form.editTabs.CloseTab(0, EditTabs::Unsaved::cAsk);
    EXPECT_FALSE(HasEnabledItem(form.editMenu));
    EXPECT_FALSE(form.buildMode.enabled);
  });
}

TEST(IdeWindow, Commands_WithoutSubsystem_AreGrayedInMenusAndBars) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    EXPECT_FALSE(ItemOf(form.fileMenu, cPrintCommand)->enabled);
    EXPECT_TRUE(ItemOf(form.fileMenu, cOpenCommand)->enabled);
    EXPECT_THAT(EnabledIds(form.helpMenu), ElementsAre(1700, 1701));
    EXPECT_FALSE(CanClick(cDesignerPicture));
    EXPECT_TRUE(CanClick(cNewPicture));
  });
}

// Group: what can't act now is gray.

TEST(IdeWindow, NothingOpen_OnlyWhatCanActIsOffered) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    EXPECT_THAT(EnabledIds(form.fileMenu),
                ElementsAre(cNewCommand, cOpenCommand, cPageSetupCommand, cNewProjectCommand,
                            cOpenProjectCommand, cExitCommand));
    EXPECT_THAT(EnabledIds(form.buildMenu), IsEmpty());
    EXPECT_THAT(EnabledIds(form.projectMenu), IsEmpty());
    EXPECT_THAT(ClickablePictures(), ElementsAre(cNewPicture, cOpenProjectPicture, cOpenPicture));
    EXPECT_FALSE(form.toolPanel.bar.GetRow(ToolPanel::cAddRow).enabled);
  });
}

TEST(IdeWindow, SourceAlone_CanBeSavedClosedAndBuilt) {
  IdeDriver ide;
  ide.Run({ide.files.Write("a.cpp", "int main() {}\n")}, [&] {
    MainForm& form = *theMainForm;
    EXPECT_THAT(EnabledIds(form.fileMenu),
                ElementsAre(cNewCommand, cOpenCommand, cCloseCommand, cCloseAllCommand,
                            cSaveCommand, cSaveAsCommand, cPrintCommand, cPrintPreviewCommand,
                            cPageSetupCommand, cNewProjectCommand, cOpenProjectCommand,
                            cSaveAllCommand, cRecentFilesCommand, cExitCommand));
    EXPECT_THAT(EnabledIds(form.buildMenu),
                ElementsAre(cCompileFileCommand, cMakeCommand, cRebuildCommand));
    IdeDriver::Press(Qt::Key_F7);
    EXPECT_EQ(IdeDriver::Status(), "Build succeeded  errors: 0  warnings: 0");
    EXPECT_TRUE(ide.files.Exists("out-rel/a.exe"));
    EXPECT_TRUE(form.editTabs.Active());
  });
}

TEST(IdeWindow, TextAlone_IsNotBuilt) {
  IdeDriver ide;
  ide.Run({ide.files.Write("a.txt", "")}, [&] {
    EXPECT_THAT(EnabledIds(theMainForm->buildMenu), IsEmpty());
    for (const auto modifier : {Qt::NoModifier, Qt::ControlModifier}) {
      theMainForm->SetStatus("", "");
      IdeDriver::Press(Qt::Key_F7, modifier);
      EXPECT_EQ(IdeDriver::Status(), "No project and no source is open: there is nothing to build");
    }
  });
}

TEST(IdeWindow, ProjectOpen_IsBuilt_AndASourceOfItCompiled) {
  IdeDriver ide;
  const std::string project = ide.Project(cTwoFiles);
  ide.Run({project}, [&] {
    MainForm& form = *theMainForm;
    const std::vector<int> wholeBuild = {cMakeCommand, cRebuildCommand, cSwitchModeCommand,
                                         cClearOutputCommand};
    EXPECT_EQ(EnabledIds(form.buildMenu), wholeBuild);
    EXPECT_THAT(EnabledIds(form.projectMenu),
                ElementsAre(cAddFileCommand, cRemoveFileCommand, cProjectOptionsCommand,
                            cCreateMakefileCommand));
    EXPECT_TRUE(form.toolPanel.bar.GetRow(ToolPanel::cAddRow).enabled);
    form.editTabs.OpenFile(ide.files.Path("src/b.h"));
    EXPECT_EQ(EnabledIds(form.buildMenu), wholeBuild) << "a header is not compiled";
    IdeDriver::Press(Qt::Key_F7, Qt::ControlModifier);
    EXPECT_EQ(IdeDriver::Status(),
              "The file in front is no source of the project: it is not compiled");
    form.editTabs.OpenFile(ide.files.Path("a.cpp"));
    EXPECT_TRUE(ItemOf(form.buildMenu, cCompileFileCommand)->enabled);
    form.editTabs.OpenFile(ide.files.Write("other.cpp", ""));
    EXPECT_FALSE(ItemOf(form.buildMenu, cCompileFileCommand)->enabled);
    theFileActs.OnCommand(cCloseProjectCommand);
    EXPECT_THAT(EnabledIds(form.buildMenu), IsEmpty());
    EXPECT_TRUE(ItemOf(form.fileMenu, cRecentProjectsCommand)->enabled);
  });
}

TEST(IdeWindow, Errors_AreWalkedWhileThereAreSome) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const auto canWalk = [&form] { return ItemOf(form.buildMenu, cNextErrorCommand)->enabled; };
    form.AddErrorRow({"a.cpp", 1, "error"});
    EXPECT_TRUE(canWalk());
    form.ClearPane(cErrorPage);
    EXPECT_FALSE(canWalk());
    form.AddErrorRow({"a.cpp", 1, "error"});
    form.ClearErrorRows();
    EXPECT_FALSE(canWalk());
  });
}

TEST(IdeWindow, EditorCommands_FollowTextAndSelection) {
  IdeDriver ide;
  ide.Run({ide.files.Write("a.cpp", "word\n")}, [&] {
    CppEditor& editor = *theMainForm->editTabs.GetTab(0)->editor;
    EXPECT_FALSE(CanClick(cUndoPicture));
    EXPECT_FALSE(CanClick(cRedoPicture));
    EXPECT_FALSE(CanClick(cCutPicture));
    EXPECT_TRUE(CanClick(cPastePicture));
    IdeDriver::Press(Qt::Key_X);
    EXPECT_TRUE(test::WaitFor([] { return CanClick(cUndoPicture); }));
    ClickRow(theMainForm->toolBar, RowOf(cUndoPicture));
    EXPECT_EQ(editor.GetText(), "word\n");
    EXPECT_TRUE(test::WaitFor([] { return CanClick(cRedoPicture); }));
    EXPECT_FALSE(CanClick(cUndoPicture));
    editor.Select(0, 4);
    EXPECT_TRUE(test::WaitFor([] { return CanClick(cCutPicture); }));
    EXPECT_TRUE(ItemOf(theMainForm->editTabs.Host()->TextMenu().root, cCutCommand)->enabled);
    editor.Select(4, 4);
    EXPECT_TRUE(test::WaitFor([] { return !CanClick(cCopyPicture); }));
    EXPECT_FALSE(ItemOf(theMainForm->editTabs.Host()->TextMenu().root, cCutCommand)->enabled);
    EXPECT_TRUE(CanClick(cFindPicture));
  });
}

TEST(IdeWindow, ViewMenu_MarksWhatIsShown) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    for (mavro::Menu* menu : {&form.viewMenu, &form.barMenu.root}) {
      const auto* bar = ItemOf(*menu, cToggleStatusBarCommand);
      const auto* pane = ItemOf(*menu, cShowBottomCommand);
      EXPECT_TRUE(bar->checked && bar->enabled);
      EXPECT_TRUE(pane->checked);
      EXPECT_FALSE(pane->enabled) << "it is shown already";
      bar->action->Execute();
      test::Click(form.closeBottom);
      EXPECT_FALSE(bar->checked || pane->checked);
      EXPECT_TRUE(pane->enabled);
      bar->action->Execute();
      pane->action->Execute();
      EXPECT_TRUE(bar->checked && pane->checked);
    }
    EXPECT_FALSE(form.toolBar.GetRow(cLeftPanelRow).enabled);
    ClickRow(form.toolPanel.bar, ToolPanel::cCloseRow);
    EXPECT_TRUE(form.toolBar.GetRow(cLeftPanelRow).enabled);
    EXPECT_FALSE(ItemOf(form.barMenu.root, cShowLeftCommand)->checked);
  });
}

TEST(IdeWindow, Menus_HaveTheirTitlesInOrder) {
  IdeDriver ide;
  ide.Run({}, [&] {
    std::vector<std::string> titles;
    for (const mavro::Menu* menu : theMainForm->menus.menus) titles.push_back(menu->title);
    EXPECT_THAT(titles, ElementsAre("&File", "&Edit", "&Browser", "&View", "&Build", "&Project",
                                    "&Debug", "&Tools", "&Help"));
    std::vector<std::string> view;
    for (const auto& item : theMainForm->viewMenu.items)
      view.push_back(item->IsSeparator() ? "--" : item->action->text);
    EXPECT_THAT(view,
                ElementsAre("&Status Bar", "Bootom Pane", "--", "&Word wrap", "Show w&hite space",
                            "Show line &ends", "--", "&Fold all", "&Unfold all"));
  });
}

TEST(IdeWindow, ToolBar_RowsStandWhereTheyAreSpokenOf) {
  IdeDriver ide;
  ide.Run({}, [&] {
    mavro::ToolBar& bar = theMainForm->toolBar;
    EXPECT_TRUE(bar.GetRow(0).separator);
    EXPECT_EQ(bar.GetRow(1).action->id, cNewCommand);
    EXPECT_EQ(bar.GetRow(11).action->id, 845);
    EXPECT_EQ(bar.GetRow(12).action->id, 844);
    EXPECT_EQ(bar.GetRow(cModeRow).control, &theMainForm->buildMode);
    EXPECT_EQ(bar.GetRow(15).action->id, cCompileFileCommand);
    EXPECT_EQ(bar.GetRow(16).action->id, cMakeCommand);
    EXPECT_EQ(bar.GetRow(17).action->id, cRebuildCommand);
    EXPECT_EQ(bar.GetRow(cStopRow).action->text, "Stop");
    EXPECT_EQ(bar.GetRow(24).action->id, cCloseAllCommand);
    EXPECT_EQ(bar.GetRow(26).action->id, cUndoCommand);
    EXPECT_EQ(bar.GetRow(27).action->id, cRedoCommand);
    EXPECT_EQ(bar.GetRow(28).action->id, cFindCommand);
    EXPECT_EQ(bar.GetRow(cLeftPanelRow).image, cSidePanePicture);
  });
}

// Group: run state.

TEST(IdeWindow, SetRunState_TiesTheStopButton) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    EXPECT_FALSE(form.toolBar.GetRow(cStopRow).enabled);
    form.SetRunState(cStopBuildCommand);
    EXPECT_TRUE(form.toolBar.GetRow(cStopRow).enabled);
    theBuilder.abortRequested = false;
    ClickRow(form.toolBar, cStopRow);
    EXPECT_TRUE(theBuilder.abortRequested);
    form.SetRunState(-1);
    EXPECT_FALSE(form.toolBar.GetRow(cStopRow).enabled);
  });
}

TEST(IdeWindow, SetRunState_DebugSession_ShowsItsCommandsAndBack) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const auto id = [&form](int row) { return form.toolBar.GetRow(row).action->id; };
    form.SetRunState(cStopDebugCommand);
    EXPECT_EQ(id(15), cStepOverCommand);
    EXPECT_EQ(id(16), cStepIntoCommand);
    EXPECT_EQ(id(17), cStepOutCommand);
    EXPECT_EQ(form.toolBar.GetRow(15).image, 0x23);
    EXPECT_EQ(form.toolBar.GetRow(16).image, 0x2B);
    form.SetRunState(-1);
    EXPECT_EQ(id(15), cCompileFileCommand);
    EXPECT_EQ(form.toolBar.GetRow(15).image, 0xC);
  });
}

TEST(IdeWindow, Macro_IsPlayedOnceThereIsOneThatIsNotBeingRecorded) {
  IdeDriver ide;
  ide.Run({ide.files.Write("a.cpp", "")}, [&] {
    EXPECT_FALSE(CanClick(cPlayPicture));
    theEditorActs.OnCommand(cRecordMacroCommand);
    EXPECT_EQ(IdeDriver::Status(cNotePane), "Macro recording");
    IdeDriver::Press(Qt::Key_X);
    EXPECT_FALSE(CanClick(cPlayPicture));
    theEditorActs.OnCommand(cRecordMacroCommand);
    EXPECT_TRUE(CanClick(cPlayPicture));
    EXPECT_EQ(IdeDriver::Status(cNotePane), "");
  });
}

// Group: panes.

TEST(IdeWindow, LeftPanel_Closed_GivesItsRoomToTheEditorAtOnce) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const mavro::Rect before = form.rightPanel.Bounds();
    ClickRow(form.toolPanel.bar, ToolPanel::cCloseRow);
    EXPECT_FALSE(form.leftPanel.visible);
    EXPECT_FALSE(test::WidgetOf(form.leftPanel)->isVisible());
    EXPECT_FALSE(form.layoutPending);
    EXPECT_EQ(form.vSplit.Position(), 200);
    EXPECT_EQ(form.rightPanel.Bounds(), form.topPanel.Bounds());
    ClickRow(form.toolBar, cLeftPanelRow);
    EXPECT_TRUE(test::WidgetOf(form.leftPanel)->isVisible());
    EXPECT_EQ(form.rightPanel.Bounds(), before);
  });
}

TEST(IdeWindow, BottomPane_ClosedByButton_ComesBackByTheMenu) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const mavro::Rect upper = form.topPanel.Bounds();
    test::Click(form.closeBottom);
    EXPECT_FALSE(test::WidgetOf(form.bottomPanel)->isVisible());
    EXPECT_EQ(form.topPanel.height, form.hSplit.height);
    form.viewActs.Find(cShowBottomCommand)->Execute();
    EXPECT_TRUE(test::WidgetOf(form.bottomPanel)->isVisible());
    EXPECT_EQ(form.topPanel.Bounds(), upper);
    ClickRow(form.paneBar, 0);
    EXPECT_FALSE(test::WidgetOf(form.bottomPanel)->isVisible());
  });
}

TEST(IdeWindow, BottomPane_KeepsItsHeightWhenTheWindowsChanges) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const int before = form.bottomPanel.height;
    const auto resize = [&](int height) {
      form.SetSize(800, height);
      const int bars = form.toolBar.height + form.statusBar.height;
      EXPECT_TRUE(test::WaitFor([&] { return form.hSplit.height < height - bars; }));
      return form.bottomPanel.height.Get();
    };
    EXPECT_EQ(resize(900), before);
    EXPECT_EQ(resize(600), before);
    EXPECT_LT(resize(260), before) << "no room: both panes get less";
    EXPECT_EQ(resize(700), before) << "and it comes back";
    form.hSplit.SetPosition(form.hSplit.Position() - 50);
    EXPECT_EQ(resize(800), before + 50) << "what its bar was moved to is kept";
  });
}

TEST(IdeWindow, StatusBar_Toggled_GivesItsRoomAtOnce) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const int before = form.hSplit.height;
    form.viewActs.Find(cToggleStatusBarCommand)->Execute();
    EXPECT_EQ(form.hSplit.height, before + form.statusBar.height);
    form.viewActs.Find(cToggleStatusBarCommand)->Execute();
    EXPECT_EQ(form.hSplit.height, before);
  });
}

TEST(IdeWindow, BarMenu_TogglesTheToolBar) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const int before = form.hSplit.height;
    form.barMenu.root.Insert(&form.barMenu);
    const auto choose = [](mavro::Control& bar) {
      mavro::SendMessage(bar.impl->hwnd, mavro::WM_COMMAND, cToggleToolBarCommand, 0);
    };
    choose(form.toolBar);
    EXPECT_FALSE(test::WidgetOf(form.toolBar)->isVisible());
    EXPECT_EQ(form.hSplit.height, before + form.toolBar.height);
    choose(form.statusBar);
    EXPECT_TRUE(test::WidgetOf(form.toolBar)->isVisible());
  });
}

TEST(IdeWindow, CloseButton_StandsAtTheEndOfItsBar) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    for (const int width : {800, 1100, 500, 800}) {
      form.SetSize(width, 560);
      ASSERT_TRUE(test::WaitFor([&] { return form.bottomPanel.width == form.hSplit.width; }));
      EXPECT_EQ(form.closeBottom.left + form.closeBottom.width,
                form.paneBar.left + form.paneBar.width)
          << width;
      EXPECT_EQ(form.paneBar.left + form.paneBar.width, width);
      EXPECT_EQ(form.bottomTabs.top, width < 640 ? form.paneBar.height : 0) << width;
    }
  });
}

TEST(IdeWindow, ClearButton_ClearsThePageThatIsShown) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    form.AppendOutput("text\r\n");
    form.errorList.AddRow("a.cpp", 1, "error");
    form.resultList.AddRow("a.cpp", 1, "result");
    form.watches[1].list.AddRow("x");
    form.ShowPage(cErrorPage);
    ClickRow(form.paneBar, 1);
    EXPECT_EQ(form.errorList.RowCount(), 0);
    EXPECT_EQ(form.resultList.RowCount(), 1);
    form.ShowPage(cResultPage);
    ClickRow(form.paneBar, 1);
    EXPECT_EQ(form.resultList.RowCount(), 0);
    form.ShowPage(cFirstWatchPage + 1);
    ClickRow(form.paneBar, 1);
    EXPECT_THAT(IdeDriver::Rows(form.watches[1].list), ElementsAre("|"));
    EXPECT_EQ(form.output.text.Get(), "text\r\n");
    form.ShowPage(cOutputPage);
    ClickRow(form.paneBar, 1);
    EXPECT_EQ(form.output.text.Get(), "");
  });
}

TEST(IdeWindow, BottomPages_StandInTheirOrder) {
  IdeDriver ide;
  ide.Run({}, [&] {
    std::vector<std::string> pages;
    for (int i = 0; i < theMainForm->bottomTabs.TabCount(); ++i)
      pages.push_back(theMainForm->bottomTabs.GetPage(i)->text);
    EXPECT_THAT(pages, ElementsAre("Output", "Error", "Watch-1", "Watch-2", "Watch-3", "Watch-4",
                                   "Result"));
    EXPECT_EQ(theMainForm->ErrorRowCount(), 0);
    EXPECT_THAT(IdeDriver::Rows(theMainForm->watches[0].list), ElementsAre("|"));
  });
}

// Group: the tool panel.

TEST(IdeWindow, ToolPanel_ActsOnTheProjectOrTheClassesByPage) {
  IdeDriver ide;
  CommandRecorder options(thePrjActs.Find(cProjectOptionsCommand));
  CommandRecorder browser(theBrowserActs.Find(1111));
  ide.Run({ide.Project(cTwoFiles)}, [&] {
    MainForm& form = *theMainForm;
    ClickRow(form.toolPanel.bar, ToolPanel::cMainRow);
    EXPECT_EQ(options.calls, 1);
    EXPECT_EQ(browser.calls, 0);
    form.leftTabs.selectedIndex = 1;
    form.UpdateCommands();
    ClickRow(form.toolPanel.bar, ToolPanel::cMainRow);
    EXPECT_EQ(browser.calls, 0) << "no file is open";
    form.editTabs.OpenFile(ide.files.Write("other.cpp", ""));
    ClickRow(form.toolPanel.bar, ToolPanel::cMainRow);
    EXPECT_EQ(options.calls, 1);
    EXPECT_EQ(browser.calls, 1);
  });
}

TEST(IdeWindow, ToolPanel_ButtonsWithoutCommand_AreGrayed) {
  IdeDriver ide;
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    const auto enabled = [&form](int row) { return form.toolPanel.bar.GetRow(row).enabled; };
    EXPECT_FALSE(enabled(ToolPanel::cMainRow));
    form.leftTabs.selectedIndex = 1;
    EXPECT_FALSE(enabled(ToolPanel::cAddRow));
    EXPECT_TRUE(enabled(ToolPanel::cCloseRow));
  });
}

// Group: build mode.

TEST(IdeWindow, BuildMode_SetElsewhere_IsShown) {
  IdeDriver ide;
  ide.Run({ide.Project(cTwoFiles)}, [&] {
    theProject.SetMode(cDebug);
    EXPECT_EQ(theMainForm->buildMode.selectedIndex, 1);
    theProject.SetMode(cRelease);
    EXPECT_EQ(theMainForm->buildMode.selectedIndex, 0);
  });
}

TEST(IdeWindow, BuildMode_ChosenWhileDebugging_IsRefused) {
  IdeDriver ide;
  ide.Run({ide.Project(cTwoFiles)}, [&] {
    MainForm& form = *theMainForm;
    form.editTabs.OpenFile(ide.files.Path("a.cpp"));
    theDebugger.running = true;
    form.buildMode.Focus();
    IdeDriver::Press(Qt::Key_Down);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: Stop debugger first!"));
    EXPECT_EQ(theProject.mode, cRelease);
    EXPECT_EQ(form.buildMode.selectedIndex, 0);
    theDebugger.running = false;
    IdeDriver::Press(Qt::Key_Down);
    EXPECT_EQ(theProject.mode, cDebug);
    EXPECT_TRUE(theProject.outputFolder.ends_with("/out-dbg"));
  });
}

// Group: panels show bytes as they may be shown.

TEST(IdeWindow, Output_ControlBytes_AreShownAsMarks) {
  IdeDriver ide;
  ide.Run({}, [&] {
    theMainForm->AppendOutput("a\x1b[31mb\x07\r\n");
    EXPECT_EQ(theMainForm->output.text.Get(), "a<1b>[31mb<07>\r\n");
    theMainForm->AddErrorRow({"a\x1b.cpp", 3, "error: \x9b"});
    EXPECT_THAT(IdeDriver::Rows(theMainForm->errorList.list),
                ElementsAre(HasSubstr("a<1b>.cpp|3|error: ")));
  });
}

TEST(IdeWindow, Exit_ClosesTheWindow) {
  IdeDriver ide;
  ide.Run({}, [&] {
    theFileActs.OnCommand(cExitCommand);
    EXPECT_EQ(theMainForm->state, mavro::cNoWindow);
  });
}

TEST(IdeWindow, Close_ProjectRefuses_StaysWithEverything) {
  IdeDriver ide;
  ide.Run({ide.Project(cTwoFiles)}, [&] {
    theProject.modified = true;
    ide.dialogs.answers = {mavro::Answer::cCancel, mavro::Answer::cNo};
    theMainForm->Close();
    EXPECT_EQ(theMainForm->state, mavro::cShown);
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Confirmation: Project file was not saved!\nSave?"));
    theMainForm->Close();
    EXPECT_EQ(theMainForm->state, mavro::cNoWindow);
  });
}

}  // namespace
}  // namespace zendry
