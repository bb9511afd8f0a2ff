#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QMenu>

#include "IdeDriver.h"
#include "base/Paths.h"

// The project tree and the commands on the project's files.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class IdeTree : public testing::Test {
 protected:
  ProjectTree& Tree() { return theMainForm->projectTree; }
  // Selects the node with this text.
  void Select(const std::string& label) { Tree().Select(Find(Tree().Root(), label)); }
  static mavro::TreeNode* Find(const mavro::TreeNode& node, const std::string& label) {
    for (const auto& child : node.children) {
      if (child->text == label) return child.get();
      if (mavro::TreeNode* found = Find(*child, label)) return found;
    }
    return nullptr;
  }
  void Choose(const std::string& label) {
    Select(label);
    Tree().Focus();
    IdeDriver::Press(Qt::Key_Return);
  }

  IdeDriver ide;
};

TEST_F(IdeTree, HeadersOnly_HasNoSourceNode) {
  ide.Run({ide.Project({{"a.h", ""}, {"b.h", ""}})},
          [&] { EXPECT_EQ(IdeDriver::Tree(), "(Header Files(a.h b.h))"); });
}

TEST_F(IdeTree, FilesOfOneFolder_ShareItsNode_AndOtherTypesHaveNone) {
  ide.Run({ide.Project({{"src/a.cpp", ""}, {"src/b.c", ""}, {"notes.txt", ""}, {"c.cpp", ""}})},
          [&] {
            EXPECT_EQ(IdeDriver::Tree(), "(Source Files(src(a.cpp b.c) c.cpp))");
            EXPECT_EQ(theProject.Files().size(), 4u);
          });
}

TEST_F(IdeTree, AddNode_SplitsAtTheLastSlashAndKeepsTheOrderOfRoots) {
  ide.Run({}, [&] {
    Tree().AddNode("r.rc", cResourceFileId, cResourceScript);
    Tree().AddNode("/a.h", 1, cHeader);
    Tree().AddNode("x/y/b.cpp", 2, cCppSource);
    Tree().AddNode("p.zpj", 3, cProjectFile);
    EXPECT_EQ(IdeDriver::Tree(),
              "(Resource File(r.rc) Header Files(a.h) Source Files(x/y(b.cpp)))");
    Tree().Clear();
    EXPECT_EQ(IdeDriver::Tree(), "");
    EXPECT_EQ(Tree().SelectedId(), 0);
  });
}

TEST_F(IdeTree, SelectedId_OfRootsAndFolders_IsZero) {
  ide.Run({ide.Project({{"src/a.cpp", ""}})}, [&] {
    EXPECT_EQ(Tree().SelectedId(), 0);
    Select("Source Files");
    EXPECT_EQ(Tree().SelectedId(), 0);
    Select("src");
    EXPECT_EQ(Tree().SelectedId(), 0);
    Select("a.cpp");
    EXPECT_EQ(Tree().SelectedId(), theProject.Files()[0]->id);
  });
}

TEST_F(IdeTree, Enter_OpensTheFileOrItsTab) {
  ide.Run({ide.Project({{"a.cpp", "a"}, {"b.cpp", "b"}})}, [&] {
    Choose("a.cpp");
    Choose("b.cpp");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp"));
    Choose("a.cpp");
    EXPECT_EQ(theMainForm->editTabs.selectedIndex, 0);
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 2);
  });
}

TEST_F(IdeTree, Enter_OnAMissingFile_OnlyBeeps) {
  const std::string project = ide.Project({{"a.cpp", ""}});
  std::filesystem::remove(ide.files.Path("a.cpp"));
  ide.Run({project}, [&] {
    Choose("a.cpp");
    EXPECT_EQ(ide.dialogs.beeps, 1);
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    Choose("Source Files");
    EXPECT_EQ(ide.dialogs.beeps, 1);
  });
}

