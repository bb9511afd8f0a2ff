#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "ParsedProject.h"

// Which members of a class a list shows, from the text to the names.

namespace zendry {
namespace {

class MemberLists : public ::testing::Test {
 protected:
  static constexpr const char* cHeader =
      "class Base {\npublic:\n  Base();\n  ~Base();\n  void open();\nprotected:\n  int guarded;\n"
      "private:\n  int hidden;\n};\n"
      "class Shape : public Base {\npublic:\n  explicit Shape(int n);\n  ~Shape();\n"
      "  Shape& operator=(const Shape& other);\n  void draw();\n  struct Part { int piece; void "
      "cut(); };\n"
      "protected:\n  int inner;\nprivate:\n  void secret();\n  int own;\n};\n"
      "class Square : public Shape {\npublic:\n  void turn();\n};\n"
      "class Stranger {\npublic:\n  void look();\n};\n";

  std::string Names(const std::string& code) {
    return project.Names("/p/main.cpp", cHeader + code);
  }

  test::ParsedProject project;
};

TEST_F(MemberLists, FromOutside_HaveNeitherPrivateNorProtectedMembers) {
  EXPECT_EQ(Names("void f(Shape s) {\n  s.@\n}\n"), "draw open");
  EXPECT_EQ(Names("void f(Shape* s) {\n  s->@\n}\n"), "draw open");
  EXPECT_EQ(Names("void Stranger::look() {\n  Shape s;\n  s.@\n}\n"), "draw open");
  EXPECT_EQ(Names("void f(Shape s) {\n  s.se@\n}\n"), "");
}

TEST_F(MemberLists, OnTheSecondRoad_AreTheSame) {
  EXPECT_EQ(Names("void f(Shape* s) {\n  (*s).@\n}\n"), "draw open");
  EXPECT_EQ(Names("void Shape::draw() {\n  (*this).@\n}\n"), "draw guarded inner open own secret");
}

TEST_F(MemberLists, OfTheClassItself_HaveAllItsOwnMembers) {
  EXPECT_EQ(Names("void Shape::draw() {\n  this->@\n}\n"), "draw guarded inner open own secret");
  EXPECT_EQ(Names("void Shape::draw() {\n  Shape other;\n  other.@\n}\n"),
            "draw guarded inner open own secret");
}

TEST_F(MemberLists, OfABase_HaveItsProtectedMembers) {
  EXPECT_EQ(Names("void Square::turn() {\n  this->@\n}\n"), "draw guarded inner open turn");
}

TEST_F(MemberLists, OfAnOuterClass_HaveAllItsMembers) {
  EXPECT_EQ(Names("void Shape::Part::cut() {\n  Shape s;\n  s.@\n}\n"),
            "draw guarded inner open own secret");
}

TEST_F(MemberLists, BehindTheScopeAtFileLevel_HaveAllWithConstructors) {
  EXPECT_EQ(Names("void Shape::@\n"),
            "Base Part Shape draw guarded hidden inner open own secret ~Base ~Shape");
}

TEST_F(MemberLists, NamesOfPrivateTypes_EndLikeTheirClass) {
  EXPECT_EQ(Names("namespace in {\nclass A { int x; public: A(); int y; };\n"
                  "class AB { void f(); };\nvoid AB::f() { A a; a.@"),
            "y");
}

TEST_F(MemberLists, InAMacroWithABlock_OfAnotherNameOfTheFixture) {
  const auto in = [&](const std::string& fixture) {
    return Names(
        "class Db { public: void get(); };\n"
        "class DbTest {\nprotected:\n  static Db* db_;\n};\n"
        "typedef DbTest OtherTest;\ntypedef Round Round;\n"
        "TEST_F(" +
        fixture + ", Reads) {\n  db_->@\n}\n");
  };
  EXPECT_EQ(in("OtherTest"), "get");
  EXPECT_EQ(in("Round"), "");
  EXPECT_EQ(in("NoTest"), "");
}

// The body of such a macro belongs to a class that derives from the macro's first argument.
TEST_F(MemberLists, InAMacroWithABlock_HaveThoseOfTheFixture) {
  project.Add("/p/fixture.h",
              "class Db {\npublic:\n  void get();\n};\n"
              "class DbTest : public testing::Test {\nprotected:\n  Db* db_;\n  void Fill();\n"
              "private:\n  int hidden;\n};\n");
  const auto in = [&](const std::string& body) {
    return Names("#include \"fixture.h\"\nTEST_F(DbTest, Reads) {\n  " + body + "\n}\n");
  };
  EXPECT_EQ(in("db_->@"), "get");
  EXPECT_EQ(in("this->db_->@"), "get");
  EXPECT_EQ(in("(*db_).@"), "get");
  EXPECT_EQ(in("this->F@"), "Fill");
  EXPECT_EQ(in("Fi@"), "Fill");
  EXPECT_EQ(in("db@"), "db_");
  EXPECT_EQ(in("auto* x = db_; x->@"), "get");
}

TEST_F(MemberLists, OfAPrivateBase_AreForTheClassAndItsDerivedOnesOnly) {
  const std::string code =
      "class Open { public: void read(); void write(); };\n"
      "class File : Open { public: using Open::write; void close(); struct In { void f(); }; };\n"
      "class Log : public File, protected Stranger { public: void add(); };\n"
      "struct Plain : Open {};\nstruct Hidden : private virtual ns::Open {};\n";
  EXPECT_EQ(Names(code + "void f(File x) {\n  x.@\n}\n"), "close write");
  EXPECT_EQ(Names(code + "void f(File* x) {\n  (*x).@\n}\n"), "close write");
  EXPECT_EQ(Names(code + "void f(Log x) {\n  x.@\n}\n"), "add close write");
  EXPECT_EQ(Names(code + "void f(Plain x) {\n  x.@\n}\n"), "read write");
  EXPECT_EQ(Names(code + "void f(Hidden x) {\n  x.@\n}\n"), "");
  EXPECT_EQ(Names(code + "void File::close() {\n  this->@\n}\n"), "close read write");
  EXPECT_EQ(Names(code + "void File::In::f() {\n  File x;\n  x.@\n}\n"), "close read write");
  EXPECT_EQ(Names(code + "void Log::add() {\n  this->@\n}\n"), "add close look read write");
}

TEST_F(MemberLists, OfAClassWithFriends_HaveAllForThem) {
  const std::string code =
      "class Node {\n  friend class Tree;\n  friend struct ns::Other;\n"
      "  Node* next;\npublic:\n  int count;\n};\n"
      "class Tree { void f(); struct In { void g(); }; };\nclass Oak : Tree { void f(); };\n"
      "struct Other { void f(); };\n"
      "class Leaf {\n  friend void walk(Leaf*);\n  int own;\npublic:\n  int size;\n};\n";
  EXPECT_EQ(Names(code + "void Tree::f() {\n  Node* n;\n  n->@\n}\n"), "count next");
  EXPECT_EQ(Names(code + "void Tree::In::g() {\n  Node* n;\n  n->@\n}\n"), "count next");
  EXPECT_EQ(Names(code + "void Other::f() {\n  Node* n;\n  n->@\n}\n"), "count next");
  EXPECT_EQ(Names(code + "void Oak::f() {\n  Node* n;\n  n->@\n}\n"), "count");
  EXPECT_EQ(Names(code + "void walk(Leaf* n) {\n  n->@\n}\n"), "size");
}

TEST_F(MemberLists, OfAClassWithFriendsByTheirNamesAlone_HaveAllForThem) {
  const std::string code =
      "class App;\ntemplate <class T> class Node {\n  friend App;\n  friend n::Tool;\n"
      "  friend void look(Node&);\nprotected:\n  int hidden;\n};\n"
      "class Leaf : public Node<Leaf> {\n  int own;\n};\n"
      "class App { void run(); };\nclass Tool { void run(); };\nclass look { void run(); };\n";
  EXPECT_EQ(Names(code + "void App::run() {\n  Leaf n;\n  n.@\n}\n"), "hidden");
  EXPECT_EQ(Names(code + "void Tool::run() {\n  Leaf n;\n  n.@\n}\n"), "hidden");
  EXPECT_EQ(Names(code + "void look::run() {\n  Leaf n;\n  n.@\n}\n"), "") << "a function";
}

// A friend function is written in the class, but is no member of it.
TEST_F(MemberLists, HaveNoFriendFunctions) {
  const std::string code =
      "class Node {\npublic:\n  friend void turn(Node&);\n  friend int many(Node& n) { return 1; "
      "}\n"
      "  int own;\n  void go();\n};\n";
  EXPECT_EQ(Names(code + "void f(Node n) {\n  n.@\n}\n"), "go own");
  EXPECT_EQ(Names(code + "void Node::go() {\n  this->@\n}\n"), "go own");
  EXPECT_EQ(Names(code + "void f() {\n  Node::@\n}\n"), "go own");
}

TEST_F(MemberLists, BehindAnIndex_AreThoseOfTheElement) {
  const std::string code =
      "class Part { public: int piece; };\n"
      "template <class T> class Array { public: T& operator[](int i); int size; int place; };\n"
      "void f(Array<Part*> a, Part* p) {\n  ";
  EXPECT_EQ(Names(code + "a[0]->@\n}\n"), "piece");
  EXPECT_EQ(Names(code + "a[0] .@\n}\n"), "piece");
  EXPECT_EQ(Names(code + "a[0]->p@\n}\n"), "piece");
  EXPECT_EQ(Names(code + "p[0].@\n}\n"), "piece");
}

TEST_F(MemberLists, OfABaseInTheSameClass) {
  const std::string code =
      "struct Base2 { int far; };\n"
      "class Outer {\npublic:\n  template <typename = void> struct Base2 { int near; };\n"
      "  template <typename T> struct Derived : Base2<> { T value; };\n};\n"
      "struct Other : Base2 { int own; };\n";
  EXPECT_EQ(Names(code + "void f(Outer::Derived<int>* x) {\n  x->@\n}\n"), "near value");
  EXPECT_EQ(Names(code + "void f(Other* x) {\n  x->@\n}\n"), "far own");
}

TEST_F(MemberLists, HaveNamesThatBeginWithAnUnderscore) {
  const std::string code =
      "class Tree {\npublic:\n  Tree* _next;\n  int __size, _Max;\n  int count;\n};\n";
  EXPECT_EQ(Names(code + "void f(Tree* x) {\n  x->@\n}\n"), "_Max __size _next count");
  EXPECT_EQ(Names(code + "void f(Tree* x) {\n  x->_next->_n@\n}\n"), "_next");
}

TEST_F(MemberLists, OfAnAliasInANamespace) {
  const std::string code =
      "namespace detail {\nclass Memory { public: void merge(); };\n"
      "using Holder = std::shared_ptr<Memory>;\n}\n"
      "class Builder { detail::Holder memory; void f(); };\n";
  EXPECT_EQ(Names(code + "void Builder::f() {\n  memory->@\n}\n"), "merge");
}

TEST_F(MemberLists, BehindANamespaceThatAMacroOpens) {
  project.Add("/p/begin.h", "#define BEGIN_INNER namespace inner {\n#define END_INNER }\n");
  project.Add("/p/parts.h",
              "#include \"begin.h\"\nint outside();\nBEGIN_INNER\nint inside();\n"
              "class Part {};\nEND_INNER\n");
  project.Add("/p/far.h", "BEGIN_INNER\nint unseen();\nEND_INNER\n");
  const std::string use = "#include \"parts.h\"\nvoid f() {\n  ";
  EXPECT_EQ(project.Names("/p/a.cpp", use + "inner::@\n}\n"), "Part inside");
  EXPECT_EQ(project.Names("/p/a.cpp", use + "other::@\n}\n"), "");
  project.Add("/p/more.h", "namespace inner {\nint more();\n}\n");
  EXPECT_EQ(project.Names("/p/a.cpp", "#include \"more.h\"\n" + use + "inner::@\n}\n"),
            "Part inside more");
}

}  // namespace
}  // namespace zendry
