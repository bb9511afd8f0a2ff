#include <gtest/gtest.h>

#include <filesystem>

#include "EditorFixture.h"
#include "ScopedVariable.h"
#include "frame/ToolActs.h"

// "C++ source tidy" in the whole program, with tools of the test's own in front of the machine's.

namespace zendry {
namespace {

namespace fs = std::filesystem;
using test::IdeDriver;

const char* const cUntidy = "void f()\n{\nif(a){\nb();\n  }\n}\n";

class IdeTidy : public test::EditorFixture {
 protected:
  // Puts a script in front of the machine's clang-format.
  void PutTool(const std::string& script) {
    const std::string path = ide.files.Write("tools/clang-format", "#!/bin/sh\n" + script);
    fs::permissions(path, fs::perms::owner_all);
    variable.emplace("PATH", (ide.files.Path() + "/tools:" + std::getenv("PATH")).c_str());
  }
  static void Tidy() { IdeDriver::Press(Qt::Key_F11, Qt::ControlModifier | Qt::ShiftModifier); }

  std::optional<test::ScopedVariable> variable;
};

TEST_F(IdeTidy, TheNearestStyleRules_InOneUndoStep) {
  ide.files.Write(".clang-format", "BasedOnStyle: Google\nIndentWidth: 3\n");
  ide.Run({}, [&] {
    CppEditor& editor = Open("sub/a.cpp", cUntidy);
    Tidy();
    EXPECT_EQ(editor.GetText(), "void f() {\n   if (a) {\n      b();\n   }\n}\n");
    EXPECT_TRUE(IdeDriver::Status().find(".clang-format") != std::string::npos)
        << IdeDriver::Status();
    editor.Send(mavro::SCI_UNDO);
    EXPECT_EQ(editor.GetText(), cUntidy);
  });
}

TEST_F(IdeTidy, WithoutAStyle_TheFilesOwnHabitsRule) {
  ide.Run({}, [&] {
    CppEditor& editor =
        Open("a.cpp",
             "void e()\n{\n\tif (a)\n\t{\n\t\tb();\n\t}\n}\nvoid f()\n{\nif(a)\n{\n b();\n }\n}\n");
    Tidy();
    EXPECT_EQ(editor.GetText(),
              "void e()\n{\n\tif (a)\n\t{\n\t\tb();\n\t}\n}\nvoid f()\n{\n\tif "
              "(a)\n\t{\n\t\tb();\n\t}\n}\n");
  });
}

TEST_F(IdeTidy, WithoutAStyle_StarsAndDirectivesStayAsTheFileHasThem) {
  ide.Run({}, [&] {
    const std::string text =
        "#if A\n# include <a>\n# if B\n#  define C 1\n# endif\n#else\n# include <b>\n#endif\n"
        "char* p;\nint* f(char* a, int* b);\n";
    CppEditor& editor = Open("a.cpp", text + "int   c;\n");
    Tidy();
    EXPECT_EQ(editor.GetText(), text + "int c;\n");
  });
}

TEST_F(IdeTidy, ASelection_IsTidiedAlone) {
  ide.Run({}, [&] {
    const std::string before = "void d() {\n  a();\n}\nvoid e() {\n  a();\n}\n";
    CppEditor& editor = Open("a.cpp", before + "void f() {\n  a( );\n b( );\n c( );\n}\n");
    editor.Select(editor.LineStart(8), editor.LineStart(9));
    Tidy();
    EXPECT_EQ(editor.GetText(), before + "void f() {\n  a( );\n  b();\n c( );\n}\n");
  });
}

TEST_F(IdeTidy, CaretAndBookmarks_KeepTheirLines) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a();\n        b();\n  c();\n}\n");
    editor.ToggleBookmark(2);
    editor.ToggleBookmark(3);
    editor.Select(editor.LineEnd(3), editor.LineEnd(3));
    Tidy();
    EXPECT_EQ(editor.GetText(), "void f() {\n  a();\n  b();\n  c();\n}\n");
    EXPECT_EQ(editor.Send(mavro::SCI_MARKERNEXT, 0, 2), 2);
    EXPECT_EQ(editor.Send(mavro::SCI_MARKERNEXT, 3, 2), 3);
    EXPECT_EQ(editor.CaretPosition(), editor.LineEnd(3));
  });
}

TEST_F(IdeTidy, AToolThatFails_OrPrintsGarbage_ChangesNothing) {
  for (const char* script :
       {"exit 1\n", "echo garbage\n",
        "echo \"<?xml version='1.0'?>\"; echo \"<replacements xml:space='preserve' "
        "incomplete_format='false'>\"; echo \"<replacement offset='0' "
        "length='9'></replacement>\"\n",
        "kill -9 $$\n"}) {
    PutTool(script);
    ide.Run({}, [&] {
      CppEditor& editor = Open("a.cpp", cUntidy);
      Tidy();
      EXPECT_EQ(editor.GetText(), cUntidy) << script;
      EXPECT_FALSE(editor.dirty) << script;
      EXPECT_TRUE(IdeDriver::Status().starts_with("Not tidied")) << IdeDriver::Status();
    });
    variable.reset();
  }
}

TEST_F(IdeTidy, AToolThatHangs_IsStopped) {
  PutTool("exit 124\n");
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", cUntidy);
    Tidy();
    EXPECT_EQ(editor.GetText(), cUntidy);
    EXPECT_EQ(IdeDriver::Status(), "Not tidied: clang-format takes too long");
  });
}

TEST_F(IdeTidy, ASourceThatDoesNotParse_IsLeftWhole) {
  ide.Run({}, [&] {
    const std::string broken = "void f( {\n}}}\n  class x\n";
    CppEditor& editor = Open("a.cpp", broken);
    Tidy();
    std::string words = editor.GetText();
    std::erase_if(words, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(words, "voidf({}}}classx");
  });
}

TEST_F(IdeTidy, WithoutTheTool_OurOwnRulesIndent) {
  const test::ScopedVariable path("PATH", ide.files.Path().c_str());
  ide.Run({}, [&] {
    CppEditor& editor =
        Open("a.cpp", "void e() {\n  a();\n}\nvoid f() {\nif (a) {\nb( );\n  }\n}\n");
    Tidy();
    EXPECT_EQ(editor.GetText(),
              "void e() {\n  a();\n}\nvoid f() {\n  if (a) {\n    b( );\n  }\n}\n");
    EXPECT_TRUE(IdeDriver::Status().find("own rules") != std::string::npos) << IdeDriver::Status();
  });
}

TEST_F(IdeTidy, PlainText_IsLeftAlone) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.txt", "{\na\n}\n");
    Tidy();
    EXPECT_EQ(editor.GetText(), "{\na\n}\n");
    EXPECT_EQ(IdeDriver::Status(), "Only sources of C and C++ are tidied");
  });
}

}  // namespace
}  // namespace zendry