TEST_F(IdeTree, Enter_OnAFolder_ClosesAndOpensIt_AndSoDoesADoubleClick) {
  ide.Run({ide.Project({{"src/a.cpp", ""}, {"b.cpp", ""}})}, [&] {
    for (const char* label : {"Source Files", "src"}) {
      const mavro::TreeNode* node = Find(Tree().Root(), label);
      const bool before = node->expanded;
      Choose(label);
      EXPECT_NE(node->expanded, before) << label;
      Choose(label);
      EXPECT_EQ(node->expanded, before) << label;
    }
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    const mavro::TreeNode* top = Find(Tree().Root(), "Source Files");
    const bool before = top->expanded;
    QWidget* widget = test::WidgetOf(Tree());
    const QPoint text(40, 8);
    QTest::mouseDClick(widget->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                       widget->mapTo(widget->window(), text));
    EXPECT_NE(top->expanded, before) << "once";
  });
}

TEST_F(IdeTree, Enter_OnTheResourceFile_OpensIt) {
  ide.Run({ide.Project({{"a.cpp", ""}, {"r.rc", "text"}})}, [&] {
    Choose("r.rc");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("r.rc"));
  });
}

TEST_F(IdeTree, Delete_TakesTheFileOutAndLeavesTabAndFile) {
  ide.Run({ide.Project({{"a.cpp", ""}, {"b.cpp", ""}})}, [&] {
    Choose("a.cpp");
    Tree().Focus();
    IdeDriver::Press(Qt::Key_Delete);
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(b.cpp))");
    EXPECT_EQ(theProject.Files().size(), 1u);
    EXPECT_TRUE(theProject.modified);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_TRUE(ide.files.Exists("a.cpp"));
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeTree, Delete_OnTheResourceFile_LeavesItOnDisk) {
  ide.Run({ide.Project({{"r.rc", ""}})}, [&] {
    Select("r.rc");
    thePrjActs.OnCommand(cRemoveFileCommand);
    EXPECT_EQ(theProject.resourceFile, "");
    EXPECT_EQ(IdeDriver::Tree(), "(Resource File)");
    EXPECT_TRUE(ide.files.Exists("r.rc"));
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeTree, Remove_WithNothingSelected_StillMarksTheProject) {
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    thePrjActs.OnCommand(cRemoveFileCommand);
    EXPECT_TRUE(theProject.modified);
    EXPECT_EQ(theProject.Files().size(), 1u);
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeTree, AddFiles_AddsTheNewAndNamesTheKnown) {
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    ide.dialogs.files = {{ide.files.Path("a.cpp"), ide.files.Write("sub/n.h", "")}};
    thePrjActs.OnCommand(cAddFileCommand);
    ASSERT_EQ(ide.dialogs.questions.size(), 1u);
    EXPECT_EQ(ide.dialogs.questions[0].title, "Open...");
    EXPECT_THAT(ide.dialogs.questions[0].filter, HasSubstr("|Resource Files|*.rc"));
    EXPECT_TRUE(ide.dialogs.questions[0].multiple);
    EXPECT_EQ(ide.dialogs.questions[0].folder, ide.files.Path());
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: The project conatains file:a.cpp"));
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(a.cpp) Header Files(sub(n.h)))");
    EXPECT_TRUE(theProject.modified);
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeTree, AddFiles_SecondResource_BringsTheMessageAndNoNode) {
  ide.Run({ide.Project({{"r.rc", ""}})}, [&] {
    ide.dialogs.files = {{ide.files.Write("s.rc", "")}};
    thePrjActs.OnCommand(cAddFileCommand);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: Only single resource file allowed!"));
    EXPECT_EQ(IdeDriver::Tree(), "(Resource File(r.rc))");
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeTree, AddFiles_Cancelled_ChangesNothing) {
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    thePrjActs.OnCommand(cAddFileCommand);
    EXPECT_FALSE(theProject.modified);
  });
}

TEST_F(IdeTree, MissingFile_IsFaded_UntilItIsThereAgain) {
  const std::string project = ide.Project({{"a.cpp", "a"}, {"b.cpp", "b"}, {"r.rc", ""}});
  std::filesystem::remove(ide.files.Path("a.cpp"));
  ide.Run({project}, [&] {
    const mavro::TreeNode* missing = Find(Tree().Root(), "a.cpp");
    EXPECT_TRUE(missing->faded);
    EXPECT_EQ(missing->tip, "There is no such file: " + ide.files.Path("a.cpp"));
    EXPECT_FALSE(Find(Tree().Root(), "b.cpp")->faded);
    EXPECT_FALSE(Find(Tree().Root(), "r.rc")->faded);
    int passes = 0;  // of the event loop, in which the tree is painted
    test::WaitFor([&passes] { return ++passes > 5; });
    test::Shot(*theMainForm, "ide-tree-missing");
    ide.files.Write("a.cpp", "");
    std::filesystem::remove(ide.files.Path("r.rc"));
    Tree().ShowMissing();
    EXPECT_FALSE(missing->faded);
    EXPECT_EQ(missing->tip, "");
    EXPECT_TRUE(Find(Tree().Root(), "r.rc")->faded);
    std::filesystem::remove(ide.files.Path("b.cpp"));
    Choose("b.cpp");
    EXPECT_EQ(ide.dialogs.beeps, 1);
    EXPECT_TRUE(Find(Tree().Root(), "b.cpp")->faded) << "seen when it was to be opened";
  });
}

// The rows of the menu that a right click opens; `choose` is then chosen by a key.
std::vector<std::string> PopupRows(ProjectTree& tree, QPoint at, const QString& choose = "") {
  std::vector<std::string> rows;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!shown) return;
    timer.stop();
    QAction* chosen = nullptr;
    for (QAction* action : shown->actions()) {
      if (action->isSeparator()) continue;
      rows.push_back((action->isEnabled() ? "" : "-") + action->text().toStdString());
      if (action->text() == choose) chosen = action;
    }
    if (chosen) shown->setActiveAction(chosen);
    QTest::keyClick(shown, chosen ? Qt::Key_Return : Qt::Key_Escape);
  });
  timer.start(0);
  auto* view = dynamic_cast<QAbstractItemView*>(test::WidgetOf(tree));
  QWindow* window = view->window()->windowHandle();
  const QPoint place = view->viewport()->mapTo(view->window(), at);
  QTest::mousePress(window, Qt::RightButton, Qt::NoModifier, place);
  QTest::mouseRelease(window, Qt::RightButton, Qt::NoModifier, place);
  return rows;
}

