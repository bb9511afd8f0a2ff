#include "code/SymbolPlaces.h"

#include <gtest/gtest.h>

#include <string>

#include "ParsedProject.h"

namespace zendry {
namespace {

using Want = SymbolPlaces::Want;

constexpr char cHeader[] =
    "class Shape {\n"                // 1
    " public:\n"                     // 2
    "  void draw();\n"               // 3
    "  void draw(int depth);\n"      // 4
    "  void draw(char, int = 0);\n"  // 5
    "  int size() const;\n"          // 6
    "  int size();\n"                // 7
    "  int inner() { return 1; }\n"  // 8
    "  Shape* next;\n"               // 9
    "};\n"
    "int twice(int value);\n"                                            // 11
    "int alone(int value);\n"                                            // 12
    "namespace deep { namespace er { class Box { void open(); }; } }\n"  // 13
    "template <class T> class Bag { public: T take(T); };\n";            // 14
constexpr char cSource[] =
    "#include \"shape.h\"\n"
    "void Shape::draw() {}\n"                       // 2
    "void Shape::draw(int d) {}\n"                  // 3
    "void Shape::draw(char c, int n) {}\n"          // 4
    "int Shape::size() const { return 1; }\n"       // 5
    "int Shape::size() { return 2; }\n"             // 6
    "int twice(int value) { return 2 * value; }\n"  // 7
    "void deep::er::Box::open() {}\n";              // 8

class SymbolPlacesTest : public ::testing::Test {
 protected:
  SymbolPlacesTest() {
    project.Add("/p/shape.h", cHeader);
    project.Add("/p/shape.cpp", cSource);
  }
  // The places as "shape.h:3 shape.cpp:2", lines from 1; "none".
  static std::string Text(const SymbolAnswer& answer) {
    std::string text;
    for (const CodePlace& place : answer.places)
      text += (text.empty() ? "" : " ") + place.path.substr(place.path.rfind('/') + 1) + ":" +
              std::to_string(place.line + 1);
    return text.empty() ? "none" : text;
  }
  std::string At(const std::string& withCaret, Want want = Want::cNearest,
                 const std::string& path = "/p/main.cpp") {
    const test::CodeText editor = project.Edit(path, withCaret);
    answer = symbols.AtCaret(editor, want);
    return Text(answer);
  }
  std::string Around(const std::string& path, const std::string& withCaret, Want want) {
    const test::CodeText editor = project.Edit(path, withCaret);
    answer = symbols.Around(editor, want);
    return Text(answer);
  }
  static std::string WithCaret(std::string text, const std::string& before) {
    return text.insert(text.find(before) + before.size(), "@");
  }

