#include "project/Counterpart.h"

#include <gtest/gtest.h>

#include "TempFolder.h"
#include "base/FileKinds.h"
#include "project/Project.h"

namespace zendry {
namespace {

class Counterpart : public testing::Test {
 protected:
  std::string Of(const std::string& name) { return FindCounterpart(files.Path(name), project); }

  test::TempFolder files;
  Project project;
};

TEST_F(Counterpart, Source_TakesTheHeaderBesideIt_HBeforeHpp) {
  files.Write("a.cpp", "");
  files.Write("a.hpp", "");
  EXPECT_EQ(Of("a.cpp"), files.Path("a.hpp"));
  files.Write("a.h", "");
  EXPECT_EQ(Of("a.cpp"), files.Path("a.h"));
}

TEST_F(Counterpart, Header_TakesTheSource_CppBeforeC) {
  files.Write("a.h", "");
  files.Write("a.c", "");
  EXPECT_EQ(Of("a.h"), files.Path("a.c"));
  files.Write("a.cpp", "");
  EXPECT_EQ(Of("a.h"), files.Path("a.cpp"));
}

TEST_F(Counterpart, SourcesOfEachLanguage_HaveHeaders) {
  files.Write("a.h", "");
  for (const char* name : {"a.cpp", "a.cp", "a.c"}) EXPECT_EQ(Of(name), files.Path("a.h")) << name;
}

TEST_F(Counterpart, AddedExtensions_ComeAfterTheUsualOnes) {
  files.Write("a.cc", "");
  files.Write("a.hh", "");
  EXPECT_EQ(Of("a.cc"), "");
  AddFileKind("cc", cCppSource);
  AddFileKind("hh", cHeader);
  EXPECT_EQ(Of("a.cc"), files.Path("a.hh"));
  EXPECT_EQ(Of("a.hh"), files.Path("a.cc"));
  files.Write("a.cpp", "");
  files.Write("a.h", "");
  EXPECT_EQ(Of("a.cc"), files.Path("a.h"));
  EXPECT_EQ(Of("a.hh"), files.Path("a.cpp"));
  ForgetAddedFileKinds();
}

TEST_F(Counterpart, NotBesideIt_IsFoundInAFolderOfTheProject) {
  files.Write("src/a.cpp", "");
  files.Write("include/a.h", "");
  EXPECT_EQ(Of("src/a.cpp"), "");
  project.parse = false;
  project.Init(files.Path("p.zpj"), cConsole);
  project.AddFile("include/b.h");
  EXPECT_EQ(Of("src/a.cpp"), files.Path("include/a.h"));
}

TEST_F(Counterpart, NoSuchFile_OtherKinds_OddNames_GiveNone) {
  files.Write("a.txt", "");
  files.Write("a.rc", "");
  files.Write("Makefile", "");
  for (const char* name : {"a.txt", "a.rc", "Makefile", "missing.cpp", ".h", "", "."})
    EXPECT_EQ(Of(name), "") << name;
  EXPECT_EQ(FindCounterpart("", project), "");
}

}  // namespace
}  // namespace zendry
