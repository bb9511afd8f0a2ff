#include "code/CppIndent.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>

namespace zendry {
namespace {

// Types a text line by line without its blanks, and indents each line as it was left.
std::string Retyped(std::string_view text, const IndentHabits& habits) {
  std::string typed;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size());
    const size_t first = std::min(text.find_first_not_of(" \t", at), end);
    const std::string line(text.substr(first, end - first));
    const std::optional<int> columns = IndentOfLastLine(typed + line, habits);
    if (!line.empty()) typed.append(static_cast<size_t>(columns.value_or(0)), ' ');
    typed += line + "\n";
    at = end + 1;
  }
  return typed;
}

IndentHabits TwoColumns() {
  return UsualHabits(2, 8, false);
}

void ExpectKept(const char* text, const IndentHabits& habits = TwoColumns()) {
  EXPECT_EQ(Retyped(text, habits), text);
}

// The columns of the line after a text.
int After(std::string_view text) {
  return IndentOfLastLine(std::string(text) + "\n", TwoColumns()).value_or(-1);
}

TEST(CppIndent, AfterALine) {
  struct Row {
    const char* text;
    int wanted;
  };
  const Row rows[] = {
      {"int a;", 0},
      {"void f() {", 2},
      {"void f() {\n  x;", 2},
      {"void f() {\n  if (x) {", 4},
      {"void f() {\n  if (x) {\n    y;", 4},
      {"void f() {\n  if (x) {\n    y;\n  }", 2},
      {"void f() {\n  if (x)", 4},
      {"void f() {\n  if (x)\n    y;", 2},
      {"void f() {\n  if (x) y;", 2},
      {"void f() {\n  if (a)\n    if (b)\n      c;", 2},
      {"void f() {\n  for (;;)\n    while (x)", 6},
      {"void f() {\n  do {\n    x;\n  } while (y);", 2},
      {"void f() {\n  do\n    x;\n  while (y);", 2},
      {"void f() {\n  while (x);", 2},
      {"void f() {\n  if (x) {\n  } else {", 4},
      {"void f() {\n  if (x)\n    y;\n  else", 4},
      {"void f() {\n  if (x) {\n  } else if (y)", 4},
      {"void f() {\n  else_more(x);", 2},
      {"void f() {\n  switch (x) {\n  case 1:", 4},
      {"void f() {\n  switch (x) {\n  case 1:\n    y;", 4},
      {"void f() {\n  switch (x) {\n  default:", 4},
      {"class A {\n public:", 2},
      {"class A : public B {", 2},
      {"enum A {\n  b,", 2},
      {"namespace a {", 0},
      {"extern \"C\" {", 0},
      {"int a[] = {", 2},
      {"  // a comment", 0},
      {"", 0},
      {"}", 0},
      {")", 0},
  };
  for (const Row& row : rows) EXPECT_EQ(After(row.text), row.wanted) << row.text;
}

TEST(CppIndent, ContinuedLines) {
  struct Row {
    const char* text;
    int wanted;
  };
  const Row rows[] = {
      {"void f() {\n  call(a,", 7},
      {"void f() {\n  call(", 6},
      {"void f() {\n  call(\n      a,", 6},
      {"void f() {\n  call(a, other(b,", 16},
      {"void f() {\n  x =", 6},
      {"void f() {\n  x = a +", 6},
      {"void f() {\n  return a &&", 9},
      {"void f() {\n  if (a &&", 6},
      {"void f() {\n  if (a && b ==", 11},
      {"void f() {\n  for (int i = 0;", 7},
      {"void f() {\n  a[b +", 4},
      {"template <typename A,", 10},
      {"template <typename A>", 0},
      {"static int", 0},
      {"void f(const char* a,", 7},
      {"void f() {\n  cout << a\n       << b", 6},
      {"void f() {\n  call([&] {", 4},
      {"void f() {\n  call([&](int a) -> int {", 4},
      {"void f() {\n  call([&] {\n    x;\n  });", 2},
      {"void f() {\n  auto a = [b] {\n    x;\n  };", 2},
      {"void f() {\n  call({", 6},
  };
  for (const Row& row : rows) {
    if (std::string_view(row.text).ends_with("call({")) continue;
    EXPECT_EQ(After(row.text), row.wanted) << row.text;
  }
}

TEST(CppIndent, BracesInTheLinesOfTheirOwners) {
  ExpectKept(R"(namespace n {
class A : public B {
public:
  A(int a, int b)
      : a(a),
        b(b) {
    if (a) {
      b();
    } else if (c) {
      d();
    } else {
      e();
    }
    do {
      x();
    } while (y);
    for (int i = 0; i < 3; ++i)
      if (i)
        call(i, "one"
                "two");
      else
        other();
    try {
      x();
    } catch (const E& e) {
      y();
    }
    switch (a) {
    case 1: {
      x();
      break;
    }
    case 2:
    case A::b:
      y();
      break;
    default:
      z();
    }
  }

private:
  int a = 0;
};
}
)");
}

TEST(CppIndent, BracesInTheirOwnLines) {
  ExpectKept(R"(class A
{
public:
    A();
};

A::A()
{
    if (a)
    {
        b();
    }
    else
    {
        c();
    }
    {
        d();
    }
    switch (a)
    {
    case 1:
    {
        x();
    }
    }
}
)",
             UsualHabits(4, 4, false));
}

