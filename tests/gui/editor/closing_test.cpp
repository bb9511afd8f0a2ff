#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "config/EditorSettings.h"

// Brackets in pairs and several carets, in the whole program.

namespace zendry {
namespace {

using test::IdeDriver;

class IdeClosing : public test::EditorFixture {
 protected:
  ~IdeClosing() override { theEditorSettings.closePairs = 1; }
  // Types a text at the end of a file; its line ends are the Enter key. Answers the text.
  std::string Typed(const std::string& file, const std::string& text) {
    CppEditor& editor = Open("a.cpp", file);
    editor.Select(editor.Length(), editor.Length());
    for (const char c : text) {
      if (c != '\n') {
        Type(std::string(1, c));
        continue;
      }
      editor.Send(mavro::SCI_AUTOCCANCEL);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    std::string now = editor.GetText();
    Tabs().CloseTab(0, EditTabs::Unsaved::cDrop);
    return now;
  }
};

TEST_F(IdeClosing, WhatIsTypedWithItsClosers_IsIndentedAsWithoutPairs) {
  constexpr const char* cTyped[] = {
      "void g() {\nif (x) {\ny;\n} else {\nz;\n}\n}\n",
      "void g()\n{\nif (x)\n{\ny;\n}\n}\n",
      "int a[] = {\n1, 2,\n3\n};\n",
      "void g() {\nlong_name(a,\nb,\nc);\nd(\ne,\nf);\n}\n",
      "void g() {\nrun([] {\na();\n});\nb();\n}\n",
      "struct S {\nint a[2];\nvoid f() { x(); }\n};\n",
      "#define F(a) \\\nif (a) { \\\nb(\"c\", 'd'); \\\n}\nint x;\n",
      "void g() {\nswitch (a) {\ncase 1: {\nb();\n}\ndefault:\nc();\n}\n}\n",
  };
  const std::string file = "void f() {\n  a();\n}\n";
  ide.Run({}, [&] {
    for (const char* typed : cTyped) {
      const std::string paired = Typed(file, typed);
      theEditorSettings.closePairs = 0;
      const std::string plain = Typed(file, typed);
      theEditorSettings.closePairs = 1;
      EXPECT_EQ(paired, plain) << typed;
    }
  });
}

TEST_F(IdeClosing, AnArgumentOnANewLine_IsIndentedAtOnce) {
  ide.Run({}, [&] {
    EXPECT_EQ(Typed("void f() {\n  a();", "\nfoo(a,\n"), "void f() {\n  a();\n  foo(a,\n      )");
  });
}

TEST_F(IdeClosing, TheSetting_TurnsPairsOff_InOpenTabsToo) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "");
    Type("(");
    EXPECT_EQ(editor.GetText(), "()");
    theEditorSettings.closePairs = 0;
    Tabs().ApplySettings();
    Type("[");
    EXPECT_EQ(editor.GetText(), "([)");
  });
}

TEST_F(IdeClosing, PlainText_HasNoPairs) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.txt", "");
    Type("(\"'");
    EXPECT_EQ(editor.GetText(), "(\"'");
  });
}

TEST_F(IdeClosing, ATip_StaysUntilTheAutomaticCloserIsTyped) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int sum(int a, int b);\nint x = ");
    editor.Select(editor.Length(), editor.Length());
    Type("sum(");
    EXPECT_TRUE(editor.GetText().ends_with("sum()"));
    EXPECT_EQ(editor.Send(mavro::SCI_CALLTIPACTIVE), 1);
    Type("1, 2");
    EXPECT_EQ(editor.Send(mavro::SCI_CALLTIPACTIVE), 1);
    Type(")");
    EXPECT_EQ(editor.Send(mavro::SCI_CALLTIPACTIVE), 0);
    EXPECT_TRUE(editor.GetText().ends_with("sum(1, 2)"));
  });
}

TEST_F(IdeClosing, OccurrencesByKey_AreSelectedAndCounted) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int ab;\nint abc = ab;\n");
    editor.Select(5, 5);
    IdeDriver::Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(IdeDriver::Status(cTextPane), "2 occurrences selected");
    Type("n");
    EXPECT_EQ(editor.GetText(), "int n;\nint abc = n;\n");
    editor.Select(6, 6);
    IdeDriver::Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(IdeDriver::Status(cTextPane), "There is no word at the caret");
  });
}

TEST_F(IdeClosing, CaretsByKeys_AndEnterAtEach) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  if (a) b();\n  if (c) d();\n}\n");
    editor.Select(19, 19);
    IdeDriver::Press(Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier);
    IdeDriver::Press(Qt::Key_Return);
    EXPECT_EQ(editor.GetText(), "void f() {\n  if (a)\n    b();\n  if (c)\n    d();\n}\n");
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.GetText(), "void f() {\n  if (a) b();\n  if (c) d();\n}\n");
  });
}

}  // namespace
}  // namespace zendry
