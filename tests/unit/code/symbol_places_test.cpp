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

TEST_F(SymbolPlacesTest, AtCaret_LocalsInTheBlockOfAMacro) {
  const auto at = [&](const std::string& body) { return At("TEST(A, B) {\n" + body + "\n}\n"); };
  EXPECT_EQ(at("  Act<int(bool, int m)> a =\n    Make();\n  EXPECT_EQ(1, a@.Do());"), "main.cpp:2");
  EXPECT_EQ(at("  Mock<int()> mock;\n  EXPECT_EQ(1, mo@ck.Do());"), "main.cpp:2");
  EXPECT_EQ(at("  struct Some {\n    int x;\n  };\n  So@me s;"), "main.cpp:2");
  EXPECT_EQ(at("  struct Some {\n    int x;\n  };\n  Use(So@me{});"), "main.cpp:2");
  EXPECT_EQ(at("  class Some : public Base {};\n  Use(So@me());"), "main.cpp:2");
  EXPECT_EQ(at("  {\n    struct Some {};\n  }\n  Use(So@me());"), "none") << "not in there";
  EXPECT_EQ(at("  typedef std::time<float> fs;\n  EXPECT_EQ(1, f@s(1));"), "main.cpp:2");
  EXPECT_EQ(at("  typedef std::time<float> fs;\n  EXPECT_EQ(1, fs(1));\n"
               "  typedef std::time<float, std::milli> fms;\n  EXPECT_EQ(1, f@ms(1));"),
            "main.cpp:4");
  EXPECT_EQ(at("  EXPECT_EQ(1, a@.Do());"), "none");
}

TEST_F(SymbolPlacesTest, AtCaret_NameWhereItIsDeclared) {
  const auto at = [&](const std::string& body) { return At("TEST(A, B) {\n" + body + "\n}\n"); };
  EXPECT_EQ(at("  Act<int(bool, int m)> a@ =\n    Make();"), "main.cpp:2");
  EXPECT_EQ(at("  typedef std::time<float, std::milli> fm@s;"), "main.cpp:2");
  EXPECT_EQ(at("  struct So@me {\n    int x;\n  };"), "main.cpp:2");
  EXPECT_EQ(at("  Use(So@me{});"), "none");
  EXPECT_EQ(At("struct A;\ntemplate <class In, typename O@ut>\nauto f(Out& o);\n"), "main.cpp:2");
}

