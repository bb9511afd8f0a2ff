#include "rescue/TextRescue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

#include "FileFaults.h"
#include "IfKilled.h"
#include "ScopedHome.h"
#include "TempFolder.h"
#include "rescue/Rescue.h"

namespace zendry {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Takes more stack than there is.
int Overrun(int depth) {
  volatile char room[0x1000] = {};
  room[depth % 0x1000] = 1;
  return depth < 1'000'000 ? Overrun(depth + 1) + room[0] : 0;
}

// An open file in a home of its own.
class TextRescueTest : public testing::Test, public RescueSource {
 protected:
  std::string RescuePath() const override { return path; }
  TextFacts RescueFacts() const override { return {}; }
  size_t PieceLength() const override { return content.size(); }
  void AppendPiece(size_t start, size_t end, std::string& to) const override {
    to += content.substr(start, end - start);
  }

  // The texts of the copies, in the order of their names.
  static std::vector<std::string> Copies() {
    std::vector<std::string> found;
    for (const RescuedText& text : test::TextsIfKilled()) found.push_back(text.content);
    return found;
  }

  test::TempFolder home;
  test::ScopedHome scopedHome{home.Path()};
  std::string path = "/folder/main.cpp";
  std::string content = "int a;\n";
  TextRescue::Clock::time_point start;
};

TEST_F(TextRescueTest, Changed_Below200Bytes_WritesNothingYet) {
  TextRescue rescue(*this);
  rescue.Changed(199, start);
  EXPECT_THAT(Copies(), testing::IsEmpty());
}

TEST_F(TextRescueTest, Changed_The200thByte_WritesACopy) {
  TextRescue rescue(*this);
  rescue.Changed(199, start);
  rescue.Changed(1, start);
  EXPECT_THAT(Copies(), testing::ElementsAre("int a;\n"));
}

TEST_F(TextRescueTest, Changed_HugePaste_IsWrittenAtOnce_AndCountsFromNone) {
  TextRescue rescue(*this);
  rescue.Changed(2'000'000'000, start);
  content = "later";
  rescue.Changed(199, start);
  EXPECT_THAT(Copies(), testing::ElementsAre("int a;\n"));
}

TEST_F(TextRescueTest, Tick_FiveSecondsAfterTheFirstChange_WritesACopy) {
  TextRescue rescue(*this);
  rescue.Changed(1, start);
  rescue.Changed(1, start + seconds(4));
  rescue.Tick(start + milliseconds(4999));
  EXPECT_THAT(Copies(), testing::IsEmpty());
  rescue.Tick(start + seconds(5));
  EXPECT_EQ(Copies().size(), 1u);
}

TEST_F(TextRescueTest, FailedCopy_IsTriedAgainAfterTheFullWait) {
  TextRescue rescue(*this);
  home.Write(".zendry", "");  // a file where the folder should be
  rescue.Changed(1, start);
  rescue.Tick(start + seconds(5));
  std::filesystem::remove(home.Path(".zendry"));
  rescue.Tick(start + milliseconds(9999));
  EXPECT_THAT(Copies(), testing::IsEmpty());
  rescue.Tick(start + seconds(10));
  EXPECT_EQ(Copies().size(), 1u);
}

TEST_F(TextRescueTest, KeepNow_NothingChanged_WritesNothing) {
  TextRescue rescue(*this);
  EXPECT_TRUE(rescue.KeepNow());
  EXPECT_THAT(Copies(), testing::IsEmpty());
}

TEST_F(TextRescueTest, Tick_NothingChanged_WritesNothing) {
  TextRescue rescue(*this);
  rescue.Tick(start + seconds(100));
  EXPECT_THAT(Copies(), testing::IsEmpty());
}

TEST_F(TextRescueTest, Drop_SavedFile_TakesTheCopyAway) {
  TextRescue rescue(*this);
  rescue.Changed(200, start);
  rescue.Drop();
  EXPECT_THAT(Copies(), testing::IsEmpty());
  rescue.Tick(start + seconds(100));
  EXPECT_THAT(Copies(), testing::IsEmpty());
}

TEST_F(TextRescueTest, Close_LeavesNoCopyBehind) {
  {
    TextRescue rescue(*this);
    rescue.Changed(200, start);
  }
  EXPECT_THAT(Copies(), testing::IsEmpty());
}

TEST_F(TextRescueTest, TwoFiles_HaveACopyEach) {
  TextRescue first(*this), second(*this);
  first.Changed(200, start);
  second.Changed(200, start);
  EXPECT_EQ(Copies().size(), 2u);
  first.Drop();
  EXPECT_EQ(Copies().size(), 1u);
}

TEST_F(TextRescueTest, KeepAll_WritesWhatIsBehind_AndOnlyThat) {
  TextRescue changed(*this), unchanged(*this);
  changed.Changed(1, start);
  TextRescue::KeepAll();
  EXPECT_EQ(Copies().size(), 1u);
}

TEST_F(TextRescueTest, Find_LivingProgram_IsLeftAlone) {
  TextRescue rescue(*this);
  rescue.Changed(200, start);
  EXPECT_THAT(FindRescuedTexts(), testing::IsEmpty());
}

// In a container a program often gets the number that it had before.
TEST_F(TextRescueTest, Find_EndedProgramWithOurNumber_IsOfferedAndNotReplaced) {
  const std::string name = ".zendry/rescue/text-" + std::to_string(getpid()) + ".1-1";
  home.Write(name, "/a.cpp" + std::string(1, '\0') + "theirs");
  TextRescue rescue(*this);
  rescue.Changed(200, start);
  rescue.Drop();
  ASSERT_THAT(FindRescuedTexts(), testing::SizeIs(1));
  EXPECT_EQ(FindRescuedTexts()[0].content, "theirs");
}

TEST_F(TextRescueTest, Find_KilledProgram_GivesPathAndText_AlsoWithoutAName) {
  for (const std::string& name : {std::string("/folder/b\nc.cpp"), std::string()}) {
    path = name;
    const pid_t child = fork();
    if (child == 0) {
      TextRescue rescue(*this);
      content = std::string("x\0y", 3);
      rescue.Changed(200, start);
      raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    const std::vector<RescuedText> found = FindRescuedTexts();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].path, name);
    EXPECT_EQ(found[0].content, std::string("x\0y", 3));
    RescueCopies::Forget(found[0]);
  }
}

TEST_F(TextRescueTest, EndingSignals_LeaveACopy_AndEndTheProgram) {
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTERM, SIGHUP}) {
    const pid_t child = fork();
    if (child == 0) {
      signal(number, SIG_DFL);  // sanitizers have their own
      RescueOnLastWords();
      TextRescue rescue(*this);
      rescue.Changed(1, start);
      raise(number);
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << strsignal(number);
    const std::vector<RescuedText> found = FindRescuedTexts();
    ASSERT_EQ(found.size(), 1u) << strsignal(number);
    EXPECT_EQ(found[0].content, content);
    RescueCopies::Forget(found[0]);
  }
}

