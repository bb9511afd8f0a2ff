#include "debug/DebugWords.h"

#include <gtest/gtest.h>

#include "debug/ThrownException.h"

namespace zendry {
namespace {

TEST(DebugWords, RoutineLines) {
  for (const char* line :
       {"Reading symbols from /p/a.exe...", "Starting program: /p/a.exe -x", "Continuing.",
        "[Thread debugging using libthread_db enabled]", "[Thread 0x7f (LWP 7) exited]",
        "[New Thread 0x7f (LWP 7)]", "[Switching to Thread 0x7f (LWP 7)]",
        "Using host libthread_db library \"/lib/libthread_db.so.1\".",
        "[Inferior 1 (process 7) exited normally]", "Run till exit from #0  twice (k=1) at a.cpp:6",
        "[Detaching after fork from child 8]"})
    EXPECT_TRUE(IsRoutine(line)) << line;
  for (const char* line :
       {"Value returned is $1 = 2", "(No debugging symbols found in /p/a.exe)", "warning: x",
        "Continuing at 0x1.", "Program received signal SIGABRT, Aborted.", "Thread 2", ""})
    EXPECT_FALSE(IsRoutine(line)) << line;
}

TEST(ThrownException, TextBetweenTheQuotesOfAValue) {
  EXPECT_EQ(GdbQuotedText(R"(0x5555 <name of "x"> "text")"), "x\"> \"text") << "the outer ones";
  EXPECT_EQ(GdbQuotedText(R"(0x55 "a \"b\" \\ \n")"), R"(a "b" \ \n)");
  EXPECT_EQ(GdbQuotedText(R"(0x55 "cut"...)"), "cut");
  EXPECT_EQ(GdbQuotedText("0x0"), "");
  EXPECT_EQ(GdbQuotedText("\""), "");
  EXPECT_EQ(ThrownType(R"(0x7f <typeinfo name for std::runtime_error> "St13runtime_error")"),
            "std::runtime_error");
  EXPECT_EQ(ThrownType(R"(0x7f "*N12_GLOBAL__N_14AnonE")"), "(anonymous namespace)::Anon");
  EXPECT_EQ(ThrownType(R"(0x7f "?")"), "?");
  EXPECT_EQ(ThrownType("0x0"), "");
}

GdbFrame Frame(int level, const std::string& function, const std::string& file = "") {
  GdbFrame frame = {"#" + std::to_string(level) + "  0x00007ffff7aa8f4f in " + function + " ()",
                    {}};
  frame.place = {file, file.empty() ? 0 : 7, level};
  return frame;
}

TEST(ThrownException, IsSearchedInTheStack) {
  const GdbFrame raise = Frame(0, "raise", "./raise.c"), abort = Frame(1, "__GI_abort", "abort.c");
  const GdbFrame library = Frame(2, "??"), user = Frame(4, "f", "/p/a.cpp");
  const auto levelOf = [](const std::vector<GdbFrame>& stack) {
    const auto termination = FindTermination(stack);
    return termination ? termination->throwLevel.value_or(-1) : -2;
  };
  EXPECT_EQ(levelOf({raise, abort, library, Frame(3, "std::terminate()"), user}), -1);
  EXPECT_EQ(levelOf({raise, abort, Frame(2, "std::terminate()"), Frame(3, "__cxa_throw"), user}),
            3);
  EXPECT_EQ(levelOf({raise, abort, library, Frame(3, "__cxa_rethrow"), user}), 3);
  EXPECT_EQ(levelOf({raise, abort, library, user}), -2) << "the program has called abort";
  EXPECT_EQ(levelOf({raise, abort, user, Frame(5, "__cxa_throw")}), -2)
      << "while an exception is on its way";
  EXPECT_EQ(levelOf({user, Frame(5, "__cxa_throw")}), -2) << "a crash";
  EXPECT_EQ(levelOf({}), -2);
}

}  // namespace
}  // namespace zendry
