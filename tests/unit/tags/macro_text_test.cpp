#include "tags/MacroText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zendry {
namespace {

// What the macro M of a definition stands for with these arguments.
std::string Expanded(const std::string& definition, const std::vector<std::string>& arguments) {
  const auto macro = ReadMacro("#define " + definition, 1, "M");
  if (!macro) return "no macro";
  return Expand(*macro, arguments).value_or("other arguments");
}

TEST(ReadMacro, TakesTheOneOfThatNameOnThatLine) {
  const std::string text = "int x;\n # define A(x, y) x \\\n  + y\n#define AB 1\n#define B";
  const auto macro = ReadMacro(text, 2, "A");
  ASSERT_TRUE(macro);
  EXPECT_TRUE(macro->takesArguments);
  EXPECT_EQ(macro->parameters, (std::vector<std::string>{"x", "y"}));
  EXPECT_EQ(macro->body, " x    + y");
  EXPECT_FALSE(ReadMacro(text, 4, "A"));
  EXPECT_FALSE(ReadMacro(text, 1, "A"));
  EXPECT_FALSE(ReadMacro(text, 70, "A"));
  const auto empty = ReadMacro(text, 5, "B");
  ASSERT_TRUE(empty);
  EXPECT_FALSE(empty->takesArguments);
  EXPECT_EQ(empty->body, "");
  EXPECT_FALSE(ReadMacro("#define A(x, y", 1, "A")) << "no end";
  EXPECT_FALSE(ReadMacro("", 1, "A"));
}

TEST(ReadMacro, CommentsAreBlanks) {
  const std::string text =
      "#define /* int */ A( \\\n  /* const T * */ x, y /* z */) x /*y*/->b // a";
  const auto macro = ReadMacro(text, 1, "A");
  ASSERT_TRUE(macro);
  EXPECT_EQ(macro->parameters, (std::vector<std::string>{"x", "y"}));
  EXPECT_EQ(macro->body, " x  ->b ");
  EXPECT_EQ(Expanded("M \"/* a */\" '/*' 1'000 // b", {}), " \"/* a */\" '/*' 1'000 ");
  EXPECT_EQ(Expanded("M/**/(a) a", {"p"}), "other arguments") << "a blank before it";
  EXPECT_EQ(Expanded("M a /* never ends", {}), " a  ");
}

TEST(ReadMacro, BlankBeforeTheParenthesisMakesItABody) {
  const auto macro = ReadMacro("#define A (x)", 1, "A");
  ASSERT_TRUE(macro);
  EXPECT_FALSE(macro->takesArguments);
  EXPECT_EQ(macro->body, " (x)");
}

TEST(Expand, PutsTheArgumentsInPlaceOfTheParameters) {
  EXPECT_EQ(Expanded("M(a, b) ((a)->b + ab)", {"p", "q"}), " ((p)->q + ab)");
  EXPECT_EQ(Expanded("M(a) \"a\" 'a' 0a a", {"p"}), " \"a\" 'a' 0a p");
  EXPECT_EQ(Expanded("M() x", {}), " x");
  EXPECT_EQ(Expanded("M x", {}), " x");
  EXPECT_EQ(Expanded("M(a) \"never ends a", {"p"}), " \"never ends a");
}

TEST(Expand, AnotherNumberOfArgumentsHasNone) {
  EXPECT_EQ(Expanded("M(a, b) a b", {"p"}), "other arguments");
  EXPECT_EQ(Expanded("M(a, b) a b", {"p", "q", "r"}), "other arguments");
  EXPECT_EQ(Expanded("M x", {"p"}), "other arguments");
}

TEST(Expand, LastParameterTakesWhatIsLeft) {
  EXPECT_EQ(Expanded("M(a, ...) f(a, __VA_ARGS__)", {"p", "q", "r"}), " f(p, q,r)");
  EXPECT_EQ(Expanded("M(a, more...) f(more)", {"p"}), " f()");
  EXPECT_EQ(Expanded("M(...) f(__VA_ARGS__)", {}), " f()");
  EXPECT_EQ(Expanded("M(a, b, ...) f(a)", {"p"}), "other arguments");
}

TEST(Expand, WhatIsTooLongIsNone) {
  const std::string half(cLongestExpansion / 2, 'x');
  EXPECT_EQ(Expanded("M(a)a##a", {half}), half + half);
  EXPECT_EQ(Expanded("M(a, b)a##a##b", {half, "y"}), "other arguments");
}

TEST(Expand, PastesAndQuotes) {
  EXPECT_EQ(Expanded("M(a) get_ ## a ## _t(# a)", {"p"}), " get_p_t(\"\")");
  EXPECT_EQ(Expanded("M(a) a ##", {"p"}), " p");
  EXPECT_EQ(Expanded("M(a) a #", {"p"}), " p \"\"");
}

}  // namespace
}  // namespace zendry
