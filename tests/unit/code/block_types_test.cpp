#include <gtest/gtest.h>

#include <string>

#include "ParsedProject.h"
#include "tags/TagData.h"

// Variables, members and aliases whose type is a block before their name, as C code has them.

namespace zendry {
namespace {

class BlockTypes : public ::testing::Test {
 protected:
  std::string InC(const std::string& text) { return project.Names("/p/main.c", text); }
  std::string InCpp(const std::string& text) { return project.Names("/p/main.cpp", text); }

  test::ParsedProject project;
};

TEST_F(BlockTypes, Alias_HasTheMembersOfItsBlock) {
  EXPECT_EQ(InC("typedef struct { int have, next; } Part;\nvoid f(Part *p) { p->@"), "have next");
  EXPECT_EQ(InC("typedef struct { int have; } *Part;\nvoid f(Part p) { p->@"), "have");
  EXPECT_EQ(InC("typedef struct part_ { int have; } Part;\nvoid f(Part p) { p.@"), "have");
  EXPECT_EQ(InC("typedef struct part_ { int have; } Part, *PartP;\nvoid f(PartP p) { p->@"),
            "have");
  EXPECT_EQ(InC("typedef union { int i; float f; } Value;\nvoid g(Value v) { v.@"), "f i");
}

TEST_F(BlockTypes, MemberWithABlock_HasItsMembers) {
  const std::string record =
      "struct S { union { int fc; int fd; } dl; struct { int x; } pos[4]; int last; };\n";
  EXPECT_EQ(InC(record + "void f(struct S *s) { s->@"), "dl last pos");
  EXPECT_EQ(InC(record + "void f(struct S *s) { s->dl.@"), "fc fd");
  EXPECT_EQ(InC(record + "void f(struct S *s) { s->pos[2].@"), "x");
  EXPECT_EQ(InC("typedef struct { struct { union { int z; } u; } in; } T;\n"
                "void f(T *t) { t->in.u.@"),
            "z");
}

TEST_F(BlockTypes, VariableWithABlock_HasItsMembers) {
  EXPECT_EQ(InC("static struct { int g; } table[4];\nvoid f(void) { table[1].@"), "g");
  EXPECT_EQ(InC("struct A { int x; } a;\nvoid f(void) { a.@"), "x");
  EXPECT_EQ(InCpp("struct A { int x; } a;\nvoid f() { a.@"), "x");
}

TEST_F(BlockTypes, BlockWithNeitherNameNorVariable_StaysAPartOfItsClass) {
  EXPECT_EQ(InC("struct S { union { int plain; }; int own; };\nvoid f(struct S *s) { s->@"),
            "own plain");
}

TEST_F(BlockTypes, NextDeclaration_HasNoTypeOfTheBlockBefore) {
  EXPECT_EQ(InC("struct A { int x; } a;\nunknown b;\nvoid f(void) { b.@"), "");
  EXPECT_EQ(InC("struct A { int x; };\nunknown b;\nvoid f(void) { b.@"), "");
}

TEST_F(BlockTypes, MacroBeforeThePointer_IsNoType) {
  EXPECT_EQ(InC("struct s { int have; };\nvoid f(struct s FAR *p) { p->@"), "have");
  EXPECT_EQ(InC("typedef struct { int have; } s;\ntypedef s FAR *sp;\nvoid f(sp p) { p->@"),
            "have");
  EXPECT_EQ(InC("struct FAR { int near; };\nvoid f(struct FAR *p) { p->@"), "near");
}

TEST_F(BlockTypes, BaseWithItsNamespace_GivesItsMembers) {
  EXPECT_EQ(InCpp("namespace a { namespace b { struct Walker { int depth; }; } }\n"
                  "struct Mine : a::b::Walker { int own; };\nvoid f(Mine m) { m.@"),
            "depth own");
}

TEST_F(BlockTypes, UnnamedBlocksOfTwoTexts_HaveDifferentNames) {
  const TagData& one = project.Add("/p/a.h", "typedef struct { int x; } T;\n");
  const TagData& two = project.Add("/p/b.h", "typedef struct { int x; } T;\n");
  for (const TagData* data : {&one, &two}) {
    ASSERT_EQ(data->globals.size(), 1u);
    ASSERT_EQ(data->classes.size(), 1u);
    EXPECT_EQ(data->globals[0].type, data->classes.begin()->first);
  }
  EXPECT_NE(one.globals[0].type, two.globals[0].type);
}

}  // namespace
}  // namespace zendry
