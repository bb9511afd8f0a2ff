#include "build/RunningTools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "TempFolder.h"

namespace zendry {
namespace {

using testing::StartsWith;

struct RunningToolsTest : testing::Test {
  test::TempFolder folder;
  RunningTools running;

  bool IsNoted() const { return folder.Exists(RunningTools::cRunningName); }
};

TEST_F(RunningToolsTest, Mark_IsInTheFolderUntilNoneRuns) {
  running.Open(folder.Path());
  EXPECT_FALSE(IsNoted());
  const std::string entry = running.Mark();
  EXPECT_THAT(entry, StartsWith("ZENDRY_BUILDER=" + std::to_string(getpid()) + "-"));
  EXPECT_EQ("ZENDRY_BUILDER=" + folder.Read(RunningTools::cRunningName), entry + "\n");
  running.Forget();
  EXPECT_FALSE(IsNoted());
}

TEST_F(RunningToolsTest, BuilderThatIsAlive_KeepsItsMarkAndOneThatIsDeadDoesNot) {
  const pid_t other = fork();
  if (other == 0) {
    RunningTools itsOwn;
    itsOwn.Open(folder.Path());
    itsOwn.Mark();
    for (;;) pause();
  }
  while (!IsNoted() || folder.Read(RunningTools::cRunningName).empty()) std::this_thread::yield();
  running.Open(folder.Path());
  running.Mark();
  running.Forget();
  EXPECT_TRUE(IsNoted());
  kill(other, SIGKILL);
  waitpid(other, nullptr, 0);
  running.Open(folder.Path());
  EXPECT_FALSE(IsNoted());
}

TEST_F(RunningToolsTest, TextWithoutAMeaning_EndsNobody) {
  for (const char* text : {"", "x", "1", "1-", "-", "0-0\n", "99999999999999999999-1\n", "\n\n"}) {
    folder.Write(RunningTools::cRunningName, text);
    running.Open(folder.Path());
    EXPECT_FALSE(IsNoted()) << text;
  }
}

TEST_F(RunningToolsTest, LinkInItsPlace_IsNotFollowed) {
  const std::string victim = folder.Path("victim");
  std::filesystem::create_symlink(victim, folder.Path(RunningTools::cRunningName));
  running.Open(folder.Path());
  running.Mark();
  EXPECT_FALSE(folder.Exists("victim"));
}

}  // namespace
}  // namespace zendry
