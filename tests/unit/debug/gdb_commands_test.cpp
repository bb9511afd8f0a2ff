#include "debug/GdbCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "CommandLine.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::Optional;

TEST(GdbPlaceText, PlainNamesAreNotQuoted) {
  EXPECT_EQ(GdbPlaceText("src/a.cpp", 12), "src/a.cpp:12");
  EXPECT_EQ(GdbPlaceText("/p/a-b_c~1+2.cpp", 1), "/p/a-b_c~1+2.cpp:1");
  EXPECT_EQ(GdbPlaceText("../_a.cpp", 1), "../_a.cpp:1");
  EXPECT_EQ(GdbPlaceText("a\\b.cpp", 1), "a\\b.cpp:1");
  EXPECT_EQ(GdbPlaceText("gr\u00FC\u00DFe.cpp", 1), "gr\u00FC\u00DFe.cpp:1");
}

TEST(GdbPlaceText, OthersAre) {
  for (const char* name :
       {"a b.cpp", "a:b.cpp", "a,b.cpp", "a if b.cpp", "-a.cpp", "*a.cpp", "12", "a(b).cpp"})
    EXPECT_EQ(GdbPlaceText(name, 3), '"' + std::string(name) + "\":3");
}

TEST(GdbPlaceText, RefusesQuotesAndLineEnds) {
  for (const char* name : {"a'b.cpp", "a\"b.cpp", "a\nb.cpp", "a\rb.cpp", ""})
    EXPECT_EQ(GdbPlaceText(name, 3), std::nullopt) << name;
  EXPECT_EQ(GdbPlaceText(std::string_view("a\0b", 3), 3), std::nullopt);
}

TEST(GdbBreak, WithAndWithoutACondition) {
  EXPECT_EQ(GdbBreak("a.cpp", 3, ""), "break a.cpp:3");
  EXPECT_EQ(GdbBreak("a.cpp", 3, " "), "break a.cpp:3");
  EXPECT_EQ(GdbBreak("a b.cpp", 3, "x == 1"), "break \"a b.cpp\":3 if x == 1");
  EXPECT_EQ(GdbBreak("a.cpp", 3, "x\nquit"), std::nullopt);
  EXPECT_EQ(GdbBreak("a\n.cpp", 3, ""), std::nullopt);
  EXPECT_EQ(GdbTemporaryBreak("a.cpp", 3), "tbreak a.cpp:3");
  EXPECT_EQ(GdbTemporaryBreak("a\n.cpp", 3), std::nullopt);
}

TEST(GdbBreak, NamesWithQuotesGoThroughPython) {
  EXPECT_EQ(GdbBreak("it's \"\\.cpp", 3, "x == 1"),
            "python gdb.Breakpoint(source=\"it's \\\"\\\\.cpp\", line=3)");
  EXPECT_EQ(GdbTemporaryBreak("it's.cpp", 3),
            "python gdb.Breakpoint(source=\"it's.cpp\", line=3, temporary=True)");
}

TEST(GdbClear, ByPlaceOrByNumber) {
  EXPECT_EQ(GdbClear("a b.cpp", 3), "clear \"a b.cpp\":3");
  EXPECT_EQ(GdbClear("it's.cpp", 3), std::nullopt);
  EXPECT_EQ(GdbDelete(7), "delete 7");
}

TEST(GdbCondition, IsSetAndRemoved) {
  EXPECT_EQ(GdbCondition(2, "x > 1"), "condition 2 x > 1");
  EXPECT_EQ(GdbCondition(2, ""), "condition 2");
  EXPECT_EQ(GdbCondition(2, "x\n"), std::nullopt);
}

TEST(GdbExpressions, AreTextsOfOneLine) {
  EXPECT_EQ(GdbDisplayCommand("/x a"), "display /x a");
  EXPECT_EQ(GdbPrint("a"), "print a");
  EXPECT_EQ(GdbPrint(" \t"), std::nullopt);  // would show the last value again
  EXPECT_EQ(GdbPrint("a\nquit"), std::nullopt);
  EXPECT_EQ(GdbPrint("a\\"), "print a\\ ");  // or the next command would belong to it
}

TEST(GdbSteps, Commands) {
  EXPECT_EQ(GdbStepCommand(GdbStep::cInto), "step");
  EXPECT_EQ(GdbStepCommand(GdbStep::cOver), "next");
  EXPECT_EQ(GdbStepCommand(GdbStep::cOut), "finish");
  EXPECT_EQ(GdbStepCommand(GdbStep::cInstruction), "nexti");
  EXPECT_EQ(GdbSelectFrame(3), "frame 3");
  EXPECT_EQ(GdbUndisplay(4), "undisplay 4");
  EXPECT_EQ(GdbUntil("a.cpp", 9), "until a.cpp:9");
}

TEST(GdbArguments, PlainWordsNeedNoShell) {
  EXPECT_THAT(GdbArguments("-v *.c $HOME it's"),
              Optional(ElementsAre("set startup-with-shell off", "set args -v *.c $HOME it's")));
}

TEST(GdbArguments, QuotedWordsReachTheProgramAsTheyAre) {
  EXPECT_THAT(
      GdbArguments("-v \"a $b\" \"\" \"it's\""),
      Optional(ElementsAre("set startup-with-shell on", "set args '-v' 'a $b' '' 'it'\\''s'")));
}

TEST(GdbArguments, RedirectionsAreTheShells) {
  EXPECT_THAT(GdbArguments("<in.txt >\"out put\""),
              Optional(ElementsAre("set startup-with-shell on", "set args <in.txt >\"out put\"")));
}

TEST(GdbArguments, NoneAndTwoLines) {
  EXPECT_THAT(GdbArguments(" "), Optional(ElementsAre()));
  EXPECT_EQ(GdbArguments("a\nb"), std::nullopt);
}

TEST(GdbStart, LineEndsInTheProgram) {
  const std::string line = GdbStartLine("/my tools/gdb", "out-dbg/a b");
  const std::vector<std::string> words = mavro::SplitCommandLine(line);
  EXPECT_EQ(words[0], "/my tools/gdb");
  EXPECT_EQ(words[1], "--annotate=3");
  EXPECT_EQ(words[2], "--quiet");
  EXPECT_EQ(words.back(), "out-dbg/a b");
  EXPECT_NE(std::find(words.begin(), words.end(), "set prompt (gdb) "), words.end());
}

TEST(GdbStart, SettingsBeginWithTheOldestOnes) {
  EXPECT_EQ(GdbSettings()[0], "set edit off");
  EXPECT_EQ(GdbSettings()[1], "set confirm off");
}

TEST(GdbTerminal, TakesAPath) {
  EXPECT_EQ(GdbTerminal("/dev/pts/3"), "set inferior-tty /dev/pts/3");
  EXPECT_EQ(GdbTerminal(""), std::nullopt);
}

}  // namespace
}  // namespace zendry
