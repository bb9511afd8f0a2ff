#include "code/CodeScan.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(CodeScan, PlacesInCode) {
  for (const char* text :
       {"", "p.", "a = b;\n", "/* note */ p->", "\"text\" + s.", "'a' == c.", "// note\np.",
        "#define A p.", "f(1, p.", "# define X ab", "x = y", "R\"(a)\" s."})
    EXPECT_TRUE(IsCodeAt(text)) << text;
}

TEST(CodeScan, CommentsLiteralsNumbersAndIncludes_AreNoCode) {
  for (const char* text : {"// p.", "/* p.", "/* a\n * p.", "\"p.", "f(\"a\", \"p.", "'p.", "1.",
                           "x = 3.1", "0x1.", "#include <sys.", "#include \"a.", "# include \"a.",
                           "R\"(p.", "#define A // p.", "#define A /* p."})
    EXPECT_FALSE(IsCodeAt(text)) << text;
}

}  // namespace
}  // namespace zendry
