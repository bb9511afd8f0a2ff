#include "base/FileKinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tags/TagParser.h"

namespace zendry {
namespace {

using testing::ElementsAre;

struct FileKindsTest : testing::Test {
  ~FileKindsTest() override { ForgetAddedFileKinds(); }
};

TEST_F(FileKindsTest, Added_CountWithTheirCaseBeforeTheTable) {
  AddFileKind("C", cCppSource);
  AddFileKind("hpp", cHeader);
  EXPECT_EQ(FileKind("a.C"), cCppSource);
  EXPECT_EQ(FileKind("a.c"), cCSource);
  EXPECT_EQ(FileKind("a.hpp"), cHeader);
  EXPECT_EQ(FileKind("a.HPP"), cUnknownKind);
  EXPECT_EQ(FileKind("a.H"), cHeader) << "the table's case doesn't count";
}

TEST_F(FileKindsTest, Added_OtherKindsOrNoText_AreIgnored) {
  AddFileKind("", cCppSource);
  AddFileKind("res", cResourceScript);
  AddFileKind("prj", cProjectFile);
  AddFileKind("x", 0);
  AddFileKind("y", -1);
  for (const char* name : {"a.", "a.res", "a.prj", "a.x", "a.y"}) EXPECT_EQ(FileKind(name), 0);
}

TEST_F(FileKindsTest, Added_Twice_TheLastCounts) {
  AddFileKind("x", cCSource);
  AddFileKind("x", cHeader);
  EXPECT_EQ(FileKind("a.x"), cHeader);
  EXPECT_THAT(ExtensionsOf(cCSource), ElementsAre("c"));
}

TEST_F(FileKindsTest, Patterns_AreTheTableAndWhatWasAdded) {
  EXPECT_EQ(SourcePatterns(), "*.cpp;*.cp;*.c;*.h");
  AddFileKind("cc", cCppSource);
  AddFileKind("hh", cHeader);
  EXPECT_EQ(SourcePatterns(), "*.cpp;*.cp;*.cc;*.c;*.h;*.hh");
  EXPECT_THAT(ExtensionsOf(cCppSource), ElementsAre("cpp", "cp", "cc"));
}

TEST_F(FileKindsTest, Added_DecideTheLanguageOfTheTags) {
  bool isHeader = false;
  EXPECT_EQ(TagParser::languageOf("a.ipp", isHeader), std::nullopt);
  EXPECT_EQ(TagParser::languageOf("a.C", isHeader), Language::cC);
  AddFileKind("ipp", cHeader);
  AddFileKind("C", cCppSource);
  EXPECT_EQ(TagParser::languageOf("a.ipp", isHeader), Language::cCpp);
  EXPECT_TRUE(isHeader);
  EXPECT_EQ(TagParser::languageOf("a.C", isHeader), Language::cCpp);
  EXPECT_FALSE(isHeader);
  EXPECT_EQ(TagParser::languageOf("a.c", isHeader), Language::cC);
}

}  // namespace
}  // namespace zendry
