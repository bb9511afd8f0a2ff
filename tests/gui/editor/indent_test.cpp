#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

#include "EditorFixture.h"

// Indentation as it is typed, in the whole program.

namespace zendry {
namespace {

class IdeIndent : public test::EditorFixture {
 protected:
  // Types a text; its line ends are the Enter key.
  static void TypeLines(const std::string& text) {
    for (const char c : text) {
      if (c != '\n') {
        Type(std::string(1, c));
        continue;
      }
      Front().Send(mavro::SCI_AUTOCCANCEL);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
  }
  static void ToEnd(CppEditor& editor) { editor.Select(editor.Length(), editor.Length()); }
  static void Paste(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
  }
};

TEST_F(IdeIndent, TypedBlocks_AreIndentedAsTheFileIs) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a();\n}\n");
    ToEnd(editor);
    TypeLines("void g() {\nif (x) {\ny;\nz;\n}\ndo {\nw;\n} while (v);\nend:\nu;\n}\n");
    EXPECT_EQ(editor.GetText(),
              "void f() {\n  a();\n}\nvoid g() {\n  if (x) {\n    y;\n    z;\n  }\n  do {\n    w;\n"
              "  } while (v);\nend:\n  u;\n}\n");
  });
}

TEST_F(IdeIndent, EachFileHasItsOwnTabsAndColumns) {
  ide.Run({}, [&] {
    CppEditor& tabs = Open("a.cpp", "void f()\n{\n\ta();\n}\n");
    ToEnd(tabs);
    TypeLines("void g()\n{\nx;\n");
    EXPECT_EQ(tabs.GetText(), "void f()\n{\n\ta();\n}\nvoid g()\n{\n\tx;\n\t\n}");
    CppEditor& blanks = Open("b.cpp", "void f()\n{\n   a();\n}\n");
    ToEnd(blanks);
    TypeLines("void g()\n{\nx;\n");
    EXPECT_EQ(blanks.GetText(), "void f()\n{\n   a();\n}\nvoid g()\n{\n   x;\n   \n}");
    Tabs().ApplySettings();
    EXPECT_EQ(blanks.Send(mavro::SCI_GETUSETABS), 0) << "settings leave what the file shows";
    EXPECT_EQ(blanks.Send(mavro::SCI_GETINDENT), 3);
  });
}

TEST_F(IdeIndent, ALabelMoves_AndANameOfAScopeMovesBack) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a();\n");
    ToEnd(editor);
    TypeLines("\nstd:");
    EXPECT_TRUE(editor.GetText().ends_with("\nstd:"));
    TypeLines(":");
    EXPECT_TRUE(editor.GetText().ends_with("\n  std::"));
  });
}

TEST_F(IdeIndent, ALineIndentedByHand_Stays) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a();");
    ToEnd(editor);
    TypeLines("\n   b();\nc();\n");
    EXPECT_EQ(editor.GetText(), "void f() {\n  a();\n     b();\n     c();\n     ");
  });
}

TEST_F(IdeIndent, AnEmptyLine_KeepsNoBlanks) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a();");
    ToEnd(editor);
    TypeLines("\n\nb();");
    EXPECT_EQ(editor.GetText(), "void f() {\n  a();\n\n  b();");
  });
}

TEST_F(IdeIndent, APastedBlock_IsMovedInOneUndoStep) {
  ide.Run({}, [&] {
    const std::string before = "void f() {\n  if (a) {\n    b();\n  }\n}\n";
    CppEditor& editor = Open("a.cpp", before);
    const int at = editor.LineStart(3);
    editor.Select(at, at);
    Paste("\tif (c)\n\t\td();\n#if 0\n\n\te();\n#endif\n");
    EXPECT_EQ(editor.GetText(),
              "void f() {\n  if (a) {\n    b();\n    if (c)\n        d();\n#if 0\n\n    e();\n"
              "#endif\n  }\n}\n");
    editor.Send(mavro::SCI_UNDO);
    EXPECT_EQ(editor.GetText(), before);
  });
}

TEST_F(IdeIndent, APasteThatBeganInTheMiddleOfALine_IsMovedAsAWhole) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a();\n  \n}\n");
    editor.Select(editor.LineEnd(2), editor.LineEnd(2));
    Paste("if (b) {\n          c();\n        }");
    EXPECT_EQ(editor.GetText(), "void f() {\n  a();\n  if (b) {\n    c();\n  }\n}\n");
  });
}

TEST_F(IdeIndent, APasteOfOneLine_OrIntoALine_IsLeftAlone) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "void f() {\n  a(");
    ToEnd(editor);
    Paste("        b");
    Paste(",\n      c");
    EXPECT_EQ(editor.GetText(), "void f() {\n  a(        b,\n      c");
  });
}

TEST_F(IdeIndent, PlainText_KeepsWhatIsPasted) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.txt", "{\n");
    ToEnd(editor);
    Paste("    a\n  b\n");
    EXPECT_EQ(editor.GetText(), "{\n    a\n  b\n");
  });
}

}  // namespace
}  // namespace zendry
