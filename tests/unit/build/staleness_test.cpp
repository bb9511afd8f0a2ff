#include "build/Staleness.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "Privileges.h"
#include "TempFolder.h"
#include "TestBuild.h"
#include "base/Paths.h"
#include "project/Project.h"

namespace zendry {
namespace {

class StalenessTest : public testing::Test {
 protected:
  StalenessTest() { project.Init(folder.Path("p.zpj"), cConsole); }

  // Writes a file with a time, and adds it to the project if it is a source or header.
  ProjectFile& Add(const std::string& name, long tick, const std::string& text = "") {
    const std::string path = folder.Write(name, text);
    test::SetTime(path, tick);
    project.AddFile(path);
    return *project.FindFile(path);
  }
  std::string Object(long tick) {
    const std::string path = folder.Write("a.o", "");
    test::SetTime(path, tick);
    return path;
  }
  Staleness Newer(const std::string& name, const std::string& target) {
    FileTimes times;
    return IsNewer(times, project, folder.Path(name), folder.Path(target));
  }
  Staleness NeedsCompile(const ProjectFile& file, const std::string& object) {
    FileTimes times;
    return StaleCheck(project, times).NeedsCompile(file, object);
  }
  // A file newer than every object, that nobody includes: without one no include is looked at.
  void AddNewStranger() { Add("stranger.h", 9); }
  // A source that includes h0.h, which includes h1.h and so on; all of time 1 but the last.
  ProjectFile& AddChain(int headers, long lastTick) {
    for (int i = 0; i < headers; ++i) {
      const bool isLast = i == headers - 1;
      Add("h" + std::to_string(i) + ".h", isLast ? lastTick : 1,
          isLast ? "" : "#include \"h" + std::to_string(i + 1) + ".h\"\n");
    }
    return Add("a.cpp", 1, "#include \"h0.h\"\n");
  }

