#include "build/BuildRecords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TempFolder.h"
#include "TestBuild.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Records = std::map<std::string, ProductRecord>;

constexpr const char* cHeader = "zendry-build 1\n";

Records ReadAll(const std::string& text) {
  return BuildRecords::Read(text).records;
}

TEST(MakeRule, NamesAreThoseBehindTheTarget) {
  EXPECT_THAT(ReadMakeRule("a.o: a.cpp inc/a.h \\\n  b.h\n"),
              ElementsAre("a.cpp", "inc/a.h", "b.h"));
  EXPECT_THAT(ReadMakeRule("a.o:"), IsEmpty());
  EXPECT_THAT(ReadMakeRule(""), IsEmpty());
  EXPECT_THAT(ReadMakeRule("a.o: "), IsEmpty());
  EXPECT_THAT(ReadMakeRule("no target"), IsEmpty());
}

TEST(MakeRule, EscapedCharactersBelongToTheName) {
  EXPECT_THAT(ReadMakeRule("o: my\\ dir/a.h b\\#c d$$e f\\:g"),
              ElementsAre("my dir/a.h", "b#c", "d$e", "f:g"));
  EXPECT_THAT(ReadMakeRule("o: a\\b c\\\\d"), ElementsAre("a\\b", "c\\\\d"));
  EXPECT_THAT(ReadMakeRule("o: a\\\\\\ b"), ElementsAre("a\\ b"));
  EXPECT_THAT(ReadMakeRule("o: a\\\\ b"), ElementsAre("a\\", "b"));
  EXPECT_THAT(ReadMakeRule("o: a\\"), ElementsAre("a"));
}

TEST(BuildRecords, WhatIsWritten_IsRead) {
  const ProductRecord record = {"g++ -c \"a\nb\".cpp -DX=\\n",
                                {{"a.cpp", 17}, {"my dir/b \\n.h", -1}}};
  const auto journal = BuildRecords::Read(cHeader + BuildRecords::Write("out/a b.o", record));
  EXPECT_TRUE(journal.isWhole);
  EXPECT_EQ(journal.records.at("out/a b.o"), record);
}

TEST(BuildRecords, LaterRecord_ReplacesTheEarlierAndADropRemovesIt) {
  const std::string first = BuildRecords::Write("a.o", {"one", {}});
  EXPECT_EQ(ReadAll(cHeader + first + BuildRecords::Write("a.o", {"two", {}})).at("a.o").command,
            "two");
  EXPECT_THAT(ReadAll(cHeader + first + "- a.o\n"), IsEmpty());
  EXPECT_EQ(ReadAll(cHeader + first + "- b.o\n").size(), 1u);
}

TEST(BuildRecords, CutAtEachByte_KeepsTheWholeRecordsBefore) {
  const std::string first = cHeader + BuildRecords::Write("a.o", {"one", {{"a.cpp", 1}}});
  const std::string text = first + BuildRecords::Write("b.o", {"two", {{"b.cpp", 2}}});
  for (size_t length = first.size() + 1; length < text.size(); ++length) {
    const auto journal = BuildRecords::Read(text.substr(0, length));
    EXPECT_FALSE(journal.isWhole) << length;
    EXPECT_EQ(journal.records.size(), 1u) << length;
  }
  for (size_t length = 0; length < first.size(); ++length)
    EXPECT_THAT(ReadAll(text.substr(0, length)), IsEmpty()) << length;
}

TEST(BuildRecords, OtherVersionsAndDamage_AreNotWhole) {
  const std::string whole = BuildRecords::Write("a.o", {"one", {{"a.cpp", 1}}});
  for (const std::string& text :
       {"zendry-build 2\n" + whole, whole, cHeader + std::string("$ x\n"),
        cHeader + std::string("< 1 a\n"), cHeader + std::string("= \n"),
        cHeader + std::string("+ a\n< x a\n"), cHeader + std::string("+ a\n< 1\n"),
        cHeader + std::string("+ a\n< 99999999999999999999 a\n"), cHeader + std::string("?\n"),
        cHeader + std::string("\n"), cHeader + std::string("\0\0\0\n", 4)}) {
    const auto journal = BuildRecords::Read(text);
    EXPECT_FALSE(journal.isWhole) << text;
    EXPECT_THAT(journal.records, IsEmpty()) << text;
  }
}

struct OpenRecords : testing::Test {
  test::TempFolder files;
  const std::string path = files.Path(BuildRecords::cRecordsName);

  BuildRecords Open() const {
    BuildRecords records;
    records.Open(files.Path());
    return records;
  }
};

TEST_F(OpenRecords, SecondOpen_KnowsWhatTheFirstKept) {
  BuildRecords first = Open();
  first.Add("a.o", {"one", {{"a.cpp", 1}}});
  first.Add("b.o", {"two", {}});
  first.Drop("b.o");
  const BuildRecords second = Open();
  ASSERT_TRUE(second.Find("a.o"));
  EXPECT_EQ(second.Find("a.o")->command, "one");
  EXPECT_FALSE(second.Find("b.o"));
}

TEST_F(OpenRecords, CutEnd_IsTakenOffSoThatLaterRecordsCount) {
  Open().Add("a.o", {"one", {}});
  files.Write(BuildRecords::cRecordsName, files.Read(BuildRecords::cRecordsName) + "+ b.o\n$ tw");
  Open().Add("c.o", {"three", {}});
  const BuildRecords last = Open();
  EXPECT_TRUE(last.Find("a.o"));
  EXPECT_TRUE(last.Find("c.o"));
}

TEST_F(OpenRecords, FileOfAnotherVersion_IsReplaced) {
  files.Write(BuildRecords::cRecordsName, "zendry-build 9\nx\n");
  Open().Add("a.o", {"one", {}});
  EXPECT_TRUE(Open().Find("a.o"));
}

TEST_F(OpenRecords, FileOfOldRecords_IsMadeShort) {
  BuildRecords records = Open();
  const std::string command(1000, 'x');
  for (int i = 0; i < 200; ++i) records.Add("a.o", {command, {}});
  EXPECT_GT(files.Read(BuildRecords::cRecordsName).size(), 100'000u);
  EXPECT_TRUE(Open().Find("a.o"));
  EXPECT_LT(files.Read(BuildRecords::cRecordsName).size(), 2000u);
}

TEST_F(OpenRecords, FolderInPlaceOfTheFile_KnowsNothingAndHarmsNothing) {
  files.Folder(BuildRecords::cRecordsName);
  BuildRecords records = Open();
  records.Add("a.o", {"one", {}});
  EXPECT_TRUE(records.Find("a.o"));
  EXPECT_FALSE(Open().Find("a.o"));
}

TEST_F(OpenRecords, Check_NamesWhatHasChanged) {
  const std::string header = files.Write("a.h", "");
  test::SetTime(header, 5);
  FileTimes times;
  BuildRecords records = Open();
  EXPECT_THAT(records.Check(times, "a.o", "one").reason, HasSubstr("not known how a.o was made"));
  records.Add("a.o", {"one", {{header, *times.Of(header)}}});
  EXPECT_FALSE(records.Check(times, "a.o", "one").stale);
  EXPECT_THAT(records.Check(times, "a.o", "two").reason, HasSubstr("command line"));
  test::SetTime(header, 4);
  FileTimes later;
  EXPECT_THAT(records.Check(later, "a.o", "one").reason, HasSubstr("has changed"));
  unlink(header.c_str());
  FileTimes last;
  EXPECT_THAT(records.Check(last, "a.o", "one").reason, HasSubstr("is gone"));
}

}  // namespace
}  // namespace zendry
