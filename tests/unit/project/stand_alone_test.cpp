#include "project/StandAlone.h"

#include <gtest/gtest.h>

#include "CodeText.h"
#include "ProjectShell.h"
#include "TempFolder.h"
#include "code/Completion.h"
#include "project/Project.h"
#include "project/ProjectSources.h"

namespace zendry {
namespace {

class OneEditorShell : public test::ProjectShell {
 public:
  std::vector<EditorText*> OpenTexts() override { return open; }

  std::vector<EditorText*> open;
};

class StandAloneTest : public testing::Test {
 protected:
  StandAloneTest() { project.SetShell(&shell); }

  // The list for a text with its caret at "@", open in front under this name.
  std::string ListIn(const std::string& name, const std::string& marked) {
    test::CodeText editor(marked);
    editor.path = folder.Path(name);
    editor.parsed = false;
    shell.open = {&editor};
    shell.activeFile = editor.path;
    std::string text = editor.LeftOfCaret(), list;
    completion.getCompletion(editor, text, list);
    shell.open.clear();
    return list;
  }

  test::TempFolder folder;
  OneEditorShell shell;
  Project project;
  ProjectSources sources{project, shell};
  Completion completion{sources};
};

TEST_F(StandAloneTest, WithoutAProject_OwnClassesHaveMembers) {
  EXPECT_EQ(ListIn("solo.cpp", "struct Point { int x, y; };\nvoid f() {\n  Point p;\n  p.@\n}\n"),
            "x?1 y?1");
}

TEST_F(StandAloneTest, TextBeyondTheLimit_HasNoTags) {
  const std::string use = "struct Point { int x, y; };\nvoid f() {\n  Point p;\n  p.@\n}\n";
  const std::string longest =
      std::string(Project::cMostTextAlone - (use.size() - 1), '\n') + use;  // "@" is no part of it
  EXPECT_EQ(ListIn("solo.cpp", longest), "x?1 y?1");
  EXPECT_EQ(ListIn("solo.cpp", "\n" + longest), "");
}

TEST_F(StandAloneTest, IncludedFiles_AreReadThroughIncludes) {
  folder.Write("a.h", "#include \"deep/b.h\"\nstruct A { B b; int a; };\n");
  folder.Write("deep/b.h", "#include \"c.h\"\nstruct B { C c; };\n");
  folder.Write("deep/c.h", "#include \"../a.h\"\nstruct C { int last; };\n");
  EXPECT_EQ(ListIn("solo.cpp", "#include \"a.h\"\nvoid f() {\n  A x;\n  x.@\n}\n"), "a?1 b?1");
  EXPECT_EQ(ListIn("solo.cpp", "#include \"a.h\"\nvoid f() {\n  A x;\n  x.b.c.@\n}\n"), "last?1");
  EXPECT_EQ(ListIn("solo.cpp", "#include <a.h>\nvoid f() {\n  A x;\n  x.@\n}\n"), "");
}

TEST_F(StandAloneTest, IncludedFile_ThatChanges_IsReadAgain) {
  const std::string text = "#include \"a.h\"\nvoid f() {\n  A x;\n  x.@\n}\n";
  EXPECT_EQ(ListIn("solo.cpp", text), "");
  folder.Write("other.cpp", "");
  ListIn("other.cpp", "int abc;\nab@");
  folder.Write("a.h", "struct A { int one; };\n");
  EXPECT_EQ(ListIn("solo.cpp", text), "one?1");
  folder.Write("a.h", "struct A { int one, second; };\n");
  EXPECT_EQ(ListIn("solo.cpp", text), "one?1 second?1");
}

TEST_F(StandAloneTest, BesideAProject_ItsOwnClassGoesBeforeANamesake) {
  project.Init(folder.Path("p.zpj"), cConsole);
  folder.Write("p.cpp", "struct Point { int ofProject; };\nstruct Other { int other; };\n");
  project.AddFile("p.cpp");
  EXPECT_EQ(ListIn("solo.cpp", "struct Point { int own; };\nvoid f() {\n  Point p;\n  p.@\n}\n"),
            "own?1");
  EXPECT_EQ(ListIn("solo.cpp", "void f() {\n  Other p;\n  p.@\n}\n"), "other?1");
}

TEST_F(StandAloneTest, FileOfTheProject_SeesNoFileThatWasInFrontBefore) {
  project.Init(folder.Path("p.zpj"), cConsole);
  folder.Write("p.cpp", "");
  project.AddFile("p.cpp");
  EXPECT_EQ(ListIn("solo.cpp", "struct Point { int own; };\nvoid f() {\n  Point p;\n  p.@\n}\n"),
            "own?1");
  EXPECT_EQ(ListIn("p.cpp", "void f() {\n  Point p;\n  p.@\n}\n"), "");
}

TEST_F(StandAloneTest, TwoFilesInTurn_HaveEachItsOwnTags) {
  test::CodeText one("struct S { int one; };\nvoid f() {\n  S s;\n  s.@\n}\n");
  test::CodeText two("struct S { int two; };\nvoid f() {\n  S s;\n  s.@\n}\n");
  one.path = folder.Path("one.cpp");
  two.path = folder.Path("two.cpp");
  shell.open = {&one, &two};
  for (int round = 0; round < 2; ++round)
    for (test::CodeText* front : {&one, &two}) {
      shell.activeFile = front->path;
      std::string text = "s.", list;
      completion.getCompletion(*front, text, list);
      EXPECT_EQ(list, front == &one ? "one?1" : "two?1") << round;
    }
}

TEST_F(StandAloneTest, WithoutAProject_TheLibraryIsRead) {
  folder.Write("install/Defs/stl/header", "class Stl { public: int m; };\n");
  folder.Write("install/Defs/stlref.tgd",
               "<lib n=\"stl\" p=\"stl\"/>\n<hdr n=\"header\" id=\"1\"/>\n");
  project.SetInstallFolder(folder.Path("install/"));
  EXPECT_EQ(ListIn("solo.cpp", "void f() {\n  Stl s;\n  s.@\n}\n"), "m?1");
}

TEST_F(StandAloneTest, FindIncluded_BesideAboveAndInInclude) {
  folder.Write("root/include/lib/a.h", "");
  folder.Write("root/util/b.h", "");
  folder.Write("root/src/deep/c.h", "");
  const std::string from = folder.Path("root/src/deep/");
  EXPECT_EQ(FindIncluded({true, false, "c.h"}, from), folder.Path("root/src/deep/c.h"));
  EXPECT_EQ(FindIncluded({true, false, "util/b.h"}, from), folder.Path("root/util/b.h"));
  EXPECT_EQ(FindIncluded({true, false, "lib/a.h"}, from), folder.Path("root/include/lib/a.h"));
  EXPECT_EQ(FindIncluded({true, false, "../../util/b.h"}, from), folder.Path("root/util/b.h"));
  EXPECT_EQ(FindIncluded({false, false, "lib/a.h"}, from), folder.Path("root/include/lib/a.h"));
  EXPECT_EQ(FindIncluded({false, false, "c.h"}, from), "") << "beside it are quoted ones only";
  EXPECT_EQ(FindIncluded({true, false, "a.h"}, from), "");
  EXPECT_EQ(FindIncluded({true, false, ""}, ""), "");
}

}  // namespace
}  // namespace zendry
