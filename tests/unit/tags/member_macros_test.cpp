#include "tags/MemberMacros.h"

#include <gtest/gtest.h>

#include <string>

#include "ParsedProject.h"

namespace zendry {
namespace {

TEST(BodyOfMacro, IsItsTextOverAllItsLines) {
  const std::string text =
      "int x;\n#define A int a; \\\n  int b\n# define B\n#  define C(x) int x\n#define AB 1\n";
  EXPECT_EQ(BodyOfMacro(text, 2, "A"), " int a;    int b");
  EXPECT_EQ(BodyOfMacro(text, 4, "B"), "");
  EXPECT_EQ(BodyOfMacro(text, 5, "C"), "") << "it takes arguments";
  EXPECT_EQ(BodyOfMacro(text, 6, "A"), "") << "another name";
  EXPECT_EQ(BodyOfMacro(text, 1, "A"), "");
  EXPECT_EQ(BodyOfMacro(text, 70, "A"), "");
  EXPECT_EQ(BodyOfMacro("#define A int a;\\\r\nint b", 1, "A"), " int a; int b");
}

TEST(MemberMacros, BringTheirMembersIntoClasses) {
  test::ParsedProject project;
  project.Add("/p/o.h",
              "#define Head struct Object* next; unsigned char kind\n"
              "#define Closure Head; int count; \\\n  Object* list\n"
              "#define Call(x) int x\n#define EMPTY\n#define LOOP LOOP; int once\n"
              "typedef struct Object { Head; } Object;\n"
              "struct Function { Closure; int own; };\n"
              "struct Other { Call(a); EMPTY; int own; };\nstruct Round { LOOP; };\n");
  const std::string include = "#include \"o.h\"\n";
  EXPECT_EQ(project.Names("/p/a.c", include + "void f(Object* o) {\n  o->@\n}\n"), "kind next");
  EXPECT_EQ(project.Names("/p/a.c", include + "void f(Object* o) {\n  o->next->next->@\n}\n"),
            "kind next");
  EXPECT_EQ(project.Names("/p/a.c", include + "void f(struct Function* o) {\n  o->@\n}\n"),
            "count kind list next own");
  EXPECT_EQ(project.Names("/p/a.c", include + "void f(struct Function* o) {\n  o->list->@\n}\n"),
            "kind next");
  EXPECT_EQ(project.Names("/p/a.c", include + "void f(struct Other* o) {\n  o->@\n}\n"), "own");
  EXPECT_EQ(project.Names("/p/a.c", include + "void f(struct Round* o) {\n  o->@\n}\n"), "once");
}

TEST(MemberMacros, AloneInCapitalsOnTheirLine_NeedNoSemicolon) {
  test::ParsedProject project;
  project.Add("/p/o.h",
              "#define MORE_FIELDS int more; /* empty */ \\\n  void* data;\n"
              "#define FIELDS Object* next; /* of all */ \\\n  union { int fd; long id; } u; \\\n"
              "  MORE_FIELDS\n"
              "#define API int surplus;\n#define Small int small;\n"
              "typedef struct Object { FIELDS } Object;\n"
              "struct First {\n  FIELDS  // all\n};\n"
              "struct Middle {\n  FIELDS /* all */\n  int* own;\n  MORE_FIELDS\n  int last;\n};\n"
              "struct Two {\n  FIELDS\n  MORE_FIELDS\n};\n"
              "struct Other {\n  API int own;\n  Small\n  int value;\n  API last;\n};\n");
  const auto names = [&](const std::string& type) {
    return project.Names("/p/a.c",
                         "#include \"o.h\"\nvoid f(struct " + type + "* o) {\n  o->@\n}\n");
  };
  EXPECT_EQ(names("First"), "data more next u");
  EXPECT_EQ(names("Middle"), "data last more next own u");
  EXPECT_EQ(names("Two"), "data more next u");
  EXPECT_EQ(names("Object"), "data more next u");
  EXPECT_EQ(names("Other"), "last own value") << "more on the line, or a type by its name";
  EXPECT_EQ(project.Names("/p/a.c",
                          "#include \"o.h\"\nvoid f(struct Two* o) {\n  o->next->next->u.@\n}\n"),
            "fd id");
}

TEST(MemberMacros, FollowTheTextOfTheMacro) {
  test::ParsedProject project;
  const std::string use = "struct S { Head; };\n";
  project.Add("/p/o.h", "#define Head int a\n" + use);
  EXPECT_EQ(project.Names("/p/a.c", "void f(struct S* s) {\n  s->@\n}\n"), "a");
  project.Add("/p/o.h", "\n#define Head int b\n" + use);
  EXPECT_EQ(project.Names("/p/a.c", "void f(struct S* s) {\n  s->@\n}\n"), "b");
}

}  // namespace
}  // namespace zendry
