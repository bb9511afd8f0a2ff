#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QAbstractScrollArea>
#include <fstream>

#include "IdeDriver.h"
#include "IfKilled.h"
#include "ListBox.h"
#include "rescue/Rescue.h"

// The settings and files that the program remembers from one run to the next.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::vector<IdeDriver::File> cFiles = {{"a.cpp", "1\n2\n3\n4\n"}, {"src/b.cpp", "1\n2\n3\n"}};

class IdeMemory : public testing::Test {
 protected:
  IdeDriver ide;
};

TEST_F(IdeMemory, NextStart_FindsFilesLinesModeAndFront) {
  const std::string project = ide.Project(cFiles);
  ide.Run({project}, [&] {
    theMainForm->editTabs.GoTo(ide.files.Path("a.cpp"), 3);
    theMainForm->editTabs.GoTo(ide.files.Path("src/b.cpp"), 2);
    theMainForm->editTabs.Activate(ide.files.Path("a.cpp"), true);
    theProject.SetMode(cDebug);
    theMainForm->Close();
  });
  theProject.SetMode(cRelease);
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp"));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
    EXPECT_EQ(theMainForm->editTabs.GetTab(0)->editor->ShownLine(), 3);
    EXPECT_EQ(theMainForm->editTabs.GetTab(1)->editor->ShownLine(), 2);
    EXPECT_EQ(theProject.mode, cDebug);
    EXPECT_EQ(theMainForm->buildMode.selectedIndex, 1);
  });
}

