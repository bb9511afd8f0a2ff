#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IdeDriver.h"

// A file that the last start did not get past.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class IdeStart : public testing::Test {
 protected:
  // Leaves what a program leaves that was killed while it opened a file.
  void LeaveMark(const std::string& path) { ide.LeaveRescued("start", path, ""); }

  std::vector<std::string> Marks() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ide.home.Path(".zendry/rescue")))
      names.push_back(entry.path().filename().string());
    return names;
  }
  bool IsSettled() {
    return test::WaitFor([this] { return Marks().empty(); });
  }
  static std::string Output() { return theMainForm->output.text; }

  // A project whose session has both files open, the second in front.
  std::string ProjectWithSession() {
    const std::string project = ide.Project({{"a.cpp", "1\n2\n3\n"}, {"b.cpp", "1\n2\n"}});
    ide.files.Write(
        "p.zend",
        "<state>\n\t<mode opt=\"rel\"/>\n\t<open>\n\t\t<file name=\"a.cpp\" id=\"3\"/>\n"
        "\t\t<file name=\"b.cpp\" id=\"2\"/>\n\t\t<active name=\"" +
            ide.files.Path("b.cpp") + "\"/>\n\t</open>\n</state>\n");
    return project;
  }

  IdeDriver ide;
};

TEST_F(IdeStart, NamedFile_OnceItIsShown_HasNoMarkLeft) {
  ide.Run({ide.files.Write("a.cpp", "")}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_TRUE(IsSettled());
    EXPECT_THAT(Output(), Not(HasSubstr("left closed")));
  });
}

TEST_F(IdeStart, NamedFile_NotGotPast_IsLeftClosedAndSaid) {
  const std::string path = ide.files.Write("a.cpp", "");
  LeaveMark(path);
  ide.Run({path}, [&] {
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    EXPECT_EQ(IdeDriver::Status(), "a.cpp is left closed this time: see Output");
    EXPECT_THAT(Output(), AllOf(HasSubstr(path), HasSubstr("left closed")));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_THAT(theIdeSession.recentFiles.items, ElementsAre(path));
    EXPECT_TRUE(IsSettled());
    test::Shot(*theMainForm, "ide-left-closed");
  });
  ide.Run({path}, [&] { EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp")); });
}

TEST_F(IdeStart, NamedFile_LeftClosed_IsOpenedByHand) {
  const std::string path = ide.files.Write("a.cpp", "");
  LeaveMark(path);
  ide.Run({path}, [&] {
    EXPECT_NE(theMainForm->editTabs.OpenFile(path), nullptr);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
  });
}

TEST_F(IdeStart, SessionFile_NotGotPast_TheOthersAreOpened) {
  const std::string project = ProjectWithSession();
  LeaveMark(ide.files.Path("a.cpp"));
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("b.cpp"));
    EXPECT_EQ(IdeDriver::Status(), "a.cpp is left closed this time: see Output");
    EXPECT_TRUE(IsSettled());
  });
}

TEST_F(IdeStart, SessionFile_LeftClosed_StaysInTheSession_AtItsPlaceAndLine) {
  const std::string project = ProjectWithSession();
  const std::string session = ide.files.Read("p.zend");
  LeaveMark(ide.files.Path("a.cpp"));
  ide.Run({project}, [] {});
  EXPECT_EQ(ide.files.Read("p.zend"), session);
  ide.Run({project}, [&] {
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp"));
    EXPECT_EQ(theMainForm->editTabs.GetTab(0)->editor->ShownLine(), 3);
  });
}

TEST_F(IdeStart, SessionFile_OpenedByHandAndClosed_LeavesTheSession) {
  const std::string project = ProjectWithSession();
  LeaveMark(ide.files.Path("a.cpp"));
  ide.Run({project}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    EXPECT_EQ(theMainForm->OpenFiles().size(), 2u);
    theMainForm->editTabs.CloseTab(1, EditTabs::Unsaved::cDrop);
  });
  EXPECT_THAT(ide.files.Read("p.zend"), Not(HasSubstr("a.cpp")));
}

TEST_F(IdeStart, SeveralFiles_LeftClosed_AreAllInTheOutput) {
  const std::string project = ProjectWithSession();
  LeaveMark(ide.files.Path("a.cpp"));
  LeaveMark(ide.files.Path("b.cpp"));
  ide.Run({project}, [&] {
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    EXPECT_EQ(IdeDriver::Status(), "2 files are left closed this time: see Output");
    EXPECT_THAT(Output(), AllOf(HasSubstr("a.cpp"), HasSubstr("b.cpp")));
    EXPECT_EQ(theMainForm->OpenFiles().size(), 2u);
    EXPECT_EQ(theMainForm->OpenFiles()[0].path, ide.files.Path("a.cpp"));
  });
}

TEST_F(IdeStart, LeftClosedFiles_DoNotGoToAnotherProject) {
  const std::string project = ProjectWithSession();
  const std::string other = ide.Project({{"c.cpp", ""}}, "q.zpj");
  LeaveMark(ide.files.Path("a.cpp"));
  ide.Run({project}, [&] {
    theFileActs.ReplaceProject(other);
    EXPECT_THAT(theMainForm->OpenFiles(), IsEmpty());
  });
}

TEST_F(IdeStart, Project_NotGotPast_IsLeftClosedAndSaid) {
  const std::string project = ProjectWithSession();
  LeaveMark(project);
  ide.Run({project}, [&] {
    EXPECT_FALSE(theProject.isOpen);
    EXPECT_EQ(IdeDriver::Status(), "p.zpj is left closed this time: see Output");
    EXPECT_THAT(theIdeSession.recentProjects.items, ElementsAre(project));
    theFileActs.ReplaceProject(project);
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp"));
    EXPECT_TRUE(IsSettled());
  });
}

TEST_F(IdeStart, ProjectOpenedByHand_ItsSessionIsGuardedToo) {
  const std::string project = ProjectWithSession();
  LeaveMark(ide.files.Path("b.cpp"));
  ide.Run({}, [&] {
    EXPECT_EQ(Marks().size(), 1u);
    theFileActs.ReplaceProject(project);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_THAT(Output(), HasSubstr("b.cpp"));
    EXPECT_TRUE(IsSettled());
  });
}

TEST_F(IdeStart, NamesWithControlBytes_AreShownAsMarks) {
  const std::string path = ide.files.Write("a\x1b[31m.cpp", "");
  LeaveMark(path);
  ide.Run({path}, [&] {
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    EXPECT_THAT(IdeDriver::Status(), AllOf(HasSubstr("left closed"), Not(HasSubstr("\x1b"))));
    EXPECT_THAT(Output(), Not(HasSubstr("\x1b")));
  });
}

TEST_F(IdeStart, FolderCantBeHad_OpensWithoutThisProtection) {
  ide.home.Write(".zendry", "a file in the folder's place");
  ide.Run({ProjectWithSession()},
          [&] { EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp", "b.cpp")); });
}

}  // namespace
}  // namespace zendry
