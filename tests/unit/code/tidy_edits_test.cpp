#include "code/TidyEdits.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

using Edits = std::vector<TextEdit>;

std::string List(const std::string& rows) {
  return "<?xml version='1.0'?>\n<replacements xml:space='preserve' incomplete_format='false'>\n" +
         rows + "</replacements>\n";
}

TEST(TidyEdits, ReadReplacements) {
  EXPECT_EQ(ReadReplacements(List(""), 0), Edits());
  EXPECT_EQ(ReadReplacements(List("<replacement offset='3' length='2'>&#10;  </replacement>\n"
                                  "<replacement offset='5' length='0'>&lt;&amp;</replacement>\n"),
                             5),
            (Edits{{3, 2, "\n  "}, {5, 0, "<&"}}));
}

TEST(TidyEdits, ReadReplacements_AnythingElse_IsRefused) {
  const std::string row = "<replacement offset='3' length='2'> </replacement>\n";
  const std::string whole = List(row);
  EXPECT_TRUE(ReadReplacements(whole, 5));
  EXPECT_FALSE(ReadReplacements(whole, 4)) << "outside of the text";
  EXPECT_FALSE(ReadReplacements(List(row + row), 9)) << "out of order";
  EXPECT_FALSE(ReadReplacements("warning: x\n" + whole, 5));
  EXPECT_FALSE(ReadReplacements(whole + "x", 5));
  EXPECT_FALSE(ReadReplacements(List("<replacement offset='3' length='2'>&x;</replacement>\n"), 5));
  EXPECT_FALSE(ReadReplacements(
      List("<replacement offset='3' length='99999999999999999999'></replacement>\n"), 5));
  EXPECT_FALSE(ReadReplacements(
      "<?xml version='1.0'?>\n<replacements xml:space='preserve' incomplete_format='true'>\n"
      "</replacements>\n",
      5))
      << "a source that doesn't parse";
  for (size_t cut = 0; cut + 1 < whole.size(); ++cut)
    EXPECT_FALSE(ReadReplacements(whole.substr(0, cut), 5)) << cut;
}

TEST(TidyEdits, Narrowed_LeavesWhatStays) {
  EXPECT_EQ(Narrowed({{1, 5, "\n  "}}, "a\n    b"), (Edits{{4, 2, ""}}));
  EXPECT_EQ(Narrowed({{1, 1, "  "}}, "a b"), (Edits{{2, 0, " "}}));
  EXPECT_EQ(Narrowed({{1, 1, " "}}, "a b"), Edits());
  EXPECT_EQ(Narrowed({{0, 3, "xyz"}}, "abc"), (Edits{{0, 3, "xyz"}}));
}

TEST(TidyEdits, IndentEdits_OfTheLinesOnly) {
  const IndentHabits habits = UsualHabits(2, 8, false);
  const std::string text = "void f() {\na;\n\n      b;\r\n    }\n  int c;";
  EXPECT_EQ(IndentEdits(text, habits, 0, 99),
            (Edits{{11, 0, "  "}, {15, 6, "  "}, {25, 4, ""}, {31, 2, ""}}));
  EXPECT_EQ(IndentEdits(text, habits, 4, 4), (Edits{{25, 4, ""}}));
  EXPECT_EQ(IndentEdits("", habits, 0, 0), Edits());
}

TEST(TidyEdits, StyleOf_SaysWhatTheTextShows) {
  const std::string text = "void f()\n{\n\tif (a)\n\t{\n\t\tb();\n\t}\n}\n";
  const std::string style = StyleOf(LearnHabits(text, UsualHabits(2, 4, false)), text);
  EXPECT_NE(style.find("IndentWidth: 4"), style.npos) << style;
  EXPECT_NE(style.find("UseTab: Always"), style.npos) << style;
  EXPECT_NE(style.find("BreakBeforeBraces: Allman"), style.npos) << style;
}

TEST(TidyEdits, DirectiveStyle_IsThatOfMostNestedDirectives) {
  struct Row {
    const char* text;
    const char* style;
  };
  const Row rows[] = {
      {"", "None"},
      {"# include <a>\n#  define B\n", "None"},  // these are in no condition
      {"#if A\n#include <a>\n#endif\n", "None"},
      {"#if A\n# include <a>\n#endif\n", "AfterHash, PPIndentWidth: 1"},
      {"#if A\n#  include <a>\n#  if B\n#    define C\n#  endif\n#endif\n",
       "AfterHash, PPIndentWidth: 2"},
      {"#if A\n# if B\n#  define C\n# endif\n#endif\n", "AfterHash, PPIndentWidth: 1"},
      {"  #if A\n    #include <a>\n  #else\n    #include <b>\n  #endif\n",
       "BeforeHash, PPIndentWidth: 4"},
      {"#if A\n#\tinclude <a>\n#endif\n", "None"},  // not said in columns
      {"#if A\n#include <a>\n#include <b>\n# define C\n#endif\n", "None"},
      {"#if A\n#include <a>\n# define C\n#endif\n", "None"},
      {"#if A\n#include <a>\n# define C\n# define D\n#endif\n", "AfterHash, PPIndentWidth: 1"},
      {"#endif\n#endif\n#if A\n# include <a>\n#endif\n", "AfterHash, PPIndentWidth: 1"},
      {"#ifndef A_H\n#define A_H\n#include <a>\n#if B\n# include <b>\n#endif\n#endif\n",
       "AfterHash, PPIndentWidth: 1"},
      {"#ifndef A_H\n# define A_H\n# include <a>\n#endif\n", "None"},
      {"#ifndef A_H\n# define B_H\n# include <a>\n#endif\n", "AfterHash, PPIndentWidth: 1"},
      {"#if A\r\n#  include <a>\r\n#endif", "AfterHash, PPIndentWidth: 2"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(DirectiveStyle(row.text), std::string("IndentPPDirectives: ") + row.style)
        << row.text;
}

TEST(TidyEdits, StyleOf_EachHabitOfBraces) {
  struct Row {
    const char* text;
    BraceHabit braces;
  };
  const Row rows[] = {
      {"void f() {\n  if (a) {\n    b();\n  }\n}\n", BraceHabit::cAttached},
      {"void f()\n{\n  if (a) {\n    b();\n  }\n}\n", BraceHabit::cOwnOfFunctions},
      {"void f()\n{\n  if (a)\n  {\n    b();\n  }\n}\n", BraceHabit::cOwn},
      {"void f()\n{\n  if (a)\n    {\n      b();\n    }\n}\n", BraceHabit::cIndented},
  };
  for (const Row& row : rows)
    EXPECT_EQ(LearnHabits(row.text, UsualHabits(2, 8, false)).braces, row.braces) << row.text;
}

}  // namespace
}  // namespace zendry