QPoint PlaceOf(ProjectTree& tree, const QString& label) {
  auto* view = dynamic_cast<QAbstractItemView*>(test::WidgetOf(tree));
  const QModelIndexList found = view->model()->match(
      view->model()->index(0, 0), Qt::DisplayRole, label, 1, Qt::MatchExactly | Qt::MatchRecursive);
  return view->visualRect(found.value(0)).center();
}

TEST_F(IdeTree, RightClick_OpensTheMenuOfWhatIsThere) {
  ide.Run({ide.Project({{"src/a.cpp", ""}, {"b.cpp", ""}})}, [&] {
    Tree().Expand(Find(Tree().Root(), "src"));
    EXPECT_THAT(PopupRows(Tree(), PlaceOf(Tree(), "a.cpp")),
                ElementsAre("&Open", "&Add file here...", "&Remove file", "&Project options"));
    EXPECT_EQ(Tree().SelectedId(), theProject.Files()[0]->id);
    for (const char* folder : {"src", "Source Files"}) {
      EXPECT_THAT(PopupRows(Tree(), PlaceOf(Tree(), folder)),
                  ElementsAre("&Expand", "&Collapse", "&Add file here...", "&Remove its files...",
                              "&Project options"));
      EXPECT_EQ(Tree().Selected()->text, folder);
    }
    EXPECT_THAT(PopupRows(Tree(), QPoint(30, 200)),
                ElementsAre("&Add file", "&Project options", "&Create MakFile", "Save project",
                            "Close project"));
  });
}

TEST_F(IdeTree, RightClick_WithoutAProject_OpensNoMenu) {
  ide.Run({}, [&] { EXPECT_THAT(PopupRows(Tree(), QPoint(30, 200)), IsEmpty()); });
}

