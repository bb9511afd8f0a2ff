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

}  // namespace
}  // namespace zendry
