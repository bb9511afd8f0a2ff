#include "frame/StartupFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Version.h"

namespace zendry {

void PrintTo(const StartupFile& file, std::ostream* stream) {
  *stream << file.path << " of kind " << file.kind;
}

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(StartupFiles, NoArguments_AreNone) {
  EXPECT_THAT(FindStartupFiles({}), IsEmpty());
}

TEST(StartupFiles, Recognised_KeepTheirOrder) {
  EXPECT_THAT(FindStartupFiles({"b.cpp", "a.c", "p.zpj", "b.cpp"}),
              ElementsAre(StartupFile{"b.cpp", 1}, StartupFile{"a.c", 2}, StartupFile{"p.zpj", 5},
                          StartupFile{"b.cpp", 1}));
}

TEST(StartupFiles, SeveralProjects_TheLastOneCounts) {
  EXPECT_THAT(FindStartupFiles({"p.zpj", "a.c", "q.zpj", "b.c"}),
              ElementsAre(StartupFile{"a.c", 2}, StartupFile{"q.zpj", 5}, StartupFile{"b.c", 2}));
}

TEST(StartupFiles, Unrecognised_ArePassedOver) {
  EXPECT_THAT(FindStartupFiles({"a.cpp", "x.txt", "--help", ""}),
              ElementsAre(StartupFile{"a.cpp", 1}));
  EXPECT_THAT(FindStartupFiles({"x.txt"}), IsEmpty());
}

TEST(StartupFiles, BackslashesAndUpSegment_AreNormalised) {
  EXPECT_THAT(FindStartupFiles({"C:\\p\\..\\q\\m.CPP"}), ElementsAre(StartupFile{"C:/q/m.CPP", 1}));
}

TEST(StartupFiles, PathThatCantBeNormalised_IsKept) {
  EXPECT_EQ(FindStartupFiles({"p/../a.zpj"}).at(0).path, "p/../a.zpj");
  EXPECT_EQ(FindStartupFiles({"..\\..\\a.c"}).at(0).path, "../../a.c");
}

TEST(TerminalAnswer, HelpOrVersionAlone_AreAnswered) {
  EXPECT_THAT(TerminalAnswer({"--help"}), HasSubstr("Usage: zendry [FILE...]\n"));
  EXPECT_EQ(TerminalAnswer({"--version"}), std::string("zendry ") + cVersion + "\n");
}

TEST(TerminalAnswer, AnythingElse_OpensTheWindow) {
  EXPECT_EQ(TerminalAnswer({}), "");
  EXPECT_EQ(TerminalAnswer({"a.cpp"}), "");
  EXPECT_EQ(TerminalAnswer({"--help", "a.cpp"}), "");
  EXPECT_EQ(TerminalAnswer({"a.cpp", "--version"}), "");
  EXPECT_EQ(TerminalAnswer({"--helps"}), "");
  EXPECT_EQ(TerminalAnswer({"-h"}), "");
}

TEST(Version, IsThatOfTheBuild) {
  EXPECT_STREQ(cVersion, ZENDRY_VERSION);
}

}  // namespace
}  // namespace zendry
