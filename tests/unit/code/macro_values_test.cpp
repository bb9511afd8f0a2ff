#include <gtest/gtest.h>

#include <string>

#include "ParsedProject.h"

// Lists behind macros, from the text to the names.

namespace zendry {
namespace {

class MacroValues : public ::testing::Test {
 protected:
  MacroValues() {
    project.Add("/p/state.h",
                "struct global { int count; struct list *all; };\n"
                "struct list { struct list *next; int size; };\n"
                "typedef struct state { struct global *l_G; struct list base; } state;\n"
                "#define G(L)\t((L)->l_G)\n"
                "#define ALL(L) (G(L)->all)\n"
                "#define holder(p, type, member) \\\n"
                "  ((type *)((char *)(p) - offsetof(type, member)))\n"
                "#define to_state(l) holder(l, state, base)\n"
                "#define THE_STATE (*get_state())\n"
                "#define ROUND ROUND\n#define ROUND_TRIP(x) ROUND_TRIP(x)\n"
                "#define Node struct list\n#define s_size base.size\n#define s_next base.next\n"
                "#define NOTHING\n"
                "#define /* struct list * */ base_of( \\\n  /* state * */ L)  (&(L)->base)\n"
                "struct state *get_state(void);\n");
  }
  std::string Names(const std::string& body) {
    return project.Names(
        "/p/main.c",
        "#include \"state.h\"\nvoid f(state *L, struct list *l) {\n  " + body + "\n}\n");
  }

  test::ParsedProject project;
};

TEST_F(MacroValues, CallThatStandsForAnExpression) {
  EXPECT_EQ(Names("G(L)->@"), "all count");
  EXPECT_EQ(Names("G(L)->all->@"), "next size");
  EXPECT_EQ(Names("G(L)->al@"), "all");
  EXPECT_EQ(Names("ALL(L)->@"), "next size");
  EXPECT_EQ(Names("G(to_state(ALL(L)))->@"), "all count");
}

TEST_F(MacroValues, CallOfAMacroWithCommentsInItsHead) {
  EXPECT_EQ(Names("base_of(L)->@"), "next size");
}

TEST_F(MacroValues, CastInAMacro) {
  EXPECT_EQ(Names("to_state(l)->@"), "base l_G");
  EXPECT_EQ(Names("to_state(l->next)->l_G->@"), "all count");
  EXPECT_EQ(Names("holder(l, struct global, all)->@"), "all count");
}

TEST_F(MacroValues, NameThatStandsForAnExpression) {
  EXPECT_EQ(Names("THE_STATE.@"), "base l_G");
  EXPECT_EQ(Names("THE_STATE.base.@"), "next size");
}

TEST_F(MacroValues, NameThatStandsForAType) {
  EXPECT_EQ(Names("Node *n = 0;\n  n->next->@"), "next size");
}

TEST_F(MacroValues, NameThatStandsForAMemberOfAMember) {
  EXPECT_EQ(Names("L->s_next->@"), "next size");
}

TEST_F(MacroValues, ThatLeadNowhere_EndAndHaveNoList) {
  for (const char* body : {"ROUND.@", "ROUND_TRIP(L)->@", "NOTHING.@", "G(L, L)->@", "G()->@",
                           "G.@", "G->@", "L->NOTHING.@", "ROUND *r; r->@"})
    EXPECT_EQ(Names(body), "") << body;
}

TEST_F(MacroValues, CastOfAnExpressionIsOfItsType) {
  EXPECT_EQ(Names("((struct global *)L)->@"), "all count");
  EXPECT_EQ(Names("((struct global *)((char *)L - 8))->@"), "all count");
  EXPECT_EQ(Names("((struct global *)*&L->base[1].next)->@"), "all count");
}

TEST_F(MacroValues, DeclarationWithAMacroBehindTheName) {
  const std::string code = "#define GUARDED(x)\n#define UNUSED\nstruct P { int x; };\n";
  const auto names = [&](const std::string& rest) {
    return project.Names("/p/main.cpp", code + rest);
  };
  EXPECT_EQ(names("void f() {\n  P* p UNUSED = 0;\n  (*p).@\n}\n"), "x");
  EXPECT_EQ(
      names("struct S {\n  std::vector<P*> all GUARDED(lock);\n  void f() { all[0]->@ }\n};\n"),
      "x");
}

}  // namespace
}  // namespace zendry