  test::TempFolder folder;
  Project project;
};

TEST_F(StalenessTest, IsNewer_StrictlyLaterByANanosecond_IsStale) {
  Add("a.cpp", 11);
  Object(10);
  EXPECT_TRUE(Newer("a.cpp", "a.o").stale);
  Object(11);
  EXPECT_FALSE(Newer("a.cpp", "a.o").stale);
  Object(12);
  EXPECT_FALSE(Newer("a.cpp", "a.o").stale);
}

TEST_F(StalenessTest, IsNewer_MissingTarget_IsStale) {
  Add("a.cpp", 1);
  const Staleness staleness = Newer("a.cpp", "a.o");
  EXPECT_TRUE(staleness.stale);
  EXPECT_EQ(staleness.reason, folder.Path("a.o") + " is missing");
}

TEST_F(StalenessTest, IsNewer_MissingFile_IsNeverNewer) {
  EXPECT_FALSE(Newer("gone.cpp", "gone.o").stale);
}

TEST_F(StalenessTest, IsNewer_FolderOrPipeOrBrokenLink_CountsAsMissing) {
  Object(1);
  folder.Folder("dir.cpp");
  ASSERT_EQ(mkfifo(folder.Path("pipe.cpp").c_str(), 0600), 0);
  ASSERT_EQ(symlink("nowhere", folder.Path("link.cpp").c_str()), 0);
  for (const char* name : {"dir.cpp", "pipe.cpp", "link.cpp"}) {
    EXPECT_FALSE(Newer(name, "a.o").stale) << name;
    EXPECT_TRUE(Newer("a.o", name).stale) << name;
  }
}

TEST_F(StalenessTest, IsNewer_FileWithoutTheRightToReadIt_CountsAsMissing) {
  Add("a.cpp", 5);
  Object(1);
  ASSERT_EQ(chmod(folder.Path("a.cpp").c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  const test::WithoutRights user;
  EXPECT_FALSE(Newer("a.cpp", "a.o").stale);
}

TEST_F(StalenessTest, IsNewer_NameWithNul_CountsAsMissing) {
  Object(1);
  FileTimes times;
  EXPECT_FALSE(times.Of(folder.Path("a.o") + std::string("\0x", 2)));
}

TEST_F(StalenessTest, Reason_NamesTheFileTheTargetAndHowMuch) {
  Add("a.cpp", 2'500'000'000);
  Object(1'000'000'000);
  EXPECT_EQ(Newer("a.cpp", "a.o").reason,
            "a.cpp is newer than " + folder.Path("a.o") + " by 1.5 s");
  Add("b.cpp", 1'000'000'001);
  EXPECT_TRUE(Newer("b.cpp", "a.o").reason.ends_with(" by 0.000000001 s"));
  Add("c.cpp", 21'000'000'000);
  EXPECT_TRUE(Newer("c.cpp", "a.o").reason.ends_with(" by 20 s"));
}

TEST_F(StalenessTest, Reason_OfWhatIsUpToDate_IsEmpty) {
  Add("a.cpp", 1);
  Object(1);
  EXPECT_EQ(Newer("a.cpp", "a.o").reason, "");
}

TEST_F(StalenessTest, NeedsCompile_HeaderTwoIncludesDeep_IsStale) {
  const ProjectFile& source = AddChain(2, 9);
  const Staleness staleness = NeedsCompile(source, Object(5));
  EXPECT_TRUE(staleness.stale);
  EXPECT_TRUE(staleness.reason.starts_with("h1.h is newer than ")) << staleness.reason;
}

TEST_F(StalenessTest, NeedsCompile_HeaderAtDepthTen_IsStale) {
  EXPECT_TRUE(NeedsCompile(AddChain(11, 9), Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_HeaderAtDepthEleven_IsNot) {
  EXPECT_FALSE(NeedsCompile(AddChain(12, 9), Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_SameHeaderNearAndFar_TheNearWayCounts) {
  AddChain(12, 9);
  const ProjectFile& source = Add("b.cpp", 1, "#include \"h0.h\"\n#include \"h5.h\"\n");
  EXPECT_TRUE(NeedsCompile(source, Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_HeaderOutsideTheProject_NeverMakesStale) {
  AddNewStranger();
  test::SetTime(folder.Write("outside.h", ""), 9);
  const ProjectFile& source =
      Add("a.cpp", 1, "#include \"outside.h\"\n#include <vector>\n#include \"gone.h\"\n");
  EXPECT_FALSE(NeedsCompile(source, Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_NameInAngleBrackets_CountsLikeAQuotedOne) {
  Add("a.h", 9);
  EXPECT_TRUE(NeedsCompile(Add("a.cpp", 1, "#include <a.h>\n"), Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_MissingHeaderOfTheProject_ItsIncludesStillCount) {
  Add("far.h", 9);
  Add("near.h", 1, "#include \"far.h\"\n");
  const ProjectFile& source = Add("a.cpp", 1, "#include \"near.h\"\n");
  unlink(folder.Path("near.h").c_str());
  EXPECT_TRUE(NeedsCompile(source, Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_MissingSourceWithHeader_HeaderAloneMakesStale) {
  Add("a.h", 1);
  const ProjectFile& source = Add("a.cpp", 1, "#include \"a.h\"\n");
  unlink(folder.Path("a.cpp").c_str());
  EXPECT_FALSE(NeedsCompile(source, Object(5)).stale);
  EXPECT_TRUE(NeedsCompile(source, folder.Path("gone.o")).stale);
}

TEST_F(StalenessTest, NeedsCompile_CycleOfIncludes_Ends) {
  AddNewStranger();
  Add("a.h", 1, "#include \"b.h\"\n");
  Add("b.h", 1, "#include \"a.h\"\n#include \"b.h\"\n");
  const ProjectFile& source = Add("a.cpp", 1, "#include \"a.h\"\n");
  EXPECT_FALSE(NeedsCompile(source, Object(5)).stale);
}

TEST_F(StalenessTest, NeedsCompile_SixtyHeadersIncludingEachOther_CostsTheirEntriesTimesTheDepth) {
  constexpr int cHeaders = 60;
  std::string all;
  for (int i = 0; i < cHeaders; ++i) all += "#include \"h" + std::to_string(i) + ".h\"\n";
  for (int i = 0; i < cHeaders; ++i) Add("h" + std::to_string(i) + ".h", 1, all);
  const ProjectFile& first = Add("a.cpp", 1, all);
  const ProjectFile& second = Add("b.cpp", 1, all);
  AddNewStranger();
  FileTimes times;
  StaleCheck check(project, times);
  EXPECT_FALSE(check.NeedsCompile(first, Object(5)).stale);
  const size_t visited = check.EntriesVisited();
  EXPECT_LE(visited, static_cast<size_t>(cHeaders) * cHeaders * (StaleCheck::cMaxIncludeDepth + 1));
  EXPECT_FALSE(check.NeedsCompile(second, Object(5)).stale);
  EXPECT_EQ(check.EntriesVisited(), visited + cHeaders);
  EXPECT_EQ(times.Asked(), cHeaders + 4u);
}

TEST_F(StalenessTest, FileTimes_AskEachFileOnce) {
  const std::string path = Object(1);
  FileTimes times;
  const auto time = times.Of(path);
  test::SetTime(path, 2);
  EXPECT_EQ(times.Of(path), time);
  EXPECT_EQ(times.Asked(), 1u);
  times.Forget(path);
  EXPECT_EQ(times.Of(path), *time + 1);
}

// What a file includes is read only if something may have come of it.
TEST_F(StalenessTest, NeedsCompile_NoFileNewerThanTheObject_LooksAtNoInclude) {
  const ProjectFile& source = Add("a.cpp", 1, "#include \"a.h\"\n");
  Add("a.h", 4);
  Add("other.h", 5);
  const std::string object = Object(5);
  FileTimes times;
  StaleCheck check(project, times);
  EXPECT_FALSE(check.NeedsCompile(source, object).stale);
  EXPECT_EQ(check.EntriesVisited(), 0u);
  Object(4);
  FileTimes later;
  StaleCheck oneIsNewer(project, later);
  EXPECT_FALSE(oneIsNewer.NeedsCompile(source, object).stale);
  EXPECT_GT(oneIsNewer.EntriesVisited(), 0u);
}

// The plain rule, which walks every path.
class PlainRule {
 public:
  explicit PlainRule(const Project& project) : project(project) {}

  bool NeedsCompile(const ProjectFile& file, const std::string& object) {
    if (Newer(file.name, object)) return true;
    for (const IncludeRec& entry : file.tags.includes)
      if (IncludeIsNewer(entry.name, object, 0)) return true;
    return false;
  }

 private:
  bool Newer(const std::string& path, const std::string& target) {
    const auto time = times.Of(path), targetTime = times.Of(target);
    return time && (!targetTime || *time > *targetTime);
  }
  bool IncludeIsNewer(const std::string& name, const std::string& object, int depth) {
    if (depth > 10) return false;
    const std::string full = project.ResolveInclude(name);
    if (full.empty()) return false;
    if (Newer(full, object)) return true;
    const ProjectFile* file = project.FindFile(full);
    if (!file) return false;
    for (const IncludeRec& entry : file->tags.includes)
      if (IncludeIsNewer(entry.name, object, depth + 1)) return true;
    return false;
  }

  const Project& project;
  FileTimes times;
};

// Graphs of a dozen files with cycles, missing files and names of none, in which every answer of
// the fast check is the plain rule's.
TEST_F(StalenessTest, NeedsCompile_RandomGraphs_AnswersAsThePlainRuleDoes) {
  constexpr int cGraphs = 3000, cHeaders = 14, cSources = 4;
  std::mt19937 random(4711);
  const auto below = [&random](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
  for (int i = 0; i < cHeaders; ++i) Add("h" + std::to_string(i) + ".h", 1);
  for (int i = 0; i < cSources; ++i) Add("s" + std::to_string(i) + ".cpp", 1);
  const std::string objects[] = {Object(1), folder.Path("gone.o")};
  int staleAnswers = 0;
  for (int graph = 0; graph < cGraphs; ++graph) {
    // Long chains with few side ways, so that the depth limit counts in many graphs.
    for (const auto& file : project.Files()) {
      file->tags.includes.clear();
      const int header = file->type == cHeader ? file->id - 1 : -1;
      if (below(8))
        file->tags.includes.push_back({true, false, "h" + std::to_string(header + 1) + ".h"});
      if (!below(6))
        file->tags.includes.push_back(
            {true, false, "h" + std::to_string(below(cHeaders + 2)) + ".h"});
      if (!below(20)) unlink(file->name.c_str());
    }
    // One or two files are newer, most are older.
    for (const auto& file : project.Files()) {
      if (!FileTimes().Of(file->name) && below(2))
        folder.Write(project.MakeRelative(file->name), "");
      if (FileTimes().Of(file->name)) test::SetTime(file->name, below(14) ? 1 : 9);
    }
    test::SetTime(objects[0], below(20) ? 5 : 0);
    FileTimes times;
    StaleCheck check(project, times);
    PlainRule rule(project);
    for (const auto& file : project.Files()) {
      if (file->type != cCppSource) continue;
      for (const std::string& object : objects) {
        const bool expected = rule.NeedsCompile(*file, object);
        staleAnswers += expected;
        ASSERT_EQ(check.NeedsCompile(*file, object).stale, expected) << "graph " << graph;
      }
    }
  }
  EXPECT_GT(staleAnswers, cGraphs);
  EXPECT_LT(staleAnswers, cGraphs * cSources * 2);
}

}  // namespace
}  // namespace zendry
