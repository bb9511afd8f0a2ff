#include "rescue/Rescue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Assert.h"
#include "ScopedHome.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"
#include "project/Project.h"
#include "project/ProjectFileFormat.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A home of its own, and a project with a change that is not in its file.
class Rescue : public testing::Test {
 protected:
  Rescue() {
    path = files.Write("p.zpj", "");
    theProject.Init(path, cConsole);
    theProject.AddFile("a.cpp");
    theProject.modified = true;
    theProject.implicit = false;
  }
  ~Rescue() override {
    DropRescueCopy();
    theProject.Clear();
    theProject.modified = false;
  }

  // Leaves the copy of a program that was killed, which is offered from now on.
  void LeaveCopy() {
    const pid_t child = fork();
    if (child == 0) {
      KeepRescueCopy(theProject);
      raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
  }
  std::vector<std::string> Copies() const {
    const std::string folder = ".zendry/rescue";
    std::vector<std::string> names;
    if (!home.Exists(folder)) return names;
    for (const auto& entry : std::filesystem::directory_iterator(home.Path(folder)))
      names.push_back(entry.path().filename().string());
    return names;
  }

  test::TempFolder home;
  test::ScopedHome scopedHome{home.Path()};
  test::TempFolder files;
  std::string path;
};

TEST_F(Rescue, Keep_ChangedProject_OutlivesAKilledProcess) {
  LeaveCopy();
  const std::vector<RescueCopy> found = FindRescuedProjects();
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].path, path);
  EXPECT_EQ(found[0].content, WriteProjectText(theProject).text);
}

TEST_F(Rescue, Keep_NameWithANewline_ComesBackWhole) {
  theProject.SetFileName(files.Path("p\nq.zpj"));
  LeaveCopy();
  ASSERT_EQ(FindRescuedProjects().size(), 1u);
  EXPECT_EQ(FindRescuedProjects()[0].path, files.Path("p\nq.zpj"));
}

TEST_F(Rescue, LastWords_ChangedProject_IsKept) {
  EXPECT_EXIT(
      {
        RescueOnLastWords();
        mavro::AssertionFailed("no", "src/x.cpp", 1);
      },
      testing::KilledBySignal(SIGABRT), "assertion failed: no");
  EXPECT_EQ(FindRescuedProjects().size(), 1u);
}

TEST_F(Rescue, Keep_SavedProject_TakesTheCopyAway) {
  KeepRescueCopy(theProject);
  EXPECT_EQ(Copies().size(), 1u);
  theProject.modified = false;
  KeepRescueCopy(theProject);
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(Rescue, Keep_ProjectWithoutAFile_KeepsNothing) {
  theProject.implicit = true;
  KeepRescueCopy(theProject);
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(Rescue, Keep_ProjectWithoutAName_TakesTheCopyAway) {
  KeepRescueCopy(theProject);
  theProject.name.clear();
  KeepRescueCopy(theProject);
  EXPECT_THAT(Copies(), IsEmpty());
}

// Later versions must find the copies of this one.
TEST_F(Rescue, Keep_NamesTheCopyByItsKindItsProcessAndA1) {
  KeepRescueCopy(theProject);
  ASSERT_EQ(Copies().size(), 1u);
  const std::string name = Copies().front();
  EXPECT_TRUE(name.starts_with("project-" + std::to_string(getpid()) + ".")) << name;
  EXPECT_TRUE(name.ends_with("-1")) << name;
}

// Copies of earlier versions don't tell when their process was started.
TEST_F(Rescue, Find_CopyWithoutAStart_IsOfTheDeadIfNoProcessHasItsNumber) {
  const pid_t gone = fork();
  if (gone == 0) _exit(0);
  waitpid(gone, nullptr, 0);
  for (const pid_t process : {getpid(), gone}) {
    const std::string name = "project-" + std::to_string(process) + "-1";
    home.Write(".zendry/rescue/" + name, path + '\0' + "text");
    EXPECT_EQ(FindRescuedProjects().size(), process == gone ? 1u : 0u);
  }
}

TEST_F(Rescue, Find_LeavesNoFileOpen) {
  const auto openFiles = [] {
    const auto list = std::filesystem::directory_iterator("/proc/self/fd");
    return std::distance(begin(list), end(list));
  };
  LeaveCopy();
  const auto before = openFiles();
  const std::string name = "project-" + std::to_string(getpid()) + ".1-1";
  home.Write(".zendry/rescue/" + name, path + '\0' + "text");
  EXPECT_EQ(FindRescuedProjects().size(), 2u);
  EXPECT_EQ(openFiles(), before);
}

TEST_F(Rescue, Find_CopyOfALivingProcess_IsLeftAlone) {
  KeepRescueCopy(theProject);
  EXPECT_THAT(FindRescuedProjects(), IsEmpty());
  EXPECT_EQ(Copies().size(), 1u);
}

// A process that nobody has asked for its end keeps its number. Where the first process of a
// container collects none, it does so for ever.
TEST_F(Rescue, Find_CopyOfAnEndedProcessThatIsStillListed_IsFound) {
  const pid_t child = fork();
  if (child == 0) {
    KeepRescueCopy(theProject);
    raise(SIGKILL);
  }
  siginfo_t end = {};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOWAIT), 0);
  ASSERT_EQ(kill(child, 0), 0);
  EXPECT_EQ(FindRescuedProjects().size(), 1u);
  waitpid(child, nullptr, 0);
}

