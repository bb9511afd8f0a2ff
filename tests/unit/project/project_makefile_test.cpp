#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "ScriptedDialogs.h"
#include "TempFolder.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

namespace zendry {
namespace {

class ProjectMakefileTest : public testing::Test {
 protected:
  ProjectMakefileTest() {
    theIdeConfig.appDir = "/opt/zendry/bin/";
    project.Init(folder.Path("p/app.zpj"), cConsole);
  }
  ~ProjectMakefileTest() override { theIdeConfig.appDir.clear(); }
  std::string Exported() {
    EXPECT_TRUE(project.ExportMakefile(folder.Path("Makefile")).Ok());
    return folder.Read("Makefile");
  }

  test::TempFolder folder;
  test::ScriptedDialogs dialogs;
  Project project;
};

TEST_F(ProjectMakefileTest, Sources_HaveRulesWithTheirQuotedIncludes) {
  folder.Write("p/src/a.cpp",
               "#include \"a.h\"\n#include <vector>\n#include \"b.h\"\n#include \"c.h\"\n"
               "#include \"gone.h\"\n");
  folder.Write("p/a.h", "");
  folder.Write("p/src/b.h", "");
  folder.Write("p/inc/c.h", "");
  for (const char* name : {"src/a.cpp", "a.h", "inc/c.h", "../b.c", "d.c", "notes.txt"})
    project.AddFile(name);
  const std::string text = Exported();
  EXPECT_EQ(text.substr(0, text.find('#')),
            "CC=gcc\n"
            "CCFLAGS=-O2 -I/opt/zendry/mylib -I/opt/zendry/libs/basic -c\n"
            "LINKFLAGS=-L/opt/zendry/mylib -L/opt/zendry/libs -s -lstdc++ -lm\n"
            "app.exe: src/a.o ../b.o d.o\n"
            "\t$(CC) -o app.exe  src/a.o ../b.o d.o $(LINKFLAGS)\n"
            "src/a.o: src/a.cpp a.h src/b.h inc/c.h\n"
            "\t$(CC) $(CCFLAGS) -c src/a.cpp -o src/a.o\n"
            "../b.o: ../b.c\n"
            "\t$(CC) $(CCFLAGS) -c ../b.c -o ../b.o\n"
            "d.o: d.c\n"
            "\t$(CC) $(CCFLAGS) -c d.c\n");
}

// Both in folders, beside each other, and one whose numbered name is taken.
TEST_F(ProjectMakefileTest, SourcesOfOneBaseName_AreAllMadeAndLinked) {
  folder.Write("p/a/x.c", "#include \"x.h\"\nint ax(void) { return X; }\n");
  folder.Write("p/a/x.h", "#define X 1\n");
  folder.Write("p/b/x.c", "int bx(void) { return 10; }\n");
  folder.Write("p/b/x.cpp",
               "#include <string>\nextern \"C\" int cx() {"
               " return std::stoi(\"100\"); }\n");
  folder.Write("p/b/2-x.c", "int dx(void) { return 1000; }\n");
  folder.Write("p/m.c",
               "int ax(void), bx(void), cx(void), dx(void);\n"
               "int main(void) { return ax() + bx() + cx() + dx() == 1111 ? 0 : 1; }\n");
  for (const char* name : {"a/x.c", "b/x.c", "b/x.cpp", "b/2-x.c", "m.c", "a/x.h", "README"})
    project.AddFile(name);
  ASSERT_EQ(project.ExportMakefile("").error, "");
  const std::string make =
      "make -s -C '" + folder.Path("p") + "' > '" + folder.Path("log") + "' 2>&1";
  EXPECT_EQ(std::system(make.c_str()), 0) << folder.Read("log") << folder.Read("p/Makefile");
  EXPECT_EQ(std::system(("'" + folder.Path("p/app.exe") + "'").c_str()), 0);
}

TEST_F(ProjectMakefileTest, NoFiles_IsTheHeadAndTheTarget) {
  EXPECT_NE(Exported().find("\napp.exe:\n\t$(CC) -o app.exe  $(LINKFLAGS)\n#"), std::string::npos);
}

TEST_F(ProjectMakefileTest, Switches_AreTheProjectsWithPathsOfThisSystem) {
  theIdeConfig.appDir = "/my $apps/zendry/bin/";
  project.includePath = "-I@/mylib -Iinc";
  project.linkerPath = "";
  project.linkLibs = "-lm";
  const std::string text = Exported();
  EXPECT_EQ(
      text.substr(0, text.find("app.exe")),
      "CC=gcc\n"
      "CCFLAGS=-O2 -I\"/my \\$$apps/zendry\"/mylib -Iinc -I\"/my \\$$apps/zendry\"/libs/basic -c\n"
      "LINKFLAGS=-L\"/my \\$$apps/zendry\"/libs -lm -s\n");
}

// The shell reads the switches within double quotes; make reads them before it.
TEST_F(ProjectMakefileTest, OddLettersOfAPath_AreQuotedEachInItsWay) {
  struct Row {
    const char *folder, *quoted;
  };
  for (const Row& row :
       {Row{"/a+b", "/a+b"}, Row{"/a b", "\"/a b\""}, Row{"/a'b", "\"/a'b\""},
        Row{"/a\"b", "\"/a\\\"b\""}, Row{"/a$b", "\"/a\\$$b\""}, Row{"/a`b", "\"/a\\`b\""},
        Row{"/a\\b", "\"/a\\\\b\""}, Row{"/a#b", "\"/a\\#b\""}, Row{"/a(b)", "\"/a(b)\""},
        Row{"/a;b", "\"/a;b\""}, Row{"/\xc3\xa4", "/\xc3\xa4"}}) {
    theIdeConfig.appDir = std::string(row.folder) + "/bin/";
    project.includePath = "-I@/mylib";
    const std::string text = Exported();
    EXPECT_NE(text.find("CCFLAGS=-O2 -I" + std::string(row.quoted) + "/mylib "), std::string::npos)
        << row.folder << "\n"
        << text;
  }
}

TEST_F(ProjectMakefileTest, Switches_OfTheModeAndItsCompilerSet_ComeWithThem) {
  project.debugOptions = {1, "-g -Dtext=\\\"it's\\\" \"-Da=(1; 2)\" -Dx=$y", "-rdynamic"};
  theIdeConfig.toolSets[1].flags = "-m64";
  project.includePath = project.linkerPath = "";
  project.SetMode(cDebug);
  const std::string text = Exported();
  EXPECT_EQ(text.substr(0, text.find("app.exe")),
            "CC=gcc\n"
            "CCFLAGS=-g \"-Dtext=\\\"it's\\\"\" \"-Da=(1; 2)\" \"-Dx=\\$$y\" "
            "-I/opt/zendry/libs/basic -m64 -c\n"
            "LINKFLAGS=-L/opt/zendry/libs -rdynamic\n");
  theIdeConfig.toolSets[1].flags = "";
}

// A build expands the macros of a set where it lies, by the rules of command lines.
TEST_F(ProjectMakefileTest, Switches_OfTheLibrarySet_AreTheSameBeforeAndAfterABuild) {
  project.includePath = project.linkerPath = "";
  project.libSet = "mine";
  LibSet& set = theIdeConfig.libSets["mine"];
  set = {.expanded = false, .include = "-I@/mine", .link = "-L@/mine -lmine"};
  const std::string before = Exported();
  set = {.expanded = true, .include = "-I/opt/zendry/mine", .link = "-L/opt/zendry/mine -lmine"};
  EXPECT_EQ(Exported(), before);
  EXPECT_NE(before.find("CCFLAGS=-O2 -I/opt/zendry/libs/basic -I/opt/zendry/mine -c\n"
                        "LINKFLAGS=-L/opt/zendry/libs -L/opt/zendry/mine -lmine -s\n"),
            std::string::npos)
      << before;
  theIdeConfig.libSets.erase("mine");
}

// Makefiles of earlier versions must be known by their marks.
TEST_F(ProjectMakefileTest, Mark_HasSixteenDigits) {
  const std::string text = Exported();
  const size_t last = text.rfind(' ') + 1;
  EXPECT_EQ(text.size() - last, 16u + 1u);
  EXPECT_EQ(text.find_first_not_of("0123456789abcdef", last), text.size() - 1);
}

TEST_F(ProjectMakefileTest, EmptyPath_IsMakefileBesideTheProject) {
  folder.Folder("p");
  const std::string before = std::filesystem::current_path().string();
  std::filesystem::current_path(folder.Path());
  EXPECT_EQ(project.ExportMakefile("").error, "");
  std::filesystem::current_path(before);
  EXPECT_TRUE(folder.Exists("p/Makefile"));
  EXPECT_FALSE(folder.Exists("Makefile"));
}

TEST_F(ProjectMakefileTest, ProjectWithoutAFolder_WritesNothing) {
  project.SetFileName("");
  EXPECT_EQ(project.ExportMakefile("").error, "Makefile: the project has no folder yet");
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

TEST_F(ProjectMakefileTest, OwnMakefileChangedByHand_IsAskedAbout) {
  const std::string own = Exported();
  for (const std::string& changed :
       {own + "clean:\n", "#\n" + own, own.substr(0, own.size() - 1)}) {
    folder.Write("Makefile", changed);
    EXPECT_FALSE(project.ExportMakefile(folder.Path("Makefile")).Ok());
    EXPECT_EQ(folder.Read("Makefile"), changed);
  }
  EXPECT_EQ(dialogs.texts.size(), 3u);
}

TEST_F(ProjectMakefileTest, FolderThatIsMissing_FailsWithoutAMessage) {
  EXPECT_FALSE(project.ExportMakefile(folder.Path("none/Makefile")).Ok());
  EXPECT_TRUE(dialogs.texts.empty());
}

}  // namespace
}  // namespace zendry