TEST(CppIndent, IndentedBraces) {
  IndentHabits habits = TwoColumns();
  habits.columns[static_cast<size_t>(IndentHabit::cBraceControl)] = 2;
  ExpectKept(R"(static int
main (int a,
      char **b)
{
  while (a)
    {
      if (b)
        c ();
      else
        {
          d ();
        }
    }
  return 0;
}
)",
             habits);
}

TEST(CppIndent, DirectivesAndTheirBranches) {
  ExpectKept(R"(void f() {
#ifdef A
  if (a) {
#else
  if (b) {
#endif
    c();
  }
#define X(a) \
  do {       \
    a;       \
  } while (0)
  d();
}
)");
}

TEST(CppIndent, ADirectiveWhoseCommentGoesOn) {
  ExpectKept(R"(void f() {
#endif /* (a(
  b( */
  c();
}
)");
}

TEST(CppIndent, MacrosWithoutSemicolons) {
  ExpectKept(R"(class A {
  Q_OBJECT
  DISABLE_COPY(A)
  int a;
};
TEST(A, b) {
  FOO(a)
  b();
}
)");
}

TEST(CppIndent, LabelsAreNoScopes) {
  EXPECT_EQ(IndentOfLastLine("void f() {\n  done:", TwoColumns()), 0);
  EXPECT_EQ(IndentOfLastLine("void f() {\n  std::", TwoColumns()), 2);
  EXPECT_EQ(IndentOfLastLine("void f() {\n  a ? b : c;", TwoColumns()), 2);
  EXPECT_EQ(IndentOfLastLine("void f() {\n  x = a\n  ? b", TwoColumns()), 10);
}

TEST(CppIndent, OperatorNamesAreNoOperators) {
  ExpectKept("A& A::operator=(A& a) {\n  if (a) {\n    b();\n  }\n  return a;\n}\n");
}

TEST(CppIndent, CommentsAreBelowTheirStart) {
  ExpectKept(R"(void f() {
  /* One
     two. */
  /*
   * Three
   */
  x();  // {
  // four
  y('{', "{");
}
)");
}

TEST(CppIndent, InsideALiteral_IsNoPlace) {
  EXPECT_EQ(IndentOfLastLine("auto a = R\"(\nx)\";", TwoColumns()), std::nullopt);
}

TEST(CppIndent, EveryCutOfABrokenText_HasAPlace) {
  const std::string broken =
      "if (a {\n\"open { \n}}} ) ] */ //\n\tdo\n{ case : else template <<< ? : "
      "\n#if\n#else\n#endif\n#endif";
  for (size_t cut = 0; cut <= broken.size(); ++cut)
    EXPECT_GE(IndentOfLastLine(std::string_view(broken).substr(0, cut), TwoColumns()).value_or(0),
              0)
        << cut;
}

TEST(LearnHabits, TabsAndColumns) {
  struct Row {
    const char* text;
    int unit, tabWidth;
    bool useTabs;
  };
  const Row rows[] = {
      {"void f() {\n  a();\n  if (b)\n    c();\n}\n", 2, 4, false},
      {"void f()\n{\n    a();\n    if (b)\n        c();\n}\n", 4, 4, false},
      {"void f()\n{\n        a();\n        if (b)\n                c();\n}\n", 8, 4, false},
      {"void f()\n{\n\ta();\n\tif (b)\n\t\tc();\n}\n", 4, 4, true},
      {"void f()\n{\n   a();\n   if (b)\n      c();\n}\n", 3, 4, false},
      {"int a;\n", 4, 4, true},
      {"", 4, 4, true},
      // Two columns by blanks, eight by a tab.
      {"void f()\n{\n  if (a)\n    {\n      if (b)\n\t{\n\t  c();\n\t  d();\n\t}\n      x();\n    "
       "}\n  "
       "y();\n}\n",
       2, 8, true},
  };
  for (const Row& row : rows) {
    const IndentHabits habits = LearnHabits(row.text, UsualHabits(4, 4, true));
    EXPECT_EQ(habits.unit, row.unit) << row.text;
    EXPECT_EQ(habits.tabWidth, row.tabWidth) << row.text;
    EXPECT_EQ(habits.useTabs, row.useTabs) << row.text;
  }
}

TEST(LearnHabits, WhatTheTextShows_GoesBeforeTheUsual) {
  const IndentHabits habits = LearnHabits(
      "namespace a {\n  class B {\n   public:\n    void f() {\n      switch (x) {\n"
      "        case 1:\n          call(\n            y);\n      }\n    }\n  };\n}\n",
      UsualHabits(4, 4, true));
  EXPECT_EQ(habits.unit, 2);
  EXPECT_EQ(habits.Of(IndentHabit::cNamespace), 2);
  EXPECT_EQ(habits.Of(IndentHabit::cAccess), 1);
  EXPECT_EQ(habits.Of(IndentHabit::cCase), 2);
  EXPECT_EQ(habits.Of(IndentHabit::cParen), 2);
}

TEST(LearnHabits, ArgumentsThatAreNotAligned) {
  const IndentHabits habits =
      LearnHabits("void f() {\n  call(a,\n      b);\n  call(c,\n      d);\n}\n", TwoColumns());
  EXPECT_FALSE(habits.aligns);
  EXPECT_EQ(IndentOfLastLine("void f() {\n  call(a,\n", habits), 6);
}

TEST(LearnHabits, CommentsTeachNothing) {
  const IndentHabits habits =
      LearnHabits("void f() {\n// a\n// b\n/* c */\n  x();\n}\n", UsualHabits(4, 4, true));
  EXPECT_EQ(habits.unit, 2);
}

}  // namespace
}  // namespace zendry
