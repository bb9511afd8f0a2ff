#include <gtest/gtest.h>

#include "EditorFixture.h"

// Call tips in the whole program, by typing.

namespace zendry {
namespace {

constexpr const char* cProgram =
    "struct Shape {\n  Shape(int kind);\n  Shape(const char* name, int kind = ',');\n"
    "  int width;\n  int area(int scale);\n};\n"
    "int add(int first, int second);\n\n"
    "int main() {\n  Shape part(1);\n  @\n}\n";

class IdeCallTip : public test::EditorFixture {
 protected:
  void Run(const std::function<void(CppEditor&)>& script) {
    ide.Run({ide.Project({{"main.cpp", cProgram}})}, [&] {
      CppEditor& editor = *Tabs().OpenFile(ide.files.Path("main.cpp"));
      const size_t at = editor.GetText().find('@');
      editor.Select(static_cast<int>(at), static_cast<int>(at) + 1);
      editor.ReplaceSelection("");
      script(editor);
    });
  }
  // Types, with the Enter key for a line end.
  static void Type(const std::string& text) {
    for (const char c : text)
      if (c == '\n')
        TypeKey(Qt::Key_Return);
      else
        EditorFixture::Type(std::string(1, c));
  }
  static void TypeKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static bool IsListOpen() { return Front().Send(mavro::SCI_AUTOCACTIVE) != 0; }
  // The text of the open tip; empty without one.
  static std::string Shown() {
    return Front().Send(mavro::SCI_CALLTIPACTIVE) ? Front().tipText : std::string();
  }
};

TEST_F(IdeCallTip, Nested_TheInnerOne_AndTheOuterOneAfterIt) {
  Run([](CppEditor&) {
    Type("add(");
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    Type("part.area(");
    EXPECT_EQ(Shown(), "int Shape::area(int scale)");
    Type("1)");
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    Type(", 2)");
    EXPECT_EQ(Shown(), "");
  });
}

TEST_F(IdeCallTip, AMemberList_ComesInTheCall_AndTheTipIsBackAfterIt) {
  Run([](CppEditor& editor) {
    Type("add(part.");
    EXPECT_TRUE(IsListOpen());
    EXPECT_EQ(Shown(), "");
    Type("wi");
    TypeKey(Qt::Key_Return);
    EXPECT_FALSE(IsListOpen());
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    EXPECT_EQ(editor.GetRange(editor.LineStart(10), editor.CaretPosition()), "  add(part.width");
    Type(", part.");
    EXPECT_TRUE(IsListOpen());
    TypeKey(Qt::Key_Escape);
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    TypeKey(Qt::Key_Escape);
    EXPECT_EQ(Shown(), "");
  });
}

TEST_F(IdeCallTip, Constructors_ByEachBracket) {
  for (const char* typed : {"Shape other(", "Shape other{", "auto other = Shape{", "new Shape("})
    Run([&](CppEditor& editor) {
      Type(typed);
      EXPECT_EQ(Shown(), "Shape::Shape(int kind)") << typed;
      TypeKey(Qt::Key_Up);
      EXPECT_EQ(Shown(), "Shape::Shape(const char* name, int kind = ',')") << typed;
      TypeKey(Qt::Key_Down);
      Type("1, ");
      EXPECT_EQ(Shown(), "Shape::Shape(int kind)") << "the user has chosen it";
      EXPECT_EQ(editor.CaretLine(), 10);
    });
}

TEST_F(IdeCallTip, AnArgumentMore_ShowsTheConstructorThatTakesIt) {
  Run([](CppEditor&) {
    Type("Shape other(1");
    EXPECT_EQ(Shown(), "Shape::Shape(int kind)");
    Type(", ");
    EXPECT_EQ(Shown(), "Shape::Shape(const char* name, int kind = ',')");
  });
}

TEST_F(IdeCallTip, Enter_KeepsTheTip_AndIndents) {
  Run([](CppEditor& editor) {
    Type("add(1,\n");
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    EXPECT_EQ(editor.GetRange(editor.LineStart(11), editor.CaretPosition()), "      ");
    Type("2)");
    EXPECT_EQ(Shown(), "");
  });
  Run([](CppEditor& editor) {
    Type("add(1, // one\n");
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    EXPECT_EQ(editor.GetRange(editor.LineStart(11), editor.CaretPosition()), "      ")
        << "a comment changes nothing";
  });
}

TEST_F(IdeCallTip, GoesWithTheCaret_AndComesBackByKey) {
  Run([](CppEditor& editor) {
    Type("add(1, ");
    const int inside = editor.CaretPosition();
    TypeKey(Qt::Key_Home);
    EXPECT_EQ(Shown(), "");
    editor.Select(inside, inside);
    test::IdeDriver::Press(Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    TypeKey(Qt::Key_Down);
    EXPECT_EQ(Shown(), "") << "there is one signature only, so the key moves the caret";
    EXPECT_EQ(editor.CaretLine(), 11);
  });
}

TEST_F(IdeCallTip, AComma_OpensTheTipOfACallThatWasLeft) {
  Run([](CppEditor& editor) {
    Type("add(1");
    const int inside = editor.CaretPosition();
    TypeKey(Qt::Key_Home);
    editor.Select(inside, inside);
    EXPECT_EQ(Shown(), "");
    Type(",");
    EXPECT_EQ(Shown(), "int add(int first, int second)");
    TypeKey(Qt::Key_Escape);
    Type(" 2,");
    EXPECT_EQ(Shown(), "") << "the user has closed it";
    editor.Send(mavro::SCI_UNDO);
  });
}

TEST_F(IdeCallTip, Braces_OfBlocks_OpenNone) {
  Run([](CppEditor&) {
    for (const char* typed :
         {"if (1) {", "\nelse {", "\nstruct Shape2 : Shape {", "\nint a[] = {"}) {
      Type(typed);
      EXPECT_EQ(Shown(), "") << typed;
    }
  });
}

}  // namespace
}  // namespace zendry
