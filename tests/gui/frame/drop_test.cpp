#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "FileDrop.h"
#include "IdeDriver.h"

// Files dropped on the main window.

namespace zendry {
namespace {

using test::FileDrag;
using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class IdeDrop : public testing::Test {
 protected:
  EditTabs& Tabs() { return theMainForm->editTabs; }
  std::string Write(const std::string& name, const std::string& text = "text\n") {
    return ide.files.Write(name, text);
  }
  static bool HasTabs(const std::vector<std::string>& captions) {
    return test::WaitFor([&captions] { return IdeDriver::Captions() == captions; });
  }

  IdeDriver ide;
};

TEST_F(IdeDrop, OnTheWindow_OpensATabEach_TheLastInFront) {
  ide.Run({}, [&] {
    const std::string last = Write("c.txt");
    EXPECT_TRUE(FileDrag({Write("b.h"), Write("a.cpp"), last}).Drop(*theMainForm));
    EXPECT_TRUE(HasTabs({"b.h", "a.cpp", "c.txt"}));
    EXPECT_EQ(theMainForm->ActiveFile(), last);
    EXPECT_EQ(theIdeSession.recentFiles.items.front(), last);
    test::Shot(*theMainForm, "ide-dropped");
  });
}

TEST_F(IdeDrop, OnTheEditor_OpensTheFile_AndInsertsNoName) {
  ide.Run({Write("a.cpp", "old\n")}, [&] {
    CppEditor& editor = *Tabs().GetTab(0)->editor;
    EXPECT_TRUE(FileDrag({Write("b.cpp")}).Drop(editor));
    EXPECT_TRUE(HasTabs({"a.cpp", "b.cpp"}));
    EXPECT_EQ(editor.GetText(), "old\n");
    EXPECT_FALSE(editor.dirty);
  });
}

TEST_F(IdeDrop, OnAnyPanelButTheTree_OpensTheFile) {
  ide.Run({ide.Project({{"p.cpp", ""}})}, [&] {
    const mavro::Control* panels[] = {&theMainForm->output, &theMainForm->toolBar,
                                      &theMainForm->statusBar, &theMainForm->buildMode};
    int number = 0;
    for (const mavro::Control* panel : panels) {
      EXPECT_TRUE(FileDrag({Write(std::to_string(number) + ".cpp")}).Drop(*panel)) << number;
      EXPECT_TRUE(test::WaitFor([&] { return Tabs().TabCount() == number + 1; })) << number;
      ++number;
    }
  });
}

TEST_F(IdeDrop, OnTheTree_AddsTheFilesToTheProject) {
  ide.Run({ide.Project({{"p.cpp", ""}})}, [&] {
    const ProjectTree& tree = theMainForm->projectTree;
    EXPECT_TRUE(FileDrag({Write("sub/b.cpp"), Write("p.cpp"), Write("a.h"), Write("notes.txt"),
                          ide.files.Folder("dir")})
                    .Drop(tree));
    EXPECT_TRUE(test::WaitFor([] { return theProject.modified; }));
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(p.cpp sub(b.cpp)) Header Files(a.h))");
    EXPECT_EQ(IdeDriver::Status(),
              "3 files added, 1 there already; the tree doesn't show notes.txt");
    EXPECT_EQ(Tabs().TabCount(), 0);
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeDrop, OnTheTree_WithoutAProjectOrOfAProject_Opens) {
  const std::string other = ide.Project({{"o.cpp", ""}}, "other.zpj");
  ide.Run({}, [&] {
    const ProjectTree& tree = theMainForm->projectTree;
    EXPECT_TRUE(FileDrag({Write("a.cpp")}).Drop(tree));
    EXPECT_TRUE(HasTabs({"a.cpp"}));
    theFileActs.ReplaceProject(ide.Project({{"p.cpp", ""}}));
    EXPECT_TRUE(FileDrag({other}).Drop(tree));
    EXPECT_TRUE(test::WaitFor([] { return theProject.name == "other.zpj"; }));
  });
}

TEST_F(IdeDrop, TextOnTheEditor_IsInserted) {
  ide.Run({Write("a.cpp", "")}, [&] {
    CppEditor& editor = *Tabs().GetTab(0)->editor;
    EXPECT_TRUE(test::TextDrag("word").Drop(editor));
    EXPECT_EQ(editor.GetText(), "word");
    EXPECT_EQ(Tabs().TabCount(), 1);
  });
}

TEST_F(IdeDrop, FileThatIsOpen_ComesToTheFront) {
  ide.Run({}, [&] {
    const std::string first = Write("a.cpp");
    Tabs().OpenFile(first);
    Tabs().OpenFile(Write("b.cpp"));
    FileDrag({first}).Drop(*theMainForm);
    EXPECT_TRUE(test::WaitFor([&] { return theMainForm->ActiveFile() == first; }));
    EXPECT_EQ(Tabs().TabCount(), 2);
  });
}

TEST_F(IdeDrop, OnesThatCantBeOpened_AreSaid_AndDontStopTheOthers) {
  const std::string fifo = ide.files.Path("f.cpp");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  ide.Run({}, [&] {
    const std::string missing = ide.files.Path("none.cpp"), folder = ide.files.Folder("dir");
    FileDrag({missing, Write("a.cpp"), folder, fifo, Write("b.cpp")}).Drop(*theMainForm);
    EXPECT_TRUE(HasTabs({"a.cpp", "b.cpp"}));
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Error: Could not open file \"" + missing + "\"",
                                               "Error: Could not open file \"" + folder + "\"",
                                               "Error: Could not open file \"" + fifo + "\""));
  });
}

TEST_F(IdeDrop, Project_ReplacesTheOneInHand_BeforeTheFilesAreOpened) {
  const std::string first = ide.Project({{"p.cpp", ""}});
  const std::string second = ide.Project({{"q.cpp", ""}}, "q.zpj");
  ide.Run({first}, [&] {
    Tabs().OpenFile(ide.files.Path("p.cpp"));
    FileDrag({Write("a.cpp"), second}).Drop(*theMainForm);
    EXPECT_TRUE(HasTabs({"a.cpp"}));
    EXPECT_EQ(theProject.name, "q.zpj");
    EXPECT_EQ(theIdeSession.recentProjects.items.front(), second);
  });
}

TEST_F(IdeDrop, Project_UserRefusesToClose_StaysAndTheFilesAreOpened) {
  const std::string other = ide.Project({{"q.cpp", ""}}, "q.zpj");
  ide.Run({ide.Project({{"p.cpp", ""}})}, [&] {
    theProject.modified = true;
    ide.dialogs.answers = {mavro::Answer::cCancel, mavro::Answer::cNo};
    FileDrag({other, Write("a.cpp")}).Drop(*theMainForm);
    EXPECT_TRUE(HasTabs({"a.cpp"}));
    EXPECT_EQ(theProject.name, "p.zpj");
  });
}

TEST_F(IdeDrop, Project_Missing_IsSaidInTheStatusLine) {
  ide.Run({}, [&] {
    FileDrag({ide.files.Path("none.zpj")}).Drop(*theMainForm);
    EXPECT_TRUE(
        test::WaitFor([&] { return IdeDriver::Status().find("none.zpj") != std::string::npos; }));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(IdeDrop, OddNames_AreOpenedAsTheyAre) {
  ide.Run({}, [&] {
    const std::string path = Write("caf\xE9 #1%.cpp", "odd");
    FileDrag({path}).Drop(*theMainForm);
    EXPECT_TRUE(test::WaitFor([&] { return Tabs().TabCount() == 1; }));
    EXPECT_EQ(theMainForm->ActiveFile(), path);
  });
}

}  // namespace
}  // namespace zendry