TEST_F(IdeTree, MenuRows_ActOnTheNodeThatWasClicked) {
  ide.Run({ide.Project({{"src/a.cpp", ""}, {"src/c.cpp", ""}, {"b.cpp", ""}})}, [&] {
    const auto choose = [&](const char* node, const char* row) {
      PopupRows(Tree(), PlaceOf(Tree(), node), row);
    };
    choose("src", "&Expand");
    EXPECT_TRUE(Find(Tree().Root(), "src")->expanded);
    choose("a.cpp", "&Open");
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    for (const char* node : {"a.cpp", "src"}) {
      choose(node, "&Add file here...");
      EXPECT_EQ(ide.dialogs.questions.back().folder, ide.files.Path("src"));
    }
    for (const char* node : {"b.cpp", "Source Files"}) {
      choose(node, "&Add file here...");
      EXPECT_EQ(ide.dialogs.questions.back().folder, ide.files.Path());
    }
    choose("src", "&Collapse");
    EXPECT_FALSE(Find(Tree().Root(), "src")->expanded);
    choose("src", "&Remove its files...");
    EXPECT_EQ(theProject.Files().size(), 3u) << "No";
    ide.dialogs.answers = {mavro::Answer::cYes};
    choose("src", "&Remove its files...");
    EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("Remove 2 files below \"src\""));
    EXPECT_EQ(theProject.Files().size(), 1u);
    choose("b.cpp", "&Remove file");
    EXPECT_EQ(theProject.Files().size(), 0u);
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeTree, Commands_WithoutAProject_DoNothing) {
  ide.Run({}, [&] {
    for (const int id : {cAddFileCommand, cRemoveFileCommand, cCreateMakefileCommand})
      thePrjActs.OnCommand(id);
    EXPECT_FALSE(theProject.modified);
    EXPECT_THAT(ide.dialogs.questions, IsEmpty());
  });
}

TEST_F(IdeTree, Makefile_IsWrittenBesideTheProject) {
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    std::filesystem::current_path(ide.home.Path());
    thePrjActs.OnCommand(cCreateMakefileCommand);
    EXPECT_THAT(ide.files.Read("Makefile"), HasSubstr("a.o"));
    EXPECT_EQ(IdeDriver::Status(), "Makefile written to " + ide.files.Path());
  });
}

TEST_F(IdeTree, ProjectOf5000Files_IsShownQuickly) {
  std::string list;
  for (int i = 0; i < 5000; ++i)
    list += "\t<file name=\"d" + std::to_string(i % 500) + "/f" + std::to_string(i) + ".cpp\"/>\n";
  const std::string project = ide.files.Write(
      "big.zpj", "<ide>\n<set parse=\"n\"/></ide>\n<src>\n" + list + "</src>\n<opt>\n</opt>\n");
  ide.Run({}, [&] {
    QElapsedTimer clock;
    clock.start();
    theFileActs.ReplaceProject(project);
    RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
    EXPECT_EQ(theProject.Files().size(), 5000u);
    EXPECT_EQ(Tree().Root().children.at(0)->children.size(), 500u);
  });
}

TEST_F(IdeTree, SaveProject_WritesTheChange) {
  ide.Run({ide.Project({{"a.cpp", ""}, {"b.cpp", ""}})}, [&] {
    Select("a.cpp");
    thePrjActs.OnCommand(cRemoveFileCommand);
    theFileActs.OnCommand(cSaveProjectCommand);
    EXPECT_FALSE(theProject.modified);
  });
  EXPECT_THAT(ide.files.Read("p.zpj"), Not(HasSubstr("a.cpp")));
  EXPECT_THAT(ide.dialogs.texts, IsEmpty());
}

TEST_F(IdeTree, ChangedProject_IsRescuedUntilItIsSaved) {
  const auto copies = [&] {
    return std::distance(std::filesystem::directory_iterator(ide.home.Folder(".zendry/rescue")),
                         std::filesystem::directory_iterator());
  };
  ide.Run({ide.Project({{"a.cpp", ""}})}, [&] {
    EXPECT_EQ(copies(), 0);
    Select("a.cpp");
    thePrjActs.OnCommand(cRemoveFileCommand);
    EXPECT_EQ(copies(), 1);
    theFileActs.OnCommand(cSaveProjectCommand);
    EXPECT_EQ(copies(), 0);
    theProject.modified = true;
    thePrjActs.OnCommand(cRemoveFileCommand);
    EXPECT_EQ(copies(), 1);
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
  EXPECT_EQ(copies(), 0);
}

}  // namespace
}  // namespace zendry
