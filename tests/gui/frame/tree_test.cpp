#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