TEST_F(SymbolPlacesTest, AtCaret_ParameterOfATemplate_OutsideOfItsBody) {
  EXPECT_EQ(At("struct A {};\n\ntemplate <typename Out>\nauto f(O@ut& o, A) -> Out& {\n}\n"),
            "main.cpp:3");
  EXPECT_EQ(At("template <typename Out>\nauto f(Out& o) {\n}\nint g(O@ut);\n"), "none");
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

TEST_F(SymbolPlacesTest, AtCaret_OverloadsWithAsManyArguments_TheirTypesDecide) {
  project.Add("/p/pen.h",
              "struct Base { float weight; };\n"
              "struct Derived : Base {};\n"
              "struct Other {};\n"
              "class Pen {\n"
              " public:\n"
              "  void put(int n);\n"               // 6
              "  void put(double d);\n"            // 7
              "  void put(const char* text);\n"    // 8
              "  void put(const Base* base);\n"    // 9
              "  void put(const Other& other);\n"  // 10
              "  void put(bool on);\n"             // 11
              "  void put(char c);\n"              // 12
              "  void put(int n, Other o);\n"      // 13
              "  void put(int n, double d);\n"     // 14
              "};\n"
              "void draw(Pen& pen);\n"           // 16
              "void draw(Base base);\n"          // 17
              "void draw(const char text[]);\n"  // 18
  );
  const auto at = [this](const std::string& call) {
    return At(
        "#include \"pen.h\"\nvoid f(Pen pen, Derived d, Other* o, int n) {\n  const double x = "
        "1;\n  " +
        call + "\n}\n");
  };
  EXPECT_EQ(at("pen.pu@t(1);"), "pen.h:6");
  EXPECT_EQ(at("pen.pu@t(-1.5);"), "pen.h:7");
  EXPECT_EQ(at("pen.pu@t(x);"), "pen.h:7");
  EXPECT_EQ(at("pen.pu@t(d.weight);"), "pen.h:7") << "a float becomes a double";
  EXPECT_EQ(at("pen.pu@t(\"a\" \"b\");"), "pen.h:8");
  EXPECT_EQ(at("pen.pu@t(&d);"), "pen.h:9") << "a base";
  EXPECT_EQ(at("pen.pu@t(*o);"), "pen.h:10");
  EXPECT_EQ(at("pen.pu@t(!n);"), "pen.h:11");
  EXPECT_EQ(at("pen.pu@t(true);"), "pen.h:11");
  EXPECT_EQ(at("pen.pu@t('a');"), "pen.h:12");
  EXPECT_EQ(at("pen.pu@t(unknown());"), "pen.h:6") << "the first";
  EXPECT_EQ(at("pen.pu@t(n, 2.5);"), "pen.h:14");
  EXPECT_EQ(at("pen.pu@t(n, *o);"), "pen.h:13");
  EXPECT_EQ(at("dra@w(pen);"), "pen.h:16");
  EXPECT_EQ(at("dra@w(d);"), "pen.h:17");
  EXPECT_EQ(at("dra@w(\"text\");"), "pen.h:18");
}

TEST_F(SymbolPlacesTest, AtCaret_WhatTheFunctionItselfDeclares) {
  EXPECT_EQ(At("template <class Unit>\nvoid f() {\n  Un@it u;\n}\n"), "main.cpp:1");
  EXPECT_EQ(At("void f() {\n  using far = std::ratio<1, 3>;\n  g<fa@r>();\n}\n"), "main.cpp:2");
  EXPECT_EQ(At("void f() {\n  ns::store<int> kept;\n  kep@t.clear();\n}\n"), "main.cpp:2");
  EXPECT_EQ(At("int old(a, b)\n  int a;\n  long b;\n{\n  return @b;\n}\n"), "main.cpp:3");
  EXPECT_EQ(At("void f(int a,\n  int b) {\n  g(a,\n    @b);\n}\n"), "main.cpp:2");
  EXPECT_EQ(At("struct P { int width; P(int width)\n  : wi@dth(width) {} };\n"), "main.cpp:1")
      << "the member, not the parameter";
}

TEST_F(SymbolPlacesTest, AtCaret_Labels) {
  EXPECT_EQ(At("int f() {\n  goto er@ror;\nerror:\n  return 1;\n}\n"), "main.cpp:3");
  EXPECT_EQ(At("int g() {\nend:\n  goto en@d;\n}\nint f() {\nend:\n  return 1;\n}\n"), "main.cpp:2")
      << "the nearest";
  EXPECT_EQ(At("int f() {\n  goto nowhe@re;\n}\n"), "none");
}

TEST_F(SymbolPlacesTest, AtCaret_AClassBeforeItsMemberOrAName_IsTheClass) {
  const std::string head = "#include \"node.h\"\n";
  project.Add("/p/node.h",
              "class Node {\n public:\n  Node(int n);\n  Node* next();\n};\ntypedef int Count;\n");
  EXPECT_EQ(At(head + "No@de::Node(int n) {}\n"), "node.h:1");
  EXPECT_EQ(At(head + "Node::No@de(int n) {}\n"), "node.h:3");
  EXPECT_EQ(At(head + "API No@de* Node::next() {}\n"), "node.h:1");
  EXPECT_EQ(At(head + "void f(Node* a,\n  Cou@nt n, Count m);\n"), "node.h:6");
  EXPECT_EQ(At(head + "int f(int a, int Node) { return a * No@de; }\n"), "main.cpp:2");
}

TEST_F(SymbolPlacesTest, AtCaret_StructureAndTypeOfOneName_TheWordBeforeDecides) {
  project.Add("/p/list.h", "typedef struct List List;\nstruct List {\n  int length;\n};\n");
  EXPECT_EQ(At("#include \"list.h\"\nvoid f(Li@st* l);\n"), "list.h:1");
  EXPECT_EQ(At("#include \"list.h\"\nvoid f(struct Li@st* l);\n"), "list.h:2");
}

TEST_F(SymbolPlacesTest, AtCaret_AnArgumentInALineOfItsOwn_IsNoDeclaration) {
  project.Add("/p/style.h", "enum Style {\n  cPlain,\n  cBold\n};\n");
  EXPECT_EQ(At("#include \"style.h\"\nint f(char* d) { return g(&d, (char*)\"a\", -1,\n"
               "  cPla@in); }\n"),
            "style.h:2");
}

TEST_F(SymbolPlacesTest, AtCaret_WithoutPlace_TellsWhatToLookForInFiles) {
  TagClass& record = project.library.classes["string"];
  record.name = "string";
  record.signature = "basic_string";
  record.inheritance = "holder";
  record.members.emplace_back().name = "push_back";
  record.members.back().kind = 'p';
  project.library.Changed();
  const std::string head = "class Own : public Base {\n  void f(std::string text);\n};\n";
  At(head + "void f(std::string text) { text.push_@back('a'); }\n");
  EXPECT_EQ(answer.unplaced.name, "push_back");
  EXPECT_EQ(answer.name, "string::push_back");
  EXPECT_TRUE(answer.unplaced.isMember);
  EXPECT_EQ(answer.unplaced.classes,
            (std::vector<std::string>{"string", "basic_string", "holder"}));
  project.library.classes["string"].signature = "";
  At(head + "void f(std::string* text) { text->push_@back('a'); }\n");
  EXPECT_EQ(answer.unplaced.classes,
            (std::vector<std::string>{"string", "basic_string", "holder"}));
  At(head + "void Own::f(std::string text) { _hid@den = 1; }\n");
  EXPECT_EQ(answer.unplaced.name, "_hidden");
  EXPECT_FALSE(answer.unplaced.isMember);
  EXPECT_EQ(answer.unplaced.classes, (std::vector<std::string>{"Own", "Base"}));
  At("int f() { return std::chrono::nowhe@re(); }\n");
  EXPECT_EQ(answer.unplaced.nameSpace, "chrono");
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

TEST_F(SymbolPlacesTest, AtCaret_Namespace_TheFirstFileThatOpensItInReadOrder) {
  project.Add("/p/aside.h", "namespace lib { int aside(); }\n");
  project.Add("/p/outer.h", "#include \"base.h\"\nnamespace lib { int outer(); }\n");
  project.Add("/p/base.h", "\n\nnamespace lib { int base(); }\n");
  const std::string head = "#include \"outer.h\"\n";
  EXPECT_EQ(At(head + "int a = l@ib::base();\n"), "base.h:3");
  EXPECT_EQ(At(head + "using namespace l@ib;\n"), "base.h:3");
  EXPECT_EQ(At(head + "namespace l@ib { int own(); }\n"), "base.h:3");
  EXPECT_EQ(At("#include \"aside.h\"\nint a = l@ib::aside();\n"), "aside.h:1");
  EXPECT_EQ(At(head + "int f(int lib) { return l@ib; }\n"), "main.cpp:2") << "a parameter";
  EXPECT_EQ(At(head + "using namespace l@ibs;\n"), "none");
}

TEST_F(SymbolPlacesTest, AtCaret_NamespaceThatAMacroOpens_TheMacrosLine) {
  project.Add("/p/base.h",
              "#define BEGIN namespace lib {\n#define END }\n\nBEGIN\nint base();\nEND\n");
  project.Add("/p/later.cpp", "\nnamespace lib { int later; }\n");
  const std::string head = "#include \"base.h\"\n";
  EXPECT_EQ(At(head + "int a = l@ib::base();\n"), "base.h:4");
  EXPECT_EQ(At(head + "struct lib { static int a; };\nint b = l@ib::a;\n"), "main.cpp:2")
      << "a class of that name";
}

}  // namespace
}  // namespace zendry
