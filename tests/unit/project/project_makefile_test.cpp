#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "ScriptedDialogs.h"
#include "TempFolder.h"
#include "project/Project.h"

namespace zendry {
namespace {

class ProjectMakefileTest : public testing::Test {
 protected:
  ProjectMakefileTest() { project.Init(folder.Path("p/app.zpj"), cConsole); }
  std::string Exported() {
    EXPECT_TRUE(project.ExportMakefile(folder.Path("Makefile")).Ok());
    return folder.Read("Makefile");
  }

  test::TempFolder folder;
  test::ScriptedDialogs dialogs;
  Project project;
};

TEST_F(ProjectMakefileTest, Sources_HaveRulesWithTheirQuotedIncludes) {
  folder.Write("p/src/a.cpp", "#include \"a.h\"\n#include <vector>\n#include \"b.h\"\n");
  for (const char* name : {"src/a.cpp", "a.h", "../b.c", "notes.txt"}) project.AddFile(name);
  EXPECT_EQ(Exported(),
            "CC=gcc\n"
            "CCFLAGS=-Ic:/Apps/Zendry/mpich/Include -c\n"
            "LINKFLAGS=-Lc:/Apps/Zendry/mpich/lib -lmpich\n"
            "app.exe: src/a.o ../b.o notes.o\n"
            "\t$(CC) -o app.exe  src/a.o ../b.o notes.o $(LINKFLAGS)\n"
            "src/a.o: src/a.cpp a.h b.h\n"
            "\t$(CC) $(CCFLAGS) -c src/a.cpp\n"
            "../b.o: ../b.c\n"
            "\t$(CC) $(CCFLAGS) -c ../b.c\n"
            "notes.o: notes.txt\n"
            "\t$(CC) $(CCFLAGS) -c notes.txt\n");
}

TEST_F(ProjectMakefileTest, NoFiles_IsTheHeadAndTheTarget) {
  EXPECT_TRUE(Exported().ends_with("\napp.exe:\n\t$(CC) -o app.exe  $(LINKFLAGS)\n"));
}

TEST_F(ProjectMakefileTest, EmptyPath_IsMakefileInTheCurrentFolder) {
  const std::string before = std::filesystem::current_path().string();
  std::filesystem::current_path(folder.Path());
  EXPECT_TRUE(project.ExportMakefile("").Ok());
  std::filesystem::current_path(before);
  EXPECT_TRUE(folder.Exists("Makefile"));
}

TEST_F(ProjectMakefileTest, OwnMakefile_IsReplacedWithoutAQuestion) {
  Exported();
  project.AddFile("a.c");
  EXPECT_NE(Exported().find("a.o"), std::string::npos);
  EXPECT_TRUE(dialogs.texts.empty());
}

TEST_F(ProjectMakefileTest, MakefileWrittenByHand_IsAskedAbout) {
  folder.Write("Makefile", "all:\n\techo mine\n");
  dialogs.answers = {mavro::Answer::cNo, mavro::Answer::cYes};
  EXPECT_FALSE(project.ExportMakefile(folder.Path("Makefile")).Ok());
  EXPECT_EQ(folder.Read("Makefile"), "all:\n\techo mine\n");
  EXPECT_TRUE(Exported().starts_with("CC=gcc\n"));
  EXPECT_EQ(dialogs.texts.size(), 2u);
}

TEST_F(ProjectMakefileTest, FolderThatIsMissing_FailsWithoutAMessage) {
  EXPECT_FALSE(project.ExportMakefile(folder.Path("none/Makefile")).Ok());
  EXPECT_TRUE(dialogs.texts.empty());
}

}  // namespace
}  // namespace zendry
