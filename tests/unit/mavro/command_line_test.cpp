#include "CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace mavro {
namespace {

using Arguments = std::vector<std::string>;

struct SplitCase {
  const char* line;
  Arguments arguments;
};

// The examples of the C runtime's own rules, and the cases between them.
const SplitCase cSplitCases[] = {
    {"", {}},
    {" \t ", {}},
    {"gcc", {"gcc"}},
    {" gcc  -c\ta.c ", {"gcc", "-c", "a.c"}},
    {R"("a b" c)", {"a b", "c"}},
    {R"(a" "b c)", {"a b", "c"}},
    {R"("a b"c d)", {"a bc", "d"}},
    {R"("" a)", {"", "a"}},
    {R"(a "")", {"a", ""}},
    {R"("abc" d e)", {"abc", "d", "e"}},
    {R"(a\\b d"e f"g h)", {R"(a\\b)", "de fg", "h"}},
    {R"(a\\\"b c d)", {R"(a\"b)", "c", "d"}},
    {R"(a\\\\"b c" d e)", {R"(a\\b c)", "d", "e"}},
    {R"(-DX=\"y\")", {R"(-DX="y")"}},
    {R"("a\"b c")", {R"(a"b c)"}},
    {R"(C:\dir\file)", {R"(C:\dir\file)"}},
    {R"("C:\dir\\" b)", {R"(C:\dir\)", "b"}},
    {R"(a\)", {R"(a\)"}},
    {R"(a\\)", {R"(a\\)"}},
    {R"(a\ b)", {R"(a\)", "b"}},
    {R"("never closed b)", {"never closed b"}},
    {R"(a ")", {"a", ""}},
    {"a\nb 'c d' $x `y` ;z", {"a\nb", "'c", "d'", "$x", "`y`", ";z"}},
};

TEST(SplitCommandLine, Examples_SplitAsTheRulesSay) {
  for (const SplitCase& each : cSplitCases)
    EXPECT_EQ(SplitCommandLine(each.line), each.arguments) << each.line;
}

TEST(SplitCommandLine, NulAndHighBytes_AreCharactersLikeOthers) {
  EXPECT_EQ(SplitCommandLine(std::string_view("a\0b \xff\xfe", 6)),
            (Arguments{std::string("a\0b", 3), "\xff\xfe"}));
}

struct QuoteCase {
  std::string argument;
  const char* quoted;
};

const QuoteCase cQuoteCases[] = {
    {"a.c", "a.c"},
    {"-DX=$(y)", "-DX=$(y)"},
    {R"(C:\dir\)", R"(C:\dir\)"},
    {R"(a\\b)", R"(a\\b)"},
    {"", R"("")"},
    {"a b", R"("a b")"},
    {"a\tb", "\"a\tb\""},
    {R"(say "hi")", R"("say \"hi\"")"},
    {R"(a"b)", R"("a\"b")"},
    {R"(a\"b)", R"("a\\\"b")"},
    {R"(a b\)", R"("a b\\")"},
    {R"(\\host\a b)", R"("\\host\a b")"},
};

TEST(QuoteArgument, Examples_AreQuotedOnlyWhereNeeded) {
  for (const QuoteCase& each : cQuoteCases)
    EXPECT_EQ(QuoteArgument(each.argument), each.quoted) << each.argument;
}

TEST(QuoteArgument, AnyArguments_ComeBackWhenSplit) {
  std::mt19937 random(42);
  const std::string characters = "a\\\" \t'$\n";
  for (int round = 0; round < 20'000; ++round) {
    Arguments arguments(random() % 4);
    std::string line;
    for (std::string& argument : arguments) {
      for (size_t length = random() % 7; length > 0; --length)
        argument += characters[random() % characters.size()];
      line += QuoteArgument(argument) + " ";
    }
    ASSERT_EQ(SplitCommandLine(line), arguments) << line;
  }
}

}  // namespace
}  // namespace mavro
