#include "frame/StartupFile.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(StartupFile, NoArguments_IsNone) {
  EXPECT_EQ(FindStartupFile({}).path, "");
  EXPECT_EQ(FindStartupFile({}).kind, 0);
}

TEST(StartupFile, TwoRecognised_LastWins) {
  const StartupFile found = FindStartupFile({"a.cpp", "b.zpj"});
  EXPECT_EQ(found.path, "b.zpj");
  EXPECT_EQ(found.kind, 5);
}

TEST(StartupFile, UnrecognisedBehind_IsPassedOver) {
  EXPECT_EQ(FindStartupFile({"a.cpp", "x.txt", "--help", ""}).path, "a.cpp");
  EXPECT_EQ(FindStartupFile({"x.txt"}).path, "");
}

TEST(StartupFile, BackslashesAndUpSegment_AreNormalised) {
  const StartupFile found = FindStartupFile({"C:\\p\\..\\q\\m.CPP"});
  EXPECT_EQ(found.path, "C:/q/m.CPP");
  EXPECT_EQ(found.kind, 1);
}

TEST(StartupFile, PathThatCantBeNormalised_IsKept) {
  EXPECT_EQ(FindStartupFile({"p/../a.zpj"}).path, "p/../a.zpj");
  EXPECT_EQ(FindStartupFile({"..\\..\\a.c"}).path, "../../a.c");
}

}  // namespace
}  // namespace zendry
