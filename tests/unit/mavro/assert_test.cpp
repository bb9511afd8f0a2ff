#include "Assert.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <cstdio>

namespace mavro {
namespace {

template <int number>
void Say() {
  std::fprintf(stderr, "hook %d\n", number);
}

void FailToo() {
  std::fputs("fails too\n", stderr);
  AssertionFailed("second", "/x/src/b.cpp", 2);
}

const testing::KilledBySignal aborted(SIGABRT);

TEST(AssertDeathTest, Message_NamesTheFileFromItsRootOn) {
  EXPECT_EXIT(AssertionFailed("a<b", "/x/src/code/F.cpp", 7), aborted,
              "^src/code/F.cpp:7: assertion failed: a<b\n$");
  EXPECT_EXIT(AssertionFailed("a", "/x/libs/mavro/src/F.cpp", 1), aborted,
              "^libs/mavro/src/F.cpp:1:");
  EXPECT_EXIT(AssertionFailed("a", "../tools/F.cpp", 1), aborted, "^tools/F.cpp:1:");
  EXPECT_EXIT(AssertionFailed("a", "other/F.cpp", 1), aborted, "^other/F.cpp:1:");
}

TEST(AssertDeathTest, LastWords_RunInTheirOrderAndOnceEach) {
  EXPECT_EXIT(
      {
        for (const LastWords hook : {Say<1>, Say<2>, Say<1>, Say<3>, Say<2>}) AddLastWords(hook);
        AssertionFailed("a", "F.cpp", 1);
      },
      aborted, "failed: a\nhook 1\nhook 2\nhook 3\n$");
}

TEST(AssertDeathTest, LastWords_EightAreKept) {
  EXPECT_EXIT(
      {
        for (const LastWords hook :
             {Say<1>, Say<2>, Say<3>, Say<4>, Say<5>, Say<6>, Say<7>, Say<8>, Say<9>})
          AddLastWords(hook);
        AssertionFailed("a", "F.cpp", 1);
      },
      aborted, "failed: a\nhook 1\nhook 2\nhook 3\nhook 4\nhook 5\nhook 6\nhook 7\nhook 8\n$");
}

TEST(AssertDeathTest, LastWordsThatFailThemselves_EndTheProcessWithoutBeingRunAgain) {
  EXPECT_EXIT(
      {
        AddLastWords(FailToo);
        AssertionFailed("first", "F.cpp", 1);
      },
      aborted, "failed: first\nfails too\nsrc/b.cpp:2: assertion failed: second\n$");
}

}  // namespace
}  // namespace mavro
