#include "base/ReasonFirst.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(ReasonFirst, ReasonOfAFile_StandsBeforeIt) {
  EXPECT_EQ(ReasonFirst("can't write /a/b.cpp: Permission denied"),
            "Permission denied: can't write /a/b.cpp");
  EXPECT_EQ(ReasonFirst("/p.zpj: it can't be put aside: No space left on device"),
            "It can't be put aside: No space left on device: /p.zpj");
}

TEST(ReasonFirst, SmallLetters_BecomeLarge_AndNothingElseDoes) {
  EXPECT_EQ(ReasonFirst("f: a"), "A: f");
  EXPECT_EQ(ReasonFirst("f: z"), "Z: f");
  EXPECT_EQ(ReasonFirst("f: `"), "`: f");
  EXPECT_EQ(ReasonFirst("f: {"), "{: f");
}

TEST(ReasonFirst, WithoutAReason_StaysAsItIs) {
  EXPECT_EQ(ReasonFirst("no reason"), "no reason");
  EXPECT_EQ(ReasonFirst("a:b"), "a:b");
  EXPECT_EQ(ReasonFirst(""), "");
  EXPECT_EQ(ReasonFirst("/a: "), ": /a");
}

}  // namespace
}  // namespace zendry
