#include "rescue/StartMarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "Privileges.h"
#include "ScopedHome.h"
#include "TempFolder.h"

namespace zendry {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class StartMarksTest : public testing::Test {
 protected:
  // Runs a program that is killed at the end of `work`.
  static void Killed(const std::function<void(StartMarks&)>& work) {
    const pid_t child = fork();
    if (child == 0) {
      StartMarks marks;
      work(marks);
      raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
  }
  static void KilledOver(const std::string& path) {
    Killed([&path](StartMarks& marks) { marks.Begin(path); });
  }

  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    if (!home.Exists(".zendry/rescue")) return names;
    for (const auto& entry : std::filesystem::directory_iterator(home.Path(".zendry/rescue")))
      names.push_back(entry.path().filename().string());
    return names;
  }

  test::TempFolder home;
  test::ScopedHome scopedHome{home.Path()};
};

TEST_F(StartMarksTest, Begin_LeavesAMarkForTheUserAlone) {
  StartMarks marks;
  EXPECT_TRUE(marks.Begin("/a.cpp"));
  ASSERT_THAT(Files(), SizeIs(1));
  const std::string name = Files().front();
  EXPECT_THAT(name, testing::StartsWith("start-" + std::to_string(getpid()) + "."));
  EXPECT_THAT(name, testing::EndsWith("-1"));
  EXPECT_EQ(home.Read(".zendry/rescue/" + name), std::string("/a.cpp\0", 7));
  struct stat status;
  ASSERT_EQ(stat(home.Path(".zendry/rescue/" + name).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(StartMarksTest, Begin_ShorterNameAfterALonger_IsTheWholeMark) {
  StartMarks marks;
  marks.Begin("/a long name.cpp");
  marks.Begin("/b");
  EXPECT_EQ(home.Read(".zendry/rescue/" + Files().front()), std::string("/b\0", 3));
}

TEST_F(StartMarksTest, NothingBegun_TouchesNothing) {
  { StartMarks marks; }
  EXPECT_FALSE(home.Exists(".zendry"));
}

TEST_F(StartMarksTest, Clear_OrTheEnd_TakesTheMarkAway) {
  {
    StartMarks marks;
    marks.Begin("/a.cpp");
    marks.Clear();
    EXPECT_THAT(Files(), IsEmpty());
    marks.Begin("/a.cpp");
  }
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(StartMarksTest, Watch_Nothing_TakesTheMarkAway) {
  StartMarks marks;
  marks.Begin("/a.cpp");
  marks.Watch("");
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(StartMarksTest, KilledProgram_ItsFileIsLeftClosedOnce) {
  KilledOver("/a.cpp");
  {
    StartMarks next;
    EXPECT_FALSE(next.Begin("/a.cpp"));
    EXPECT_FALSE(next.Begin("/a.cpp"));
    EXPECT_TRUE(next.Begin("/b.cpp"));
    next.Clear();
    EXPECT_TRUE(next.Begin("/a.cpp"));
  }
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(StartMarksTest, KilledProgram_FilesItWasPast_AreOpened) {
  Killed([](StartMarks& marks) {
    marks.Begin("/a.cpp");
    marks.Begin("/b.cpp");
  });
  StartMarks next;
  EXPECT_TRUE(next.Begin("/a.cpp"));
  EXPECT_FALSE(next.Begin("/b.cpp"));
}

TEST_F(StartMarksTest, KilledWhileItPainted_TheWatchedFileIsLeftClosed) {
  Killed([](StartMarks& marks) {
    marks.Begin("/a.cpp");
    marks.Begin("/b.cpp");
    marks.Watch("/a.cpp");
  });
  StartMarks next;
  EXPECT_FALSE(next.Begin("/a.cpp"));
  EXPECT_TRUE(next.Begin("/b.cpp"));
}

TEST_F(StartMarksTest, TwoFilesThatKill_AreBothLeftClosedAtTheThirdStart) {
  KilledOver("/a.cpp");
  Killed([](StartMarks& marks) {
    marks.Begin("/a.cpp");
    marks.Begin("/b.cpp");
  });
  StartMarks third;
  EXPECT_FALSE(third.Begin("/a.cpp"));
  EXPECT_FALSE(third.Begin("/b.cpp"));
}

TEST_F(StartMarksTest, KilledAfterAFileWasLeftClosed_ItStaysDoubtful) {
  KilledOver("/a.cpp");
  Killed([](StartMarks& marks) {
    marks.Begin("/a.cpp");
    marks.Watch("");
  });
  StartMarks third;
  EXPECT_FALSE(third.Begin("/a.cpp"));
}

TEST_F(StartMarksTest, StartThatDoesNotMeetTheFile_LeavesTheMark) {
  KilledOver("/a.cpp");
  {
    StartMarks other;
    EXPECT_TRUE(other.Begin("/other.cpp"));
  }
  EXPECT_THAT(Files(), SizeIs(1));
  StartMarks next;
  EXPECT_FALSE(next.Begin("/a.cpp"));
}

TEST_F(StartMarksTest, RunningProgram_IsNotDisturbed) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    StartMarks marks;
    marks.Begin("/a.cpp");
    if (write(ready[1], "x", 1) == 1) pause();
    _exit(1);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  {
    StartMarks second;
    EXPECT_TRUE(second.Begin("/a.cpp"));
    EXPECT_THAT(Files(), SizeIs(2));
  }
  EXPECT_THAT(Files(), SizeIs(1));
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  StartMarks next;
  EXPECT_FALSE(next.Begin("/a.cpp"));
  for (const int end : ready) close(end);
}

TEST_F(StartMarksTest, EndedProgramWithOurNumber_ItsFileIsLeftClosed) {
  home.Write(".zendry/rescue/start-" + std::to_string(getpid()) + ".1-1",
             std::string("/a.cpp\0", 7));
  {
    StartMarks marks;
    EXPECT_TRUE(marks.Begin("/b.cpp"));
    EXPECT_FALSE(marks.Begin("/a.cpp"));
  }
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(StartMarksTest, OddNames_AreFoundAgain) {
  for (const std::string& path :
       {std::string("/a\nb.cpp"), std::string("/caf\xE9"), "/" + std::string(4000, 'x')}) {
    KilledOver(path);
    StartMarks next;
    EXPECT_FALSE(next.Begin(path));
  }
}

TEST_F(StartMarksTest, DamagedMarks_ArePassedOver) {
  const pid_t gone = fork();
  if (gone == 0) _exit(0);
  waitpid(gone, nullptr, 0);
  const std::string name = ".zendry/rescue/start-" + std::to_string(gone) + "-1";
  for (const std::string& bytes :
       {std::string(), std::string("/a.cpp"), std::string(3, '\0'), std::string("/a\0\0", 4)}) {
    home.Write(name, bytes);
    StartMarks next;
    EXPECT_TRUE(next.Begin("/a.cpp")) << bytes.size();
  }
}

TEST_F(StartMarksTest, MarkThatCantBeTakenAway_DoesNotCount) {
  using std::filesystem::perms;
  KilledOver("/a.cpp");
  const std::string rescue = home.Path(".zendry/rescue");
  for (const std::string& path :
       {home.Path(), home.Path(".zendry"), rescue + "/" + Files().front()})
    std::filesystem::permissions(path, perms(0755));
  std::filesystem::permissions(rescue, perms(0555));
  {
    const test::WithoutRights user;
    StartMarks next;
    EXPECT_TRUE(next.Begin("/a.cpp"));
  }
  std::filesystem::permissions(rescue, perms(0755));
  EXPECT_THAT(Files(), SizeIs(1));
}

TEST_F(StartMarksTest, FolderCantBeHad_FilesAreOpenedWithoutAWord) {
  home.Write(".zendry", "a file in the folder's place");
  StartMarks marks;
  EXPECT_TRUE(marks.Begin("/a.cpp"));
  marks.Watch("/b.cpp");
  marks.Clear();
  EXPECT_EQ(home.Read(".zendry"), "a file in the folder's place");
}

}  // namespace
}  // namespace zendry
