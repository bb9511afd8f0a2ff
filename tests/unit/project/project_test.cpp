#include "project/Project.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <filesystem>

#include <string>

#include "ProjectShell.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"

namespace zendry {
namespace {

class ProjectTest : public testing::Test {
 protected:
  ProjectTest() {
    project.SetShell(&shell);
    project.SetInstallFolder("/opt/z/bin/");
    project.Init("/w/demo/app.zpj", cConsole);
    shell.Take();
  }

  test::ProjectShell shell;
  Project project;
};

TEST(Project, New_HasDefaults) {
  const Project project;
  EXPECT_FALSE(project.isOpen);
  EXPECT_FALSE(project.modified);
  EXPECT_FALSE(project.implicit);
  EXPECT_TRUE(project.parse);
  EXPECT_EQ(project.mode, 0);
  EXPECT_EQ(project.type, 0);
  EXPECT_EQ(project.lastFileId, 0);
  EXPECT_EQ(project.includePath, "-I@/mylib");
  EXPECT_EQ(project.linkerPath, "-L@/mylib");
  EXPECT_EQ(project.current, nullptr);
  EXPECT_TRUE(project.Files().empty());
}

TEST_F(ProjectTest, Init_SetsNamesAndFolders) {
  EXPECT_TRUE(project.isOpen);
  EXPECT_EQ(project.name, "app.zpj");
  EXPECT_EQ(project.folder, "/w/demo");
  EXPECT_EQ(project.target, "app.exe");
  EXPECT_EQ(project.outputFolder, "/w/demo/out-rel");
  EXPECT_EQ(project.stlRefFile, "/opt/z/bin/Defs/stlref.tgd");
  EXPECT_EQ(project.mavroRefFile, "/opt/z/bin/Defs/mavroref.tgd");
  EXPECT_EQ(project.current, &project.releaseOptions);
}

TEST_F(ProjectTest, SetFileName_WithoutFolder_HasNone) {
  project.SetFileName("x");
  EXPECT_EQ(project.name, "x");
  EXPECT_EQ(project.folder, "");
  EXPECT_EQ(project.target, "x");
  EXPECT_EQ(project.outputFolder, "/out-rel");
}

TEST_F(ProjectTest, Target_EndsInAOnlyForAStaticLibrary) {
  for (int type = cConsole; type <= cOther; ++type) {
    project.Init("/w/l.zpj", type);
    EXPECT_EQ(project.target, type == cStaticLib ? "l.a" : "l.exe") << type;
  }
}

TEST_F(ProjectTest, SetDefaultOptions_ByType) {
  for (int type = cConsole; type <= cOther; ++type) {
    project.debugOptions = project.releaseOptions = {2, "x", "y"};
    project.SetDefaultOptions(type);
    EXPECT_EQ(project.debugOptions.gcc, 0);
    EXPECT_EQ(project.debugOptions.comp, "-g");
    EXPECT_EQ(project.debugOptions.link, "-g");
    EXPECT_EQ(project.releaseOptions.comp, type == cFormApplication ? "-O2 -s" : "-O2");
    EXPECT_EQ(project.releaseOptions.link, "-s");
  }
}

TEST_F(ProjectTest, SetMode_SelectsOptionsFolderAndSelector) {
  project.SetMode(cDebug);
  EXPECT_EQ(project.current, &project.debugOptions);
  EXPECT_EQ(project.outputFolder, "/w/demo/out-dbg");
  EXPECT_EQ(shell.Take(), "mode 1\n");
  project.SetMode(cRelease);
  EXPECT_EQ(project.current, &project.releaseOptions);
}

TEST_F(ProjectTest, SetCaption_BeginsWithTheStem) {
  project.SetCaption("Zendry");
  EXPECT_EQ(shell.Take(), "caption app - Zendry\n");
}

TEST_F(ProjectTest, GetFullPath_Rules) {
  EXPECT_EQ(project.GetFullPath("src/a.c"), "/w/demo/src/a.c");
  EXPECT_EQ(project.GetFullPath("/a.c"), "/a.c");
  EXPECT_EQ(project.GetFullPath("C:/a.c"), "C:/a.c");
  EXPECT_EQ(project.GetFullPath("app.zpj", "zend"), "/w/demo/app.zend");
  EXPECT_EQ(project.GetFullPath("Makefile", "o"), "/w/demo/Makefile");
}

TEST_F(ProjectTest, RelativeIfSame_OnlyWhatLeadsBack) {
  EXPECT_EQ(project.RelativeIfSame("/w/demo/src/a.c"), "src/a.c");
  EXPECT_EQ(project.RelativeIfSame("/w/lib/a.c"), "../lib/a.c");
  EXPECT_EQ(project.RelativeIfSame("/w/Demo/a.c"), "/w/Demo/a.c");
  EXPECT_EQ(project.RelativeIfSame("/w/demo/a:b.c"), "/w/demo/a:b.c");
  EXPECT_EQ(project.RelativeIfSame("/w/demo/"), "/w/demo/");
}

TEST_F(ProjectTest, SessionPath_NeedsAnExtensionToReplace) {
  EXPECT_EQ(project.SessionPath(), "/w/demo/app.zend");
  project.SetFileName("/w.x/app");
  EXPECT_EQ(project.SessionPath(), "");
  project.SetFileName("/w/app.zend");
  EXPECT_EQ(project.SessionPath(), "");
}

// Group: files.

TEST_F(ProjectTest, AddFile_ReportsToTreeAndStatus) {
  project.AddFile("src/a.cpp");
  project.AddFile("../lib/b.h");
  EXPECT_EQ(shell.Take(),
            "status parse /w/demo/src/a.cpp\nstatus  \nadd src/a.cpp 1 1\n"
            "status parse /w/lib/b.h\nstatus  \nadd ../lib/b.h 2 3\n");
  EXPECT_EQ(project.Files()[1]->name, "/w/lib/b.h");
  EXPECT_FALSE(project.modified);
}

TEST_F(ProjectTest, AddFile_WithoutParsing_ReadsNothing) {
  project.parse = false;
  project.AddFile("a.c");
  EXPECT_EQ(shell.Take(), "status  \nadd a.c 1 2\n");
}

TEST_F(ProjectTest, AddFile_OfUnknownKind_IsKeptAndNotShown) {
  project.parse = false;
  project.AddFile("readme.txt");
  project.AddFile("other.zpj");
  EXPECT_EQ(shell.Take(), "status  \nstatus  \n");
  EXPECT_EQ(project.Files().size(), 2u);
}

TEST_F(ProjectTest, AddFile_ResourceScript_GoesItsOwnWay) {
  test::ScriptedDialogs dialogs;
  project.AddFile("res/app.rc");
  project.AddFile("other.rc");
  EXPECT_EQ(shell.Take(), "add res/app.rc 4096 4\n");
  EXPECT_EQ(project.resourceFile, "res/app.rc");
  EXPECT_TRUE(project.Files().empty());
  EXPECT_EQ(dialogs.texts,
            std::vector<std::string>{"Information: Only single resource file allowed!"});
}

TEST_F(ProjectTest, AddFile_WithoutAName_IsNothing) {
  project.AddFile("");
  EXPECT_TRUE(project.Files().empty());
}

TEST_F(ProjectTest, AddFile_PathThatCantBeNormalised_IsKeptAsItIs) {
  project.AddFile("C:\\..\\a.c");
  project.AddFile("../../../../../b.c");
  EXPECT_EQ(project.Files()[0]->name, "C:/../a.c");
  EXPECT_EQ(project.Files()[1]->name, "/../b.c");
  project.SetFileName("sub/p.zpj");
  project.AddFile("../c.c");
  EXPECT_EQ(project.Files()[2]->name, "sub/../c.c");
  EXPECT_EQ(project.ResolveInclude("../c.c"), "sub/../c.c");
}

TEST_F(ProjectTest, AddFile_TheResourceNodesId_IsGivenToNoFile) {
  project.parse = false;
  project.lastFileId = cResourceFileId - 2;
  for (const char* name : {"a.c", "b.c"}) project.AddFile(name);
  EXPECT_EQ(project.Files()[0]->id, cResourceFileId - 1);
  EXPECT_EQ(project.Files()[1]->id, cResourceFileId + 1);
}

TEST_F(ProjectTest, AddFile_ReadsTheIncludesOfSourcesAndHeaders) {
  const test::TempFolder folder;
  for (const char* name : {"a.cpp", "b.c", "c.h", "d.hpp", "e.txt"})
    project.AddFile(folder.Write(name, "#include \"x.h\"\n#include <y>\n"));
  for (const auto& file : project.Files()) {
    if (file->name.ends_with(".txt")) {
      EXPECT_TRUE(file->tags.includes.empty());
      continue;
    }
    ASSERT_EQ(file->tags.includes.size(), 2u) << file->name;
    EXPECT_EQ(file->tags.includes[0].name, "x.h");
    EXPECT_TRUE(file->tags.includes[0].quoted);
    EXPECT_FALSE(file->tags.includes[1].quoted);
  }
}

TEST_F(ProjectTest, AddFile_FolderOrPipeOrMissing_HasNoIncludes) {
  const test::TempFolder folder;
  folder.Folder("dir.c");
  ASSERT_EQ(mkfifo(folder.Path("pipe.c").c_str(), 0600), 0);
  for (const char* name : {"dir.c", "pipe.c", "gone.c"}) project.AddFile(folder.Path(name));
  for (const auto& file : project.Files()) EXPECT_TRUE(file->tags.includes.empty());
}

TEST_F(ProjectTest, RemoveFile_TakesFileAndNode) {
  for (const char* name : {"a.c", "b.c", "c.c"}) project.AddFile(name);
  shell.Take();
  EXPECT_TRUE(project.RemoveFile(2));
  EXPECT_EQ(shell.Take(), "remove 2\n");
  EXPECT_EQ(project.IndexOfFile(3), 1);
  EXPECT_EQ(project.IndexOfFile(2), -1);
  EXPECT_FALSE(project.RemoveFile(2));
  EXPECT_FALSE(project.RemoveFile(0));
  EXPECT_EQ(shell.Take(), "");
}

TEST_F(ProjectTest, RemoveFile_ResourceFile) {
  EXPECT_FALSE(project.RemoveFile(cResourceFileId));
  project.AddFile("a.rc");
  EXPECT_TRUE(project.RemoveFile(cResourceFileId));
  EXPECT_EQ(project.resourceFile, "");
}

TEST_F(ProjectTest, FindFile_ComparesExactly) {
  project.AddFile("src/a.c");
  EXPECT_EQ(project.FindFile("/w/demo/src/a.c"), project.Files()[0].get());
  EXPECT_EQ(project.FindFile("/w/demo/src/A.c"), nullptr);
  EXPECT_EQ(project.FindFile("src/a.c"), nullptr);
  EXPECT_EQ(project.FindFile(""), nullptr);
}

TEST_F(ProjectTest, ResolveInclude_FullNameBeforeBaseName) {
  for (const char* name : {"x/a.h", "a.h", "y/b.h", "z/b.h"}) project.AddFile(name);
  EXPECT_EQ(project.ResolveInclude("a.h"), "/w/demo/a.h");
  EXPECT_EQ(project.ResolveInclude("q/../x/a.h"), "/w/demo/x/a.h");
  EXPECT_EQ(project.ResolveInclude("b.h"), "/w/demo/y/b.h");
  EXPECT_EQ(project.ResolveInclude("q/b.h"), "");
  EXPECT_EQ(project.ResolveInclude("none.h"), "");
  EXPECT_EQ(project.ResolveInclude(""), "");
}

TEST(ProjectFindFile, OtherNamesOfAFile_LeadToIt) {
  namespace fs = std::filesystem;
  const test::TempFolder folder;
  folder.Write("p/a.h", "same");
  folder.Write("p/b.h", "same");
  folder.Write("other/a.h", "same");
  fs::create_directory_symlink("p", folder.Path("linked"));
  fs::create_symlink("a.h", folder.Path("p/link.h"));
  fs::create_hard_link(folder.Path("p/a.h"), folder.Path("second.h"));
  Project project;
  project.Init(folder.Path("p/p.zpj"), cConsole);
  for (const char* name : {"a.h", "b.h", "gone.h"}) project.AddFile(name);
  for (const char* name : {"p/a.h", "p/./a.h", "linked/a.h", "p/link.h", "second.h", "p//a.h"})
    EXPECT_EQ(project.FindFile(folder.Path(name)), project.Files()[0].get()) << name;
  for (const char* name : {"other/a.h", "none.h", "p", "linked/gone.h"})
    EXPECT_EQ(project.FindFile(folder.Path(name)), nullptr) << name;
  EXPECT_EQ(project.FindFile(folder.Path("p/gone.h")), project.Files()[2].get());
  // A link that leads elsewhere now.
  fs::remove(folder.Path("p/link.h"));
  fs::create_symlink("b.h", folder.Path("p/link.h"));
  EXPECT_EQ(project.FindFile(folder.Path("p/link.h")), project.Files()[1].get());
  fs::rename(folder.Path("other/a.h"), folder.Path("p/b.h"));
  EXPECT_EQ(project.FindFile(folder.Path("linked/b.h")), project.Files()[1].get()) << "saved anew";
  project.RemoveFile(project.Files()[0]->id);
  EXPECT_EQ(project.FindFile(folder.Path("linked/a.h")), nullptr);
  EXPECT_EQ(project.FindFile(folder.Path("linked/b.h")), project.Files()[0].get());
  project.AddFile("a.h");
  EXPECT_EQ(project.FindFile(folder.Path("linked/a.h")), project.Files()[2].get());
}

TEST_F(ProjectTest, Lookups_AfterRemovingTheFirstOfTwo_FindTheSecond) {
  for (const char* name : {"x/a.h", "y/a.h", "x/a.h"}) project.AddFile(name);
  EXPECT_EQ(project.FindFile("/w/demo/x/a.h")->id, 1);
  project.RemoveFile(1);
  EXPECT_EQ(project.FindFile("/w/demo/x/a.h")->id, 3);
  EXPECT_EQ(project.ResolveInclude("a.h"), "/w/demo/y/a.h");
  project.RemoveFile(3);
  EXPECT_EQ(project.FindFile("/w/demo/x/a.h"), nullptr);
  project.AddFile("z/b.h");
  EXPECT_EQ(project.ResolveInclude("b.h"), "/w/demo/z/b.h");
  project.Clear();
  EXPECT_EQ(project.ResolveInclude("b.h"), "");
}

// Group: clearing and single files.

TEST_F(ProjectTest, Clear_KeepsWhatTheNextProjectRenews) {
  project.AddFile("a.c");
  project.AddFile("a.rc");
  project.modified = project.implicit = true;
  project.parse = false;
  project.libSet = project.outName = project.programParams = project.linkLibs = "x";
  project.includePath = project.linkerPath = "y";
  project.debugOptions.comp = "z";
  project.type = cStaticLib;
  shell.Take();
  project.Clear();
  EXPECT_EQ(shell.Take(), "clear tree\n");
  EXPECT_TRUE(project.Files().empty());
  EXPECT_EQ(project.name + project.resourceFile + project.linkLibs, "");
  EXPECT_EQ(project.lastFileId, 0);
  EXPECT_EQ(project.type, 0);
  EXPECT_FALSE(project.isOpen);
  EXPECT_TRUE(project.parse);
  EXPECT_EQ(project.includePath + project.linkerPath, "-I@/mylib-L@/mylib");
  EXPECT_TRUE(project.modified);
  EXPECT_TRUE(project.implicit);
  EXPECT_EQ(project.libSet + project.outName + project.programParams, "xxx");
  EXPECT_EQ(project.debugOptions.comp, "z");
}

TEST_F(ProjectTest, OpenSingleFile_MakesAnImplicitProject) {
  const test::TempFolder folder;
  project.OpenSingleFile(folder.Write("one.cpp", "int main() {}\n"));
  EXPECT_TRUE(project.implicit);
  EXPECT_TRUE(project.isOpen);
  EXPECT_EQ(project.name, "one.zpj");
  EXPECT_EQ(project.folder, folder.Path());
  ASSERT_EQ(project.Files().size(), 1u);
  EXPECT_EQ(project.Files()[0]->name, folder.Path("one.cpp"));
  EXPECT_TRUE(shell.Take().ends_with("add one.cpp 1 1\nselect root\n"));
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"one.cpp"});
}

TEST_F(ProjectTest, OpenSingleFile_InTheRootFolder_FindsTheFile) {
  project.OpenSingleFile("/one.c");
  EXPECT_EQ(project.Files()[0]->name, "/one.c");
}

TEST_F(ProjectTest, OpenSingleFile_OfOtherKinds_DoesNothing) {
  for (const char* path : {"/a.h", "/a.rc", "/a.zpj", "/a.txt", ""}) project.OpenSingleFile(path);
  EXPECT_FALSE(project.implicit);
  EXPECT_EQ(project.name, "app.zpj");
  EXPECT_EQ(shell.Take(), "");
}

}  // namespace
}  // namespace zendry
