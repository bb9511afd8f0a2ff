#include "build/HeaderRivals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "TempFolder.h"
#include "build/BuildRecords.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct HeaderRivalsTest : testing::Test {
  test::TempFolder files;
  std::string before = std::filesystem::current_path();
  FileTimes times;

  HeaderRivalsTest() { EXPECT_EQ(chdir(files.Path().c_str()), 0); }
  ~HeaderRivalsTest() override { EXPECT_EQ(chdir(before.c_str()), 0); }

  static std::vector<std::string> Of(HeaderRivals& rivals, const std::string& header) {
    std::vector<std::string> paths;
    for (const auto& rival : rivals.Of(header)) paths.push_back(rival.path);
    return paths;
  }
};

TEST_F(HeaderRivalsTest, FileOfTheSameNameInAnotherFolder_IsARival) {
  files.Write("inc/h.h", "");
  files.Write("inc/dir/d.h", "");
  files.Write("other/dir/d.h", "");
  files.Write("other/d.h", "");
  files.Write("h.h", "");
  HeaderRivals rivals;
  for (const char* folder : {"inc", "./other/", ""}) rivals.NumberOf(folder);
  EXPECT_THAT(Of(rivals, "inc/h.h"), ElementsAre("h.h"));
  EXPECT_THAT(Of(rivals, "inc/dir/../h.h"), ElementsAre("h.h"));
  EXPECT_THAT(Of(rivals, files.Path("inc/h.h")), ElementsAre("h.h"));
  EXPECT_THAT(Of(rivals, "inc/dir/d.h"), ElementsAre("other/dir/d.h"));
  EXPECT_THAT(Of(rivals, "elsewhere.h"), IsEmpty());
}

TEST_F(HeaderRivalsTest, LaterFolder_BringsItsRivals) {
  files.Write("inc/h.h", "");
  files.Write("b/h.h", "");
  HeaderRivals rivals;
  const uint32_t inc = rivals.NumberOf("inc");
  EXPECT_THAT(Of(rivals, "inc/h.h"), IsEmpty());
  EXPECT_EQ(rivals.NumberOf("./inc"), inc);
  rivals.NumberOf("b");
  EXPECT_THAT(Of(rivals, "inc/h.h"), ElementsAre("b/h.h"));
}

struct RecordsWithRivals : HeaderRivalsTest {
  const std::string command = "gcc -c -Ia -Ib x.c -o out/x.o";

  void Record() {
    times = {};
    BuildRecords records;
    records.Open("");
    records.Add("out/x.o", command, {{"x.c", *times.Of("x.c")}, {"b/h.h", *times.Of("b/h.h")}});
  }
  std::string Reason() {
    times = {};
    BuildRecords records;
    records.Open("");
    return records.Check(times, "out/x.o", command).reason;
  }
};

TEST_F(RecordsWithRivals, NewHeaderThatMayHideAnother_MakesStaleUntilItIsKnown) {
  files.Write("x.c", "");
  files.Write("b/h.h", "");
  files.Folder("a");
  files.Folder("c");
  Record();
  EXPECT_EQ(Reason(), "");
  files.Write("c/h.h", "");  // nobody looks there
  files.Write("a/other.h", "");
  EXPECT_EQ(Reason(), "");
  files.Write("a/h.h", "");
  EXPECT_THAT(Reason(), HasSubstr("a/h.h may be read now"));
  Record();
  EXPECT_EQ(Reason(), "");
  files.Write("a/h.h", "changed");  // still not read
  EXPECT_EQ(Reason(), "");
  files.Write("h.h", "");  // beside the source
  EXPECT_THAT(Reason(), HasSubstr("h.h may be read now"));
  std::filesystem::remove(files.Path("h.h"));
  std::filesystem::remove(files.Path("a/h.h"));
  EXPECT_EQ(Reason(), "");
}

// The lists of folders outlive a build; their times decide.
TEST_F(RecordsWithRivals, OpenRecords_SeeWhatComesIntoAListedFolderAndWhatGoes) {
  files.Write("x.c", "");
  files.Write("b/h.h", "");
  files.Folder("a");
  Record();
  BuildRecords records;
  const auto reason = [&] {
    times = {};
    records.Open("");
    return records.Check(times, "out/x.o", command).reason;
  };
  EXPECT_EQ(reason(), "");
  files.Write("a/h.h", "");
  EXPECT_THAT(reason(), HasSubstr("a/h.h may be read now"));
  std::filesystem::remove(files.Path("a/h.h"));
  EXPECT_EQ(reason(), "");
  std::filesystem::remove(files.Path("a"));
  EXPECT_EQ(reason(), "");
  files.Write("a/h.h", "");
  EXPECT_THAT(reason(), HasSubstr("a/h.h may be read now"));
}

TEST_F(HeaderRivalsTest, FolderWrittenToJustNow_IsListedAgain) {
  files.Write("inc/h.h", "");
  files.Folder("other");
  HeaderRivals rivals;
  EXPECT_TRUE(rivals.IsCurrent());
  for (const char* folder : {"inc", "other"}) rivals.NumberOf(folder);
  EXPECT_THAT(Of(rivals, "inc/h.h"), IsEmpty());
  EXPECT_FALSE(rivals.IsCurrent());
}

TEST_F(HeaderRivalsTest, FolderLeftAlone_IsNotListedAgain) {
  files.Write("inc/h.h", "");
  HeaderRivals rivals;
  for (const char* folder : {"inc", "/usr/include", "/usr/no such folder"}) rivals.NumberOf(folder);
  EXPECT_THAT(Of(rivals, "inc/h.h"), IsEmpty());
  EXPECT_TRUE(rivals.IsCurrent());
  ASSERT_EQ(chdir("/"), 0);
  EXPECT_FALSE(rivals.IsCurrent());
}

TEST_F(RecordsWithRivals, ProgramsAndLibraries_HaveNone) {
  files.Write("b/x.o", "");
  files.Write("x.o", "");
  BuildRecords records;
  records.Open("");
  records.Add("p.exe", "gcc -Ia -Ib x.o b/y.o", {{"x.o", *times.Of("x.o")}});
  EXPECT_FALSE(records.Check(times, "p.exe", "gcc -Ia -Ib x.o b/y.o").stale);
}

}  // namespace
}  // namespace zendry