  test::ParsedProject project;
  SymbolPlaces symbols{project.completion.wizard, project};
  SymbolAnswer answer;
};

TEST_F(SymbolPlacesTest, AtCaret_Call_TheOverloadThatTakesAsManyArguments) {
  const std::string head = "#include \"shape.h\"\nvoid f(Shape s) {\n";
  EXPECT_EQ(At(head + "s.dr@aw();\n}\n"), "shape.h:3");
  EXPECT_EQ(At(head + "s.draw@(1);\n}\n"), "shape.h:4") << "the first of two that fit";
  EXPECT_EQ(At(head + "s.dr@aw('a', g(1, 2));\n}\n"), "shape.h:5");
  EXPECT_EQ(At(head + "s.dr@aw('a', g(1, 2));\n}\n", Want::cDefinition), "shape.cpp:4");
  EXPECT_EQ(At(head + "s.next->next->dr@aw(1);\n}\n", Want::cDefinition), "shape.cpp:3");
}

TEST_F(SymbolPlacesTest, AtCaret_CallThatNoneFits_TheFirst) {
  EXPECT_EQ(At("#include \"shape.h\"\nvoid f(Shape s) { s.dr@aw(1, 2, 3, 4); }\n"), "shape.h:3");
}

TEST_F(SymbolPlacesTest, AtCaret_OnADeclaration_GoesToItsDefinitionAndBack) {
  EXPECT_EQ(At(WithCaret(cHeader, "void dr"), Want::cNearest, "/p/shape.h"), "shape.cpp:2");
  EXPECT_EQ(At(WithCaret(cHeader, "dra"), Want::cDeclaration, "/p/shape.h"), "shape.h:3");
  EXPECT_EQ(At(WithCaret(cSource, "Shape::draw(char c, int n) {}\nint Shape::si"), Want::cNearest,
               "/p/shape.cpp"),
            "shape.h:6")
      << "the const one";
  EXPECT_EQ(At(WithCaret(cHeader, "int alo"), Want::cNearest, "/p/shape.h"), "shape.h:12")
      << "has no definition";
}

TEST_F(SymbolPlacesTest, AtCaret_Local_IsInTheTextItself) {
  EXPECT_EQ(At("void f() {\n  int count = 0;\n  ++coun@t;\n}\n"), "main.cpp:2");
  EXPECT_EQ(answer.places.at(0).position, 17);
}

TEST_F(SymbolPlacesTest, AtCaret_UnknownName_SaysWhatItLookedFor) {
  EXPECT_EQ(At("void f() { nowhere@(); }\n"), "none");
  EXPECT_EQ(answer.name, "nowhere");
  EXPECT_EQ(At("@"), "none");
  EXPECT_EQ(answer.name, "");
}

TEST_F(SymbolPlacesTest, AtCaret_NamespacesAndTemplates_AreFound) {
  EXPECT_EQ(At("#include \"shape.h\"\ndeep::er::Bo@x box;\n"), "shape.h:13");
  EXPECT_EQ(At("#include \"shape.h\"\nint f(Bag<int>& bag) { return bag.ta@ke(1); }\n"),
            "shape.h:14");
}

TEST_F(SymbolPlacesTest, AtCaret_EnumeratorsAndNamesOfTheClassesAround) {
  project.Add("/p/state.h",
              "enum State {\n  cIdle,\n  cBusy\n};\nclass Outer {\n  enum Mode { cFast };\n"
              "  class Inner { int f(); };\n  class Other { };\n};\n");
  EXPECT_EQ(At("#include \"state.h\"\nint f() { return cBu@sy; }\n"), "state.h:3");
  EXPECT_EQ(At("#include \"state.h\"\nint Outer::Inner::f() { return cFa@st; }\n"), "state.h:6");
  EXPECT_EQ(At("#include \"state.h\"\nint Outer::Inner::f() { Oth@er(); }\n"), "state.h:8");
  EXPECT_EQ(At("#include \"state.h\"\nint g() { return cFa@st; }\n"), "none") << "not in there";
}

TEST_F(SymbolPlacesTest, AtCaret_NameOfTheLibrary_IsNoPlaceInTheText) {
  TagClass& record = project.library.classes["vector"];
  record.name = "vector";
  record.kind = 'c';
  project.library.Changed();
  EXPECT_EQ(At("std::vec@tor<int> v;\n"), "none");
  EXPECT_TRUE(answer.isLibrary);
  EXPECT_EQ(answer.name, "vector");
}

TEST_F(SymbolPlacesTest, Around_TheSignatureAtTheCaretDecides) {
  EXPECT_EQ(Around("/p/shape.h", WithCaret(cHeader, "  void draw(in"), Want::cDefinition),
            "shape.cpp:3");
  EXPECT_EQ(Around("/p/shape.h", WithCaret(cHeader, "int size();"), Want::cDefinition),
            "shape.cpp:6");
  EXPECT_EQ(Around("/p/shape.cpp", WithCaret(cSource, "draw(char c, int n) {"), Want::cDeclaration),
            "shape.h:5");
  EXPECT_EQ(Around("/p/shape.cpp", WithCaret(cSource, "{ return 2 *"), Want::cDeclaration),
            "shape.h:11");
  EXPECT_EQ(Around("/p/shape.h", WithCaret(cHeader, "{ return 1"), Want::cDefinition), "shape.h:8")
      << "a function within its class is both";
  EXPECT_EQ(Around("/p/shape.h", WithCaret(cHeader, "int alone"), Want::cDefinition), "none");
  EXPECT_EQ(answer.name, "alone");
}

TEST_F(SymbolPlacesTest, Around_SameNameInOtherClasses_IsLeftOut) {
  project.Add("/p/other.h", "class Other {\n  void draw();\n};\n");
  project.Add("/p/other.cpp", "#include \"other.h\"\n\n\n\nvoid Other::draw() {}\n");
  EXPECT_EQ(Around("/p/other.h", "class Other {\n  void dr@aw();\n};\n", Want::cDefinition),
            "other.cpp:5");
}

TEST(IncludeNameIn, ReadsBothForms) {
  EXPECT_EQ(IncludeNameIn("#include <a.h>")->name, "a.h");
  EXPECT_FALSE(IncludeNameIn("#include <a.h>")->isQuoted);
  EXPECT_EQ(IncludeNameIn("  #  include\t\"dir/b.h\"  // c")->name, "dir/b.h");
  EXPECT_TRUE(IncludeNameIn("#include \"b.h\"")->isQuoted);
}

TEST(IncludeNameIn, AnythingElse_HasNone) {
  for (const char* line : {"", "#", "#define A <b>", "include <a.h>", "#include <a.h",
                           "#include \"\"", "#include MACRO", "int a; // #include <b>"})
    EXPECT_FALSE(IncludeNameIn(line)) << line;
}

}  // namespace
}  // namespace zendry
