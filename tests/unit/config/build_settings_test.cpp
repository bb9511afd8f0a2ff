#include "config/BuildSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "ScopedHome.h"
#include "TempFolder.h"
#include "config/IdeSession.h"

namespace zendry {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(BuildSettings, Jobs_AreAWholeNumberAboveZero) {
  EXPECT_EQ(ReadJobs("1"), 1);
  EXPECT_EQ(ReadJobs("256"), 256);
  EXPECT_EQ(ReadJobs("257"), 256);
  EXPECT_EQ(ReadJobs("1000"), 256);
  EXPECT_EQ(ReadJobs(std::string(100, '9')), 256);
  for (const char* bad : {"", "0", "000", "x", "-1", "+2", "1.5", "2x", " 2"})
    EXPECT_FALSE(ReadJobs(bad)) << bad;
}

TEST(BuildSettings, Processors_AreAtLeastOne) {
  EXPECT_GE(ProcessorCount(), 1);
}

struct KeptBuildSettings : testing::Test {
  KeptBuildSettings() { theBuildSettings = {}; }
  ~KeptBuildSettings() override { theBuildSettings = {}; }

  test::TempFolder folder;
  test::ScopedHome home{folder.Path()};
};

TEST_F(KeptBuildSettings, WrittenOnes_AreReadAgain) {
  IdeSession session;
  session.Load();
  theBuildSettings.jobs = 5;
  theBuildSettings.launchers[1] = "ccache";
  theBuildSettings.watchAllHeaders = true;
  session.Save({});
  theBuildSettings = {};
  IdeSession next;
  next.Load();
  EXPECT_EQ(theBuildSettings.jobs, 5);
  EXPECT_TRUE(theBuildSettings.watchAllHeaders);
  EXPECT_EQ(theBuildSettings.launchers[0], "");
  EXPECT_EQ(theBuildSettings.launchers[1], "ccache");
}

TEST_F(KeptBuildSettings, WithoutAny_NothingIsWritten) {
  IdeSession session;
  session.Load();
  session.Save({});
  EXPECT_FALSE(session.values.contains("jobs"));
  EXPECT_FALSE(session.values.contains("launcher0"));
}

TEST_F(KeptBuildSettings, JobsWithoutAMeaning_AreThoseOfTheMachine) {
  IdeSession session;
  session.values["jobs"] = "x";
  session.Load();
  EXPECT_EQ(theBuildSettings.jobs, 0);
}

TEST_F(KeptBuildSettings, OnlyRead_MakeNoFolder) {
  IdeSession session;
  session.LoadBuildSettings("");
  EXPECT_EQ(theBuildSettings, BuildSettings());
  EXPECT_NE(access(session.folder.c_str(), F_OK), 0);
}

TEST_F(KeptBuildSettings, FirstStart_CountsForEachKeyThatIsNotSet) {
  const test::TempFolder files;
  IdeSession session;
  session.LoadBuildSettings(files.Write("first.ini", "jobs=3\nlauncher2=distcc\n"));
  EXPECT_EQ(theBuildSettings.jobs, 3);
  EXPECT_EQ(theBuildSettings.launchers[2], "distcc");
}

}  // namespace
}  // namespace zendry