TEST_F(Rescue, Find_CopyOfAStoppedProcess_IsLeftAlone) {
  const pid_t child = fork();
  if (child == 0) {
    KeepRescueCopy(theProject);
    raise(SIGSTOP);
    _exit(0);
  }
  siginfo_t stop = {};
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &stop, WSTOPPED), 0);
  EXPECT_EQ(Copies().size(), 1u);
  EXPECT_THAT(FindRescuedProjects(), IsEmpty());
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(FindRescuedProjects().size(), 1u);
}

TEST_F(Rescue, Find_FilesThatAreNoCopies_ArePassedOver) {
  LeaveCopy();
  const std::string name = Copies()[0];
  for (const std::string& content :
       {std::string(), std::string("/no/end"), std::string("\0<ide>", 6)}) {
    home.Write(".zendry/rescue/" + name, content);
    EXPECT_THAT(FindRescuedProjects(), IsEmpty()) << content;
  }
  const std::string good("/a\0b", 4);
  home.Write(".zendry/rescue/project-12x", good);
  home.Write(".zendry/rescue/project-", good);
  home.Write(".zendry/rescue/project-12-", good);
  home.Write(".zendry/rescue/project-12-1x", good);
  home.Write(".zendry/rescue/text-12-1", good);
  home.Write(".zendry/rescue/main.cpp.12", good);
  home.Write(".zendry/rescue/project-999999999x1", good);
  home.Write(".zendry/rescue/project-999999999.5x1", good);
  home.Write(".zendry/rescue/project-0-1", good);
  EXPECT_THAT(FindRescuedProjects(), IsEmpty());
}

TEST_F(Rescue, Offer_Yes_SavesTheProjectAndForgetsTheCopy) {
  LeaveCopy();
  test::ScriptedDialogs dialogs;
  dialogs.answers = {mavro::Answer::cYes};
  EXPECT_EQ(OfferRescuedProjects(), path);
  EXPECT_EQ(files.Read("p.zpj"), WriteProjectText(theProject).text);
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(Rescue, Offer_No_ThrowsTheCopyAway) {
  LeaveCopy();
  test::ScriptedDialogs dialogs;
  dialogs.answers = {mavro::Answer::cNo};
  EXPECT_EQ(OfferRescuedProjects(), "");
  EXPECT_EQ(files.Read("p.zpj"), "");
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(Rescue, Offer_Cancel_KeepsTheCopyForTheNextTime) {
  LeaveCopy();
  test::ScriptedDialogs dialogs;
  dialogs.answers = {mavro::Answer::cCancel};
  EXPECT_EQ(OfferRescuedProjects(), "");
  EXPECT_EQ(Copies().size(), 1u);
  EXPECT_THAT(dialogs.texts,
              ElementsAre("Confirmation: Zendry ended before this project was saved:\n" + path +
                          "\n\nSave its changes?"));
}

TEST_F(Rescue, Offer_CantBeSaved_SaysSoAndKeepsTheCopy) {
  LeaveCopy();
  std::filesystem::remove_all(files.Path());
  test::ScriptedDialogs dialogs;
  dialogs.answers = {mavro::Answer::cYes};
  EXPECT_EQ(OfferRescuedProjects(), "");
  EXPECT_EQ(dialogs.texts.size(), 2u);
  EXPECT_EQ(Copies().size(), 1u);
}

}  // namespace
}  // namespace zendry