TEST_F(TextRescueTest, EndingSignals_StackOverrun_LeavesACopyToo) {
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGSEGV, SIG_DFL);
    RescueOnLastWords();
    TextRescue rescue(*this);
    rescue.Changed(1, start);
    const rlimit small{0x40000, 0x40000};
    setrlimit(RLIMIT_STACK, &small);
    _exit(Overrun(1));
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status)) << status;
  EXPECT_EQ(FindRescuedTexts().size(), 1u);
}

TEST_F(TextRescueTest, EndingSignals_ThatWereIgnored_StayIgnored) {
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGHUP, SIG_IGN);
    RescueOnLastWords();
    raise(SIGHUP);
    _exit(7);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
}

TEST_F(TextRescueTest, Keep_Fails_IsTriedAgainUntilItCan) {
  home.Write(".zendry", "a file in the folder's place");
  TextRescue rescue(*this);
  rescue.Changed(1, start);
  EXPECT_FALSE(rescue.KeepNow());
  std::filesystem::remove(home.Path(".zendry"));
  rescue.Tick(start + seconds(5));
  EXPECT_THAT(Copies(), testing::ElementsAre("int a;\n"));
  EXPECT_TRUE(rescue.KeepNow());
}

TEST_F(TextRescueTest, WhyNone_IsTheReasonUntilThereIsACopyOrNothingToKeep) {
  home.Write(".zendry", "a file in the folder's place");
  TextRescue rescue(*this);
  rescue.Changed(199, start);
  EXPECT_EQ(rescue.WhyNone(), "") << "none is due";
  rescue.Changed(1, start);
  EXPECT_EQ(rescue.WhyNone(), "the folder for copies can't be had");
  std::filesystem::remove(home.Path(".zendry"));
  rescue.Tick(start + seconds(5));
  EXPECT_EQ(rescue.WhyNone(), "");
  test::FileFaults faults(1, ENOSPC, test::FileFaults::Extent::cAllFrom);
  rescue.WillChange(0, 0, 1);
  content.insert(0, "x");
  rescue.Changed(200, start);
  EXPECT_THAT(rescue.WhyNone(), testing::HasSubstr("No space left on device"));
  rescue.Drop();
  EXPECT_EQ(rescue.WhyNone(), "");
}

TEST_F(TextRescueTest, Changed_FolderCantBeHad_IsSilent) {
  home.Write(".zendry", "a file in the folder's place");
  TextRescue rescue(*this);
  rescue.Changed(200, start);
  EXPECT_THAT(FindRescuedTexts(), testing::IsEmpty());
}

}  // namespace
}  // namespace zendry
