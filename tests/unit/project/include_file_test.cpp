#include "project/IncludeFile.h"

#include <gtest/gtest.h>

#include <string>

#include "TempFolder.h"
#include "project/Project.h"

namespace zendry {
namespace {

TEST(FindIncludedFile, BesideTheFileThenByTheSwitchesThenInTheSystem) {
  test::TempFolder files;
  files.Write("src/near.h", "");
  files.Write("inc/far.h", "");
  files.Write("inc/near.h", "");
  Project project;
  project.folder = files.Path();
  project.includePath = "-Iinc";
  const std::string from = files.Path("src/a.cpp");
  EXPECT_EQ(FindIncludedFile(project, from, "near.h", true), files.Path("src/near.h"));
  EXPECT_EQ(FindIncludedFile(project, from, "near.h", false), files.Path("inc/near.h"));
  EXPECT_EQ(FindIncludedFile(project, from, "far.h", true), files.Path("inc/far.h"));
  EXPECT_EQ(FindIncludedFile(project, from, "../inc/far.h", true), files.Path("inc/far.h"));
  EXPECT_EQ(FindIncludedFile(project, from, files.Path("inc/far.h"), true),
            files.Path("inc/far.h"));
  EXPECT_EQ(FindIncludedFile(project, from, "stdio.h", false), "/usr/include/stdio.h");
  EXPECT_TRUE(FindIncludedFile(project, from, "vector", false).ends_with("/vector"));
  EXPECT_EQ(FindIncludedFile(project, from, "nowhere.h", false), "");
  EXPECT_EQ(FindIncludedFile(project, from, "/nowhere.h", true), "");
}

}  // namespace
}  // namespace zendry
