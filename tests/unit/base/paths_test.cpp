#include "base/Paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace zendry {
namespace {

std::string Normalized(std::string path) {
  NormalizePath(path);
  return path;
}

TEST(Paths, NormalizePath_Backslashes_BecomeSlashes) {
  EXPECT_EQ(Normalized("C:\\p\\..\\q\\m.CPP"), "C:/q/m.CPP");
}

TEST(Paths, NormalizePath_UpSegment_TakesTheComponentBeforeIt) {
  EXPECT_EQ(Normalized("/a/b/../c"), "/a/c");
  EXPECT_EQ(Normalized("x/a/b/../c"), "x/a/c");
  EXPECT_EQ(Normalized("/a/b/c/../../d"), "/a/d");
  EXPECT_EQ(Normalized("/a/../b/../c"), "/c");
}

TEST(Paths, NormalizePath_WithoutInnerUpSegment_IsUnchanged) {
  for (const char* path :
       {"", "a", "../a", "/../a", "/a/b/..", "/a/...", "/a/..b/c", "/a/./b", ".."})
    EXPECT_EQ(Normalized(path), path);
}

TEST(Paths, NormalizePath_AboveTheRoot_EndsAtTheRoot) {
  EXPECT_EQ(Normalized("/a/../../b"), "/../b");
  EXPECT_EQ(Normalized("/../../b"), "/b");
}

TEST(Paths, NormalizePath_VeryManySegments_EndsQuickly) {
  std::string path;
  for (int i = 0; i < 10000; ++i) path += "/a/..";
  EXPECT_EQ(Normalized(path + "/x"), "/x");
}

TEST(PathsDeathTest, NormalizePath_NoSlashBefore_BreaksPrecondition) {
  EXPECT_DEATH(Normalized("a/../b"), "ix>-1");
  EXPECT_DEATH(Normalized("../../b"), "ix>-1");
  EXPECT_DEATH(Normalized("C:/../b"), "ix>-1");
  EXPECT_DEATH(Normalized("x/a/../../../b"), "ix>-1");
}

TEST(Paths, CanNormalize_TellsWhatWouldBreak) {
  for (const char* path : {"a/../b", "../../b", "C:/../b", "C:\\..\\b", "x/a/../../../b"})
    EXPECT_FALSE(CanNormalize(path)) << path;
  for (const char* path : {"", "a", "../b", "/../b", "/../../b", "/a/../../../../b", "x/a/../b"})
    EXPECT_TRUE(CanNormalize(path)) << path;
}

TEST(Paths, TidyPath_WhatCantBeNormalised_KeepsItsUpSegments) {
  EXPECT_EQ(TidyPath("a\\..\\b"), "a/../b");
  EXPECT_EQ(TidyPath("/a\\..\\b"), "/b");
}

TEST(Paths, FileKind_Table) {
  EXPECT_EQ(FileKind("a.cpp"), 1);
  EXPECT_EQ(FileKind("a.CP"), 1);
  EXPECT_EQ(FileKind("/x.y/a.c"), 2);
  EXPECT_EQ(FileKind("a.H"), 3);
  EXPECT_EQ(FileKind("a.b.rc"), 4);
  EXPECT_EQ(FileKind("a.Zpj"), 5);
  EXPECT_EQ(FileKind(".c"), 2);
}

TEST(Paths, FileKind_AnythingElse_IsZero) {
  for (const char* path :
       {"", "c", "cpp", "a.", "a.hpp", "a.cc", "a.cxx", "a.txt", "a.c ", "a.c/b"})
    EXPECT_EQ(FileKind(path), 0) << path;
}

TEST(Paths, IsAbsolutePath_SlashOrDrive) {
  EXPECT_TRUE(IsAbsolutePath("/a"));
  EXPECT_TRUE(IsAbsolutePath("C:/a"));
  EXPECT_TRUE(IsAbsolutePath("a:"));
  EXPECT_FALSE(IsAbsolutePath(""));
  EXPECT_FALSE(IsAbsolutePath("a"));
  EXPECT_FALSE(IsAbsolutePath("ab:c"));
}

TEST(Paths, AbsolutePath_Relative_IsTakenFromTheCurrentFolder) {
  const std::string here = std::filesystem::current_path().string();
  EXPECT_EQ(AbsolutePath("a.c"), here + "/a.c");
  EXPECT_EQ(AbsolutePath("././a.c"), here + "/a.c");
  EXPECT_EQ(AbsolutePath("../a.c"), here + "/../a.c");
  EXPECT_EQ(AbsolutePath("/a.c"), "/a.c");
}

TEST(Paths, ChangeExtension_ReplacesWhatFollowsTheLastDot) {
  EXPECT_EQ(ChangeExtension("a.b.cpp", "o"), "a.b.o");
  EXPECT_EQ(ChangeExtension("a.", "o"), "a.o");
  EXPECT_EQ(ChangeExtension("/d.x/a", "o"), "/d.o");
}

TEST(Paths, ChangeExtension_NoDotAboveTheFirstPosition_IsUnchanged) {
  EXPECT_EQ(ChangeExtension("a", "o"), "a");
  EXPECT_EQ(ChangeExtension(".a", "o"), ".a");
  EXPECT_EQ(ChangeExtension("", "o"), "");
}

TEST(Paths, BaseName_Rules) {
  EXPECT_EQ(BaseName(""), "Noname");
  EXPECT_EQ(BaseName("/a/b.c"), "b.c");
  EXPECT_EQ(BaseName("a/b.c"), "b.c");
  EXPECT_EQ(BaseName("b.c"), "b.c");
  EXPECT_EQ(BaseName("/b.c"), "/b.c");
  EXPECT_EQ(BaseName("a/"), "");
}

TEST(Paths, MakeRelative_BelowTheFolder_IsTheRest) {
  EXPECT_EQ(MakeRelativePath("/p/src/a.c", "/p"), "src/a.c");
  EXPECT_EQ(MakeRelativePath("/p/q/a.c", "/p/q"), "a.c");
}

TEST(Paths, MakeRelative_BesideTheFolder_GoesUp) {
  EXPECT_EQ(MakeRelativePath("C:/a/c/x.cpp", "C:/a/b"), "../c/x.cpp");
  EXPECT_EQ(MakeRelativePath("/a/x.c", "/a/b/c/d"), "../../../x.c");
  EXPECT_EQ(MakeRelativePath("/a/b", "/a/bc"), "../b");
}

TEST(Paths, MakeRelative_StaysAbsoluteOnAnotherDrive) {
  EXPECT_EQ(MakeRelativePath("D:/a/x.c", "C:/a"), "D:/a/x.c");
  EXPECT_EQ(MakeRelativePath("/b/x.c", "/a"), "/b/x.c");
  EXPECT_EQ(MakeRelativePath("/a/x.c", ""), "/a/x.c");
}

TEST(Paths, MakeRelative_IgnoresCase) {
  EXPECT_EQ(MakeRelativePath("c:/Proj/Src/a.c", "C:/proj"), "Src/a.c");
}

TEST(Paths, MakeRelative_FolderWhoseNameBeginsAlike_IsAnother) {
  EXPECT_EQ(MakeRelativePath("/a/bc/x.c", "/a/b"), "../bc/x.c");
  EXPECT_EQ(MakeRelativePath("/a/b/x.c", "/a/bc"), "../b/x.c");
}

}  // namespace
}  // namespace zendry
