#include "project/ImportFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Privileges.h"
#include "TempFolder.h"
#include "project/Project.h"

// A project made of a folder with sources.

namespace zendry {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char cMain[] = "int main() { return 0; }\n";

struct ImportFolder : testing::Test {
  test::TempFolder files;

  std::vector<std::string> Taken(const Import& import) {
    std::vector<std::string> names;
    for (const ImportFile& file : import.files)
      if (file.taken) names.push_back(file.name);
    return names;
  }
  std::string WhyNot(const Import& import, const std::string& name) {
    for (const ImportFile& file : import.files)
      if (file.name == name) return file.taken ? "taken" : file.reason;
    return "not listed";
  }
  Import Settled(const std::string& main = "") {
    Import import = ListFolder(files.Path());
    EXPECT_EQ(import.error, "");
    EXPECT_EQ(SettleImport(import, main), "");
    return import;
  }
};

TEST_F(ImportFolder, SourcesAndHeaders_AreListed_HiddenAndBuildFoldersAreNot) {
  for (const char* name : {"a.cpp", "b.c", "sub/c.h", "notes.txt", "Makefile", ".git/d.cpp",
                           "build/e.cpp", "cmake-build-debug/f.cpp", "out-rel/g.cpp",
                           "other/CMakeCache.txt", "other/h.cpp", "builder/i.cpp"})
    files.Write(name, "");
  EXPECT_THAT(Taken(ListFolder(files.Path())),
              ElementsAre("a.cpp", "b.c", "builder/i.cpp", "sub/c.h"));
}

TEST_F(ImportFolder, FoldersNamedAsTests_AreLeftOut_OthersWithTheseLettersAreNot) {
  for (const char* folder :
       {"api_test", "test_api", "unit-tests", "contest", "testament", "attest"})
    files.Write(std::string(folder) + "/main.c", "int main(void) { return 0; }\n");
  const Import import = ListFolder(files.Path());
  for (const char* name : {"api_test/main.c", "test_api/main.c", "unit-tests/main.c"})
    EXPECT_EQ(WhyNot(import, name), "tests and examples") << name;
  for (const char* name : {"contest/main.c", "testament/main.c", "attest/main.c"})
    EXPECT_NE(WhyNot(import, name), "tests and examples") << name;
}

TEST_F(ImportFolder, TestsExamplesAndOtherSystems_AreLeftOut_UnlessNothingElseIsThere) {
  files.Write("tests/a.cpp", "");
  files.Write("win32/b.cpp", "");
  EXPECT_THAT(Taken(ListFolder(files.Path())), ElementsAre("tests/a.cpp", "win32/b.cpp"));
  files.Write("src/c.cpp", "");
  const Import import = ListFolder(files.Path());
  EXPECT_THAT(Taken(import), ElementsAre("src/c.cpp"));
  EXPECT_EQ(WhyNot(import, "tests/a.cpp"), "tests and examples");
  EXPECT_EQ(WhyNot(import, "win32/b.cpp"), "another system");
}

TEST_F(ImportFolder, FilesNamedAsTests_AreLeftOut_UnlessNothingElseIsThere) {
  for (const char* name : {"test_a.cpp", "a_test.cpp", "a_unittest.cpp"}) files.Write(name, "");
  EXPECT_EQ(Taken(ListFolder(files.Path())).size(), 3u);
  for (const char* name : {"attest.cpp", "testing.cpp"}) files.Write(name, "");
  EXPECT_THAT(Taken(ListFolder(files.Path())), ElementsAre("attest.cpp", "testing.cpp"));
}

TEST_F(ImportFolder, LinksToFolders_AreNotFollowed) {
  files.Write("a.cpp", "");
  std::filesystem::create_directory_symlink(files.Path(), files.Path("round"));
  std::filesystem::create_symlink("nowhere.cpp", files.Path("b.cpp"));
  EXPECT_THAT(Taken(ListFolder(files.Path())), ElementsAre("a.cpp"));
}

TEST_F(ImportFolder, NoFolder_NoFiles_AreErrors) {
  EXPECT_THAT(ListFolder(files.Path("gone")).error, HasSubstr("is not there"));
  EXPECT_THAT(ListFolder(files.Write("a.txt", "")).error, HasSubstr("is no folder"));
  EXPECT_THAT(ListFolder(files.Path()).error, HasSubstr("no C or C++ files"));
}

TEST_F(ImportFolder, TheHighestMain_IsTaken_TheOthersAreNamed) {
  files.Write("tools/aaa.cpp", cMain);
  files.Write("zzz.cpp", cMain);
  files.Write("lib.cpp", "int f();\n");
  const Import import = Settled();
  EXPECT_EQ(import.mainFile, "zzz.cpp");
  EXPECT_THAT(Taken(import), ElementsAre("lib.cpp", "zzz.cpp"));
  EXPECT_EQ(WhyNot(import, "tools/aaa.cpp"), cOtherMain);
  EXPECT_THAT(ImportReport(import), Contains("left out (has a main too): tools/aaa.cpp"));
}

TEST_F(ImportFolder, OfEquallyHighMains_TheOneCalledMainGoesFirst) {
  files.Write("a.cpp", cMain);
  files.Write("main.cpp", cMain);
  EXPECT_EQ(Settled().mainFile, "main.cpp");
}

TEST_F(ImportFolder, TheMainAskedFor_IsTaken_AlsoOutOfAFolderLeftOut) {
  files.Write("a.cpp", cMain);
  files.Write("lib.cpp", "");
  const std::string test = files.Write("tests/t.cpp", cMain);
  for (const std::string& wanted : {std::string("tests/t.cpp"), test}) {
    const Import import = Settled(wanted);
    EXPECT_EQ(import.mainFile, "tests/t.cpp");
    EXPECT_THAT(Taken(import), ElementsAre("lib.cpp", "tests/t.cpp"));
  }
  Import import = ListFolder(files.Path());
  EXPECT_THAT(SettleImport(import, "lib.cpp"), HasSubstr("has no main"));
  EXPECT_THAT(SettleImport(import, "no.cpp"), HasSubstr("not among the files"));
}

TEST_F(ImportFolder, ASecondChoiceOfMain_BringsTheFirstBack) {
  files.Write("a.cpp", cMain);
  files.Write("b.cpp", cMain);
  Import import = Settled();
  EXPECT_EQ(SettleImport(import, "b.cpp"), "");
  EXPECT_THAT(Taken(import), ElementsAre("b.cpp"));
  EXPECT_EQ(SettleImport(import, "a.cpp"), "");
  EXPECT_THAT(Taken(import), ElementsAre("a.cpp"));
}

TEST_F(ImportFolder, AFileThatTheUserUnticked_StaysOut) {
  files.Write("a.cpp", cMain);
  files.Write("b.cpp", "");
  Import import = Settled();
  FindImportFile(import, "b.cpp")->taken = false;
  EXPECT_EQ(SettleImport(import, ""), "");
  EXPECT_THAT(Taken(import), ElementsAre("a.cpp"));
}

TEST_F(ImportFolder, ASourceThatAnotherIncludes_IsLeftOut) {
  files.Write("all.c", "#include \"part.c\"\n#include \"all.c\"\n");
  files.Write("part.c", "");
  files.Write("partly.c", "");
  const Import import = Settled();
  EXPECT_THAT(Taken(import), ElementsAre("all.c", "partly.c"));
  EXPECT_EQ(WhyNot(import, "part.c"), cIncludedSource);
}

TEST_F(ImportFolder, AnIncludedSourceWithAHeaderOfItsOwn_StaysUnlessSeveralAreIncluded) {
  files.Write("fast.c", "#define PART\n#include \"base.c\"\n");
  files.Write("base.c", "");
  files.Write("base.h", "");
  files.Write("off.c", "#if 0\n#include \"fast.c\"\n#endif\n");
  EXPECT_THAT(Taken(Settled()), ElementsAre("base.c", "base.h", "fast.c", "off.c"));
  files.Write("all.c", "#include \"base.c\"\n#include \"fast.c\"\n");
  EXPECT_THAT(Taken(Settled()), ElementsAre("all.c", "base.h", "off.c"));
}

TEST_F(ImportFolder, FoldersOfIncludedHeaders_BecomeSearchFolders) {
  files.Write("include/lib/a.h", "#include \"lib/b.h\"\n");
  files.Write("include/lib/b.h", "");
  files.Write("src/near.h", "");
  files.Write("src/a.cpp", "#include <lib/a.h>\n#include \"near.h\"\n#include <stdio.h>\n");
  files.Write("test/stdio.h", "");
  const Import import = Settled();
  EXPECT_THAT(import.includeFolders, ElementsAre("include"));
  EXPECT_THAT(import.findings, IsEmpty());
}

TEST_F(ImportFolder, OfTwoHeadersOfOneName_TheNearerIsTaken) {
  files.Write("one/inc/x.h", "");
  files.Write("two/inc/x.h", "");
  files.Write("two/src/a.cpp", "#include \"x.h\"\n");
  EXPECT_THAT(Settled().includeFolders, ElementsAre("two/inc"));
}

TEST_F(ImportFolder, AMissingHeader_IsNamed_OnceAndOnlyIfItIsAskedFor) {
  files.Write("a.cpp",
              "#include \"gone.h\"\n#include \"gone.h\"\n#ifdef X\n#include <win.h>\n#endif\n");
  EXPECT_THAT(Settled().findings, ElementsAre("gone.h, which a.cpp includes, is not there"));
}

TEST_F(ImportFolder, AConfigurationHeader_IsSwitchedOn) {
  files.Write("a.c", "#ifdef HAVE_CONFIG_H\n#include <config.h>\n#endif\n");
  EXPECT_THAT(Settled().switches, IsEmpty());
  files.Write("config.h", "");
  EXPECT_THAT(Settled().switches, ElementsAre("-DHAVE_CONFIG_H"));
}

TEST_F(ImportFolder, Written_ReadsBackAsTheProject) {
  files.Write("src/a.cpp", "#include \"a.h\"\nint main() {}\n");
  files.Write("inc/a.h", "");
  Import import = Settled();
  const std::string path = files.Path("p.zpj");
  ASSERT_EQ(WriteImport(import, path, Replacing::cRefused).error, "");
  Project project;
  project.storesTags = false;
  ASSERT_EQ(project.Load(path).Words(), "");
  EXPECT_EQ(project.type, cConsole);
  EXPECT_EQ(project.includePath, "-I@/mylib -Iinc");
  ASSERT_EQ(project.Files().size(), 2u);
  EXPECT_EQ(project.Files()[0]->name, files.Path("src/a.cpp"));
  EXPECT_TRUE(project.parse);
  const std::string before = files.Read("p.zpj");
  EXPECT_THAT(WriteImport(import, path, Replacing::cRefused).error, HasSubstr("is there already"));
  EXPECT_EQ(files.Read("p.zpj"), before);
}

TEST_F(ImportFolder, WithoutMain_IsALibrary) {
  files.Write("a.cpp", "");
  Import import = Settled();
  ASSERT_EQ(WriteImport(import, files.Path("p.zpj"), Replacing::cRefused).error, "");
  Project project;
  EXPECT_EQ(project.Load(files.Path("p.zpj")).Words(), "");
  EXPECT_EQ(project.type, cStaticLib);
}

TEST_F(ImportFolder, WhatTheFormatCannotHold_IsLeftOutAndSaid) {
  files.Write("a.cpp", "");
  files.Write("b\"c.cpp", "");
  Import import = Settled();
  for (int i = 0; i < 60; ++i)
    import.includeFolders.push_back("folder-with-a-long-name-" + std::to_string(i));
  ASSERT_EQ(WriteImport(import, files.Path("p.zpj"), Replacing::cRefused).error, "");
  Project project;
  EXPECT_EQ(project.Load(files.Path("p.zpj")).Words(), "");
  EXPECT_THAT(import.notes, Contains(HasSubstr("can't hold the name b\"c.cpp")));
  EXPECT_THAT(import.notes, Contains(HasSubstr("can't hold -Ifolder-with-a-long-name-59")));
  EXPECT_THAT(project.releaseOptions.comp, HasSubstr("-O2 -Ifolder-with-a-long-name-"));
}

TEST_F(ImportFolder, AFileWithoutReadingRight_IsLeftOut) {
  files.Write("a.cpp", "");
  std::filesystem::permissions(files.Write("b.cpp", ""), std::filesystem::perms::none);
  std::filesystem::permissions(files.Path(), std::filesystem::perms::all);
  const test::WithoutRights user;
  EXPECT_EQ(WhyNot(Settled(), "b.cpp"), "can't be read");
}

}  // namespace
}  // namespace zendry