TEST_F(IdeMemory, NextStart_FilesThatAreGone_ArePassedOver) {
  const std::string project = ide.Project(cFiles);
  ide.files.Write(
      "p.zend",
      "<state>\n\t<mode opt=\"rel\"/>\n\t<open>\n\t\t<file name=\"none.cpp\" id=\"1\"/>\n"
      "\t\t<file name=\"a.cpp\" id=\"2\"/>\n\t\t<active name=\"/none\"/>\n");
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(IdeMemory, NextStart_FindsTheWindowWhereItWas) {
  ide.Run({}, [&] {
    theMainForm->SetBounds(20, 30, 801, 500);
    theMainForm->hSplit.SetPosition(320);
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("Bounds=20;30;801;500;\n"));
  EXPECT_THAT(ide.Ini(), HasSubstr("split-h=320\n"));
  ide.Run({}, [&] {
    EXPECT_EQ(theMainForm->Bounds().left, 20);
    EXPECT_EQ(theMainForm->Bounds().top, 30);
    EXPECT_EQ(theMainForm->Bounds().height, 500);
    EXPECT_EQ(theMainForm->hSplit.Position(), 320);
  });
}

// The screen here is lower than wide windows are kept for: they come back as wide as it is.
TEST_F(IdeMemory, NextStart_MaximisedWindow_IsMaximisedAndKnowsItsPlace) {
  ide.Run({}, [&] {
    theMainForm->SetBounds(20, 30, 801, 500);
    theMainForm->hSplit.SetPosition(320);
    theMainForm->Maximize(true);
    EXPECT_TRUE(test::WaitFor([] { return theMainForm->Bounds().height > 500; }));
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("Bounds=20;30;801;500;\n"));
  EXPECT_THAT(ide.Ini(), HasSubstr("split-h=320\n"));
  EXPECT_THAT(ide.Ini(), HasSubstr("win-max=1\n"));
  ide.Run({}, [&] {
    EXPECT_TRUE(theMainForm->IsMaximized());
    EXPECT_GT(theMainForm->Bounds().height, 500);
    theMainForm->Maximize(false);
    EXPECT_TRUE(test::WaitFor([] { return theMainForm->Bounds().height == 500; }));
    EXPECT_EQ(theMainForm->hSplit.Position(), 320);
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("Bounds=20;30;800;500;\n"));
  EXPECT_THAT(ide.Ini(), Not(HasSubstr("win-max")));
}

TEST_F(IdeMemory, OpenedFiles_AreInTheListsBeforeTheEnd) {
  const std::string project = ide.Project(cFiles);
  ide.Run({project}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    EXPECT_TRUE(test::WaitFor([&] { return !ide.Ini().empty(); }));
    EXPECT_EQ(ide.Ini(), "fileA=" + ide.files.Path("a.cpp") + "\nprojA=" + project + "\n");
  });
}

TEST_F(IdeMemory, EndWithoutAQuestion_KeepsWhatANormalOneKeeps_AndTheText) {
  const std::string project = ide.Project(cFiles);
  ide.Run({project}, [&] {
    theMainForm->SetBounds(20, 30, 801, 500);
    CppEditor* editor = theMainForm->editTabs.GoTo(ide.files.Path("a.cpp"), 3);
    editor->Send(mavro::SCI_INSERTTEXT, 0, "new ");
    editor->onUpdateUI();
    theProject.modified = true;
    theMainForm->KeepUnasked();
    EXPECT_THAT(ide.Ini(), HasSubstr("Bounds=20;30;801;500;\n"));
    EXPECT_THAT(ide.Ini(), HasSubstr("fileA=" + ide.files.Path("a.cpp")));
    EXPECT_THAT(ide.Ini(), HasSubstr("projA=" + project));
    EXPECT_THAT(ide.files.Read("p.zend"), HasSubstr("<file name=\"a.cpp\" id=\"3\"/>"));
    ASSERT_EQ(test::TextsIfKilled().size(), 1u);
    EXPECT_EQ(test::TextsIfKilled()[0].content, "new 1\n2\n3\n4\n");
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_TRUE(editor->dirty) << "a session's end may be called off";
    theProject.modified = false;
  });
}

TEST_F(IdeMemory, NextStart_FileThatCannotBeRead_IsSaidWithoutABox) {
  const std::string project = ide.Project(cFiles);
  std::ofstream(ide.files.Path("huge.cpp")).close();
  std::filesystem::resize_file(ide.files.Path("huge.cpp"), 3'000'000'000);  // no blocks are taken
  ide.files.Write(
      "p.zend",
      "<state>\n<open>\n<file name=\"a.cpp\"/>\n<file name=\"huge.cpp\"/>\n</open>\n</state>\n");
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_EQ(IdeDriver::Status(), "Could not open file \"" + ide.files.Path("huge.cpp") + "\"");
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(IdeMemory, Session_CantBeWritten_IsSaidBeforeTheWindowGoes) {
  const std::string project = ide.Project(cFiles);
  std::filesystem::create_symlink("/nowhere", ide.files.Path("p.zend"));
  ide.Run({project}, [&] {
    theMainForm->Close();
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("p.zend: is a link")));
  });
}

TEST_F(IdeMemory, Session_Damaged_IsSaidAndKept) {
  const std::string project = ide.Project(cFiles);
  ide.files.Write("p.zend", "<state>\n<file name=\"a.cpp\"/>\n<fi");
  ide.Run({project}, [&] {
    EXPECT_EQ(IdeDriver::Status(), "The session is damaged: " + ide.files.Path("p.zend"));
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
  EXPECT_EQ(ide.files.Read("p.zend.bad"), "<state>\n<file name=\"a.cpp\"/>\n<fi");
  EXPECT_THAT(ide.dialogs.texts, IsEmpty());
}

TEST_F(IdeMemory, Splitter_MovedByTheUser_IsStoredAtExitOnly) {
  ide.Run({ide.Project(cFiles)}, [&] {
    theMainForm->hSplit.SetPosition(300);
    theFileActs.OnCommand(cSaveAllCommand);
    EXPECT_THAT(ide.Ini(), Not(HasSubstr("split-h")));
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("split-h=300\n"));
}

TEST_F(IdeMemory, UnknownKeys_SurviveARun) {
  ide.home.Write(".zendry/zendry.ini", "x=y=z\nBounds=1;2;900;600;\n");
  ide.Run({}, [] {});
  EXPECT_THAT(ide.Ini(), HasSubstr("x=y=z\n"));
}

TEST_F(IdeMemory, RecentProject_Chosen_IsOpenedAgain) {
  const std::string project = ide.Project(cFiles);
  ide.Run({project}, [] {});
  ide.Run({}, [&] {
    ide.OnDialog([](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text.Get(), "Recent projects");
      test::Key(dialog, Qt::Key_Return);
    });
    theFileActs.OnCommand(cRecentProjectsCommand);
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(a.cpp src(b.cpp)))");
  });
}

TEST_F(IdeMemory, RecentFile_Cancelled_OpensNothing) {
  ide.Run({ide.files.Write("a.cpp", "")}, [] {});
  ide.Run({}, [&] {
    ide.OnDialog([](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text.Get(), "Recent files");
      test::Key(dialog, Qt::Key_Escape);
    });
    theFileActs.OnCommand(cRecentFilesCommand);
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
  });
}

TEST_F(IdeMemory, RecentFile_DoubleClicked_IsOpened) {
  ide.Run({ide.files.Write("a.cpp", "")}, [] {});
  ide.Run({}, [&] {
    ide.OnDialog([](mavro::Form& dialog) {
      test::Shot(dialog, "ide-recent");
      for (mavro::Control* child : dialog.children)
        if (auto* list = dynamic_cast<mavro::ListBox*>(child)) {
          auto* view = qobject_cast<QAbstractScrollArea*>(test::WidgetOf(*list));
          ASSERT_NE(view, nullptr);
          return QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                                    QPoint(20, 5));
        }
    });
    theFileActs.OnCommand(cRecentFilesCommand);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

TEST_F(IdeMemory, RecentList_Empty_ShowsADialogThatAnswersNothing) {
  ide.Run({}, [&] {
    ide.OnDialog([](mavro::Form& dialog) { test::Key(dialog, Qt::Key_Return); });
    theFileActs.OnCommand(cRecentFilesCommand);
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
  });
}

TEST_F(IdeMemory, OpenProject_AsksWhereTheLastOneWas) {
  const std::string project = ide.Project(cFiles);
  ide.Run({project}, [] {});
  ide.Run({}, [&] {
    ide.dialogs.files = {{project}};
    theFileActs.OnCommand(cOpenProjectCommand);
    ASSERT_EQ(ide.dialogs.questions.size(), 1u);
    EXPECT_EQ(ide.dialogs.questions[0].title, "Open project");
    EXPECT_EQ(ide.dialogs.questions[0].filter, "Project Files (*.zpj)|*.zpj");
    EXPECT_EQ(ide.dialogs.questions[0].folder, ide.files.Path());
    EXPECT_TRUE(theProject.isOpen);
  });
}

TEST_F(IdeMemory, OpenProject_CurrentOneRefusesToClose_Stays) {
  ide.Run({ide.Project(cFiles)}, [&] {
    theProject.modified = true;
    ide.dialogs.files = {{ide.Project({{"a.cpp", ""}}, "q.zpj")}};
    ide.dialogs.answers = {mavro::Answer::cCancel, mavro::Answer::cNo};
    theFileActs.OnCommand(cOpenProjectCommand);
    EXPECT_EQ(theProject.name, "p.zpj");
  });
}

TEST_F(IdeMemory, Session_CantBeWritten_IsSaidWhenTheProjectCloses) {
  const std::string project = ide.Project(cFiles);
  std::filesystem::create_symlink("/nowhere", ide.files.Path("p.zend"));
  ide.Run({project}, [&] {
    theFileActs.OnCommand(cCloseProjectCommand);
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("p.zend"));
    EXPECT_FALSE(theProject.isOpen);
  });
}

TEST_F(IdeMemory, SettingsFolder_CantBeHad_IsSaidOnceAndEverythingWorks) {
  ide.home.Write(".zendry", "a file in the folder's place");
  ide.Run({ide.Project(cFiles)}, [&] {
    EXPECT_THAT(IdeDriver::Status(), StartsWith("Settings are not kept"));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
  });
  EXPECT_EQ(ide.home.Read(".zendry"), "a file in the folder's place");
  EXPECT_TRUE(ide.files.Exists("p.zend"));
}

TEST_F(IdeMemory, KilledProgram_ItsProjectIsOfferedAndOpened) {
  const std::string project = ide.Project(cFiles);
  const pid_t child = fork();
  if (child == 0) {
    theProject.Init(project, cConsole);
    theProject.AddFile("a.cpp");
    theProject.modified = true;
    KeepRescueCopy(theProject);
    raise(SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ide.dialogs.answers = {mavro::Answer::cYes};
  ide.Run({}, [&] {
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr(project)));
    EXPECT_EQ(IdeDriver::Tree(), "(Source Files(a.cpp))");
    EXPECT_FALSE(theProject.modified);
  });
  EXPECT_THAT(ide.files.Read("p.zpj"), Not(HasSubstr("b.cpp")));
  EXPECT_THAT(FindRescuedProjects(), IsEmpty());
}

}  // namespace
}  // namespace zendry
